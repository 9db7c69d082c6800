// The mesh of a group: what follows from it, how it moves, and what damaged triangles do.
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

static void expectPoint(const C3DPoint& found, double x, double y, double z)
{
    EXPECT_NEAR(found.x, x, 1e-12);
    EXPECT_NEAR(found.y, y, 1e-12);
    EXPECT_NEAR(found.z, z, 1e-12);
}

/// Two triangles of 6 m^2 and 2 m^2 in the plane z = 1.
static void setTwoTriangles(CGeometryGroup& group)
{
    group.setMesh({{0, 0, 1}, {4, 0, 1}, {0, 3, 1}, {4, 1, 1}}, {{0, 1, 2}, {0, 3, 1}});
}

TEST(GeometryGroup, anEmptyGroupHasABoxThatHoldsNothing)
{
    CGeometryGroup group(nullptr);
    EXPECT_EQ(group.bounds.upper.x, -1e13);
    EXPECT_EQ(group.bounds.lower.z, 1e13);
    group.updateBounds();
    expectPoint(group.bounds.upper, 0, 0, 0);
    expectPoint(group.bounds.lower, 0, 0, 0);
}

TEST(GeometryGroup, trianglesHaveCentreNormalAreaAndARunningSum)
{
    CGeometryGroup group(nullptr);
    setTwoTriangles(group);
    expectPoint(group.triangleCentres[0], 4.0 / 3, 1, 1);
    expectPoint(C3DPoint(group.triangleNormals[0]), 0, 0, 1);
    expectPoint(C3DPoint(group.triangleNormals[1]), 0, 0, -1); // its corners run the other way
    EXPECT_EQ(group.triangleAreas, (std::vector<double>{6, 2}));
    EXPECT_EQ(group.cumulativeAreas, (std::vector<double>{6, 8}));
    EXPECT_EQ(group.surfaceArea(), 8.0);
    EXPECT_EQ(group.triangleForces.size(), 2u);
    expectPoint(group.bounds.upper, 4, 3, 1);
    expectPoint(group.bounds.lower, 0, 0, 1);
}

TEST(GeometryGroup, anOpenGroupEnclosesNothingWhateverWasStored)
{
    CGeometryGroup group(nullptr);
    group.enclosedMagnitude = 5.0;
    group.closed = true;
    EXPECT_EQ(group.enclosedVolume(), 5.0);
    group.closed = false;
    EXPECT_EQ(group.enclosedVolume(), 0.0);
    group.computeCentreOfMass(); // no shape: no centre either
    expectPoint(group.centreOfMass, 0, 0, 0);
    group.closed = true;
    group.computeCentreOfMass(); // nothing to weigh: no division by nothing
    expectPoint(group.centreOfMass, 0, 0, 0);
}

TEST(GeometryGroup, texturesGoByTheSidesOfTheBox)
{
    CGeometryGroup group(nullptr);
    CLogCapture log;
    clearLogOnceMemory();
    double u = 9.0;
    double v = 9.0;
    EXPECT_FALSE(group.correctCoordinatesFromCubicSide(C3DPoint(), 0, u, v)) << "no mesh, no box";
    EXPECT_EQ(u + v, 0.0);
    setTwoTriangles(group); // 4 m by 3 m, flat in z
    EXPECT_TRUE(group.correctCoordinatesFromCubicSide(C3DPoint(1, 1.5, 1), 4, u, v));
    EXPECT_EQ(std::make_pair(u, v), std::make_pair(0.25, 0.5));
    EXPECT_TRUE(group.correctCoordinatesFromCubicSide(C3DPoint(9, 1.5, 1), 3, u, v));
    EXPECT_EQ(std::make_pair(u, v), std::make_pair(0.0, 1.0)) << "z, and x on the border";
    EXPECT_FALSE(group.correctCoordinatesFromCubicSide(C3DPoint(), 6, u, v)) << "told before";
    EXPECT_EQ(log.text(), "ERROR Texture co-ordinate mapping error: Error in generating texture co-ordinates, "
                          "CGeometryGroup::correctCoordinatesFromCubicSide()\n");
}

TEST(GeometryGroup, customPropertiesFollowTheTriangles)
{
    CCustomPropertyManager manager("geometry", eGeometryOwner);
    CGeometryGroup group(&manager);
    setTwoTriangles(group);
    EXPECT_EQ(group.customProperties.itemCount(), 2u);
    EXPECT_EQ(group.previousCustomProperties.itemCount(), 2u);
    group.clearMesh();
    EXPECT_EQ(group.customProperties.itemCount(), 0u);
}

TEST(GeometryGroup, clearingDropsWhatBelongsToTheMesh)
{
    CBox box(nullptr);
    box.rebuildMesh();
    C3DTransform away;
    away.translate(C3DVector(1, 2, 3));
    box.moveTo(away);
    box.dataMask = 7;
    box.clearMesh();
    EXPECT_TRUE(box.coords.empty() && box.originalCoords.empty() && box.triangleNodes.empty());
    EXPECT_TRUE(box.triangleForces.empty() && box.cumulativeAreas.empty());
    EXPECT_TRUE(box.transform.isIdentity());
    EXPECT_EQ(box.bounds.upper.y, -1e13);
    EXPECT_EQ(box.enclosedMagnitude + box.surfaceMagnitude, 0.0);
    EXPECT_EQ(box.dataMask, 0u);
}

TEST(GeometryGroup, everyMoveStartsFromTheMeshAsItWasMade)
{
    CBox box(nullptr);
    box.rebuildMesh();
    C3DTransform matrix;
    for (int step = 1; step <= 10; ++step) {
        matrix.setIdentity();
        matrix.translate(C3DVector(step, 0, 0));
        matrix.rotate(C3DVector(0, 1, 0), 0.1 * step);
        box.moveTo(matrix);
    }
    expectPoint(box.coords[1], 10 + 0.5 * std::cos(1.0) + 0.5 * std::sin(1.0), 0.5,
                -0.5 * std::sin(1.0) + 0.5 * std::cos(1.0));
    expectPoint(box.originalCoords[1], 0.5, 0.5, 0.5);
    EXPECT_NEAR(box.enclosedVolume(), 1.0, 1e-12);
    box.computeCentreOfMass();
    expectPoint(box.centreOfMass, 10, 0, 0);
}

TEST(GeometryGroup, aGroupThatNeverMovedKeepsItsMeshWhenItStandsStill)
{
    CGeometryGroup group(nullptr);
    setTwoTriangles(group);
    group.translation = C3DVector(1, 1, 1);
    group.standStill();
    EXPECT_EQ(group.coords.size(), 4u);
    expectPoint(group.coords[1], 4, 0, 1);
    expectPoint(C3DPoint(group.translation), 0, 0, 0);
}

// A wall of 300 x 400 squares, folded over a sine: enough vertices for the threads of box and transform.
TEST(GeometryGroup, aLargeMeshIsMeasuredAndMovedByThreadsLikeASmallOne)
{
    constexpr quint32 columns = 300;
    constexpr quint32 rows = 400;
    std::vector<C3DPoint> coords;
    std::vector<TriangleNodes> triangles;
    for (quint32 row = 0; row <= rows; ++row)
        for (quint32 column = 0; column <= columns; ++column)
            coords.emplace_back(column, row, row == 77 && column == 33 ? -9.0 : 0.0);
    coords.back().z = 5.0;
    for (quint32 row = 0; row < rows; ++row)
        for (quint32 column = 0; column < columns; ++column) {
            const quint32 corner = row * (columns + 1) + column;
            triangles.push_back({corner, corner + 1, corner + columns + 1});
            triangles.push_back({corner + 1, corner + columns + 2, corner + columns + 1});
        }
    CGeometryGroup group(nullptr);
    group.reserveTriangles(triangles.size());
    group.setMesh(std::move(coords), std::move(triangles));
    expectPoint(group.bounds.upper, 300, 400, 5);
    expectPoint(group.bounds.lower, 0, 0, -9);
    EXPECT_NEAR(group.surfaceArea(), columns * rows, 60.0); // but for the two points that stick out
    EXPECT_EQ(group.cumulativeAreas.back(), group.surfaceArea());

    C3DTransform matrix;
    matrix.translate(C3DVector(-1000, 0, 0));
    group.moveTo(matrix);
    expectPoint(group.bounds.upper, -700, 400, 5);
    expectPoint(group.bounds.lower, -1000, 0, -9);
}

// ---------------------------------------------------------------- damaged meshes

TEST(DamagedMesh, trianglesOfNoVerticesAndNoNumbersCountAsEmptyAndAreReported)
{
    CLogCapture log;
    CGeometryGroup group(nullptr);
    group.setName("chute");
    group.closed = true;
    const double noNumber = std::nan("");
    const double infinite = std::numeric_limits<double>::infinity();
    group.setMesh({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {noNumber, 0, 0}, {0, -infinite, 0}},
                  {{0, 1, 2}, {0, 1, 5}, {0xFFFFFFFFu, 0, 1}, {0, 1, 3}, {4, 1, 2}});
    EXPECT_EQ(group.surfaceArea(), 2.0);
    EXPECT_EQ(group.cumulativeAreas, (std::vector<double>{2, 2, 2, 2, 2}));
    EXPECT_EQ(group.enclosedVolume(), 0.0);
    EXPECT_EQ(group.triangleNodes[2], (TriangleNodes{0xFFFFFFFFu, 0, 1})); // carried as it is
    group.computeCentreOfMass();
    expectPoint(group.centreOfMass, 0, 0, 0);
    EXPECT_NE(log.text().find("WARNING Geometry: 2 of 5 triangles of geometry group \"chute\" have a corner that is "
                              "none of its 5 vertices."),
              std::string::npos)
        << log.text();
    EXPECT_NE(log.text().find("2 of 5 triangles of geometry group \"chute\" have a corner whose coordinates are no "
                              "finite numbers."),
              std::string::npos)
        << log.text();

    group.moveTo(C3DTransform()); // every timestep of a moving group: told once
    EXPECT_EQ(log.count(), 2u);
}

TEST(DamagedMesh, aMeshWithoutVerticesMovesNowhere)
{
    CGeometryGroup group(nullptr);
    group.triangleNodes = {{0, 1, 2}};
    group.originalCoords = {{1, 2, 3}, {4, 5, 6}}; // as many as coords has none
    group.moveTo(C3DTransform());
    EXPECT_TRUE(group.originalCoords.empty());
    EXPECT_EQ(group.surfaceArea(), 0.0);
    group.standStill();
    EXPECT_TRUE(group.isStatic);
}

} // namespace NBrenmark
