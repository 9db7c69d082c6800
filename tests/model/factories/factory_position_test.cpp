// Positions of new particles: the lattices, counted by hand, and the state of the solver's walk.
#include "model/factories/factory_position.h"

#include <gtest/gtest.h>
#include <cmath>
#include <cstring>

namespace NBrenmark {

/// The points of so many cells along each axis.
static std::vector<C3DPoint> latticePoints(const C3DLattice& lattice, int cells)
{
    std::vector<C3DPoint> points;
    for (int i = 0; i < cells; ++i)
        for (int j = 0; j < cells; ++j)
            for (int k = 0; k < cells; ++k) {
                const C3DPoint corner = lattice.start + i * lattice.axisA + j * lattice.axisB + k * lattice.axisC;
                points.push_back(corner);
                for (const C3DPoint& offset : lattice.cellOffsets())
                    points.push_back(corner + offset.toVector());
            }
    return points;
}

static double leastDistance(const std::vector<C3DPoint>& points)
{
    double least = 1e300;
    for (std::size_t a = 0; a < points.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            least = std::min(least, (points[a] - points[b]).length());
    return least;
}

TEST(Lattice, hasThePointsAndTheDistancesOfItsKind)
{
    struct SCase
    {
        const char* word;
        std::size_t pointsOfEightCells;
        double leastDistance; // in cell edges
    };
    const SCase cases[] = {
        {"cubic", 8, 1.0},
        {"bcc", 16, std::sqrt(3.0) / 2.0},
        {"fcc", 32, std::sqrt(2.0) / 2.0},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.word);
        const std::unique_ptr<IFactoryPosition> position = CFactoryPositionRegistry::instance().create(c.word);
        const auto* const lattice = dynamic_cast<const C3DLattice*>(position.get());
        ASSERT_NE(lattice, nullptr);
        const std::vector<C3DPoint> points = latticePoints(*lattice, 2);
        EXPECT_EQ(points.size(), c.pointsOfEightCells);
        EXPECT_NEAR(leastDistance(points), 0.1 * c.leastDistance, 1e-15); // edges are 0.1 m at first
    }
}

TEST(Lattice, theExtraPointsOfASkewCellStandInOrder)
{
    CFCCFactoryPosition faces;
    faces.axisA = C3DVector(2, 0, 0);
    faces.axisB = C3DVector(2, 4, 0);
    faces.axisC = C3DVector(0, 0, 6);
    const std::vector<C3DPoint> expected{{2, 2, 0}, {1, 2, 3}, {1, 0, 3}};
    EXPECT_EQ(faces.cellOffsets(), expected);
    CBCCFactoryPosition body;
    body.axisA = faces.axisA;
    body.axisB = faces.axisB;
    body.axisC = faces.axisC;
    EXPECT_EQ(body.cellOffsets(), std::vector<C3DPoint>{C3DPoint(2, 2, 3)});
}

TEST(Lattice, isEditedByTheLengthsOfItsAxes)
{
    CCubicFactoryPosition lattice;
    lattice.axisA = C3DVector(3, 4, 0);
    const std::unique_ptr<IParamData> data = lattice.paramData();
    auto* const record = dynamic_cast<C3DLatticePositionParamData*>(data.get());
    ASSERT_NE(record, nullptr);
    EXPECT_DOUBLE_EQ(record->separations.x, 5.0);
    EXPECT_DOUBLE_EQ(record->separations.y, 0.1);
    // A quarter turn about x by the third angle takes y to z and z to -y.
    record->separations = C3DVector(1, 2, 3);
    record->rotation = C3DVector(0, 0, std::acos(0.0));
    record->start = C3DPoint(7, 8, 9);
    EXPECT_TRUE(lattice.setParamData(*record));
    EXPECT_NEAR((lattice.axisA - C3DVector(1, 0, 0)).length(), 0.0, 1e-15);
    EXPECT_NEAR((lattice.axisB - C3DVector(0, 0, 2)).length(), 0.0, 1e-15);
    EXPECT_NEAR((lattice.axisC - C3DVector(0, -3, 0)).length(), 0.0, 1e-15);
    EXPECT_EQ(lattice.start, C3DPoint(7, 8, 9));
    EXPECT_EQ(lattice.rotation, record->rotation);
}

TEST(FactoryPosition, whatIsNotSetYetHasOneBitPattern)
{
    const CRandomFactoryPosition random;
    const CCubicFactoryPosition lattice;
    // The float 0x7FC00001 has sign 0, exponent all ones and fraction 0x400001; as a double the fraction
    // moves up by 29 bits.
    const quint64 expected = 0x7FF0000000000000u | (quint64(0x400001) << 29);
    for (const C3DPoint& point : {random.seedPosition, lattice.cursor0})
        for (const double component : {point.x, point.y, point.z}) {
            quint64 bits = 0;
            std::memcpy(&bits, &component, sizeof(bits));
            EXPECT_EQ(bits, expected);
        }
    EXPECT_NEAR(random.maxAngle * 180.0 / std::acos(-1.0), 120.0, 1e-12);
}

TEST(FactoryPosition, aStyleIsEditedByItsWord)
{
    CRandomFactoryPosition position;
    CRandomPositionParamData record;
    EXPECT_TRUE(record.copyFrom(*position.paramData()));
    EXPECT_EQ(record.style, "random");
    record.style = "random_walk";
    record.multiFactor = 2.0;
    EXPECT_TRUE(position.setParamData(record));
    EXPECT_EQ(position.style, 1u);
    EXPECT_EQ(position.multiFactor, 2.0);
    record.style = "walk";
    record.multiFactor = 3.0;
    EXPECT_FALSE(position.setParamData(record));
    EXPECT_EQ(position.multiFactor, 2.0);
    EXPECT_FALSE(position.setParamData(C3DLatticePositionParamData()));
}

TEST(FactoryPosition, aCopyHasTheDataTheMarkAndTheFactory)
{
    CRandomFactoryPosition position;
    position.seedVector = C3DVector(0, 1, 0);
    position.mark();
    int owner = 0; // never looked at
    position.setFactory(reinterpret_cast<CParticleFactory*>(&owner));
    const std::unique_ptr<IFactoryPosition> copy = position.clone();
    EXPECT_TRUE(copy->marked);
    EXPECT_EQ(copy->factory, position.factory);
    EXPECT_EQ(dynamic_cast<const CRandomFactoryPosition&>(*copy).seedVector, C3DVector(0, 1, 0));
}

} // namespace NBrenmark
