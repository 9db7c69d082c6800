// Parameter records: rolling friction of new models, pairs of names, and how a rename goes through.
#include "physics/parameter_records.h"
#include "physics/physics_models.h"

#include <gtest/gtest.h>

namespace NBrenmark {

template <class TModel>
static std::string frictionOf()
{
    return std::string(TModel(0).parameters.hasRollingFrictionOption() ? "has " : "has not ") +
           (TModel(0).parameters.enableRollingFriction ? "on" : "off") + "/" +
           (TModel(1).parameters.enableRollingFriction ? "on" : "off");
}

TEST(ParameterRecords, rollingFrictionIsOnBetweenSpheresAndOffAtGeometry)
{
    for (const std::string& found :
         {frictionOf<CHertzMindlinNoSlipContactModel>(), frictionOf<CLinearSpringContactModel>(),
          frictionOf<CJkrContactModel>(), frictionOf<CArchardContactModel>(), frictionOf<CParallelBondContactModel>(),
          frictionOf<CHystereticContactModel>(), frictionOf<CEdinburghCohesionContactModel>(),
          frictionOf<CLeedsAdhesionContactModel>()})
        EXPECT_EQ(found, "has on/off");
}

TEST(ParameterRecords, aPairIsOneInEitherOrderOfBytes)
{
    CPairTable<double> table;
    table.set("steel", "Glass", 1.0);
    table.set("Glass", "steel", 2.0);
    table.set("\xC3\x84", "z", 3.0); // a letter beyond 7 bits stands behind z
    ASSERT_EQ(table.entries.size(), 2u);
    EXPECT_EQ(table.entries.begin()->first.first, "Glass") << "capitals stand before small letters";
    EXPECT_EQ(table.entries.rbegin()->first.first, "z");
    EXPECT_EQ(table.valueOf("steel", "Glass"), 2.0);
    EXPECT_EQ(table.find("Glass", "Glass"), nullptr);
}

/// A value under each of some pairs, and what stands there after a rename.
static std::string renamed(std::initializer_list<std::array<const char*, 2>> pairs, const char* oldName,
                           const char* newName)
{
    CPairTable<double> table;
    CBondParametersMap bonds;
    double value = 1.0;
    for (const auto& [a, b] : pairs) {
        CBondParameters bond;
        bond.bondRadius = value;
        bonds.set(CBondParametersMap::pairKey(a, b), bond);
        table.set(a, b, value++);
    }
    table.rename(oldName, newName);
    bonds.rename(oldName, newName);
    std::string text;
    std::string bondText;
    for (const auto& [pair, number] : table.entries)
        text += pair.first + " <> " + pair.second + "=" + std::to_string(int(number)) + " ";
    for (const auto& [key, bond] : bonds.entries)
        bondText += key + "=" + std::to_string(int(bond.bondRadius)) + " ";
    EXPECT_EQ(text, bondText) << "both kinds of table are renamed alike";
    return text;
}

TEST(ParameterRecords, aRenameMovesEveryPairOfTheName)
{
    EXPECT_EQ(renamed({{"a", "a"}, {"a", "b"}, {"b", "c"}}, "a", "z"), "b <> c=3 b <> z=2 z <> z=1 ");
    EXPECT_EQ(renamed({{"a", "b"}}, "c", "z"), "a <> b=1 ");
    EXPECT_EQ(renamed({{"a", "b"}, {"b", "z"}}, "a", "z"), "b <> z=1 ") << "what is renamed wins";
    EXPECT_EQ(renamed({{"a", "b"}}, "a", "a"), "a <> b=1 ");
}

TEST(ParameterRecords, oneRenameGoesThroughAllModelsAndForces)
{
    CPhysicsModels physics;
    const auto add = [&](auto model) -> auto&
    {
        auto& added = *model;
        physics.addContactModel(std::move(model), CPhysicsModels::atEnd);
        return added.parameters;
    };
    auto& cohesion = add(std::make_unique<CCohesionV2ContactModel>(0));
    auto& jkr = add(std::make_unique<CJkrContactModel>(0));
    auto& hysteretic = add(std::make_unique<CHystereticContactModel>(0));
    auto& edinburgh = add(std::make_unique<CEdinburghCohesionContactModel>(1));
    auto& leeds = add(std::make_unique<CLeedsAdhesionContactModel>(1));
    auto& bonds = add(std::make_unique<CParallelBondContactModel>(0));
    auto& heat = add(std::make_unique<CHeatConductionModel>(0));
    auto& wear = add(std::make_unique<CArchardContactModel>(1));
    auto& planes = add(std::make_unique<CMovingPlaneContactModel>(1));
    auto force = std::make_unique<CHeatConductionExternalForce>();
    auto& capacities = force->parameters.heatCapacities;
    physics.addExternalForce(std::move(force), CPhysicsModels::atEnd);

    // One word for a material, a type and a geometry: only the tables of the kind that is renamed follow.
    const std::string x = "x";
    cohesion.energyDensity.set(x, x, 1);
    jkr.surfaceEnergy.set(x, x, 1);
    hysteretic.interactions.set(x, x, {});
    hysteretic.yields.set(x, 1);
    edinburgh.pairs.set(x, x, {});
    leeds.pairs.set(x, x, {});
    bonds.bondParameters.set("x <> x", {});
    heat.conductivities.set(x, 1);
    wear.wearConstants.set(x, 1);
    capacities.set(x, 1);
    planes.planes[3].display = true;

    physics.materialRenamed(x, "m");
    EXPECT_TRUE(cohesion.energyDensity.find("m", "m") && jkr.surfaceEnergy.find("m", "m") &&
                hysteretic.interactions.find("m", "m") && edinburgh.pairs.find("m", "m") &&
                leeds.pairs.find("m", "m") && bonds.bondParameters.find("m <> m"));
    EXPECT_TRUE(hysteretic.yields.entries.count(x) && heat.conductivities.entries.count(x) &&
                wear.wearConstants.entries.count(x) && capacities.entries.count(x));
    physics.particleTypeRenamed(x, "p");
    EXPECT_TRUE(hysteretic.yields.entries.count("p") && heat.conductivities.entries.count("p") &&
                wear.wearConstants.entries.count(x) && capacities.entries.count("p"));
    physics.geometryRenamed(x, "g");
    physics.geometryRenamed("p", "q"); // yields are of geometry too
    EXPECT_TRUE(hysteretic.yields.entries.count("q") && wear.wearConstants.entries.count("g") &&
                heat.conductivities.entries.count("p"));

    for (const auto* chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        for (const auto& model : *chain)
            model->reset();
    EXPECT_EQ(cohesion.energyDensity.entries.size() + jkr.surfaceEnergy.entries.size() +
                  hysteretic.interactions.entries.size() + hysteretic.yields.entries.size() +
                  edinburgh.pairs.entries.size() + leeds.pairs.entries.size() + bonds.bondParameters.entries.size() +
                  heat.conductivities.entries.size() + wear.wearConstants.entries.size() + planes.planes.size(),
              0u);
}

TEST(ParameterRecords, bondsDifferByAnyOfTheirNumbers)
{
    CBondParameters one;
    CBondParameters two;
    EXPECT_TRUE(one == two);
    for (double CBondParameters::*number :
         {&CBondParameters::normalStiffness, &CBondParameters::shearStiffness, &CBondParameters::normalStrength,
          &CBondParameters::shearStrength, &CBondParameters::bondRadius}) {
        two = one;
        two.*number = 1e-300;
        EXPECT_TRUE(one != two);
    }
}

} // namespace NBrenmark
