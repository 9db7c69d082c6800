// Rows of contacts: given out, released, chained, taken out when saving, and checked against what they name. The
// expected orders are counted by hand.
#include "results/contacts.h"

#include "model/particle_types.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace NBrenmark {

class ContactRows : public testing::Test
{
protected:
    ContactRows()
    {
        auto property = std::make_unique<CCustomPropertyMetaData>("Wear", eDoubleProperty, 2u, 0u);
        manager.addProperty(property);
        manager.lastFinalisedPropertyIndex = 0;
        manager.notifyChanged(0);
    }

    /// Every array of row i holds something of i.
    static void number(CContactsBase& family, quint32 count)
    {
        family.resizeRows(count);
        for (quint32 i = 0; i < count; ++i) {
            const double x = i;
            family.rows[i] = {i, 100 + i, 200 + i, 300 + i};
            family.position[i] = C3DPoint(x, 1, 1);
            family.contactVector1[i] = C3DVector(x, 2, 2);
            family.contactVector2[i] = C3DVector(x, 3, 3);
            family.normalOverlap[i] = 0.5 + x;
            family.tangentialOverlap[i] = C3DVector(x, 4, 4);
            family.normalForce[i] = C3DVector(x, 5, 5);
            family.tangentialForce[i] = C3DVector(x, 6, 6);
            family.legacyScalar[i] = x;
            family.legacyFlags[i] = i;
            for (SContactRecord& record : family.contactRecords.records)
                if (auto* values = std::get_if<SContactRecord::Scalars>(&record.values))
                    (*values)[i] = 10 * x;
            if (family.collisionsActive)
                family.activeCollisions.ids[i] = 1000 + i;
            family.customProperties.lists[0]->item(i)[1] = 7 * x;
        }
    }

    /// The numbers that the rows were given, if all arrays of each agree; else an empty list.
    static std::vector<quint32> numbersOf(const CContactsBase& family)
    {
        std::vector<quint32> numbers;
        for (quint32 i = 0; i < family.rowCount(); ++i) {
            const quint32 n = family.legacyFlags[i];
            const double x = n;
            const bool whole = family.rows[i][0] == n && family.rows[i][3] == 300 + n && family.position[i].x == x &&
                               family.contactVector1[i].x == x && family.contactVector2[i].x == x &&
                               family.normalOverlap[i] == 0.5 + x && family.tangentialOverlap[i].x == x &&
                               family.normalForce[i].x == x && family.tangentialForce[i].x == x &&
                               family.legacyScalar[i] == x && family.customProperties.lists[0]->item(i)[1] == 7 * x &&
                               (!family.collisionsActive || family.activeCollisions.ids[i] == 1000 + n);
            if (!whole)
                return {};
            numbers.push_back(n);
        }
        return numbers;
    }

    CCustomPropertyManager manager{"Contact Properties", eContactOwner};
    CContacts contacts{&manager};
    CContactsBase& family = contacts.surfaceSurface;
};

TEST_F(ContactRows, aReleasedRowIsGivenOutAgainLastOneFirst)
{
    number(family, 10);
    family.releaseRow(2);
    family.releaseRow(7);
    quint32 row = noRow;
    for (const quint32 expected : {7u, 2u}) {
        EXPECT_TRUE(family.allocateRow(row, false));
        EXPECT_EQ(row, expected);
        EXPECT_EQ(family.normalOverlap[row], -1.0);
        EXPECT_FALSE(family.isLive(row));
    }
    EXPECT_EQ(family.firstFree, 0u);
    EXPECT_TRUE(family.allocateRow(row, true));
    EXPECT_EQ(row, 10u);
    EXPECT_TRUE(family.isLive(row)) << "a new row's overlap is 0";
    EXPECT_EQ(family.customProperties.itemCount(), 11u);
}

TEST_F(ContactRows, growsInTheStepsGivenAndOnlyForWhoIsAlone)
{
    quint32 row = noRow;
    EXPECT_FALSE(family.allocateRow(row, false)) << "no room yet";
    EXPECT_TRUE(family.allocateRow(row, true));
    EXPECT_EQ(row, 0u);
    EXPECT_EQ(family.rows.capacity(), 32000u);
    EXPECT_GE(family.tangentialForce.capacity(), 32000u);
    EXPECT_GE(family.customProperties.lists[0]->values.capacity(), 2u * 32000u);
    for (quint32 i = 1; i < 32000; ++i)
        ASSERT_TRUE(family.allocateRow(row, false));
    EXPECT_FALSE(family.allocateRow(row, false));
    EXPECT_TRUE(family.allocateRow(row, true));
    EXPECT_EQ(row, 32000u);
    EXPECT_EQ(family.rows.capacity(), 64000u) << "the vector's own growth";
    EXPECT_GE(family.position.capacity(), 64000u);

    CContacts other(&manager);
    other.surfaceGeometry.collisionsActive = true;
    other.surfaceGeometry.reserveRows(7);
    EXPECT_EQ(other.surfaceGeometry.rows.capacity(), 32000u);
    EXPECT_EQ(other.surfaceGeometry.activeCollisions.startTime.capacity(), 32000u);
    EXPECT_EQ(other.surfaceGeometry.activeCollisions.second.radius.capacity(), 0u) << "a triangle has none";
    other.surfaceGeometry.reserveRows(40000);
    EXPECT_EQ(other.surfaceGeometry.normalOverlap.capacity(), 40000u);
}

TEST_F(ContactRows, aParallelLoopGetsEachRowOnce)
{
    number(family, 1000);
    for (quint32 row = 0; row < 1000; ++row)
        family.releaseRow(row);
    std::vector<int> met(1000, 0);
#pragma omp parallel for
    for (int i = 0; i < 1000; ++i) {
        quint32 row = noRow;
        if (family.allocateRow(row, false)) {
#pragma omp atomic
            ++met[row];
        }
    }
    EXPECT_EQ(met, std::vector<int>(1000, 1));
#pragma omp parallel for
    for (int i = 0; i < 2000; ++i)
        family.releaseRow(static_cast<quint32>(i / 2));
    EXPECT_EQ(family.freedCount, 2000u);
    family.compact();
    EXPECT_EQ(family.rowCount(), 0u);
}

struct SCompactCase
{
    const char* states; ///< one letter a row: l live, r released, t taken, o another negative overlap, n no number
    std::vector<quint32> order;
};

TEST_F(ContactRows, copiesTheArraysOfAFieldSetAlone)
{
    struct SField
    {
        quint32 bit; // as both file families number them
        double (*value)(const CContactsBase&);
    };
    const SField fields[] = {
        {1, [](const CContactsBase& c) -> double { return c.rows[0][0]; }},
        {2, [](const CContactsBase& c) -> double { return c.tangentialOverlap[0].x; }},
        {4, [](const CContactsBase& c) -> double { return c.contactVector1[0].x; }},
        {8, [](const CContactsBase& c) -> double { return c.contactVector2[0].x; }},
        {16, [](const CContactsBase& c) -> double { return c.position[0].x; }},
        {32, [](const CContactsBase& c) -> double { return c.normalOverlap[0] - 0.5; }},
        {64, [](const CContactsBase& c) -> double { return c.normalForce[0].x; }},
        {128, [](const CContactsBase& c) -> double { return c.tangentialForce[0].x; }},
        {2048, [](const CContactsBase& c) -> double { return c.legacyScalar[0]; }},
        {4096, [](const CContactsBase& c) -> double { return c.legacyFlags[0]; }},
    };
    for (const SField& copied : fields) {
        CContacts contacts(&manager);
        number(contacts.surfaceSurface, 4);
        contacts.surfaceSurface.copyRow(3, 0, copied.bit);
        for (const SField& field : fields)
            EXPECT_EQ(field.value(contacts.surfaceSurface), field.bit == copied.bit ? 3.0 : 0.0)
                << copied.bit << ' ' << field.bit;
    }
}

TEST_F(ContactRows, compactPutsTheLastLiveRowInEachGap)
{
    const SCompactCase cases[] = {
        {"", {}},         {"lll", {0, 1, 2}},    {"lrl", {0, 2}}, {"rrr", {}}, {"rllt", {2, 1}}, {"rtlll", {4, 3, 2}},
        {"llro", {0, 1}}, {"rlrlrl", {5, 1, 3}}, {"rnl", {2, 1}},
    };
    for (const bool withCollisions : {false, true}) {
        for (const SCompactCase& c : cases) {
            CContacts other(&manager);
            CContactsBase& rows = other.surfaceSurface;
            rows.collisionsActive = withCollisions;
            rows.contactRecords.records.resize(1);
            rows.contactRecords.records[0].makeValues();
            const auto count = static_cast<quint32>(std::string(c.states).size());
            number(rows, count);
            for (quint32 i = 0; i < count; ++i) {
                switch (c.states[i]) {
                case 'r': rows.releaseRow(i); break;
                case 't': rows.normalOverlap[i] = -1.0; break;
                case 'o': rows.normalOverlap[i] = -1e-9; break;
                case 'n': rows.normalOverlap[i] = std::numeric_limits<double>::quiet_NaN(); break;
                default: break;
                }
            }
            rows.compact();
            for (double& overlap : rows.normalOverlap)
                if (std::isnan(overlap)) // moved with its row: the first number of the row says which
                    overlap = 0.5 + rows.rows[static_cast<std::size_t>(&overlap - rows.normalOverlap.data())][0];
            EXPECT_EQ(numbersOf(rows), c.order) << c.states;
            EXPECT_EQ(rows.firstFree, 0u);
            EXPECT_EQ(rows.customProperties.itemCount(), c.order.size());
            EXPECT_EQ(rows.contactRecords.rowCount(), c.order.size());
            const auto& values = std::get<SContactRecord::Scalars>(rows.contactRecords.records[0].values);
            for (std::size_t i = 0; i < c.order.size(); ++i)
                EXPECT_EQ(values[i], 10.0 * c.order[i]);
            EXPECT_EQ(rows.activeCollisions.recordCount(), withCollisions ? c.order.size() : 0u);
        }
    }
}

TEST_F(ContactRows, aFileLeavesAChainOfItsReleasedRows)
{
    number(family, 6);
    for (const quint32 row : {1u, 3u, 4u}) {
        family.normalOverlap[row] = -2.0;
        family.rows[row][1] = 0xFFFFFFF0; // whatever the file says
    }
    family.normalOverlap[2] = -1.0; // on no chain
    family.firstFree = 77;
    family.rebuildFreeChain();
    EXPECT_EQ(family.firstFree, 5u);
    EXPECT_EQ(family.rows[4][1], 4u);
    EXPECT_EQ(family.rows[3][1], 2u);
    EXPECT_EQ(family.rows[1][1], 0u);
    quint32 row = noRow;
    for (const quint32 expected : {4u, 3u, 1u, 6u}) {
        EXPECT_TRUE(family.allocateRow(row, true));
        EXPECT_EQ(row, expected);
    }
}

TEST_F(ContactRows, findsALiveRowByItsEnds)
{
    number(family, 5);
    family.rows[3] = family.rows[1];
    family.releaseRow(1);
    family.rows[1] = family.rows[3]; // as the released row had them
    quint32 row = noRow;
    EXPECT_TRUE(family.findRow({1, 101}, {201, 301}, row));
    EXPECT_EQ(row, 3u);
    EXPECT_FALSE(family.findRow({201, 301}, {1, 101}, row)) << "the other way round is another row";
    EXPECT_EQ(row, noRow);
}

TEST_F(ContactRows, clearingKeepsWhatIsNoRow)
{
    family.collisionsActive = true;
    number(family, 4);
    family.releaseRow(2);
    contacts.clear();
    EXPECT_EQ(family.rowCount(), 0u);
    EXPECT_EQ(family.activeCollisions.recordCount(), 0u);
    EXPECT_EQ(family.customProperties.itemCount(), 0u);
    EXPECT_EQ(family.firstFree, 0u);
    EXPECT_EQ(family.freedCount, 1u);
    EXPECT_TRUE(family.collisionsActive);
}

// ---------------------------------------------------------------- what rows name

class DanglingRows : public ContactRows
{
protected:
    /// Type 0: two spheres, particles in the slots 0 and 2 of three. Type 1: one sphere, one particle.
    /// Type 2 has a particle and no sphere.
    DanglingRows()
    {
        const std::pair<std::size_t, std::vector<qint32>> stores[] = {{2, {5, 0, 9}}, {1, {7}}, {0, {8}}};
        for (const auto& [spheres, ids] : stores) {
            CParticleType& type = types.append();
            type.spheres.resize(spheres);
            type.ids = ids;
            type.resizeSlots(static_cast<quint32>(ids.size()));
            type.rebuildFreeList();
        }
    }

    CParticleTypes types{nullptr};
    const TriangleCounts groups{12, 0, 648}; // none where the list has a gap
};

TEST_F(DanglingRows, anEndThatIsntThereReleasesTheRow)
{
    const struct
    {
        PairRow row;
        bool stays;
    } surfaces[] =
        {
            {{0, 0, 0, 5}, true},
            {{0, 1, 1, 0}, true},
            {{0, 2, 1, 0}, false} /* a free slot */,
            {{0, 6, 1, 0}, false},
            {{1, 1, 0, 0}, false},
            {{3, 0, 0, 0}, false},
            {{0, 0, 3, 0}, false},
            {{2, 0, 1, 0}, false},
            {{1, 0, 2, 0}, false} /* no spheres */,
            {{noRow, noRow, noRow, noRow}, false},
            {{0, 4, 0, 3}, false},
        },
      walls[] = {
          {{0, 5, 0, 11}, true}, {{1, 0, 2, 647}, true}, {{1, 0, 2, 648}, false}, {{1, 0, 1, 0}, false},
          {{1, 0, 3, 0}, false}, {{0, 3, 0, 0}, false},  {{2, 0, 0, 0}, false},   {{1, 0, noRow, 0}, false},
      };
    const auto expectToStay = [&](CContactsBase& rows, const PairRow& row, bool stays) {
        contacts.clear();
        rows.resizeRows(1);
        rows.rows[0] = row;
        EXPECT_EQ(contacts.removeDanglingRows(types, groups), stays ? 0u : 1u) << testing::PrintToString(row);
        EXPECT_EQ(contacts.liveCount(), stays ? 1u : 0u);
        EXPECT_EQ(rows.firstFree, stays ? 0u : 1u);
    };
    for (const auto& c : surfaces)
        expectToStay(contacts.surfaceSurface, c.row, c.stays);
    for (const auto& c : walls)
        expectToStay(contacts.surfaceGeometry, c.row, c.stays);
}

TEST_F(DanglingRows, countsReleasedRowsThatFailAndChainsThemOnce)
{
    CContactsBase& rows = contacts.surfaceSurface;
    rows.resizeRows(4);
    rows.rows = {{0, 0, 0, 5}, {9, 0, 0, 0}, {9, 0, 0, 0}, {0, 1, 0, 4}};
    rows.releaseRow(1);
    EXPECT_EQ(contacts.removeDanglingRows(types, groups), 2u);
    EXPECT_EQ(rows.freedCount, 2u);
    EXPECT_EQ(rows.liveCount(), 2u);
    quint32 row = noRow;
    for (const quint32 expected : {2u, 1u, 4u}) {
        EXPECT_TRUE(rows.allocateRow(row, true));
        EXPECT_EQ(row, expected);
    }
}

// Each would take minutes if it were quadratic: 2e5 squared is 4e10.
TEST_F(DanglingRows, aLongFamilyIsCheckedAndCompactedInOneGo)
{
    constexpr quint32 count = 200000;
    CContactsBase& rows = contacts.surfaceSurface;
    rows.resizeRows(count);
    for (quint32 row = 0; row < count; ++row) {
        rows.rows[row] = {0, 0, row % 2, row % 2 == 0 ? 5u : 0u};
        if (row % 3 == 0)
            rows.rows[row][0] = 4;
    }
    EXPECT_EQ(contacts.removeDanglingRows(types, groups), 66667u);
    rows.rebuildFreeChain();
    rows.compact();
    EXPECT_EQ(rows.rowCount(), 133333u);
    EXPECT_EQ(contacts.removeDanglingRows(types, groups), 0u);
}

} // namespace NBrenmark
