// Contacts, bonds and collisions in the legacy family: every version to its last byte, damaged and hostile rows,
// and the current form as the builder has it. Bytes are counted by hand from the widths of the arrays.
#include "io/dem/dem_testing.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"

#include <QDate>
#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace NBrenmark {

static const std::vector<SDeckPair> threePairs = {{0, 4, 1, 1}, {0, 5, 1, 2}, {0, 6, 0, 7}};

static C3DVector vectorOf(int first, int bit, int row)
{
    return C3DVector(deckValue(first, bit, row, 0), deckValue(first, bit, row, 1), deckValue(first, bit, row, 2));
}

// ---------------------------------------------------------------- contacts

struct SContactCase
{
    quint32 version;
    qint32 word;   ///< of stored fields, in the file
    qint32 fields; ///< that are there
    qint64 bytes;  ///< of three contacts
};

// A row of the bits 0 to 7 takes 168 bytes, bit 13 twice 24, bit 14 four.
const SContactCase contactCases[] = {
    {makeVersion(20, 0, 2), 255, 0x60FF, 5 + 3 * 220},
    {makeVersion(20, 0, 5), 255, 0x60FF, 5 + 3 * 220},
    {makeVersion(20, 0, 6), 255, 0x60FF, 9 + 3 * 220}, // the first with a word, which says nothing yet
    {makeVersion(20, 0, 8), 1, 0x60FF, 9 + 3 * 220},
    {makeVersion(20, 0, 9), 1, 0x40FF, 9 + 3 * 172},
    {makeVersion(3, 0, 16), 0, 0x40FF, 9 + 3 * 172}, // old numbering: 3 counts as 20
    {makeVersion(20, 0, 16), 0x1FFF, 0x40FF, 9 + 3 * 172},
    {makeVersion(20, 0, 17), 255, 255, 10 + 3 * 168 + 9 + 24}, // and nested collisions, a block of records
    {makeVersion(22, 1, 0), 0x29, 0x29, 10 + 3 * 48 + 9 + 24},
    {makeVersion(22, 1, 1), 255, 255, 10 + 3 * 168 + 9 + 24 + 8}, // and custom properties
    {makeVersion(24, 0, 30), 0x1800, 0x1800, 10 + 3 * 12 + 9 + 24 + 8},
    {makeVersion(27, 0, 3), 0x78FF, 0x78FF, 10 + 3 * (168 + 48 + 4 + 12) + 9 + 24 + 8},
};

TEST(DemContacts, everyVersionReadsToItsLastByte)
{
    for (const SContactCase& c : contactCases) {
        for (const bool deflated : {false, true}) {
            const std::string name = versionText(c.version).toStdString();
            SDeckContacts stored;
            stored.count = 3;
            stored.fields = c.word;
            stored.deflated = deflated;
            stored.collisions.mask = surfaceCollisionMask;
            stored.arrays = contactArrays(40, threePairs, {1e-6, 0.0, 2e-6}, c.fields);
            const CBytes bytes = contactFamilyBytes(c.version, stored);
            if (!deflated) {
                EXPECT_EQ(bytes.size(), c.bytes) << name;
            }
            COwnFrame own;
            CContactsBase& family = own.frame.timestep.contacts.surfaceSurface;
            EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes + CBytes::garbage(64), c.version), bytes.size())
                << name;
            ASSERT_EQ(family.rowCount(), 3u) << name;
            EXPECT_EQ(family.liveCount(), 3u);
            const auto expected = [&](int bit, int row) {
                return (c.fields & (1 << bit)) != 0 ? vectorOf(40, bit, row) : C3DVector();
            };
            const int forceBit = (c.fields & (1 << 13)) != 0 ? 13 : 6; // the second one counts
            for (int row = 0; row < 3; ++row) {
                const auto i = static_cast<std::size_t>(row);
                EXPECT_EQ(family.rows[i], (c.fields & 1) != 0 ? threePairs[i] : PairRow()) << name;
                EXPECT_EQ(family.tangentialOverlap[i], expected(1, row));
                EXPECT_EQ(family.contactVector1[i], expected(2, row));
                EXPECT_EQ(family.contactVector2[i], expected(3, row));
                EXPECT_EQ(family.position[i].toVector(), expected(4, row));
                EXPECT_EQ(family.normalForce[i], expected(forceBit, row)) << name;
                EXPECT_EQ(family.tangentialForce[i], expected(7, row)) << name;
                EXPECT_EQ(family.legacyFlags[i], (c.fields & 1 << 12) != 0 ? 12000u + i : 0u);
                EXPECT_EQ(family.legacyScalar[i], (c.fields & 1 << 11) != 0 ? deckValue(40, 11, row, 0) : 0.0);
            }
            EXPECT_EQ(family.normalOverlap[2], (c.fields & 1 << 5) != 0 ? 2e-6 : 0.0);
        }
    }
}

/// A family with nested records, extra values and custom properties.
static SDeckContacts fullContacts(int first, const std::vector<SDeckPair>& pairs, quint32 collisionMask)
{
    SDeckContacts contacts = makeDeckContacts(first, pairs, std::vector<double>(pairs.size(), 1e-6));
    const auto rows = static_cast<int>(pairs.size());
    contacts.collisionsActive = 1;
    contacts.collisions = makeDeckCollisions(first, rows, collisionMask);
    contacts.recordRows = rows;
    SDeckContactRecord scalars{0, 3, "Wear", 0.5, {1, 2, 3}, {}};
    SDeckContactRecord vectors{1, 4, "Drag", 2.0, {4, 5, 6}, {}};
    for (int row = 0; row < rows; ++row) {
        scalars.values.push_back(first + 0.25 * row);
        for (int component = 0; component < 3; ++component)
            vectors.values.push_back(first + row + 0.5 * component);
    }
    contacts.records = {scalars, vectors};
    contacts.properties.lists = {makeDeckValues(first, rows, 2)};
    contacts.properties.itemCount = rows;
    return contacts;
}

TEST(DemContacts, whatFollowsTheRowsIsRead)
{
    COwnFrame own;
    finalizeProperty(own.contact, "Heat", {1.0, 2.0});
    CContactsBase& family = own.frame.timestep.contacts.surfaceGeometry;
    SDeckContacts stored = fullContacts(50, threePairs, geometryCollisionMask);
    stored.records.insert(stored.records.begin() + 1, {7, 9, "Odd kind", 1.0, {}, {}}); // has no array
    const CBytes bytes = contactFamilyBytes(makeVersion(27, 0, 3), stored);
    EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes + CBytes::garbage(64)), bytes.size());
    EXPECT_TRUE(family.collisionsActive);
    const CCollisionsBase& collisions = family.activeCollisions;
    ASSERT_EQ(collisions.recordCount(), 3u);
    EXPECT_EQ(collisions.ids[2], 52u);
    EXPECT_EQ(collisions.second.ids[1], 251u);
    EXPECT_EQ(collisions.second.velocity[1], vectorOf(50, 20, 1));
    EXPECT_TRUE(collisions.second.radius.empty());
    ASSERT_EQ(family.contactRecords.count(), 3u);
    const SContactRecord& drag = family.contactRecords.records[2];
    EXPECT_EQ(drag.name, "Drag");
    EXPECT_EQ(drag.type, 4u);
    EXPECT_EQ(drag.defaultValue.z, 6.0);
    EXPECT_EQ(std::get<SContactRecord::Vectors>(drag.values)[2].y, 52.5);
    EXPECT_EQ(family.customProperties.lists[0]->item(2)[1], 55.0);
}

TEST(DemContacts, nestedRecordsMayStandAmongTheArrays)
{
    SDeckContacts stored = makeDeckContacts(40, threePairs, {1e-6, 1e-6, 1e-6}, 0x4FF);
    const SDeckCollisions nested = makeDeckCollisions(60, 3, surfaceCollisionMask);
    stored.collisions.mask = surfaceCollisionMask;
    for (const int active : {0, 1}) {
        stored.collisionsActive = active;
        if (active)
            stored.arrays += nested.arrays;
        const CBytes bytes = contactFamilyBytes(makeVersion(27, 0, 3), stored);
        COwnFrame own;
        CContactsBase& family = own.frame.timestep.contacts.surfaceSurface;
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes), bytes.size());
        ASSERT_EQ(family.activeCollisions.recordCount(), active ? 3u : 0u);
        if (active) {
            EXPECT_EQ(family.activeCollisions.endTime[2], deckValue(60, 2, 2, 0));
        }
    }
}

/// What a read of one family says, and how many rows it leaves.
static std::string complaintOf(const SDeckContacts& stored, quint32& rows, quint32& records)
{
    const CLogCapture log;
    COwnFrame own;
    finalizeProperty(own.contact, "Heat", {1.0, 2.0});
    CContactsBase& family = own.frame.timestep.contacts.surfaceSurface;
    const CBytes bytes = contactFamilyBytes(makeVersion(27, 0, 3), stored);
    EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes), bytes.size());
    rows = family.rowCount();
    records = family.activeCollisions.recordCount();
    for (const SContactRecord& record : family.contactRecords.records)
        EXPECT_EQ(record.rowCount(), rows);
    EXPECT_EQ(family.customProperties.itemCount(), rows);
    return log.text();
}

TEST(DemContacts, countsThatDifferAreReportedAndFollowTheRows)
{
    quint32 rows = 0;
    quint32 records = 0;
    SDeckContacts stored = fullContacts(50, threePairs, surfaceCollisionMask);
    EXPECT_EQ(complaintOf(stored, rows, records), "");

    stored.collisions = makeDeckCollisions(50, 5, surfaceCollisionMask);
    EXPECT_NE(complaintOf(stored, rows, records).find("5 records of collisions for 3 contacts"), std::string::npos);
    EXPECT_EQ(records, 3u);

    stored.collisions = makeDeckCollisions(50, 0, surfaceCollisionMask);
    EXPECT_EQ(complaintOf(stored, rows, records), "") << "records of zeros, without a collision";
    EXPECT_EQ(records, 3u);

    stored.recordRows = 2;
    stored.records[0].values.resize(2);
    stored.records[1].values.resize(6);
    EXPECT_NE(complaintOf(stored, rows, records).find("2 rows of contact records for 3 contacts"), std::string::npos);

    stored = makeDeckContacts(50, threePairs, {}, 0x100); // no array has this bit
    stored.collisions.mask = surfaceCollisionMask;
    stored.count = 2000000000;
    EXPECT_NE(complaintOf(stored, rows, records).find("2000000000 contacts without data dropped"), std::string::npos);
    EXPECT_EQ(rows, 0u);
}

TEST(DemContacts, aDamagedBlockOfRecordsCostsNoContact)
{
    SDeckContacts stored = fullContacts(50, threePairs, surfaceCollisionMask);
    const CBytes bytes = contactFamilyBytes(makeVersion(27, 0, 3), stored);
    const qint64 recordCount = 10 + 3 * 168 + 9 + 3 * 440 + 8;
    const CLogCapture log;
    COwnFrame own;
    CContactsBase& family = own.frame.timestep.contacts.surfaceSurface;
    EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes.with(recordCount, CBytes().i32(-2))), bytes.size());
    EXPECT_EQ(family.rowCount(), 3u);
    EXPECT_EQ(family.contactRecords.count(), 0u);
    EXPECT_NE(log.text().find("contact records skipped: "), std::string::npos) << log.text();
}

// ---------------------------------------------------------------- collisions and bonds

TEST(DemCollisions, everyMaskReadsToItsLastByte)
{
    const struct
    {
        quint32 mask;
        qint64 rowBytes;
    } cases[] = {
        {surfaceCollisionMask, 208 + 2 * 116},
        {geometryCollisionMask, 208 + 116 + 52},
        {0x1, 4},
        {0x184, 8 + 24 + 4},
        {0x40000, 32},
        {0x1041000, 24 + 2 * 32},
        {0x2000001, 4}, // a bit beyond the last has no array
    };
    for (const auto& c : cases) {
        for (const bool deflated : {false, true}) {
            const CBytes bytes = collisionFamilyBytes(makeDeckCollisions(30, 2, c.mask, deflated));
            if (!deflated) {
                EXPECT_EQ(bytes.size(), 9 + 2 * c.rowBytes) << c.mask;
            }
            for (const int geometry : {0, 1}) {
                const CLogCapture log;
                CCollisions collisions;
                CCollisionsBase& family =
                    geometry ? static_cast<CCollisionsBase&>(collisions.surfaceGeometry) : collisions.surfaceSurface;
                EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes + CBytes::garbage(64)), bytes.size());
                ASSERT_EQ(family.recordCount(), 2u) << c.mask;
                const bool hasRotation = (c.mask & 1u << 18) != 0;
                EXPECT_EQ(family.first.orientation[1].w, hasRotation ? deckValue(30, 18, 1, 0) : 0.0);
                EXPECT_EQ(family.second.orientation.size(), geometry ? 0u : 2u);
                EXPECT_EQ(log.count(), geometry && (c.mask & 0x1C00000) != 0 ? 1u : 0u) << log.text();
                clearLogOnceMemory();
            }
        }
    }
}

TEST(DemCollisions, aCountWithoutArraysMeansNothing)
{
    SDeckCollisions stored;
    stored.count = 2147483647;
    const CLogCapture log;
    CCollisions collisions;
    consumedBy<CDemTimestepDataReader>(collisions.surfaceSurface, collisionFamilyBytes(stored));
    EXPECT_EQ(collisions.surfaceSurface.recordCount(), 0u);
    EXPECT_NE(log.text().find("2147483647 collisions without data dropped"), std::string::npos) << log.text();
}

// A row takes 16 + 4 x 24 + 4 + 8 bytes.
TEST(DemBonds, areReadToTheirLastByte)
{
    for (const bool deflated : {false, true}) {
        const CBytes bytes = bondFamilyBytes(makeDeckBonds(70, threePairs, {1, 0, 2}, deflated));
        if (!deflated) {
            EXPECT_EQ(bytes.size(), 5 + 3 * 124);
        }
        CBonds bonds;
        CBondsBase& family = bonds.surfaceSurface;
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(family, bytes + CBytes::garbage(64)), bytes.size());
        ASSERT_EQ(family.rowCount(), 3u);
        EXPECT_EQ(family.rows[1], threePairs[1]);
        EXPECT_EQ(family.normalForce[2], vectorOf(70, 1, 2));
        EXPECT_EQ(family.tangentialTorque[0], vectorOf(70, 4, 0));
        EXPECT_EQ(family.state, (std::vector<quint32>{1, 0, 2}));
        EXPECT_EQ(family.breakTime, (std::vector<double>{0.5, 1.5, 2.5}));
        EXPECT_EQ(family.parameters.size(), 3u);
        EXPECT_TRUE(family.lookup.empty());
    }
}

// ---------------------------------------------------------------- in a timestep

/// Pairs of the particles of sampleTimestep: 60 of one sphere, 12 of two. No row has geometry.
static SDeckPairs samplePairs()
{
    SDeckPairs pairs;
    pairs.contacts[0] = fullContacts(50, {{0, 59, 1, 23}, {0, 0, 1, 1}}, surfaceCollisionMask);
    pairs.collisions[0] = makeDeckCollisions(20, 4, surfaceCollisionMask);
    pairs.collisions[1] = makeDeckCollisions(30, 3, geometryCollisionMask);
    pairs.bonds[0] = makeDeckBonds(70, threePairs, {1, 0, 1});
    pairs.bonds[1] = makeDeckBonds(80, {{0, 1, 0, 3}}, {1});
    return pairs;
}

TEST(DemPairs, rowsThatNameWhatIsntThereAreReleasedAndReported)
{
    SDeckTimestep stored = sampleTimestep(0.125);
    stored.particles.types[1].spheres.clear(); // so that no row can name it
    stored.pairs.contacts[0] =
        makeDeckContacts(50, {{0, 59, 0, 3}, {0, 60, 0, 3}, {2, 0, 0, 0}, {1, 0, 0, 0}, {0, 5, 0, 0xFFFFFFFF}},
                         {1e-6, 1e-6, 1e-6, std::numeric_limits<double>::quiet_NaN(), -2.0});
    stored.pairs.contacts[0].collisions.mask = surfaceCollisionMask;
    stored.pairs.contacts[1] = makeDeckContacts(50, {{0, 1, 0, 0}}, {1e-6});
    stored.pairs.contacts[1].collisions.mask = geometryCollisionMask;
    const CLogCapture log;
    COwnFrame own;
    consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestepBytes(makeVersion(27, 0, 3), stored));
    CContacts& contacts = own.frame.timestep.contacts;
    EXPECT_EQ(contacts.surfaceSurface.rowCount(), 5u);
    EXPECT_EQ(contacts.liveCount(), 1u);
    EXPECT_NE(log.text().find("4 contacts released: a particle or triangle is missing"), std::string::npos)
        << "three of five and one of one, the one that was released before left out: " << log.text();
    contacts.surfaceSurface.compact();
    EXPECT_EQ(contacts.surfaceSurface.rows, (std::vector<PairRow>{{0, 59, 0, 3}}));
}

TEST(DemPairs, anOverlapThatIsNoNumberStaysAContact)
{
    SDeckTimestep stored = sampleTimestep(0.125);
    stored.pairs.contacts[0] =
        makeDeckContacts(50, {{0, 1, 0, 3}, {0, 2, 0, 3}}, {std::numeric_limits<double>::quiet_NaN(), -1e-9});
    stored.pairs.contacts[0].collisions.mask = surfaceCollisionMask;
    const CLogCapture log;
    COwnFrame own;
    consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestepBytes(makeVersion(27, 0, 3), stored));
    EXPECT_EQ(log.text(), "WARNING Legacy read: 1 contact with a negative overlap dropped.\n");
    writtenBy<CDemTimestepDataWriter>(own.frame.timestep);
    const CContactsBase& family = own.frame.timestep.contacts.surfaceSurface;
    ASSERT_EQ(family.rowCount(), 1u);
    EXPECT_TRUE(std::isnan(family.normalOverlap[0]));
}

TEST(DemPairs, aDamagedBlockIsEmptyAndTheOthersAreNot)
{
    SDeckTimestep stored = sampleTimestep(0.125);
    stored.pairs = samplePairs();
    const quint32 version = makeVersion(27, 0, 3);
    const CBytes bytes = timestepBytes(version, stored);
    const qint64 contacts = (timestepHeadBytes(version, stored) + particleTypesBytes(version, stored.particles)).size();
    const qint64 secondFamily = contacts + 8 + contactFamilyBytes(version, stored.pairs.contacts[0]).size();
    const qint64 collisions = secondFamily + contactFamilyBytes(version, stored.pairs.contacts[1]).size() + 8;
    const qint64 bonds =
        collisions + 16 +
        (collisionFamilyBytes(stored.pairs.collisions[0]) + collisionFamilyBytes(stored.pairs.collisions[1])).size();
    const struct
    {
        const char* block;
        qint64 damaged; ///< where a count stands that is damaged
    } cases[] = {{"contacts", secondFamily}, {"collisions", collisions + 8}, {"bonds", bonds + 8}};
    for (const auto& c : cases) {
        const CLogCapture log;
        COwnFrame own;
        finalizeProperty(own.contact, "Heat", {1.0, 2.0});
        CTimestepData& timestep = own.frame.timestep;
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(timestep, bytes.with(c.damaged, CBytes().i32(0x70000000))),
                  bytes.size());
        EXPECT_NE(log.text().find(std::string(c.block) + " skipped: "), std::string::npos) << log.text();
        EXPECT_EQ(timestep.time, 0.125);
        const std::string block = c.block;
        EXPECT_EQ(timestep.contacts.surfaceSurface.rowCount(), 2u) << block;
        EXPECT_EQ(timestep.collisions.surfaceSurface.recordCount(), block == "collisions" ? 0u : 4u) << block;
        EXPECT_EQ(timestep.collisions.surfaceGeometry.recordCount(), block == "collisions" ? 0u : 3u) << block;
        EXPECT_EQ(timestep.bonds.surfaceSurface.rowCount(), block == "bonds" ? 0u : 3u) << block;
        EXPECT_EQ(timestep.bonds.surfaceGeometry.rowCount(), block == "bonds" ? 0u : 1u) << block;
    }
}

/// Whatever was read must be whole enough to write.
template <class T, class TMake, class TCheck>
static void damagePairs(quint32 block, const CBytes& families, const TMake& make, const TCheck& check)
{
    damageEverywhere<CDemTimestepDataReader>(CBytes().block(block, families), make, [&](T& damaged) {
        check(damaged);
        writtenBy<CDemTimestepDataWriter>(damaged);
    });
}

TEST(DemPairs, noWordOfThemTakesTheMachinesMemory)
{
    const quint32 version = makeVersion(27, 0, 3);
    const CBytes contacts = contactFamilyBytes(version, fullContacts(50, {{0, 4, 1, 1}}, surfaceCollisionMask)) +
                            contactFamilyBytes(version, makeDeckContacts(50, {{0, 4, 1, 1}}, {1e-6}));
    CParticleTypes types(nullptr);
    types.append().resizeSlots(5);
    damagePairs<CContacts>(
        3, contacts, [] { return std::make_unique<CContacts>(nullptr); },
        [&](CContacts& damaged) {
            damaged.removeDanglingRows(types, {2, 3});
        });
    const CBytes collisions = collisionFamilyBytes(makeDeckCollisions(20, 1, surfaceCollisionMask)) +
                              collisionFamilyBytes(makeDeckCollisions(30, 1, geometryCollisionMask));
    damagePairs<CCollisions>(
        1, collisions, [] { return std::make_unique<CCollisions>(); }, [](CCollisions&) {});
    const CBytes bonds = bondFamilyBytes(makeDeckBonds(70, threePairs, {1, 0, 1})) +
                         bondFamilyBytes(makeDeckBonds(80, threePairs, {1, 1, 2}));
    damagePairs<CBonds>(
        4, bonds, [] { return std::make_unique<CBonds>(); },
        [&](CBonds& damaged) {
            damaged.surfaceSurface.rebuildLookup();
            damaged.matchParameters(types, 1.0, [](const CParticleType&, const CParticleType&) { return nullptr; });
        });
}

// ---------------------------------------------------------------- writing

TEST(DemPairs, everyMaskStoresWhatItNames)
{
    SDeckTimestep stored = sampleTimestep(0.125);
    stored.pairs = samplePairs();
    COwnFrame own;
    finalizeProperty(own.contact, "Heat", {1.0, 2.0});
    consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestepBytes(makeVersion(27, 0, 3), stored));
    stored.date = QDate::currentDate().toString("dd/MM/yy");
    // Where nothing is stored the builder keeps the head of a family: the mask of its collisions.
    for (quint32 bits = 0; bits < 64; ++bits) {
        SSaveOptions options;
        options.timestepMask = 3 | bits << 2;
        SDeckTimestep expected = stored;
        expected.timestepMask = static_cast<qint32>(options.timestepMask);
        for (std::size_t family = 0; family < 2; ++family) {
            SDeckContacts& contacts = expected.pairs.contacts[family];
            if ((options.timestepMask & (family == 0 ? 4u : 8u)) == 0)
                contacts.count = 0;
            if ((options.timestepMask & (family == 0 ? 16u : 32u)) == 0)
                contacts.collisions.count = expected.pairs.collisions[family].count = 0;
            if ((options.timestepMask & 64u) == 0)
                expected.pairs.bonds[family] = SDeckBonds();
            if (contacts.count == 0 || (options.timestepMask & 128u) == 0)
                contacts.properties = SDeckCustomProperties();
        }
        ASSERT_EQ(firstDifference(timestepBytes(makeVersion(30, 0, 20), expected),
                                  writtenBy<CDemTimestepDataWriter>(own.frame.timestep, options)),
                  "")
            << "timestep mask " << options.timestepMask;
    }
}

TEST(DemPairs, fiftyOneRowsAreDeflatedAndReleasedOnesAreNotStored)
{
    for (const int count : {50, 51}) {
        SDeckTimestep stored = sampleTimestep(0.125);
        std::vector<SDeckPair> pairs;
        for (quint32 i = 0; i < static_cast<quint32>(count); ++i)
            pairs.push_back({0, i, 0, i + 1});
        const bool deflated = count > 50;
        const SDeckContacts kept = makeDeckContacts(50, pairs, std::vector<double>(pairs.size(), 1e-6), 255, deflated);
        stored.pairs.contacts[0].count = kept.count;
        stored.pairs.contacts[0].arrays = kept.arrays;
        stored.pairs.contacts[0].deflated = deflated;
        stored.pairs.bonds[0] = makeDeckBonds(70, pairs, std::vector<qint32>(pairs.size(), 1), deflated);
        stored.pairs.collisions[0] = makeDeckCollisions(20, count, surfaceCollisionMask, deflated);
        COwnFrame own;
        CTimestepData& timestep = own.frame.timestep;
        consumedBy<CDemTimestepDataReader>(timestep, timestepBytes(makeVersion(27, 0, 3), stored));
        // One more of each at the end, which goes again.
        quint32 row = noRow;
        timestep.contacts.surfaceSurface.allocateRow(row, true);
        timestep.contacts.surfaceSurface.releaseRow(row);
        timestep.bonds.surfaceSurface.allocateRow(row, true);
        timestep.bonds.surfaceSurface.state[row] = eDroppedBond;
        stored.date = QDate::currentDate().toString("dd/MM/yy");
        EXPECT_EQ(
            firstDifference(timestepBytes(makeVersion(30, 0, 20), stored), writtenBy<CDemTimestepDataWriter>(timestep)),
            "");
    }
}

} // namespace NBrenmark
