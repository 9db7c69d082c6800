// The chains of contact models and the external forces: how they change, and who is told.
#include "physics/physics_models.h"

#include "model/creator_data.h"
#include "physics/phantoms.h"

#include <gtest/gtest.h>

namespace NBrenmark {

static std::string namesOf(const CPhysicsModels::Chain& chain)
{
    std::string names;
    for (const auto& model : chain)
        names += (names.empty() ? "" : ", ") + model->modelName().toStdString();
    return names;
}

static std::unique_ptr<IContactModel> built(const char* name, quint32 modelType = eSphereSphereModel)
{
    return createContactModel(name, modelType, eBuiltInModel);
}

TEST(PhysicsModels, oneDefaultModelInEachChain)
{
    CPhysicsModels physics;
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Hertz-Mindlin (no slip)");
    ASSERT_EQ(namesOf(physics.sphereGeometryModels), "Hertz-Mindlin (no slip)");
    EXPECT_EQ(physics.externalForceCount(), 0u);
    EXPECT_EQ(physics.sphereSphereModels.front()->modelType, 0u);
    EXPECT_EQ(physics.sphereGeometryModels.front()->modelType, 1u);
    EXPECT_EQ(CPhysicsModels::findModel(physics.sphereSphereModels, "Linear Spring"), nullptr);

    physics.addExternalForce(createExternalForce("Electrostatics", 0, nullptr), CPhysicsModels::atEnd);
    physics.addContactModel(built("Linear Spring"), CPhysicsModels::atEnd);
    physics.clear();
    EXPECT_EQ(namesOf(physics.sphereSphereModels) + namesOf(physics.sphereGeometryModels), "");
    EXPECT_EQ(physics.externalForceCount(), 0u);
    physics.resetToDefaults();
    physics.resetToDefaults();
    EXPECT_EQ(physics.sphereSphereModels.size() + physics.sphereGeometryModels.size(), 2u);
}

TEST(PhysicsModels, relativeWearStaysBehindTheOthersInAnOrderedChain)
{
    CPhysicsModels physics;
    CPhysicsModels::Chain& chain = physics.sphereGeometryModels;
    for (const char* name : {"Relative Wear", "Moving Plane", "Linear Cohesion"})
        EXPECT_TRUE(physics.addContactModel(built(name, eSphereGeometryModel), chain, CPhysicsModels::atEnd));
    EXPECT_EQ(namesOf(chain), "Hertz-Mindlin (no slip), Moving Plane, Linear Cohesion, Relative Wear");
    // Replacing leaves the places as they are, and so does what a file brings.
    physics.addContactModel(built("Relative Wear", eSphereGeometryModel), chain, 1);
    EXPECT_EQ(namesOf(chain), "Hertz-Mindlin (no slip), Relative Wear, Linear Cohesion, Relative Wear");
    physics.addContactModel(built("Tribocharging", eSphereGeometryModel), CPhysicsModels::atEnd);
    EXPECT_EQ(namesOf(chain), "Hertz-Mindlin (no slip), Relative Wear, Linear Cohesion, Relative Wear, Tribocharging");
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Hertz-Mindlin (no slip)") << "the model's type says the chain";
    physics.addContactModel(built("Linear Spring", eSphereGeometryModel), chain, 99);
    EXPECT_EQ(chain.back()->modelName(), "Linear Spring") << "a place beyond the end is the end";
}

/// Writes down what it is told, and refuses one name.
struct SListener : IPhysicsModelChangeListener
{
    SListener(std::string& told, const char* sign, const char* refused = "") : told(told), sign(sign), refused(refused)
    {}
    bool modelAdded(IContactModel& model, quint32, CPhysicsModels&) override
    {
        told += sign + std::string("?") + model.modelName().toStdString() + " ";
        return model.modelName() != refused;
    }
    void modelPlaced(IContactModel& model, quint32 type, CPhysicsModels& physics) override
    {
        EXPECT_NE(CPhysicsModels::findModel(physics.chain(type), model.modelName()), nullptr) << "it stands there";
        told += sign + std::string("+") + model.modelName().toStdString() + " ";
    }
    void modelRemoved(IContactModel& model, quint32, CPhysicsModels&) override
    {
        told += sign + std::string("-") + model.modelName().toStdString() + " ";
    }
    bool forceAdded(IExternalForce& force, CPhysicsModels&) override
    {
        told += sign + std::string("?") + force.modelName().toStdString() + " ";
        return force.modelName() != refused;
    }
    void forcePlaced(IExternalForce& force, CPhysicsModels&) override
    {
        told += sign + std::string("+") + force.modelName().toStdString() + " ";
    }
    void forceRemoved(IExternalForce& force, CPhysicsModels&) override
    {
        told += sign + std::string("-") + force.modelName().toStdString() + " ";
    }

    std::string& told;
    const char* sign;
    QString refused;
};

TEST(PhysicsModels, listenersAreAskedThenNotifiedAndOneNoIsEnough)
{
    std::string told;
    SListener both[] = {{told, "1", "Linear Cohesion"}, {told, "2"}}; // asked in the order of their addresses
    CPhysicsModels physics;
    physics.clear();
    for (SListener& listener : both)
        physics.addListener(&listener);
    const auto after = [&](auto&& change) {
        told.clear();
        change();
        return told;
    };

    EXPECT_EQ(after([&] { physics.clear(); }), "") << "nothing there, no one notified";
    EXPECT_EQ(after([&] { physics.addContactModel(built("Linear Spring"), -1); }),
              "1?Linear Spring 2?Linear Spring 1+Linear Spring 2+Linear Spring ");
    EXPECT_EQ(after([&] { EXPECT_FALSE(physics.addContactModel(built("Linear Cohesion"), 0)); }), "1?Linear Cohesion ");
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Linear Spring") << "a refusal leaves the chain as it was";
    EXPECT_EQ(after([&] { physics.addContactModel(built("Hysteretic Spring"), 0); }),
              "1?Hysteretic Spring 2?Hysteretic Spring 1-Linear Spring 2-Linear Spring 1+Hysteretic Spring "
              "2+Hysteretic Spring ");

    both[1].refused = "Temperature Update";
    EXPECT_EQ(after([&] {
                  EXPECT_FALSE(physics.addExternalForce(createExternalForce("Temperature Update", 0, nullptr), -1));
              }),
              "1?Temperature Update 2?Temperature Update ");
    EXPECT_EQ(after([&] { physics.addExternalForce(createExternalForce("Electrostatics", 0, nullptr), -1); }),
              "1?Electrostatics 2?Electrostatics 1+Electrostatics 2+Electrostatics ");
    EXPECT_TRUE(physics.hasElectrostatics());
    EXPECT_EQ(after([&] { physics.clear(); }),
              "1-Hysteretic Spring 1-Electrostatics 2-Hysteretic Spring 2-Electrostatics ");
    physics.removeListener(&both[0]);
    EXPECT_EQ(after([&] { physics.addContactModel(built("Linear Cohesion"), -1); }),
              "2?Linear Cohesion 2+Linear Cohesion ");
}

TEST(PhysicsModels, aChangeMarksTheDeckUnlessItIsBeingLoaded)
{
    CCreatorData creator{SPropertyManagers()};
    CPhysicsModels& physics = creator.physicsModels;
    EXPECT_FALSE(creator.modified) << "a new deck";
    {
        const CPhysicsModels::CLoading loading(physics);
        physics.addContactModel(built("Linear Spring"), -1);
        physics.addExternalForce(createExternalForce("Electrostatics", 0, &creator), -1);
        EXPECT_FALSE(creator.modified);
    }
    std::string told;
    SListener listener(told, "", "Linear Cohesion");
    physics.addListener(&listener);
    physics.addContactModel(built("Linear Cohesion"), -1);
    EXPECT_FALSE(creator.modified) << "it was refused";
    physics.addContactModel(built("Moving Plane"), -1);
    EXPECT_TRUE(creator.modified);
    physics.removeListener(&listener);
}

TEST(PhysicsModels, whatCantBeMadeLeavesAPhantomIfItMay)
{
    CPhysicsModels physics;
    EXPECT_EQ(physics.makeContactModel("Sticky", 0, 1, false), nullptr);
    EXPECT_EQ(physics.makeExternalForce("Wind", 1, false), nullptr);
    EXPECT_EQ(physics.makeExternalForce("none", 0, true), nullptr) << "the word for no force";
    EXPECT_FALSE(physics.hasTribocharging());

    const auto model = physics.makeContactModel("Tribocharging", 1, 1, true); // a plug-in of a built-in name
    EXPECT_NE(dynamic_cast<const CContactModelPhantom*>(model.get()), nullptr);
    EXPECT_EQ(model->modelName(), "Tribocharging");
    EXPECT_EQ(model->modelType, 1u);
    EXPECT_EQ(model->source, 1u);
    EXPECT_EQ(model->chainRole(), 3u);
    EXPECT_EQ(model->chainPosition(), 2u);
    EXPECT_FALSE(model->capabilityFlag());
    EXPECT_EQ(model->paramData(), nullptr);
    EXPECT_TRUE(model->requiredProperties(eParticleOwner).empty());

    const auto force = physics.makeExternalForce("Wind", 2, true);
    EXPECT_EQ(force->modelName(), "Wind");
    EXPECT_EQ(force->source, 2u);
    EXPECT_FALSE(force->capabilityFlag());

    EXPECT_TRUE(physics.addDefaultModel("Tribocharging", 1, 0, physics.sphereGeometryModels));
    EXPECT_TRUE(physics.hasTribocharging());
    EXPECT_TRUE(physics.addDefaultModel("Sticky", 0, 1, physics.sphereSphereModels));
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Hertz-Mindlin (no slip), Sticky");
}

} // namespace NBrenmark
