// Rows of bonds: kept until saving, found by their ends, matched with the parameters of their materials.
#include "results/bonds.h"

#include "model/domain.h"
#include "model/particle_types.h"

#include <gtest/gtest.h>
#include <set>

namespace NBrenmark {

/// Bonds whose rows are all different; broken at row + 0.5.
static void number(CBondsBase& bonds, quint32 count)
{
    bonds.resizeRows(count);
    for (quint32 row = 0; row < count; ++row) {
        bonds.rows[row] = {row % 3, row * 7, row % 5, row * 11 + 1};
        bonds.normalForce[row] = C3DVector(row, 1, 1);
        bonds.tangentialTorque[row] = C3DVector(row, 2, 2);
        bonds.state[row] = eIntactBond;
        bonds.breakTime[row] = row + 0.5;
    }
}

TEST(Bonds, theTableIsAPowerOfTwoAboveFiveThirds)
{
    const struct
    {
        quint32 rows;
        std::size_t length;
    } cases[] = {{1, 16},
                 {9, 16},
                 {10, 16} /* 50 / 3 = 16 */,
                 {11, 32} /* 18 */,
                 {1000, 2048} /* 1666 */,
                 {1229, 2048} /* 2048 */,
                 {1230, 4096} /* 2050 */,
                 {200000, 524288} /* 333333; if it were quadratic, this took minutes */};
    for (const auto& c : cases) {
        CSurfaceSurfaceBonds bonds;
        number(bonds, c.rows);
        EXPECT_EQ(bonds.findSlot(bonds.rows[0]), CBondsBase::noSlot) << "no table yet";
        bonds.rebuildLookup();
        EXPECT_EQ(bonds.lookup.size(), c.length) << c.rows;
        std::set<quint32> entered(bonds.lookup.begin(), bonds.lookup.end());
        EXPECT_EQ(entered.size(), c.rows + 1u) << "every row once, and the zeros";
        for (quint32 row = 0; row < c.rows; ++row) {
            quint32 found = noRow;
            ASSERT_TRUE(bonds.findRow(bonds.rows[row], found));
            ASSERT_EQ(found, row);
        }
        quint32 found = 0;
        EXPECT_FALSE(bonds.findRow({9, 9, 9, 9}, found));
        EXPECT_EQ(found, noRow);
    }
    CSurfaceSurfaceBonds none;
    none.rebuildLookup();
    EXPECT_TRUE(none.lookup.empty());
}

// Of a table of 16: (2 x 8) ^ 1 ^ 3 ^ 4 = 22, that is 6; then 6 + 21 = 27, 11; then 11 + 37 = 48, 0; then 0 + 53, 5.
TEST(Bonds, placesThatAreTakenArePassedInWideningSteps)
{
    CSurfaceSurfaceBonds bonds;
    bonds.resizeRows(4);
    bonds.rows = {{1, 2, 3, 4}, {3, 2, 1, 4}, {4, 2, 3, 1}, {1, 2, 4, 3}};
    bonds.rebuildLookup();
    ASSERT_EQ(bonds.lookup.size(), 16u);
    EXPECT_EQ(bonds.lookup[6], 1u);
    EXPECT_EQ(bonds.lookup[11], 2u);
    EXPECT_EQ(bonds.lookup[0], 3u);
    EXPECT_EQ(bonds.lookup[5], 4u);
}

TEST(Bonds, equalRowsShareAPlaceAndTheLastOneHasIt)
{
    CSurfaceSurfaceBonds bonds;
    number(bonds, 12);
    for (PairRow& row : bonds.rows)
        row = {0, 1, 0, 3};
    bonds.rebuildLookup();
    quint32 found = noRow;
    EXPECT_TRUE(bonds.findRow({0, 1, 0, 3}, found));
    EXPECT_EQ(found, 11u);
}

TEST(Bonds, compactTakesTheDroppedRowsOutAndTheTableFollows)
{
    CSurfaceSurfaceBonds bonds;
    number(bonds, 6);
    bonds.compact();
    EXPECT_TRUE(bonds.lookup.empty()) << "no row was dropped";
    for (const quint32 row : {0u, 3u, 5u})
        bonds.state[row] = eDroppedBond;
    bonds.compact();
    ASSERT_EQ(bonds.rowCount(), 3u);
    const std::vector<double> times = {4.5, 1.5, 2.5}; // 4 in the place of 0, the others where they were
    EXPECT_EQ(bonds.breakTime, times);
    EXPECT_EQ(bonds.normalForce[0].x, 4.0);
    EXPECT_EQ(bonds.tangentialTorque[0].x, 4.0);
    EXPECT_EQ(bonds.rows[0][1], 28u);
    quint32 found = noRow;
    EXPECT_TRUE(bonds.findRow({1, 28, 4, 45}, found));
    EXPECT_EQ(found, 0u);
    for (quint32& state : bonds.state)
        state = eDroppedBond;
    bonds.compact();
    EXPECT_EQ(bonds.rowCount(), 0u);
    EXPECT_FALSE(bonds.findRow({1, 28, 4, 45}, found)) << "a table of rows that are gone";
}

TEST(Bonds, rowsAreAddedInTheStepsGivenAndNeverUsedAgain)
{
    CSurfaceGeometryBonds bonds;
    quint32 row = noRow;
    EXPECT_FALSE(bonds.allocateRow(row, false));
    EXPECT_TRUE(bonds.allocateRow(row, true));
    EXPECT_EQ(row, 0u);
    EXPECT_EQ(bonds.rows.capacity(), 16000u);
    bonds.state[0] = eDroppedBond;
    EXPECT_TRUE(bonds.allocateRow(row, false));
    EXPECT_EQ(row, 1u);
    EXPECT_EQ(bonds.state[1], 0u);
    EXPECT_EQ(bonds.parameters[1], nullptr);
}

// ---------------------------------------------------------------- what bonds name

class BondEnds : public testing::Test
{
protected:
    /// Two types of one particle each, with two spheres; 3 m apart in x, the spheres 1 m off in y.
    BondEnds()
    {
        for (const char* material : {"Steel", "Clay"}) {
            CParticleType& type = types.append();
            type.materialName = material;
            type.spheres.resize(2);
            type.spheres[1].position = C3DPoint(0, 1, 0);
            type.ids = {static_cast<qint32>(types.count())};
            type.resizeSlots(1);
            type.scale[0] = 1.0;
            type.orientation[0] = CQuaternion(1, 0, 0, 0);
            type.position[0] = C3DPoint(3.0 * types.count(), 0, 0);
        }
    }

    CParticleTypes types{nullptr};
    CBonds bonds;
};

TEST_F(BondEnds, hostileRowsHaveNoEnds)
{
    CSurfaceSurfaceBonds& family = bonds.surfaceSurface;
    family.resizeRows(5);
    family.rows = {{0, 2, 1, 0}, {2, 0, 1, 0}, {0, 0, 7, 0}, {noRow, noRow, noRow, noRow}, {0, 0, 1, 2}};
    C3DPoint first;
    C3DPoint second;
    double length = 0.0;
    for (quint32 row = 0; row < 6; ++row)
        EXPECT_FALSE(family.bondEnds(types, row, first, second, length)) << row;
    bonds.surfaceGeometry.resizeRows(1);
    EXPECT_FALSE(bonds.surfaceGeometry.bondEnds(types, 0, first, second, length));
}

TEST_F(BondEnds, areTheCentresOfTheSpheres)
{
    CDomain domain;
    domain.min = C3DPoint(-10, -10, -10);
    domain.max = C3DPoint(10, 10, 10);
    types.domain = &domain;
    types.updateAllSpherePositions();
    bonds.surfaceSurface.resizeRows(1);
    bonds.surfaceSurface.rows[0] = {0, 1, 1, 1};
    C3DPoint first;
    C3DPoint second;
    double length = 0.0;
    ASSERT_TRUE(bonds.surfaceSurface.bondEnds(types, 0, first, second, length));
    EXPECT_EQ(first, C3DPoint(3, 1, 0));
    EXPECT_EQ(second, C3DPoint(6, 1, 0));
    EXPECT_DOUBLE_EQ(length, 3.0);
}

TEST_F(BondEnds, aBondWithoutParametersIsBrokenAndBearsNothing)
{
    CSurfaceSurfaceBonds& family = bonds.surfaceSurface;
    number(family, 6);
    family.rows = {{0, 0, 1, 0}, {1, 0, 0, 1}, {1, 0, 1, 1}, {9, 0, 0, 0}, {0, 0, 0, 1}, {0, 1, 0, 0}};
    family.state[4] = eBrokenBond;
    family.state[5] = eDroppedBond;
    number(bonds.surfaceGeometry, 1); // isn't matched
    const int steelAndClay = 0;
    const auto* const known = reinterpret_cast<const CBondParameters*>(&steelAndClay); // never looked into
    int asked = 0;
    const auto match = [&] {
        return bonds.matchParameters(types, 12.5, [&](const CParticleType& a, const CParticleType& b) {
            ++asked;
            return a.materialName != b.materialName ? known : nullptr;
        });
    };
    const SUnmatchedBonds unmatched = match();
    EXPECT_EQ(asked, 4) << "each pair of types once";
    EXPECT_EQ(unmatched.intact, 2u) << "rows 2 and 3";
    EXPECT_EQ(unmatched.broken, 1u) << "row 4, which broke at 4.5";
    EXPECT_EQ(unmatched.text(),
              "2 intact bonds broken now, 1 broken bond without the time and forces of the break, 1 dropped "
              "bond (state 2) kept as broken (state 0): the bonding model has no parameters for the materials");
    EXPECT_EQ(family.parameters,
              (std::vector<const CBondParameters*>{known, known, nullptr, nullptr, nullptr, nullptr}));
    EXPECT_EQ(family.state, (std::vector<quint32>{1, 1, 0, 0, 0, 0})) << "a row to be dropped stays too";
    EXPECT_EQ(family.breakTime, (std::vector<double>{0.5, 1.5, 12.5, 12.5, 12.5, 12.5}));
    EXPECT_EQ(family.normalForce[1].x, 1.0);
    EXPECT_EQ(family.normalForce[2].x, 0.0);
    EXPECT_EQ(family.tangentialTorque[3].y, 0.0);
    EXPECT_EQ(bonds.countByState(eBrokenBond), 4u);
    EXPECT_EQ(bonds.surfaceGeometry.state[0], 1u);
    EXPECT_FALSE(match().any()) << "nothing is left to lose";
}

} // namespace NBrenmark
