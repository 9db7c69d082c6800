// Contact models and external forces in the legacy family: bytes put together by hand, and what comes of them.
#include "io/dem/dem_testing.h"
#include "physics/parameter_records.h"
#include "physics/phantoms.h"
#include "results/physics_linked_property_manager.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

// ---------------------------------------------------------------- records

/// Reads a record, which must take all bytes and not one more.
template <class TRecord>
static TRecord recordOf(const CBytes& bytes, quint32 version = makeVersion(25, 0, 3))
{
    TRecord record = [] {
        if constexpr (std::is_default_constructible_v<TRecord>)
            return TRecord();
        else
            return TRecord(quint32(eSphereSphereModel));
    }();
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(record, bytes + CBytes::garbage(80), version), bytes.size());
    return record;
}

TEST(DemPhysics, readsAndWritesTablesByPair)
{
    // Stored the wrong way round: a pair is the same in either order.
    const CBytes stored = CBytes().i32(2).text("steel").text("glass").f64(0.5).text("glass").text("glass").f64(-7);
    const CBytes written = CBytes().i32(2).text("glass").text("glass").f64(-7).text("glass").text("steel").f64(0.5);
    const auto jkr = recordOf<CJkrContactModelParamData>(stored);
    EXPECT_EQ(jkr.surfaceEnergy.entries.size(), 2u);
    EXPECT_EQ(jkr.surfaceEnergy.valueOf("glass", "steel"), 0.5);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(jkr), written);
    const auto cohesion = recordOf<CCohesionContactModelParamData>(stored);
    EXPECT_EQ(cohesion.energyDensity.valueOf("glass", "glass"), -7);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(cohesion), written);

    const CBytes hysteretic =
        CBytes().i32(1).text("glass").text("steel").f64(0.25).f64(2e6).i32(1).text("Grain").f64(3e8);
    const auto spring = recordOf<CHystereticContactModelParamData>(hysteretic);
    EXPECT_EQ(spring.interactions.valueOf("steel", "glass").damping, 0.25);
    EXPECT_EQ(spring.interactions.valueOf("steel", "glass").stiffness, 2e6);
    EXPECT_EQ(spring.yields.valueOf("Grain"), 3e8);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(spring), hysteretic);
}

TEST(DemPhysics, readsPairsThatEarlyDecksJoin)
{
    struct SCase
    {
        const char* stored;
        const char* first;
        const char* second;
    };
    const SCase cases[] = {
        {"steel - glass", "glass", "steel"},
        {"glass + steel", "glass", "steel"},
        {"steel <> glass", "glass", "steel"},
        {"glass-steel - sand", "glass-steel", "sand"},
        {"a + b - c", "a", "b - c"}, // the first joint counts
        {"glass", "", "glass"},
    };
    for (const SCase& c : cases) {
        const CBytes stored = CBytes().i32(1).text(c.stored).f64(0.5);
        const auto record = recordOf<CCohesionContactModelParamData>(stored, makeVersion(13, 0, 9));
        ASSERT_EQ(record.energyDensity.entries.size(), 1u);
        EXPECT_EQ(record.energyDensity.entries.begin()->first.first, c.first) << c.stored;
        EXPECT_EQ(record.energyDensity.entries.begin()->first.second, c.second) << c.stored;
        recordOf<CJkrContactModelParamData>(stored, makeVersion(19, 255, 255));
    }
    // The gap: from 20.0.0 on both names stand by themselves.
    const CBytes two = CBytes().i32(1).text("steel - glass").text("sand").f64(0.5);
    EXPECT_EQ(
        recordOf<CJkrContactModelParamData>(two, makeVersion(20, 0, 0)).surfaceEnergy.valueOf("sand", "steel - glass"),
        0.5);
}

TEST(DemPhysics, readsAndWritesTablesByNameAndSingleNumbers)
{
    const CBytes names = CBytes().i32(2).text("a").f64(1).text(QString::fromUtf8("ß")).f64(2);
    const auto heat = recordOf<CHeatConductionModelParamData>(names);
    EXPECT_EQ(heat.conductivities.valueOf("\xc3\x9f"), 2);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(heat), names);
    const auto wear = recordOf<CArchardContactModelParamData>(names);
    EXPECT_EQ(wear.wearConstants.valueOf("a"), 1);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(wear), names);
    const auto capacity = recordOf<CHeatConductionExtForceParamData>(names);
    EXPECT_EQ(capacity.heatCapacities.valueOf("a"), 1);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(capacity), names);

    const CBytes number = CBytes().f64(3.5);
    EXPECT_EQ(recordOf<CLinearSpringContactModelParamData>(number).characteristicVelocity, 3.5);
    EXPECT_EQ(recordOf<CTribochargingContactModelParamData>(number).alpha, 3.5);
    EXPECT_EQ(recordOf<CElectrostaticsExtForceParamData>(number).screeningDistance, 3.5);
    // Nothing at all.
    EXPECT_TRUE(recordOf<CHertzMindlinNoSlipContactModelParamData>(CBytes()).enableRollingFriction);
    EXPECT_TRUE(recordOf<CEdinburghCohesionContactModelParamData>(CBytes()).pairs.entries.empty());
    EXPECT_TRUE(recordOf<CLeedsAdhesionContactModelParamData>(CBytes()).pairs.entries.empty());
}

TEST(DemPhysics, readsBondsUnderTheSortedPair)
{
    struct SCase
    {
        quint32 version;
        const char* stored;
        const char* key;
    };
    const SCase cases[] = {
        {makeVersion(25, 0, 3), "steel - glass", "glass <> steel"},
        {makeVersion(25, 0, 3), "steel + glass", "glass <> steel"},
        {makeVersion(30, 0, 17), "steel <> glass", "glass <> steel"},
        {makeVersion(30, 0, 17), "glass", "glass"}, // no pair
        {makeVersion(30, 0, 18), "steel <> glass", "steel <> glass"},
    };
    for (const SCase& c : cases) {
        const CBytes stored = CBytes().i32(1).text(c.stored).f64s({1, 2, 3, 4, 5}).f64(0.25).f64(0.5).i32(2);
        const auto record = recordOf<CParallelBondContactModelParamData>(stored, c.version);
        ASSERT_EQ(record.bondParameters.names(), std::vector<std::string>{c.key}) << c.stored;
        const CBondParameters& bond = *record.bondParameters.find(c.key);
        EXPECT_EQ(bond.normalStiffness, 1);
        EXPECT_EQ(bond.shearStiffness, 2);
        EXPECT_EQ(bond.normalStrength, 3);
        EXPECT_EQ(bond.shearStrength, 4);
        EXPECT_EQ(bond.bondRadius, 5);
        EXPECT_EQ(record.formationStartTime, 0.25);
        EXPECT_EQ(record.formationEndTime, 0.5);
        EXPECT_EQ(record.state, 2u);
        EXPECT_TRUE(record.torqueFeedback) << "no deck of this family says otherwise";
    }
}

TEST(DemPhysics, carriesTheEndsOfMovingPlanesAndReportsTheRest)
{
    const CBytes points = CBytes().i32(1).i32(4).f64s({9, 9, 9});
    const CBytes names = CBytes().i32(2).i32(4).text("a").text("b").i32(5).text("c").text("d");
    const CBytes planes = CBytes().i32(2).i32(7).f64s({1, 2, 3, 4, 5, 6}).i32(3).f64s({0, 0, 0, 0, 0, 1});
    struct SCase
    {
        quint32 version;
        CBytes bytes;
        const char* told;
    };
    const CBytes none = CBytes().i32(0);
    const SCase cases[] = {
        {makeVersion(25, 0, 3), points + planes, "1 row of"},
        {makeVersion(27, 0, 0), none + planes, ""},
        {makeVersion(27, 0, 1), points + names + planes, "3 rows of"},
        {makeVersion(27, 0, 1), none + none + planes, ""},
    };
    for (const SCase& c : cases) {
        CLogCapture log;
        const auto record = recordOf<CMovingPlaneContactModelParamData>(c.bytes, c.version);
        EXPECT_EQ(log.count(), *c.told == 0 ? 0u : 1u);
        EXPECT_NE(log.text().find(c.told), std::string::npos) << log.text();
        ASSERT_EQ(record.planes.size(), 2u);
        EXPECT_EQ(record.planes.at(7).startPoint.y, 2);
        EXPECT_EQ(record.planes.at(7).endPoint.x, 4);
        EXPECT_EQ(record.planes.at(3).endPoint.z, 1);
        EXPECT_FALSE(record.planes.at(3).display);
    }
    CMovingPlaneContactModelParamData record(eSphereGeometryModel);
    record.planes[3].endPoint = C3DPoint(0, 0, 1);
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(record), none + none + CBytes().i32(1).i32(3).f64s({0, 0, 0, 0, 0, 1}));
}

TEST(DemPhysics, believesNoCountOfATable)
{
    const auto expectRefused = [](auto record, const CBytes& bytes) {
        EXPECT_THROW(consumedBy<CDemCreatorDataReader>(record, bytes, makeVersion(25, 0, 3)), std::length_error);
    };
    for (const qint32 count : {2, 0x7FFFFFFF, -1}) {
        const CBytes pairs = CBytes().i32(count).text("a").text("b").f64(1);
        expectRefused(CJkrContactModelParamData(0), pairs);
        expectRefused(CHystereticContactModelParamData(0), pairs);
        expectRefused(CHeatConductionModelParamData(), CBytes().i32(count).text("a").f64(1));
        expectRefused(CParallelBondContactModelParamData(0), CBytes().i32(count).text("a").f64s({1, 2, 3, 4, 5}));
        expectRefused(CMovingPlaneContactModelParamData(1), CBytes().i32(0).i32(count).i32(1).f64s({1, 2, 3, 4, 5, 6}));
    }
}

// ---------------------------------------------------------------- chains

static std::string namesOf(const CPhysicsModels::Chain& chain)
{
    std::string names;
    for (const auto& model : chain)
        names += model->modelName().toStdString() + "/" + std::to_string(model->source) + " ";
    return names;
}

TEST(DemPhysics, keepsTheOrderOfChainsAndWhatIsNotKnownHere)
{
    const CBytes cohesive = CBytes().i32(1).text("a").text("a").f64(2.5);
    SDeckCreator stored;
    stored.particleParticle = {{"Relative Wear", 0},
                               {"Sticky", 1},
                               {"Cohesion", 2, cohesive},
                               {"Linear Spring", 0, CBytes().f64(1)},
                               {"Linear Spring", 0, CBytes().f64(2)}};
    stored.particleGeometry = {{"hertz-mindlin (no slip)", 0}, {"Tribocharging", 1}};
    stored.forces = {{"none", 0}, {"Wind", 1}, {"Electrostatics", 0, CBytes().f64(6)}};
    COwnFrame own;
    CPhysicsModels& physics = own.frame.creator.physicsModels;
    clearLogOnceMemory();
    CLogCapture log;
    const CBytes bytes = physicsBytes(stored);
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(physics, bytes + CBytes::garbage(40), makeVersion(25, 0, 3)),
              bytes.size());
    EXPECT_EQ(namesOf(physics.sphereSphereModels),
              "Relative Wear/0 Sticky/1 Linear Cohesion/0 Linear Spring/0 Linear Spring/0 ");
    EXPECT_EQ(namesOf(physics.sphereGeometryModels), "Hertz-Mindlin (no slip)/0 Tribocharging/1 ");
    ASSERT_EQ(physics.externalForceCount(), 2u);
    EXPECT_EQ(physics.externalForces[0]->modelName(), "Wind");
    EXPECT_EQ(dynamic_cast<CElectrostaticsExternalForce&>(*physics.externalForces[1]).parameters.screeningDistance, 6);
    EXPECT_EQ(
        dynamic_cast<CLinearSpringContactModel&>(*physics.sphereSphereModels[4]).parameters.characteristicVelocity, 2);
    EXPECT_FALSE(physics.hasTribocharging()) << "a plug-in that has the name of a built-in model";
    EXPECT_FALSE(own.frame.creator.modified);
    EXPECT_FALSE(physics.loading);
    EXPECT_EQ(
        log.text(),
        "WARNING Legacy read: contact model \"Sticky\" isn't known here; its name and its place are kept.\n"
        "WARNING Legacy read: contact model \"Tribocharging\" isn't known here; its name and its place are kept.\n"
        "WARNING Legacy read: external force \"Wind\" isn't known here; its name and its place are kept.\n");

    // Written, all of it stands under today's names.
    stored.particleParticle[2] = {"Linear Cohesion", 0, cohesive};
    stored.particleGeometry[0].name = "Hertz-Mindlin (no slip)";
    stored.forces.erase(stored.forces.begin());
    EXPECT_EQ(writtenBy<CDemCreatorDataWriter>(physics), physicsBytes(stored));
}

TEST(DemPhysics, aModelThatClashesIsLeftOutAndTheRestIsCarried)
{
    CPhysicsLinkedCustomPropertyManager particle("Particle Properties", eParticleOwner);
    auto own = std::make_unique<CCustomPropertyMetaData>("Charge", eDoubleProperty, 4u, 10u);
    particle.addProperty(own);
    SDeckCreator stored;
    stored.particleParticle = {{"Tribocharging", 0, CBytes().f64(1)}, {"Linear Spring", 0, CBytes().f64(2)}};
    const CBytes bytes = physicsBytes(stored);
    CCreatorData creator{SPropertyManagers()};
    creator.physicsModels.addListener(&particle);
    CLogCapture log;
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(creator.physicsModels, bytes, makeVersion(25, 0, 3)), bytes.size());
    EXPECT_EQ(namesOf(creator.physicsModels.sphereSphereModels), "Linear Spring/0 ");
    EXPECT_NE(log.text().find("Will clash with already existing properties"), std::string::npos);
}

} // namespace NBrenmark
