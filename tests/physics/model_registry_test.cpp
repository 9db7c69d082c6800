// Which contact models and external forces there are, by which names, and what they answer.
#include "physics/model_registry.h"

#include "model/creator_data.h"
#include "physics/electrostatics.h"
#include "physics/physics_models.h"

#include <gtest/gtest.h>
#include <algorithm>

namespace NBrenmark {

struct SModelCase
{
    const char* asked;
    const char* answered;
    quint32 role;
    quint32 position;
    bool capability;
    const char* properties; ///< as described below
};

// Written down by hand from what decks hold; properties as owner (p, c, g), name, elements, quantity.
static const SModelCase modelCases[] = {
    {"Hertz-Mindlin (no slip)", "Hertz-Mindlin (no slip)", 0, 1, true, ""},
    {"Hertz-Mindlin (no slip) with RVD Rolling Friction", "Hertz-Mindlin (no slip) with RVD Rolling Friction", 0, 1,
     false, ""},
    {"Linear Spring", "Linear Spring", 0, 1, false, ""},
    {"Hertz-Mindlin with JKR", "Hertz-Mindlin with JKR", 0, 1, true, ""},
    {"Hertz-Mindlin with heat conduction", "Hertz-Mindlin with heat conduction", 0, 1, true,
     "p:Temperature:1:20 p:Heat Flux:2:21 "},
    {"Hertz-Mindlin with Archard Wear", "Hertz-Mindlin with Archard Wear", 0, 1, false, "g:Archard Wear:1:11 "},
    {"Hertz-Mindlin with bonding", "Hertz-Mindlin with bonding", 0, 1, false, ""},
    {"Bonding and Hertz-Mindlin", "Hertz-Mindlin with bonding", 0, 1, false, ""},
    {"Hysteretic Spring", "Hysteretic Spring", 0, 1, false, "c:Residual Overlap:1:11 "},
    {"Edinburgh Elasto-Plastic Adhesion", "Edinburgh Elasto-Plastic Adhesion", 0, 1, true, "c:Plastic Overlap:1:11 "},
    {"Leeds Elastic-Plastic Adhesion", "Leeds Elastic-Plastic Adhesion", 0, 1, true,
     "c:LEPA Maximum Overlap:1:1 c:LEPA Is Plastic:1:1 c:LEPA Is Cohesive:1:1 c:LEPA Is Zero:1:1 "},
    {"Linear Cohesion", "Linear Cohesion", 1, 2, false, ""},
    {"Cohesion", "Linear Cohesion", 1, 2, false, ""},
    {"Linear Cohesion V2", "Linear Cohesion V2", 1, 2, false, ""},
    {"Tribocharging", "Tribocharging", 1, 2, false, "p:Charge:1:10 g:Charge:1:10 "},
    {"Moving Plane", "Moving Plane", 1, 0, true, "g:Plane Velocity:3:17 "},
    {"Relative Wear", "Relative Wear", 2, 1, false,
     "c:Previous Normal Velocity:1:17 g:Normal Cumulative Contact Energy:1:7 "
     "g:Tangential Cumulative Contact Energy:1:7 g:Normal Cumulative Force:1:9 g:Tangential Cumulative Force:1:9 "},
};

template <class TModel>
static std::string propertiesOf(const TModel& model)
{
    std::string text;
    for (const auto& [owner, letter] : {std::pair(eParticleOwner, 'p'), std::pair(eContactOwner, 'c'),
                                        std::pair(eGeometryOwner, 'g'), std::pair(eSimulationOwner, 's')})
        for (const auto& property : model.requiredProperties(owner))
            text += std::string(1, letter) + ":" + property->name + ":" + std::to_string(property->numberOfElements) +
                    ":" + std::to_string(property->unitsType) + " ";
    return text;
}

TEST(ModelRegistry, knowsEachContactModelByItsNames)
{
    std::set<std::string> answered;
    for (const SModelCase& c : modelCases) {
        for (const quint32 source : {0u, 2u, 77u}) { // all but 1 ask the built-in ones
            const auto model = createContactModel(c.asked, eSphereGeometryModel, source);
            ASSERT_NE(model, nullptr) << c.asked;
            EXPECT_EQ(model->modelName().toStdString(), c.answered);
            EXPECT_EQ(model->modelType, 1u);
            EXPECT_EQ(model->source, 0u) << "a built-in model says so, however it was asked for";
            EXPECT_EQ(model->chainRole(), c.role) << c.asked;
            EXPECT_EQ(model->chainPosition(), c.position) << c.asked;
            EXPECT_EQ(model->capabilityFlag(), c.capability) << c.asked;
            EXPECT_FALSE(model->pluginQuery());
            EXPECT_EQ(propertiesOf(*model), c.properties) << c.asked;
        }
        EXPECT_EQ(createContactModel(c.asked, eSphereSphereModel, 1), nullptr) << "a plug-in of that name";
        answered.insert(c.answered);
    }
    EXPECT_EQ(answered.size(), contactModelKinds().size()) << "a model that the list above doesn't have";
}

TEST(ModelRegistry, knowsNothingElse)
{
    for (const char* name : {"", "hertz-mindlin (no slip)", "Hertz-Mindlin (no slip) ", "Temperature Update", "none"})
        EXPECT_EQ(createContactModel(name, eSphereSphereModel, 0), nullptr) << name;
    EXPECT_EQ(repairedModelName("hertz-mindlin (no slip)"), "Hertz-Mindlin (no slip)");
    EXPECT_EQ(repairedModelName("linear spring"), "linear spring") << "the one name that is repaired";
}

TEST(ModelRegistry, knowsTwoExternalForces)
{
    struct SForceCase
    {
        const char* name;
        bool capability;
        const char* properties;
    };
    const SForceCase cases[] = {
        {"Electrostatics", false, "p:Charge:1:10 p:Electrostatic Force:3:9 g:Charge:1:10 "},
        {"Temperature Update", true, "p:Temperature:1:20 p:Heat Flux:2:21 "},
    };
    for (const SForceCase& c : cases) {
        const auto force = createExternalForce(c.name, 2, nullptr);
        ASSERT_NE(force, nullptr) << c.name;
        EXPECT_EQ(force->modelName(), c.name);
        EXPECT_EQ(force->source, 0u);
        EXPECT_EQ(force->capabilityFlag(), c.capability);
        EXPECT_EQ(propertiesOf(*force), c.properties);
        EXPECT_EQ(createExternalForce(c.name, 1, nullptr), nullptr);
    }
    EXPECT_EQ(createExternalForce("none", 0, nullptr), nullptr);
    EXPECT_EQ(createExternalForce("Linear Spring", 0, nullptr), nullptr);
}

TEST(ModelRegistry, theReachOfChargesCountsInSmallestRadii)
{
    CCreatorData creator{SPropertyManagers()};
    CElectrostaticsExternalForce force(&creator);
    EXPECT_TRUE(force.starting());
    EXPECT_EQ(force.cutoff, 0.0) << "no particle type";
    for (const double radius : {0.004, 0.002}) {
        CSphere sphere;
        sphere.setRadii(2 * radius, radius);
        creator.particleTypes.append().spheres.push_back(sphere);
    }
    EXPECT_TRUE(force.starting());
    EXPECT_DOUBLE_EQ(force.cutoff, 0.010) << "five times 2 mm, the physical radius";
    EXPECT_TRUE(CElectrostaticsExternalForce(nullptr).starting());
}

} // namespace NBrenmark
