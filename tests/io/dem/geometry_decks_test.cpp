// The sample decks with moving walls and with factories. The expected numbers were taken out of their bytes
// by a script of its own, which shares nothing with this library.
#include "io/dem/dem_testing.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/cad_geometry.h"
#include "model/kinematics/linear_rotation.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

namespace NBrenmark {

struct SDeckBytes
{
    const char* name;
    quint32 groups;
    std::vector<qint64> blocks; ///< where the timesteps begin, and the file's end
};

TEST(GeometryDecks, readToTheirLastByte)
{
    const SDeckBytes decks[] = {
        {"moving-walls-26.dem", 5, {10778, 17069, 23526, 29847}},
        {"factories-25.dem", 2, {6346, 10318, 14320}},
        {"old-22.0.0.dem", 2, {6050, 9870, 13720}},
        {"old-21.0.4.dem", 4, {7424, 11729, 16064}},
    };
    for (const SDeckBytes& c : decks) {
        const CLogCapture log;
        CSampleDeck deck(c.name);
        EXPECT_EQ(deck.readCreator(), c.blocks[0]) << c.name;
        EXPECT_EQ(deck.frame.creator.geometryGroups.count(), c.groups) << c.name;
        for (std::size_t block = 0; block + 1 < c.blocks.size(); ++block)
            EXPECT_EQ(deck.readTimestep(c.blocks[block]), c.blocks[block + 1]) << c.name;
        EXPECT_EQ(log.text().find("Geometry"), std::string::npos) << log.text();
    }
}

template <class TPoint>
static void expectPoint(const TPoint& found, double x, double y, double z)
{
    EXPECT_EQ(found.x, x);
    EXPECT_EQ(found.y, y);
    EXPECT_EQ(found.z, z);
}

TEST(MovingWallsDeck, holdsItsWalls)
{
    CSampleDeck deck("moving-walls-26.dem");
    deck.readCreator();
    GeometryGroups& groups = deck.frame.creator.geometryGroups;
    expectText(
        groups,
        "Hopper/index 0; Hopper/shape \"box\"; Hopper/uniqueId 40; Hopper/materialName \"Steel\"; "
        "Hopper/isStatic false; Hopper/bounds/upper (1, 0.75, 0.375); "
        "Hopper/momentOfInertia f64[6] 1 2 3 0.1 0.2 0.3; Hopper/enclosedMagnitude 1; "
        "Hopper/surfaceMagnitude 6; Hopper/velocity (1, 2, 3); "
        "Hopper/motionHistory/0/angularVelocity (0.0011085547122109732, -0.2895440692501988, -1.1160663030644142); "
        "Hopper/motionHistory/0/pointOfAction (-0.012882756745794295, -0.3783614642079181, -0.4811353628769039); "
        "Hopper/motions/shake/index 1; Hopper/motions/shake/displacementMagnitude 1; "
        "Hopper/motions/turn/index 2; Hopper/motions/turn/startTime 1.5; "
        "Hopper/motions/turn/angularVelocity (0, 0, 3); Drum/cylinder/detail 8; "
        "Drum/enclosedMagnitude 0.4124789556921527; Plate/polygon/centre (0, 0, -1); "
        "Plate/polygon/lengthSide1 2; Gate/isStatic true; Gate/uniqueId 44");
    const CGeometryGroup& hopper = *groups.at(0);
    expectPoint(hopper.originalCoords[0], -0.5, 0.5, 0.5);
    expectPoint(hopper.coords[0], 0.0, -0.25, 0.375);
    EXPECT_EQ(hopper.triangleNodes.size(), 12u);
    EXPECT_EQ(groups.at(1)->vertexIds.back(), 25u);
    EXPECT_EQ(dynamic_cast<const CCADGeometry&>(*groups.at(3)).importedCoords.size(), 4u);
}

TEST(MovingWallsDeck, turnsOneStaticAndLetsAnotherMove)
{
    CSampleDeck deck("moving-walls-26.dem");
    deck.readCreator();
    const CGeometryGroup& hopper = *deck.frame.creator.geometryGroups.at(0);
    const CGeometryGroup& gate = *deck.frame.creator.geometryGroups.at(4);
    deck.readTimestep(10778);
    EXPECT_EQ(hopper.triangleForces[0][0], -1.5603521086836527);
    EXPECT_EQ(hopper.triangleForces.back()[6], -3.809890377851563);
    EXPECT_EQ(hopper.motionHistory.size(), 2u);
    EXPECT_TRUE(gate.isStatic);
    expectPoint(gate.coords[0], -1.0, -0.5, -1.0);

    deck.readTimestep(17069);
    expectPoint(hopper.coords[0], 1.0, -0.25, -0.125);
    expectPoint(hopper.velocity, 0.1, 0.2, 0.55);
    EXPECT_EQ(hopper.time, 0.25);
    const auto& turn = dynamic_cast<const CLinearRotation&>(*hopper.kinematics.actions[2]);
    expectPoint(turn.pointOfAction, 1.0, 2.0, 3.25);
    EXPECT_EQ(turn.angularAcceleration.z, 0.5);
    EXPECT_FALSE(gate.isStatic);
    expectPoint(gate.coords[0], 2.0, -0.75, -1.625);
    expectPoint(gate.originalCoords[0], -1.0, -0.5, -1.0);

    deck.readTimestep(23526);
    EXPECT_TRUE(hopper.isStatic);
    expectPoint(hopper.coords[0], -0.5, 0.5, 0.5);
    EXPECT_EQ(hopper.triangleForces[0][0], -1.7497654730546974);
    EXPECT_TRUE(hopper.transform.isIdentity());

    deck.readTimestep(10778); // and back to the first
    EXPECT_FALSE(hopper.isStatic);
    expectPoint(hopper.coords[0], 0.0, -0.25, 0.375);
    EXPECT_TRUE(gate.isStatic);
    expectPoint(gate.coords[0], -1.0, -0.5, -1.0);
}

/// What both decks with factories hold; the later one their goals as well.
static void expectFactories(CSampleDeck& deck, bool hasGoals)
{
    const GeometryGroups& groups = deck.frame.creator.geometryGroups;
    const auto& first = groups.at(0)->factories->factories;
    const auto& second = groups.at(1)->factories->factories;
    ASSERT_EQ(first.size(), 3u);
    ASSERT_EQ(second.size(), 2u);
    expectText(*groups.at(0)->factories,
               "A/kind \"dynamic\"; A/maxAttempts 30; A/counters u32[4] 4 3 2 0; "
               "A/numToCreate 500; A/massToCreate 12.5; A/velocity/value (0, 0, -1.5); A/sizes/Ball/value 1.25; "
               "A/orientation/kind \"random\"; A/position/style 1; A/position/maxAngle 1.5; "
               "A/position/seedPosition (0.5, 0.25, 0.125); B/unlimited true; "
               "B/angularVelocity/endVelocity (0, 0, 2); B/position/kind \"cubic\"; B/position/start (1, 1, 1); "
               "B/position/rotation (0.1, 0.2, 0.3); B/position/cursor3 (0.25, 0.5, 0.75); C/kind \"static\"; "
               "C/completed true; C/fillShape false; C/numToCreate 502; C/type/names/0 \"Ball\"; "
               "C/type/names/1 \"Rod\"; C/sizes/Rod/upperCap 1.25; C/sizes/Rod/capped true; "
               "C/sizes/Rod/radiusScaling false");
    expectText(*groups.at(0)->factories, hasGoals ? "A/massCreation true; A/rateChangeTime 0.5; C/massToCreate 14.5"
                                                  : "A/massCreation false; A/rateChangeTime 0; C/massToCreate 0");
    expectText(*groups.at(1)->factories,
               "D/sizes/Ball/logMean true; D/velocity/direction (0, 0, -1); E/velocity/sprayAngle 0.5; "
               "E/sizes/Rod/bands f64[1,2] (1.5, 100)");
    EXPECT_EQ(first[0]->sectionName, "Hopper");
    EXPECT_EQ(second[1]->electrostatic.fixedValue, 1e-9);

    deck.readTimestep(hasGoals ? 10318 : 9870);
    expectText(*groups.at(0)->factories,
               "A/creationCount 8; A/createdSinceRateChange 5; A/counters u32[4] 1 2 3 4; "
               "A/position/seedPosition (0.1, 0.2, 0.3); A/position/seedVector (0, 1, 0); C/type/next 1");
    expectText(*groups.at(0)->factories, hasGoals ? "A/accounting/massCreated 1.5; A/accounting/massSinceRateChange 0.5"
                                                  : "A/accounting/massCreated 0; A/accounting/massSinceRateChange 0");
    EXPECT_EQ(second[1]->creationCount, 9u);
}

TEST(FactoriesDeck, holdsEveryKindOfParameter)
{
    CSampleDeck late("factories-25.dem");
    late.readCreator();
    expectFactories(late, true);
    CSampleDeck early("old-22.0.0.dem");
    early.readCreator();
    expectFactories(early, false);
}

} // namespace NBrenmark
