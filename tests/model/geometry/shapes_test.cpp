// The meshes that shapes make, against the closed formulas of solid geometry: counts, areas, volumes, centres.
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/geometry_factory.h"
#include "model/geometry/polygon.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

constexpr double pi = 3.14159265358979323846;

static void expectNear(const C3DPoint& found, const C3DPoint& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

/// Each edge of a closed surface is run once in either direction: no hole, no triangle turned over.
static bool isWatertight(const CGeometryGroup& group)
{
    std::map<std::pair<quint32, quint32>, int> edges;
    for (const TriangleNodes& nodes : group.triangleNodes)
        for (int i = 0; i < 3; ++i)
            ++edges[{nodes[i], nodes[(i + 1) % 3]}];
    for (const auto& [edge, count] : edges) {
        const auto back = edges.find({edge.second, edge.first});
        if (count != 1 || back == edges.end() || back->second != 1)
            return false;
    }
    return !edges.empty();
}

TEST(GeometryShapes, wordsMakeShapesAndUnknownOnesNothing)
{
    const struct
    {
        const char *word, *typeName, *displayName;
        bool closed;
    } cases[] = {
        {"box", "box", "Box", true},
        {"cylinder", "cylinder", "Cylinder", true},
        {"polygon", "polygon", "Polygon", false},
        {"cad_geometry", "cad_geometry", "CAD Geometry", false},
        {"default", "cad_geometry", "CAD Geometry", false},
    };
    for (const auto& c : cases) {
        const auto group = createGeometry(c.word, nullptr);
        ASSERT_NE(group, nullptr) << c.word;
        EXPECT_EQ(group->typeName(), c.typeName);
        EXPECT_EQ(group->displayName(), c.displayName);
        EXPECT_EQ(group->isClosed(), c.closed) << c.word;
    }
    for (const char* word : {"", "Box", "sphere"})
        EXPECT_EQ(createGeometry(word, nullptr), nullptr) << word;
    EXPECT_EQ(CGeometryGroup(nullptr).typeName(), "default");
}

// ---------------------------------------------------------------- box

TEST(Box, theUnitBoxHasVolumeOneAndAreaSix)
{
    CBox box(nullptr);
    box.rebuildMesh();
    EXPECT_EQ(box.coords.size(), 8u);
    EXPECT_EQ(box.triangleNodes.size(), 12u);
    EXPECT_TRUE(isWatertight(box));
    EXPECT_NEAR(box.enclosedVolume(), 1.0, 1e-15);
    EXPECT_NEAR(box.surfaceArea(), 6.0, 1e-15);
    // Width along x, height along y, length along z, and the corners in their order.
    box.width = 2.0;
    box.height = 4.0;
    box.length = 6.0;
    box.rebuildMesh();
    const C3DPoint corners[] = {{-1, 2, 3},  {1, 2, 3},    {1, 2, -3},  {1, -2, 3},
                                {1, -2, -3}, {-1, -2, -3}, {-1, -2, 3}, {-1, 2, -3}};
    for (int i = 0; i < 8; ++i)
        expectNear(box.coords[i], corners[i]);
}

TEST(Box, measuresDoNotDependOnPlaceAndTurn)
{
    CBox box(nullptr);
    box.centre = C3DPoint(10, -20, 30);
    box.rotations = C3DVector(0.3, -1.1, 2.5);
    box.width = 0.5;
    box.length = 2.0;
    box.height = 3.0;
    box.rebuildMesh();
    EXPECT_TRUE(isWatertight(box));
    EXPECT_NEAR(box.enclosedVolume(), 3.0, 1e-10);
    EXPECT_NEAR(box.surfaceArea(), 2 * (0.5 * 2 + 0.5 * 3 + 2 * 3), 1e-11);
    box.computeCentreOfMass();
    for (const C3DPoint& point :
         {box.centreOfMass, box.originalCentreOfMass, box.pointOfAction, box.originalPointOfAction})
        expectNear(point, box.centre, 1e-10);
    // Its diagonal reaches from corner to opposite corner: 1 to 5.
    EXPECT_NEAR((box.coords[1] - box.coords[5]).length(), std::sqrt(0.25 + 4 + 9), 1e-12);
}

TEST(Box, aQuarterTurnAboutXTakesTheHeightAlongZ)
{
    CBox box(nullptr);
    box.height = 4.0;
    box.rotations = C3DVector(0, 0, pi / 2); // the third angle turns about x
    box.rebuildMesh();
    EXPECT_NEAR(box.bounds.upper.z, 2.0, 1e-15);
    EXPECT_NEAR(box.bounds.lower.z, -2.0, 1e-15);
    EXPECT_NEAR(box.bounds.upper.y, 0.5, 1e-15);
}

TEST(Box, aSideLeftOutTakesItsTwoTriangles)
{
    for (std::size_t side = 0; side < 6; ++side) {
        CBox box(nullptr);
        box.width = 2.0;
        box.height = 3.0;
        box.length = 5.0;
        box.sidesEnabled[side] = false;
        box.rebuildMesh();
        EXPECT_EQ(box.coords.size(), 8u);
        EXPECT_EQ(box.triangleNodes.size(), 10u);
        EXPECT_TRUE(box.closed);
        // front, left, bottom, back, right, top
        const double areas[] = {6, 15, 10, 6, 15, 10};
        EXPECT_NEAR(box.surfaceArea(), 62.0 - areas[side], 1e-13) << side;
    }
}

// ---------------------------------------------------------------- cylinder

TEST(Cylinder, aFrustumOfManySidesHasTheMeasuresOfThePyramidFormula)
{
    for (const quint32 detail : {3u, 8u, 50u}) {
        SCOPED_TRACE(detail);
        CCylinder cylinder(nullptr);
        cylinder.detail = detail;
        cylinder.startPoint = C3DPoint(1, 2, 3);
        cylinder.endPoint = C3DPoint(1, 2, 3) + C3DVector(2, -1, 2); // 3 m
        cylinder.rebuildMesh();

        EXPECT_EQ(cylinder.coords.size(), 2 * detail + 2);
        EXPECT_EQ(cylinder.triangleNodes.size(), 4 * detail);
        EXPECT_TRUE(cylinder.closed);
        EXPECT_TRUE(isWatertight(cylinder));

        const double half = pi / detail;
        const double a1 = 0.5 * detail * 0.2 * 0.2 * std::sin(2 * half); // the ends
        const double a2 = 0.5 * detail * 0.5 * 0.5 * std::sin(2 * half);
        const double mean = std::sqrt(a1 * a2);
        EXPECT_NEAR(cylinder.enclosedVolume(), 3.0 / 3.0 * (a1 + mean + a2), 1e-13);
        const double slant = std::sqrt(9.0 + std::pow((0.5 - 0.2) * std::cos(half), 2));
        EXPECT_NEAR(cylinder.surfaceArea(), a1 + a2 + detail * (0.2 + 0.5) * std::sin(half) * slant, 1e-12);
        cylinder.computeCentreOfMass();
        const double height = 3.0 / 4.0 * (a1 + 2 * mean + 3 * a2) / (a1 + mean + a2);
        expectNear(cylinder.centreOfMass, cylinder.startPoint + height / 3.0 * C3DVector(2, -1, 2));
    }
}

TEST(Cylinder, verticesStandInPairsAndTheFirstIsOneStepOn)
{
    CCylinder cylinder(nullptr); // axis -z, start below: the first direction is (0, 1, 0), the turn clockwise
    cylinder.detail = 4;
    cylinder.rebuildMesh();
    const C3DPoint expected[] = {{0.2, 0, -0.5}, {0.5, 0, 0.5},  {0, -0.2, -0.5}, {0, -0.5, 0.5}, {-0.2, 0, -0.5},
                                 {-0.5, 0, 0.5}, {0, 0.2, -0.5}, {0, 0.5, 0.5},   {0, 0, -0.5},   {0, 0, 0.5}};
    ASSERT_EQ(cylinder.coords.size(), 10u);
    for (int i = 0; i < 10; ++i)
        expectNear(cylinder.coords[i], expected[i]);
    EXPECT_EQ(cylinder.triangleNodes[6], (TriangleNodes{6, 7, 0})); // the last side closes the ring
    EXPECT_EQ(cylinder.triangleNodes[7], (TriangleNodes{7, 1, 0}));
    EXPECT_EQ(cylinder.triangleNodes[8], (TriangleNodes{8, 0, 2})); // caps
    EXPECT_EQ(cylinder.triangleNodes[12], (TriangleNodes{9, 3, 1}));
}

TEST(Cylinder, oneOpenEndOpensIt)
{
    const struct
    {
        bool start, end;
        std::size_t vertices, triangles;
    } cases[] = {{true, true, 102, 200}, {true, false, 101, 150}, {false, true, 101, 150}, {false, false, 100, 100}};
    for (const auto& c : cases) {
        CCylinder cylinder(nullptr);
        cylinder.setClosedEnds(c.start, c.end);
        cylinder.rebuildMesh();
        EXPECT_EQ(cylinder.coords.size(), c.vertices);
        EXPECT_EQ(cylinder.triangleNodes.size(), c.triangles);
        EXPECT_EQ(cylinder.isClosed(), c.start && c.end);
        EXPECT_EQ(cylinder.enclosedVolume() > 0.0, c.start && c.end);
        cylinder.computeCentreOfMass();
        if (!cylinder.closed)
            expectNear(cylinder.pointOfAction, C3DPoint(0, 0, 0)); // half way between the ends
    }
}

TEST(Cylinder, anAxisOfNoLengthOrTooManyFacetsLeaveTheMesh)
{
    CLogCapture log;
    CCylinder cylinder(nullptr);
    cylinder.rebuildMesh();
    const C3DPoint before = cylinder.coords[17];
    const C3DPoint end = cylinder.endPoint;
    cylinder.endPoint = cylinder.startPoint;
    cylinder.rebuildMesh();
    EXPECT_EQ(cylinder.coords.size(), 102u);
    EXPECT_EQ(log.count(), 0u);
    cylinder.endPoint = end;
    cylinder.detail = 0x80000000u;
    cylinder.rebuildMesh();
    EXPECT_EQ(cylinder.coords.size(), 102u);
    expectNear(cylinder.coords[17], before, 0.0);
    EXPECT_NE(log.text().find("8589934592 triangles"), std::string::npos) << log.text();
}

// ---------------------------------------------------------------- polygon

TEST(Polygon, countsAndAreasOfRegularOnes)
{
    for (const qint32 edges : {3, 5, 6, 12}) {
        SCOPED_TRACE(edges);
        CPolygon polygon(nullptr);
        polygon.edges = edges;
        polygon.centre = C3DPoint(1, 2, 3);
        polygon.normal = C3DVector(1, -2, 2);
        polygon.radius = 2.0;
        polygon.rotation = 0.7;
        polygon.rebuildMesh();
        const bool hasCentre = edges > 4;
        EXPECT_EQ(polygon.coords.size(), std::size_t(edges) + hasCentre);
        EXPECT_EQ(polygon.triangleNodes.size(), hasCentre ? std::size_t(edges) : 1u);
        EXPECT_EQ(polygon.vertices.size(), std::size_t(edges));
        if (hasCentre)
            expectNear(polygon.coords[0], polygon.centre, 0.0);
        EXPECT_NEAR(polygon.surfaceArea(), 0.5 * edges * 4.0 * std::sin(2 * pi / edges), 1e-12);
        EXPECT_NEAR(polygon.normal.length(), 1.0, 1e-15);
        for (const C3DVector& normal : polygon.triangleNormals)
            EXPECT_NEAR(normal.dot(polygon.normal), 1.0, 1e-12);
        EXPECT_EQ(polygon.enclosedVolume(), 0.0);
        polygon.computeCentreOfMass();
        expectNear(polygon.centreOfMass, polygon.centre, 0.0);
    }
}

TEST(Polygon, rotationIsCountedFromTheRadialDirection)
{
    CPolygon polygon(nullptr); // normal z: the direction is (0, -1, 0)
    polygon.edges = 6;
    polygon.radius = 1.0;
    polygon.rotation = pi / 2;
    polygon.rebuildMesh();
    expectNear(polygon.coords[1], C3DPoint(1, 0, 0));
    expectNear(polygon.coords[2], C3DPoint(0.5, std::sqrt(0.75), 0));
    EXPECT_EQ(polygon.triangleNodes.front(), (TriangleNodes{0, 1, 2}));
    EXPECT_EQ(polygon.triangleNodes.back(), (TriangleNodes{0, 6, 1}));
}

TEST(Polygon, fourEdgesAreARectangleWithANormalAsLongAsItsArea)
{
    CPolygon polygon(nullptr);
    polygon.lengthSide1 = 2.0;
    polygon.lengthSide2 = 6.0;
    polygon.centre = C3DPoint(0, 0, 5);
    polygon.rebuildMesh();
    const C3DPoint corners[] = {{-1, -3, 5}, {-1, 3, 5}, {1, 3, 5}, {1, -3, 5}};
    ASSERT_EQ(polygon.coords.size(), 4u);
    for (int i = 0; i < 4; ++i)
        expectNear(polygon.coords[i], corners[i]);
    expectNear(C3DPoint(polygon.normal), C3DPoint(0, 0, -12));
    EXPECT_NEAR(polygon.surfaceArea(), 12.0, 1e-14);
    polygon.rotations = C3DVector(pi / 2, 0, 0); // y to z
    polygon.rebuildMesh();
    expectNear(polygon.coords[1], C3DPoint(-1, 0, 8));
    polygon.rotations = C3DVector(pi / 2, 0, pi / 2); // about z first, x to y; then about x, y to z
    polygon.rebuildMesh();
    expectNear(polygon.coords[3], C3DPoint(3, 0, 6));
}

TEST(Polygon, whatIsNoPolygonLeavesTheMesh)
{
    CLogCapture log;
    CPolygon polygon(nullptr);
    polygon.rebuildMesh();
    for (const qint32 edges : {2, 1, 0, -1, -2147483647 - 1, 2147483647}) {
        polygon.edges = edges;
        polygon.rebuildMesh();
        EXPECT_EQ(polygon.coords.size(), 4u) << edges;
    }
    EXPECT_EQ(log.count(), 1u) << log.text();
    polygon.edges = 7;
    polygon.normal = C3DVector();
    polygon.rebuildMesh();
    EXPECT_EQ(polygon.coords.size(), 4u);
}

// ---------------------------------------------------------------- imported meshes

static const std::vector<TriangleNodes> tetrahedronSides{{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}};

TEST(CadGeometry, anImportIsShiftedAlongOneLineAndTurnedAboutAnother)
{
    CCADGeometry cad(nullptr);
    cad.closed = true;
    cad.translationAxisEnd = C3DPoint(0, 0, 2);
    cad.translationDistance = 10.0;
    cad.rotationAxisStart = C3DPoint(1, 0, 0);
    cad.rotationAxisEnd = C3DPoint(1, 0, 4);
    cad.rotationAngle = pi / 2;
    cad.importMesh({{0, 0, 0}, {3, 0, 0}, {0, 3, 0}, {0, 0, 3}}, tetrahedronSides);

    expectNear(cad.coords[0], C3DPoint(1, -1, 10)); // about (1, 0): (x, y) goes to (1 - y, x - 1)
    expectNear(cad.coords[1], C3DPoint(1, 2, 10));
    expectNear(cad.coords[2], C3DPoint(-2, -1, 10));
    expectNear(cad.coords[3], C3DPoint(1, -1, 13));
    EXPECT_NEAR(cad.enclosedVolume(), 27.0 / 6.0, 1e-12);
    cad.computeCentreOfMass();
    expectNear(cad.centreOfMass, C3DPoint(0.25, -0.25, 10.75)); // mean of the corners
    expectNear(cad.importedBounds().upper, C3DPoint(3, 3, 3), 0.0);
    expectNear(cad.importedBounds().lower, C3DPoint(0, 0, 0), 0.0);
    expectNear(cad.bounds.lower, C3DPoint(-2, -1, 10));

    cad.translationDistance = -1.0; // what was imported is placed anew, not what was placed
    cad.rotationAngle = 0.0;
    cad.rebuildMesh();
    expectNear(cad.coords[3], C3DPoint(0, 0, 2));
    EXPECT_EQ(cad.triangleNodes, tetrahedronSides);
    expectNear(CCADGeometry(nullptr).importedBounds().upper, C3DPoint(0, 0, 0), 0.0);
}

// ---------------------------------------------------------------- shapes that move

TEST(MovingShapes, aRebuildKeepsTheGroupWhereItsTransformTookIt)
{
    C3DTransform away;
    away.translate(C3DVector(0, 0, 7));
    away.rotate(C3DVector(0, 0, 1), pi / 2);
    CCylinder cylinder(nullptr);
    cylinder.startPoint = C3DPoint(2, 0, 0);
    cylinder.endPoint = C3DPoint(4, 0, 0);
    cylinder.rebuildMesh();
    cylinder.moveTo(away);
    EXPECT_FALSE(cylinder.isStatic);
    expectNear(cylinder.currentStart, C3DPoint(0, 2, 7));
    const double volume = cylinder.enclosedVolume();

    cylinder.endPoint = C3DPoint(6, 0, 0); // twice as long
    cylinder.rebuildMesh();
    EXPECT_FALSE(cylinder.isStatic);
    expectNear(cylinder.currentEnd, C3DPoint(0, 6, 7));
    expectNear(cylinder.originalCoords[100], C3DPoint(2, 0, 0));
    expectNear(cylinder.coords[101], C3DPoint(0, 6, 7));
    EXPECT_NEAR(cylinder.bounds.upper.y, 6.0, 1e-12);
    EXPECT_NEAR(cylinder.enclosedVolume(), 2.0 * volume, 1e-12);
    expectNear(cylinder.transform * C3DPoint(1, 0, 0), C3DPoint(0, 1, 7));
    EXPECT_EQ(cylinder.triangleNodes.size(), 200u);

    cylinder.standStill();
    EXPECT_TRUE(cylinder.isStatic);
    EXPECT_TRUE(cylinder.transform.isIdentity());
    expectNear(cylinder.coords[101], C3DPoint(6, 0, 0));
    EXPECT_NEAR(cylinder.bounds.upper.x, 6.0, 1e-12);
}

} // namespace NBrenmark
