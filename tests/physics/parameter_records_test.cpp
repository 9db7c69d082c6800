// Parameter records: what a new one holds, how one is handed over, and how a rename goes through.
#include "physics/parameter_records.h"
#include "physics/physics_models.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(ParameterRecords, startFromValuesThatDoNoHarm)
{
    EXPECT_EQ(CLinearSpringContactModel(0).parameters.characteristicVelocity, 0.0);
    EXPECT_EQ(CTribochargingContactModel(0).parameters.alpha, 1.0);
    EXPECT_EQ(CElectrostaticsExternalForce(nullptr).parameters.screeningDistance, 5.0);
    const CParallelBondContactModel bonds(0);
    EXPECT_EQ(bonds.parameters.formationStartTime, 0.0);
    EXPECT_EQ(bonds.parameters.formationEndTime, 0.0);
    EXPECT_EQ(bonds.parameters.state, 0u);
    EXPECT_TRUE(bonds.parameters.torqueFeedback);
    // A pair without an entry.
    const SEdinburghPair edinburgh = CEdinburghCohesionContactModel(0).parameters.pairs.valueOf("a", "b");
    EXPECT_EQ(edinburgh.slopeExponential, 1.0);
    EXPECT_EQ(edinburgh.constPullOffForce + edinburgh.surfaceEnergy + edinburgh.contactPlasticityRatio +
                  edinburgh.tensileExponential + edinburgh.tangentStiffMultiplier,
              0.0);
    EXPECT_EQ(CJkrContactModel(0).parameters.surfaceEnergy.valueOf("a", "b"), 0.0);
    EXPECT_EQ(CHeatConductionModel(0).parameters.conductivities.valueOf("a"), 0.0);
}

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
    table.set("\xC3\x84", "z", 3.0); // a letter beyond 7 bits comes after z
    ASSERT_EQ(table.entries.size(), 2u);
    EXPECT_EQ(table.entries.begin()->first.first, "Glass") << "capitals stand before small letters";
    EXPECT_EQ(table.entries.rbegin()->first.first, "z");
    EXPECT_EQ(table.valueOf("steel", "Glass"), 2.0);
    EXPECT_EQ(table.find("Glass", "Glass"), nullptr);

    EXPECT_EQ(CBondParametersMap::pairKey("steel", "Glass"), "Glass <> steel");
    EXPECT_EQ(CBondParametersMap::pairKey("a", "a"), "a <> a");
    EXPECT_EQ(CBondParametersMap::namesOf("Glass <> steel"),
              std::make_pair(std::string("Glass"), std::string("steel")));
    EXPECT_FALSE(CBondParametersMap::namesOf("Glass<>steel").has_value());
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

TEST(ParameterRecords, areTakenOnlyByTheModelsThatExpectThem)
{
    std::vector<std::unique_ptr<IParameterSupport>> all;
    for (const SContactModelKind& kind : contactModelKinds())
        all.push_back(kind.make(0));
    for (const SExternalForceKind& kind : externalForceKinds())
        all.push_back(kind.make(nullptr));
    int taken = 0;
    for (const auto& giver : all) {
        const std::unique_ptr<IParamData> record = giver->paramData();
        if (record == nullptr) {
            EXPECT_EQ(giver->paramDataType(), typeid(void));
            continue;
        }
        EXPECT_EQ(giver->paramDataType(), typeid(*record));
        for (const auto& taker : all) {
            const bool expected = taker->paramDataType() == giver->paramDataType();
            EXPECT_EQ(taker->setParamData(*record), expected);
            taken += expected;
        }
    }
    // Fifteen models and two forces, of which two have no record and two share one.
    EXPECT_EQ(taken, 13 + 4);
}

TEST(ParameterRecords, areCopiesOfTheirOwn)
{
    CParallelBondContactModel model(0);
    model.parameters.bondParameters.set("a <> b", {});
    model.parameters.formationEndTime = 2.5;
    const std::unique_ptr<IParamData> record = model.paramData();
    model.reset();
    auto& bonds = dynamic_cast<CParallelBondContactModelParamData&>(*record);
    EXPECT_EQ(bonds.bondParameters.names(), std::vector<std::string>{"a <> b"});
    EXPECT_EQ(bonds.formationEndTime, 2.5);
    CParallelBondContactModelParamData other(1);
    EXPECT_TRUE(other.copyFrom(bonds));
    EXPECT_TRUE(other.enableRollingFriction) << "the whole record";
    EXPECT_FALSE(other.copyFrom(*CJkrContactModel(0).paramData()));
    EXPECT_EQ(other.bondParameters.entries.size(), 1u);

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
