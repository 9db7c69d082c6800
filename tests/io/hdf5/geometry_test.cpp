// Geometry groups and their shapes in files: what each object looks like, what older files hold instead, and what
// becomes of damaged ones.
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"
#include "model/geometry_groups.h"

#include "hdf5_sample.h"
#include "support/log_capture.h"
#include "support/properties.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace NBrenmark {

using CreatorReader = CHdf5CreatorDataReader;
using CreatorWriter = CHdf5CreatorDataWriter;
using TimestepReader = CHdf5TimestepDataReader;
using TimestepWriter = CHdf5TimestepDataWriter;
using testing::HasSubstr;

/// Fields of any shape, over a mesh of one triangle with the area 1/2.
static void fillGroup(CGeometryGroup& g, const QString& name)
{
    g.setName(name);
    g.uniqueId = 12;
    g.materialName = "Steel";
    g.coords = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    g.vertexIds = {4, 5, 6};
    g.triangleIds = {9};
    g.triangleNodes = {{0, 1, 2}};
    g.recomputeDerivedData();
    g.bounds = CBoundingBox(C3DPoint(4, 5, 6), C3DPoint(1, 2, 3));
    g.momentOfInertia.values = {1, 2, 3, 4, 5, 6};
    g.electrostatic.startCharge = 0.25;
    g.desiredForce = C3DVector(7, 8, 9);
    g.gain = 0.5;
    g.time = 1.5;
}

template <class TGroup>
static TGroup& added(GeometryGroups& groups, const QString& name, quint32 index = CGeometryGroup::notSet)
{
    auto* const group = new TGroup(nullptr);
    fillGroup(*group, name);
    group->index = index;
    groups.add(group, false);
    return *group;
}

// ---------------------------------------------------------------- what is written

/// The lines of a tree that hold a text.
static std::string linesWith(const std::string& tree, const std::vector<std::string>& texts)
{
    std::istringstream stream(tree);
    std::string kept;
    for (std::string line; std::getline(stream, line);)
        for (const std::string& text : texts)
            if (line.find(text) != std::string::npos) {
                kept += line + "\n";
                break;
            }
    return kept;
}

TEST(GeometryInHdf5, holdsAMeshAsItStandsOrAsItWasMade)
{
    CHdf5Sample sample;
    CBox box(nullptr);
    CCADGeometry cad(nullptr);
    cad.importedCoords = {{1, 2, 3}};
    const auto meshOf = [&](const CGeometryGroup& g) { return linesWith(sample.tree<CreatorWriter>(g), {"coords"}); };
    EXPECT_EQ(meshOf(box), "/coords f64 {0,3}\n");
    EXPECT_EQ(meshOf(cad), "/imported coords f64 {1,3} = 1 2 3\n");
    box.isStatic = cad.isStatic = false;
    EXPECT_EQ(meshOf(box), "/original coords f64 {0,3}\n");
    EXPECT_EQ(meshOf(cad), "/imported coords f64 {1,3} = 1 2 3\n/original coords f64 {0,3}\n");
}

TEST(GeometryInHdf5, ofManyTrianglesIsChunkedAndItsVerticesAreNot)
{
    CGeometryGroup g(nullptr);
    g.coords.resize(300);
    g.vertexIds.resize(300);
    g.triangleNodes.resize(256, {0, 1, 2});
    g.triangleIds.resize(256);
    g.recomputeDerivedData();
    CHdf5Sample sample;
    EXPECT_EQ(linesWith(sample.tree<CreatorWriter>(g), {"coords", " ids", "nodes", "torque"}),
              "/coords f64 {300,3}\n"
              "/force torque f64 {256,7} chunks {36,7} deflate 6\n"
              "/triangle ids u32 {256} chunks {256} deflate 6\n"
              "/triangle nodes u32 {256,3} chunks {85,3} deflate 6\n"
              "/vertex ids u32 {300}\n");
}

TEST(GeometryInHdf5, keepsOfATimestepWhatChanges)
{
    GeometryGroups groups;
    CBox& box = added<CBox>(groups, "Kiste", 3);
    CHdf5Sample sample;
    const std::string g = "/GeometryGroups/3/";
    EXPECT_EQ(sample.tree<TimestepWriter>(groups),
              "/\n/GeometryGroups/\n" +
                  under(g, {"", "@static u8 = 1", "@time f64 = 1.5", "@size u32 = 1", "@mask u32 = 4",
                            "CustomProperties/", "Factories/", "Kinematics/", "force torque f64 {1,7}"}));

    box.isStatic = false;
    box.translation = C3DVector(1, 2, 3);
    box.velocity = C3DVector(4, 5, 6);
    box.motionHistory.emplace_back();
    const std::string moving = sample.tree<TimestepWriter>(groups);
    EXPECT_THAT(moving,
                HasSubstr(under(g, {"@static u8 = 0", "@reset velocities u8 = 1", "@centre of mass f64[3] = 0 0 0",
                                    "@orig centre of mass f64[3] = 0 0 0", "@point of action f64[3] = 0 0 0",
                                    "@orig point of action f64[3] = 0 0 0",
                                    "@xform f64[4][4] = 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1", "@translation f64[3] = 1 2 3",
                                    "@velocity f64[3] = 4 5 6", "@time f64 = 1.5"})));
    EXPECT_THAT(moving, HasSubstr(g + "angvelandposlist {angvel@0 f64[3], poa@24 f64[3]} 48 {1}\n"));

    box.isStatic = true;
    sample.options.timestepMask = 0;
    EXPECT_EQ(linesWith(sample.tree<TimestepWriter>(groups), {"@size", "@mask", "torque"}),
              g + "@size u32 = 0\n" + g + "@mask u32 = 4\n");
    sample.options = SSaveOptions();
    sample.options.geometryMask = 0;
    EXPECT_EQ(linesWith(sample.tree<TimestepWriter>(groups), {"@size", "@mask", "torque"}),
              g + "@size u32 = 1\n" + g + "@mask u32 = 0\n");
}

// ---------------------------------------------------------------- what is read

/// Groups at 0 and 2, and two later ones, so that the names of the groups don't sort as numbers.
TEST(GeometryFromHdf5, keepsItsPlacesGapsAndIds)
{
    GeometryGroups groups;
    for (const quint32 index : {0u, 2u, 9u, 10u}) {
        CBox& box = added<CBox>(groups, "Kiste " + QString::number(index), index);
        box.uniqueId = 100 - index;
        for (quint32& id : box.vertexIds)
            id += 3 * index;
        box.triangleIds = {index};
    }
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(groups);
    GeometryGroups back;
    CLogCapture log;
    sample.read<CreatorReader>(back);
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(back.count(), 4u);
    EXPECT_EQ(back.at(1), nullptr);
    EXPECT_EQ(back.indexOf("Kiste 10"), 10u);
    EXPECT_EQ(back.at(10)->uniqueId, 90u);
    EXPECT_EQ(GeometryGroups::nextUniqueId(), 101u);
    quint32 group = 0;
    quint32 element = 0;
    EXPECT_TRUE(back.triangleIds.locate(9, group, element));
    EXPECT_EQ(group, 9u);
}

TEST(GeometryFromHdf5, standsWhereItsTransformTookIt)
{
    CCylinder cylinder(nullptr);
    fillGroup(cylinder, "Trommel");
    C3DTransform shift;
    shift.translate(C3DVector(10, 0, 0));
    cylinder.moveTo(shift);
    cylinder.bounds = CBoundingBox(C3DPoint(4, 5, 6), C3DPoint(1, 2, 3)); // as some program left them
    cylinder.surfaceMagnitude = 0.75;
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(cylinder);
    CCylinder back(nullptr);
    sample.read<CreatorReader>(back);
    EXPECT_FALSE(back.isStatic);
    EXPECT_EQ(back.originalCoords[1], C3DPoint(1, 0, 0));
    EXPECT_EQ(back.coords[1], C3DPoint(11, 0, 0));
    EXPECT_EQ(back.currentEnd, C3DPoint(10, 0, 0.5));
    EXPECT_EQ(back.triangleAreas, std::vector<double>{0.5});
    EXPECT_EQ(back.surfaceMagnitude, 0.75);
    EXPECT_EQ(back.bounds.upper, C3DPoint(4, 5, 6));
}

TEST(GeometryFromHdf5, placesAnImport)
{
    CCADGeometry cad(nullptr);
    cad.translationAxisEnd = C3DPoint(0, 0, 5);
    cad.translationDistance = 2;
    cad.importMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(cad);
    CCADGeometry back(nullptr);
    sample.read<CreatorReader>(back);
    EXPECT_EQ(back.coords[1], C3DPoint(1, 0, 2));
    EXPECT_EQ(back.triangleCentres[0], C3DPoint(1 / 3.0, 1 / 3.0, 2));
}

TEST(GeometryFromHdf5, beginsToMoveAndStandsStillAgainWithTheTimesteps)
{
    GeometryGroups groups;
    CBox& box = added<CBox>(groups, "Kiste", 0);
    CHdf5Sample standing, moving;
    standing.tree<TimestepWriter>(groups);
    C3DTransform shift;
    shift.translate(C3DVector(10, 0, 0));
    box.moveTo(shift);
    box.translation = C3DVector(10, 0, 0);
    box.triangleForces[0][6] = 3.0;
    moving.tree<TimestepWriter>(groups);

    GeometryGroups back;
    CBox& own = added<CBox>(back, "Kiste", 0);
    moving.read<TimestepReader>(back);
    EXPECT_FALSE(own.isStatic);
    EXPECT_EQ(own.coords[1], C3DPoint(11, 0, 0));
    EXPECT_EQ(own.bounds.upper, C3DPoint(11, 1, 0));
    EXPECT_EQ(back.totalBounds.lower, C3DPoint(10, 0, 0));
    EXPECT_EQ(own.triangleForces[0][6], 3.0);

    standing.read<TimestepReader>(back);
    EXPECT_TRUE(own.isStatic);
    EXPECT_EQ(own.coords[1], C3DPoint(1, 0, 0));
    EXPECT_EQ(own.bounds.upper, C3DPoint(1, 1, 0));
    EXPECT_TRUE(own.transform.isIdentity());
    EXPECT_EQ(own.translation, C3DVector());
    EXPECT_EQ(own.triangleForces[0][6], 0.0);
}

// ---------------------------------------------------------------- older files

TEST(GeometryOfOlderHdf5, isRealOrVirtualBefore30_0_12)
{
    for (const bool isReal : {true, false}) {
        CBox box(nullptr);
        CHdf5Sample sample;
        sample.tree<CreatorWriter>(box);
        sample.change().withoutAttribute("/", "geometry type").flag("/", "is real", isReal);
        CBox back(nullptr);
        sample.read<CreatorReader>(back, makeVersion(30, 0, 11));
        EXPECT_EQ(back.geometryType, isReal ? 1 : 2);
        EXPECT_THAT(sample.failure<CreatorReader>(back), HasSubstr("attribute \"geometry type\""));
    }
}

TEST(GeometryOfOlderHdf5, hasASignedDistanceUpTo30_0_10)
{
    struct SCase
    {
        quint32 build;
        double distance;
        C3DPoint start, end;
        double length;
    };
    const C3DPoint a(0, 0, 1), b(0, 0, 5);
    const SCase cases[] = {
        {10, -2.0, b, C3DPoint(0, 0, 3), 2.0}, // from the end, two back
        {10, 2.0, a, C3DPoint(0, 0, 3), 2.0},  // the axis as long as the way
        {11, -2.0, a, b, -2.0},                // as it is
    };
    for (const SCase& c : cases) {
        CCADGeometry cad(nullptr);
        cad.translationAxisStart = a;
        cad.translationAxisEnd = b;
        cad.translationDistance = c.distance;
        CHdf5Sample sample;
        sample.tree<CreatorWriter>(cad);
        if (c.build < 12)
            sample.change().flag("/", "is real", true);
        CCADGeometry back(nullptr);
        sample.read<CreatorReader>(back, makeVersion(30, 0, c.build));
        EXPECT_EQ(back.translationAxisStart, c.start) << c.build << ", " << c.distance;
        EXPECT_EQ(back.translationAxisEnd, c.end) << c.build << ", " << c.distance;
        EXPECT_EQ(back.translationDistance, c.length) << c.build << ", " << c.distance;
    }
}

TEST(GeometryOfOlderHdf5, callsItsMotionsDynamicsBefore30_0_1)
{
    CBox box(nullptr);
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(box);
    sample.change().flag("/", "is real", true).renamed("/Kinematics", "/Dynamics");
    CBox back(nullptr);
    sample.read<CreatorReader>(back, makeVersion(30, 0, 0));
    EXPECT_THAT(sample.failure<CreatorReader>(back), HasSubstr("Kinematics"));
}

// ---------------------------------------------------------------- damaged files

TEST(DamagedGeometryOfHdf5, costsNoMoreThanIsDamaged)
{
    GeometryGroups groups;
    for (quint32 index : {0u, 1u, 2u}) {
        CBox& box = added<CBox>(groups, "Kiste " + QString::number(index), index);
        for (quint32& id : box.vertexIds)
            id += 3 * index;
        box.triangleIds = {index};
    }
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(groups);
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const double coords[3][3] = {{notANumber, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const quint32 nodes[3] = {0, 1, 4000000000u};
    sample.change()
        .without("/GeometryGroups/0/coords")
        .dataset("/GeometryGroups/0", "coords", H5T_NATIVE_DOUBLE, {3, 3}, coords)
        .without("/GeometryGroups/1/triangle nodes")
        .dataset("/GeometryGroups/1", "triangle nodes", H5T_NATIVE_UINT, {1, 3}, nodes)
        .text("/GeometryGroups/2", "type", "sphere");
    GeometryGroups back;
    CLogCapture log;
    sample.read<CreatorReader>(back);
    EXPECT_EQ(back.count(), 2u);
    EXPECT_EQ(back.at(1)->triangleNodes[0][2], 4000000000u); // carried as it is
    EXPECT_EQ(back.at(1)->surfaceMagnitude, 0.5);
    EXPECT_THAT(log.text(), HasSubstr("Kiste 0"));
    EXPECT_THAT(log.text(), HasSubstr("Kiste 1"));
    EXPECT_THAT(log.text(), HasSubstr("type \"sphere\" is skipped"));
}

TEST(DamagedGeometryOfHdf5, isReportedByItsPath)
{
    struct SCase
    {
        std::function<void(CH5Builder&)> damage;
        const char* told;
    };
    const quint32 three[3] = {1, 2, 3};
    const unsigned char flags[2] = {1, 1};
    const SCase cases[] = {
        {[](CH5Builder& file) { file.withoutAttribute("/GeometryGroups/0", "static"); },
         "/GeometryGroups/0, attribute \"static\""},
        {[](CH5Builder& file) { file.without("/GeometryGroups/0/Factories"); }, "Factories"},
        {[&](CH5Builder& file) {
             file.without("/GeometryGroups/0/coords")
                 .dataset("/GeometryGroups/0", "coords", H5T_NATIVE_UINT, {3}, three);
         },
         "dataset \"coords\": 1 dimensions where 2 are needed"},
        {[&](CH5Builder& file) {
             file.without("/GeometryGroups/0/moment of inertia")
                 .dataset("/GeometryGroups/0", "moment of inertia", H5T_NATIVE_UINT, {3}, three);
         },
         "3 rows where 6 are needed"},
        // 2^40 vertices or triangles, and not a byte of them in the file
        {[&](CH5Builder& file) {
             file.without("/GeometryGroups/0/coords")
                 .dataset("/GeometryGroups/0", "coords", H5T_NATIVE_DOUBLE, {hsize_t(1) << 40, 3}, nullptr);
         },
         "/GeometryGroups/0, dataset \"coords\": 26388279066624 bytes announced, 0 bytes are stored"},
        {[&](CH5Builder& file) {
             file.without("/GeometryGroups/0/triangle nodes")
                 .dataset("/GeometryGroups/0", "triangle nodes", H5T_NATIVE_UINT, {hsize_t(1) << 40, 3}, nullptr);
         },
         "/GeometryGroups/0, dataset \"triangle nodes\": 13194139533312 bytes announced, 0 bytes are stored"},
        {[&](CH5Builder& file) { file.attribute("/GeometryGroups/0", "sides enabled", H5T_NATIVE_UCHAR, flags, {2}); },
         "2 flags where 6 are needed"},
    };
    for (const SCase& c : cases) {
        GeometryGroups groups;
        added<CBox>(groups, "Kiste", 0);
        CHdf5Sample sample;
        sample.tree<CreatorWriter>(groups);
        CH5Builder file = sample.change();
        c.damage(file);
        GeometryGroups back;
        EXPECT_THAT(sample.failure<CreatorReader>(back), HasSubstr(c.told));
    }
}

TEST(GeometryFromHdf5, isReadNoFurtherOnceTheReadIsToStop)
{
    GeometryGroups groups;
    added<CBox>(groups, "Kiste", 0);
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(groups);
    GeometryGroups back;
    requestStop();
    EXPECT_THROW(sample.read<CreatorReader>(back), CReadStopped);
    clearStop();
    EXPECT_EQ(back.count(), 0u);
}

TEST(GeometryFromHdf5, canBeReadWithoutItsProperties)
{
    CCustomPropertyManager wear("Geometry Properties", eGeometryOwner);
    finalizeProperty(wear, "Wear", {0.25, 0.5});
    const SPropertyManagers managers{&wear, &wear, &wear, &wear};
    GeometryGroups groups(managers);
    auto* const box = new CBox(&wear);
    fillGroup(*box, "Kiste");
    groups.add(box, false);
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(groups);
    for (const bool without : {false, true}) {
        GeometryGroups back(managers);
        sample.options.useNullPropertyManager = without;
        sample.read<CreatorReader>(back);
        EXPECT_EQ(back.at(0)->customProperties.lists.size(), without ? 0u : 1u);
    }
}

TEST(DamagedGeometryOfHdf5, losesTheStateOfGroupsThatTheModelDoesNotHave)
{
    GeometryGroups groups;
    added<CBox>(groups, "Kiste", 0).time = 5.0;
    added<CBox>(groups, "Wand", 7);
    CHdf5Sample sample;
    sample.tree<TimestepWriter>(groups);
    GeometryGroups back;
    added<CBox>(back, "Kiste", 0);
    CLogCapture log;
    sample.read<TimestepReader>(back);
    EXPECT_EQ(back.at(0)->time, 5.0);
    EXPECT_THAT(log.text(), HasSubstr("geometry group 7 is skipped"));
}

} // namespace NBrenmark
