// Geometry groups and their motions, in a creator block and in a timestep: what each version stores and
// not one byte more, damaged anywhere, and written as the builder says.
#include "core/deck/application_state.h"
#include "core/stop_flag.h"
#include "io/dem/dem_testing.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/linear_translation.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace NBrenmark {

static constexpr quint32 current = makeVersion(30, 0, 20);

/// Reads a list in creator form; throws, or stops where the list ends.
static void readGroups(COwnFrame& own, const std::vector<SDeckGroup>& stored, quint32 version)
{
    const CBytes bytes = groupListBytes(version, stored);
    ASSERT_EQ(consumedBy<CDemCreatorDataReader>(own.frame.creator.geometryGroups, bytes + CBytes::garbage(64), version),
              bytes.size())
        << versionText(version).toStdString();
}

static CBytes stateBytes(quint32 version, const std::vector<SDeckGroup>& groups)
{
    CBytes bytes;
    for (const SDeckGroup& group : groups)
        bytes += groupStateBytes(version, group);
    return bytes;
}

static void readStates(COwnFrame& own, const std::vector<SDeckGroup>& stored, quint32 version)
{
    const CBytes bytes = stateBytes(version, stored);
    ASSERT_EQ(
        consumedBy<CDemTimestepDataReader>(own.frame.creator.geometryGroups, bytes + CBytes::garbage(64), version),
        bytes.size())
        << versionText(version).toStdString();
}

template <class TGroup = CGeometryGroup>
static TGroup& groupOf(COwnFrame& own, quint32 index)
{
    return dynamic_cast<TGroup&>(*own.frame.creator.geometryGroups.at(index));
}

template <class TMotion>
static TMotion& motionOf(COwnFrame& own, std::size_t number)
{
    return dynamic_cast<TMotion&>(*groupOf(own, 0).kinematics.actions.at(number));
}

template <class TTriple>
static void expectTriple(const TTriple& found, double x, double y, double z, const std::string& where = "")
{
    EXPECT_EQ(found.x, x) << where;
    EXPECT_EQ(found.y, y) << where;
    EXPECT_EQ(found.z, z) << where;
}

// ---------------------------------------------------------------- creator form

TEST(DemGeometryGroups, holdTheShapesAndTheCommonFields)
{
    COwnFrame own;
    readGroups(own, sampleGroups(), makeVersion(27, 0, 3));
    // Bounds and magnitudes are as stored, not as computed; an open group encloses nothing.
    expectText(groupOf(own, 0),
               "box/centre (0.5, 0.25, 0.125); box/rotations (0.1, 0.2, 0.3); box/width 2; box/length 3; "
               "box/height 4; box/sidesEnabled/0 true; box/sidesEnabled/1 false; box/sidesEnabled/2 true; "
               "box/sidesEnabled/3 false; box/sidesEnabled/4 true; box/sidesEnabled/5 true; bounds/upper (1, 2, 3); "
               "bounds/lower (-1, -2, -3); momentOfInertia f64[6] 1.5 2.5 3.5 0.5 0.25 0.125; desiredForce (1, 0, 2); "
               "materialName \"glass\"; enclosedMagnitude 8.5; surfaceMagnitude 9.5; time 0.5; gain 0.75; "
               "resetVelocities true; geometryType 1; velocity (3, 2, 1); motionHistory/0/angularVelocity (1, 2, 3); "
               "motionHistory/0/pointOfAction (4, 5, 6)");
    expectText(groupOf(own, 1),
               "cylinder/startPoint (0, 0, -0.5); cylinder/endPoint (0, 0, 0.5); cylinder/radiusStart 0.25; "
               "cylinder/radiusEnd 0.375; cylinder/detail 8; cylinder/closedStart true; cylinder/closedEnd false; "
               "geometryType 2; closed false; enclosedMagnitude 0"); // an open group encloses nothing
    expectText(groupOf(own, 2),
               "polygon/normal (0, 1, 0); polygon/centre (1, 2, 3); polygon/radius 0.75; polygon/rotation 0.1; "
               "polygon/edges 5; polygon/lengthSide1 2; polygon/lengthSide2 1; polygon/rotations (0.4, 0.5, 0.6)");
    for (const auto& factory : groupOf(own, 0).factories->factories) {
        EXPECT_EQ(factory->boundingShape, &groupOf<CBox>(own, 0));
        EXPECT_EQ(factory->sectionName, "Trichter");
    }
}

TEST(DemGeometryGroups, takeAMovingMeshToItsPlace)
{
    // The quarter turn about z takes (x, y, z) to (-y, x, z), then the shift by (0.5, 0.25, -0.125).
    COwnFrame own;
    readGroups(own, sampleGroups(), makeVersion(27, 0, 3));
    const CGeometryGroup& box = groupOf(own, 0);
    EXPECT_FALSE(box.isStatic);
    expectTriple(box.originalCoords[1], 3, 0, 0);
    expectTriple(box.coords[1], 0.5, 3.25, -0.125);
    expectTriple(box.coords[2], -2.5, 0.25, -0.125);
    EXPECT_EQ(box.vertexIds, (std::vector<quint32>{0, 1, 2, 3}));
    EXPECT_EQ(box.triangleForces[2][6], 2.75);
    EXPECT_EQ(box.triangleAreas[0], 4.5);
    EXPECT_EQ(box.dataMask, 7u);
    const CGeometryGroup& cylinder = groupOf(own, 1);
    EXPECT_TRUE(cylinder.isStatic);
    EXPECT_TRUE(cylinder.originalCoords.empty());
    expectTriple(cylinder.coords[3], 0, 0, 1);
    const CGeometryGroup& plate = groupOf(own, 2);
    EXPECT_EQ(plate.triangleNodes.size(), 60u); // deflated
    EXPECT_EQ(plate.cumulativeAreas.back(), 30.0);
    quint32 group = 9;
    quint32 triangle = 9;
    EXPECT_TRUE(own.frame.creator.geometryGroups.triangleIds.locate(67, group, triangle));
    EXPECT_EQ(group, 2u);
    EXPECT_EQ(triangle, 59u);
}

TEST(DemGeometryGroups, placeAStillImportByItsFrame)
{
    // A quarter turn about z takes (1, 0, 0) to (0, 1, 0); then the shift by 2 along x.
    SDeckGroup cad = sampleGroups()[3];
    cad.index = 0;
    cad.isStatic = 1;
    cad.motions.clear();
    COwnFrame own;
    readGroups(own, {cad}, makeVersion(27, 0, 3));
    const auto& group = groupOf<CCADGeometry>(own, 0);
    ASSERT_EQ(group.coords.size(), 4u);
    expectTriple(group.importedCoords[3], 1, 0, 0);
    EXPECT_NEAR(group.coords[3].x, 2.0, 1e-15);
    EXPECT_NEAR(group.coords[3].y, 1.0, 1e-15);
}

TEST(DemGeometryGroups, leaveAnImportWhereItStandsIfThatIsAllThatAFileHolds)
{
    SDeckGroup cad = sampleGroups()[3];
    cad.index = 0;
    cad.isStatic = 1;
    cad.motions.clear();
    for (const quint32 version : {makeVersion(23, 0, 1), makeVersion(23, 0, 3)}) {
        COwnFrame own;
        const CLogCapture log;
        readGroups(own, {cad}, version);
        auto& group = groupOf<CCADGeometry>(own, 0);
        const std::vector<C3DPoint> stored = group.coords;
        ASSERT_EQ(stored.size(), 4u);
        expectTriple(stored[1], 2, 0, 0); // the builder's
        group.rebuildMesh();
        for (std::size_t vertex = 0; vertex < stored.size(); ++vertex)
            expectTriple(group.coords[vertex], stored[vertex].x, stored[vertex].y, stored[vertex].z);
        EXPECT_NE(log.text().find("It stays there; how far it was shifted (2.000000 m)"), std::string::npos)
            << log.text();
    }
}

TEST(DemGeometryGroups, areWrittenAsTheBuilderHasThem)
{
    std::vector<SDeckGroup> stored = sampleGroups();
    for (SDeckGroup& group : stored)
        group.enclosed *= group.closed;                              // an open one keeps none
    for (const quint32 version : {makeVersion(27, 0, 3), current}) { // an earlier one lacks what is written now
        COwnFrame own;
        readGroups(own, stored, version);
        EXPECT_EQ(firstDifference(groupListBytes(current, stored),
                                  writtenBy<CDemCreatorDataWriter>(own.frame.creator.geometryGroups)),
                  "");
        EXPECT_EQ(own.frame.creator.geometryGroups.count(), 4u);
    }
}

TEST(DemGeometryGroups, keepChargesOfTrianglesAndPropertyValues)
{
    SDeckGroup stored = sampleGroups()[1];
    stored.index = 0;
    stored.mesh.mask = 15;
    stored.mesh.charges = {1e-9, 2e-9, 3e-9, 4e-9};
    stored.properties = {{makeDeckValues(1, 4, 2, true)}, 4};
    stored.enclosed = 0.0;
    COwnFrame own;
    finalizeProperty(own.geometry, "Wear", {0.0, 0.0});
    readGroups(own, {stored}, makeVersion(27, 0, 3));
    EXPECT_EQ(groupOf(own, 0).electrostatic.charges, stored.mesh.charges);
    EXPECT_EQ(groupOf(own, 0).customProperties.lists[0]->values, (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(firstDifference(groupListBytes(current, {stored}),
                              writtenBy<CDemCreatorDataWriter>(own.frame.creator.geometryGroups)),
              "");
}

TEST(DemGeometryGroups, canBeReadWithoutTheirProperties)
{
    struct SApplication // gone after the groups
    {
        SApplication() { EXPECT_TRUE(initialiseApplication(applicationState())); }
        ~SApplication() { shutdownApplication(applicationState()); }
    } application;
    SDeckGroup stored = sampleGroups()[1];
    stored.index = 0;
    stored.properties = {{makeDeckValues(1, 4, 2)}, 4};
    COwnFrame own;
    finalizeProperty(own.geometry, "Wear", {0.0, 0.0});
    const CBytes bytes = groupListBytes(makeVersion(27, 0, 3), {stored});
    CByteStream source(bytes, makeVersion(27, 0, 3));
    source.stream.options.useNullPropertyManager = true;
    CDemCreatorDataReader reader(source.stream);
    own.frame.creator.geometryGroups.read(reader);
    EXPECT_EQ(source.stream.position(), bytes.size()); // they are passed over
    EXPECT_TRUE(groupOf(own, 0).customProperties.lists.empty());
    const CCustomPropertyManager* const none = groupOf(own, 0).customProperties.manager();
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(none->name, "Null Manager");
    EXPECT_EQ(none->managerType, eGeometryOwner);
    EXPECT_EQ(none->propertyCount(), 0u);
    EXPECT_EQ(groupOf(own, 0).triangleNodes.size(), 4u);
}

// ---------------------------------------------------------------- timestep form

TEST(DemGeometryState, movesAndStopsGroups)
{
    std::vector<SDeckGroup> stored = sampleGroups();
    const quint32 version = makeVersion(27, 0, 3);
    COwnFrame own;
    readGroups(own, stored, version);
    stored[0].state.isStatic = 1;
    stored[1].state.isStatic = 0;
    stored[1].state.transform = stored[0].state.transform;
    readStates(own, stored, version);
    const CGeometryGroup& box = groupOf(own, 0);
    EXPECT_TRUE(box.isStatic);
    expectTriple(box.coords[1], 3, 0, 0);
    EXPECT_TRUE(box.transform.isIdentity());
    expectTriple(box.translation, 0, 0, 0);
    const CGeometryGroup& cylinder = groupOf(own, 1);
    EXPECT_FALSE(cylinder.isStatic);
    expectTriple(cylinder.originalCoords[1], 1, 0, 0);
    expectTriple(cylinder.coords[1], 1.5, 1.25, -0.125);
    EXPECT_EQ(cylinder.bounds.upper.y, 1.25);

    std::swap(stored[0].state, stored[1].state); // and back again
    readStates(own, stored, version);
    EXPECT_FALSE(box.isStatic);
    expectTriple(box.coords[1], 1.5, 3.25, -0.125);
    EXPECT_TRUE(cylinder.isStatic);
    expectTriple(cylinder.coords[1], 1, 0, 0);
}

TEST(DemGeometryState, leavesNothingOfAnotherTimestep)
{
    std::vector<SDeckGroup> stored = sampleGroups();
    const quint32 version = makeVersion(27, 0, 3);
    COwnFrame own;
    finalizeProperty(own.geometry, "Wear", {7.0});
    readGroups(own, stored, version);
    for (SDeckGroup& group : stored)
        group.state.properties = {{makeDeckValues(1, group.mesh.triangles(), 1)}, group.mesh.triangles()};
    readStates(own, stored, version);
    EXPECT_EQ(groupOf(own, 1).customProperties.lists[0]->values, (std::vector<double>{1, 2, 3, 4}));
    for (SDeckGroup& group : stored) {
        group.state.properties = {};
        group.state.rows = 0;
        group.state.mask = 0;
        group.state.deflated = false;
        group.state.arrays = CBytes();
    }
    readStates(own, stored, version);
    EXPECT_EQ(groupOf(own, 1).customProperties.lists[0]->values, std::vector<double>(4, 7.0));
    EXPECT_EQ(groupOf(own, 1).triangleForces[2], TriangleForce{});
    EXPECT_EQ(groupOf(own, 1).triangleForces.size(), 4u);
}

TEST(DemGeometryState, takesMeshesAndRefusesThoseOfAnotherSize)
{
    std::vector<SDeckGroup> stored = {sampleGroups()[1]};
    stored[0].index = 0;
    const quint32 version = makeVersion(27, 0, 3);
    COwnFrame own;
    readGroups(own, stored, version);
    SDeckGroupState& state = stored[0].state;
    state.mask = 15;
    state.arrays = CBytes().rawI32({20, 21, 22, 23}).rawI32({0, 1, 2, 0, 1, 3, 0, 2, 3, 1, 2, 3});
    state.arrays.rawF64(std::vector<double>(28, 2.0)).rawF64({1, 2, 3, 4});
    readStates(own, stored, version);
    const CGeometryGroup& group = groupOf(own, 0);
    EXPECT_EQ(group.triangleIds[3], 23u);
    EXPECT_EQ(group.triangleNodes[2], (TriangleNodes{0, 2, 3}));
    EXPECT_EQ(group.triangleForces[0][0], 2.0);
    EXPECT_EQ(group.electrostatic.charges[3], 4.0);
    quint32 index = 9;
    quint32 triangle = 9;
    EXPECT_TRUE(own.frame.creator.geometryGroups.triangleIds.locate(22, index, triangle));
    EXPECT_EQ(triangle, 2u);

    const CLogCapture log;
    state.rows = 2;
    state.mask = 4;
    state.arrays = CBytes().rawF64(std::vector<double>(14, 3.0));
    readStates(own, stored, version);
    EXPECT_EQ(group.triangleForces, std::vector<TriangleForce>(4));
    EXPECT_NE(log.text().find("data of 2 triangles for geometry group \"Drum\" of 4 dropped"), std::string::npos);
}

TEST(DemGeometryState, isWrittenAsTheBuilderHasIt)
{
    std::vector<SDeckGroup> stored = sampleGroups();
    COwnFrame own;
    finalizeProperty(own.geometry, "Wear", {7.0});
    readGroups(own, stored, current);
    for (SDeckGroup& group : stored)
        group.state.properties = {{makeDeckValues(1, group.mesh.triangles(), 1, group.mesh.triangles() > 6)},
                                  group.mesh.triangles()};
    readStates(own, stored, current);
    const GeometryGroups& groups = own.frame.creator.geometryGroups;
    EXPECT_EQ(firstDifference(stateBytes(current, stored), writtenBy<CDemTimestepDataWriter>(groups)), "");

    SSaveOptions options; // no properties
    options.geometryMask = eGeometryForces;
    for (SDeckGroup& group : stored)
        group.state.properties = {};
    EXPECT_EQ(firstDifference(stateBytes(current, stored), writtenBy<CDemTimestepDataWriter>(groups, options)), "");
    options.geometryMask = 0; // nor forces
    for (SDeckGroup& group : stored) {
        group.state.mask = 0;
        group.state.arrays = CBytes();
    }
    stored[2].state.deflated = false;
    CBytes expected = stateBytes(current, stored);
    const CBytes written = writtenBy<CDemTimestepDataWriter>(groups, options);
    EXPECT_EQ(written.size(), expected.size()); // but for the flag of the long one
    options.timestepMask = 0;                   // nor rows
    for (SDeckGroup& group : stored)
        group.state.rows = 0;
    EXPECT_EQ(firstDifference(stateBytes(current, stored), writtenBy<CDemTimestepDataWriter>(groups, options)), "");
}

// ---------------------------------------------------------------- damage

TEST(DemGeometryDamage, everyPrefixEndsInACleanError)
{
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(22, 0, 0), makeVersion(27, 0, 3)}) {
        const std::vector<SDeckGroup> stored = sampleGroups();
        expectEveryPrefixToFail<CDemCreatorDataReader>(groupListBytes(version, stored), newGroups, version, 7);
        COwnFrame whole;
        readGroups(whole, stored, version);
        expectEveryPrefixToFail<CDemTimestepDataReader>(
            stateBytes(version, stored), [&] { return &whole.frame.creator.geometryGroups; }, version, 7);
    }
}

TEST(DemGeometryDamage, noWordOfItTakesTheMachinesMemory)
{
    const CLogCapture log;
    const auto nothing = [](GeometryGroups&) {};
    const quint32 version = makeVersion(27, 0, 3);
    const std::vector<SDeckGroup> stored = sampleGroups();
    damageEverywhere<CDemCreatorDataReader>(groupListBytes(version, stored), newGroups, nothing, 0, 6);
    COwnFrame own;
    readGroups(own, stored, version);
    damageEverywhere<CDemTimestepDataReader>(
        stateBytes(version, stored), [&] { return &own.frame.creator.geometryGroups; }, nothing, 0, 6);
}

TEST(DemGeometryDamage, isReadNoFurtherOnceTheReadIsToStop)
{
    COwnFrame own;
    const CBytes bytes = groupListBytes(makeVersion(27, 0, 3), sampleGroups());
    requestStop();
    EXPECT_THROW(consumedBy<CDemCreatorDataReader>(own.frame.creator.geometryGroups, bytes, makeVersion(27, 0, 3)),
                 CReadStopped);
    clearStop();
    EXPECT_EQ(own.frame.creator.geometryGroups.count(), 0u);
}

/// What is said of a list that was changed, which is read whole.
template <class TChange>
static std::string saidOf(COwnFrame& own, TChange&& change)
{
    std::vector<SDeckGroup> stored = sampleGroups();
    change(stored);
    const CLogCapture log;
    readGroups(own, stored, makeVersion(27, 0, 3));
    return log.text();
}

TEST(DemGeometryDamage, costsNoOtherGroup)
{
    {
        COwnFrame own; // an unknown shape has nothing after its word
        const quint32 version = makeVersion(27, 0, 3);
        const SDeckGroup plate = sampleGroups()[2];
        const CBytes stored = CBytes().i32(2).i32(0).text("torus") + groupBytes(version, plate);
        const CLogCapture log;
        EXPECT_EQ(consumedBy<CDemCreatorDataReader>(own.frame.creator.geometryGroups, stored, version), stored.size());
        EXPECT_EQ(own.frame.creator.geometryGroups.indexOf("Plate"), 2u);
        EXPECT_NE(log.text().find("geometry group of the unknown shape \"torus\" skipped"), std::string::npos);
    }
    {
        COwnFrame own;
        const std::string said = saidOf(own, [](auto& groups) { groups[1].index = 0; });
        EXPECT_EQ(own.frame.creator.geometryGroups.count(), 4u);
        EXPECT_EQ(own.frame.creator.geometryGroups.indexOf("Drum"), 1u);
        EXPECT_NE(said.find("can't have index 0"), std::string::npos) << said;
    }
    {
        COwnFrame own;
        const std::string said = saidOf(own, [](auto& groups) { groups[1].mesh.nodes[4] = 99; });
        EXPECT_EQ(groupOf(own, 1).triangleNodes[1][1], 99u); // carried as it is
        EXPECT_NE(said.find("none of its 4 vertices"), std::string::npos) << said;
    }
    {
        COwnFrame own;
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const std::string said = saidOf(own, [&](auto& groups) { groups[1].mesh.coords[4] = nan; });
        EXPECT_TRUE(std::isnan(groupOf(own, 1).coords[1].y));
        EXPECT_NE(said.find("no finite numbers"), std::string::npos) << said;
    }
    {
        COwnFrame own; // an id met twice: all are numbered anew
        const std::string said = saidOf(own, [](auto& groups) { groups[3].mesh.triangleIds[0] = 1; });
        EXPECT_EQ(groupOf(own, 3).triangleIds, (std::vector<quint32>{68, 69, 70, 71}));
        EXPECT_NE(said.find("numbered anew"), std::string::npos) << said;
    }
    {
        COwnFrame own; // rows of triangles without corners
        const std::string said = saidOf(own, [](auto& groups) { groups[1].mesh.mask = 5; });
        EXPECT_TRUE(groupOf(own, 1).triangleNodes.empty());
        EXPECT_NE(said.find("4 triangles of geometry group \"Drum\" have no corners"), std::string::npos) << said;
    }
}

} // namespace NBrenmark
