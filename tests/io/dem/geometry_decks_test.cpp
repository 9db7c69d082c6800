// The sample decks with moving walls and with factories. The expected numbers were taken out of their bytes
// by a script of its own, which shares nothing with this library.
#include "io/dem/dem_testing.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"
#include "support/log_capture.h"

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
    const GeometryGroups& groups = deck.frame.creator.geometryGroups;
    const auto& hopper = dynamic_cast<const CBox&>(*groups.at(0));
    EXPECT_EQ(hopper.displayedName, "Hopper");
    EXPECT_EQ(hopper.uniqueId, 40u);
    EXPECT_EQ(hopper.materialName, "Steel");
    EXPECT_FALSE(hopper.isStatic);
    expectPoint(hopper.bounds.upper, 1.0, 0.75, 0.375);
    EXPECT_EQ(hopper.momentOfInertia.values, (std::array<double, 6>{1, 2, 3, 0.1, 0.2, 0.3}));
    expectPoint(hopper.originalCoords[0], -0.5, 0.5, 0.5);
    expectPoint(hopper.coords[0], 0.0, -0.25, 0.375);
    EXPECT_EQ(hopper.triangleNodes.size(), 12u);
    EXPECT_EQ(hopper.enclosedMagnitude, 1.0);
    EXPECT_EQ(hopper.surfaceMagnitude, 6.0);
    expectPoint(hopper.velocity, 1, 2, 3);
    ASSERT_EQ(hopper.motionHistory.size(), 1u);
    EXPECT_EQ(hopper.motionHistory[0].angularVelocity.y, -0.2895440692501988);
    EXPECT_EQ(hopper.motionHistory[0].pointOfAction.z, -0.4811353628769039);
    ASSERT_EQ(hopper.kinematics.actions.size(), 3u);
    const auto& shake = dynamic_cast<const CSinusoidalTranslation&>(*hopper.kinematics.actions[1]);
    EXPECT_EQ(shake.name, "shake");
    EXPECT_EQ(shake.displacementMagnitude, 1.0);
    const auto& turn = dynamic_cast<const CLinearRotation&>(*hopper.kinematics.actions[2]);
    EXPECT_EQ(turn.startTime, 1.5);
    expectPoint(turn.angularVelocity, 0, 0, 3);
    const auto& drum = dynamic_cast<const CCylinder&>(*groups.at(1));
    EXPECT_EQ(drum.detail, 8u);
    EXPECT_EQ(drum.vertexIds.back(), 25u);
    EXPECT_EQ(drum.enclosedMagnitude, 0.4124789556921527);
    const auto& plate = dynamic_cast<const CPolygon&>(*groups.at(2));
    expectPoint(plate.centre, 0, 0, -1);
    EXPECT_EQ(plate.lengthSide1, 2.0);
    const auto& blade = dynamic_cast<const CCADGeometry&>(*groups.at(3));
    EXPECT_EQ(blade.importedCoords.size(), 4u);
    EXPECT_TRUE(groups.at(4)->isStatic);
    EXPECT_EQ(groups.at(4)->uniqueId, 44u);
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
    const auto& a = dynamic_cast<const CDynamicParticleFactory&>(*first[0]);
    EXPECT_EQ(a.name, "A");
    EXPECT_EQ(a.sectionName, "Hopper");
    EXPECT_EQ(a.maxAttempts, 30u);
    EXPECT_EQ(a.counters, (std::array<quint32, 4>{4, 3, 2, 0}));
    EXPECT_EQ(a.numToCreate, 500u);
    EXPECT_EQ(a.massToCreate, 12.5);
    EXPECT_EQ(a.massCreation, hasGoals);
    EXPECT_EQ(a.rateChangeTime, hasGoals ? 0.5 : 0.0);
    EXPECT_EQ(dynamic_cast<const CFixedFactoryVelocity&>(*a.velocity).value.z, -1.5);
    EXPECT_EQ(dynamic_cast<const CFixedFactorySize&>(*a.sizes.at("Ball")).sizeDistribution.value, 1.25);
    EXPECT_NE(dynamic_cast<const CRandomFactoryOrientation*>(a.orientation.get()), nullptr);
    const auto& walk = dynamic_cast<const CRandomFactoryPosition&>(*a.position);
    EXPECT_EQ(walk.style, 1u);
    EXPECT_EQ(walk.maxAngle, 1.5);
    expectPoint(walk.seedPosition, 0.5, 0.25, 0.125);
    const auto& b = dynamic_cast<const CDynamicParticleFactory&>(*first[1]);
    EXPECT_TRUE(b.unlimited);
    EXPECT_EQ(dynamic_cast<const CLinearFactoryAngVel&>(*b.angVel).endVelocity.z, 2.0);
    const auto& lattice = dynamic_cast<const CCubicFactoryPosition&>(*b.position);
    expectPoint(lattice.start, 1, 1, 1);
    expectPoint(lattice.rotation, 0.1, 0.2, 0.3);
    expectPoint(lattice.cursor3, 0.25, 0.5, 0.75);
    const auto& c = dynamic_cast<const CStaticParticleFactory&>(*first[2]);
    EXPECT_TRUE(c.completed);
    EXPECT_FALSE(c.fillShape);
    EXPECT_EQ(c.numToCreate, 502u);
    EXPECT_EQ(c.massToCreate, hasGoals ? 14.5 : 0.0);
    EXPECT_EQ(c.type->typeNames(), (std::vector<QString>{"Ball", "Rod"}));
    const auto& normal = dynamic_cast<const CNormalFactorySize&>(*c.sizes.at("Rod"));
    EXPECT_EQ(normal.sizeDistribution.upperCap, 1.25);
    EXPECT_TRUE(normal.sizeDistribution.capped);
    EXPECT_FALSE(normal.sizeDistribution.radiusScaling);
    const auto& d = *second[0];
    EXPECT_TRUE(dynamic_cast<const CLogNormalFactorySize&>(*d.sizes.at("Ball")).sizeDistribution.logMean);
    EXPECT_EQ(dynamic_cast<const CNormalFactoryVelocity&>(*d.velocity).direction.z, -1.0);
    const auto& e = *second[1];
    EXPECT_EQ(dynamic_cast<const CSprayFactoryVelocity&>(*e.velocity).sprayAngle, 0.5);
    const auto& bands = dynamic_cast<const CUserDefinedFactorySize&>(*e.sizes.at("Rod"));
    EXPECT_EQ(bands.sizeDistribution.bands.at(1.5), 100.0);
    EXPECT_EQ(e.electrostatic.fixedValue, 1e-9);

    deck.readTimestep(hasGoals ? 10318 : 9870);
    EXPECT_EQ(a.creationCount, 8u);
    EXPECT_EQ(a.createdSinceRateChange, 5u);
    EXPECT_EQ(a.accounting.massCreated, hasGoals ? 1.5 : 0.0);
    EXPECT_EQ(a.accounting.massSinceRateChange, hasGoals ? 0.5 : 0.0);
    EXPECT_EQ(a.counters, (std::array<quint32, 4>{1, 2, 3, 4}));
    expectPoint(walk.seedPosition, 0.1, 0.2, 0.3);
    expectPoint(walk.seedVector, 0, 1, 0);
    EXPECT_EQ(dynamic_cast<const CBinaryFactoryType&>(*c.type).next, 1);
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
