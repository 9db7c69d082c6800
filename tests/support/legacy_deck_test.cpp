// The builders against a deck that somebody else wrote: the sample pile, byte for byte, and byte
// counts worked out by hand for the versions before it.
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"

#include <zlib.h>
#include <gtest/gtest.h>
#include <cstring>

namespace NBrenmark {

static CBytes sampleFile(const char* name) { return CBytes::fromFile(QString::fromStdString(sampleDeck(name))); }

/// Walks stored bytes: what is expected next must be there, what lies deflated is inflated.
class CWalk
{
public:
    explicit CWalk(CBytes stored) : stored(std::move(stored)) {}

    testing::AssertionResult next(const CBytes& expected)
    {
        const std::string difference = firstDifference(expected, stored.from(position).first(expected.size()));
        position += expected.size();
        return difference.empty() ? testing::AssertionSuccess()
                                  : testing::AssertionFailure() << "at " << position << ": " << difference;
    }

    qint32 peekI32(qint64 ahead = 0) const
    {
        quint32 value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(stored.bytes().at(static_cast<int>(position + ahead) + i));
        return static_cast<qint32>(value);
    }

    double peekF64() const
    {
        const quint64 bits = quint64(quint32(peekI32())) << 32 | quint32(peekI32(4));
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    /// The content of an array group of so many bytes, flag and all.
    CBytes group(int bytes)
    {
        const bool isDeflated = stored.bytes().at(static_cast<int>(position++)) != 0;
        if (!isDeflated) {
            position += bytes;
            return stored.from(position - bytes).first(bytes);
        }
        QByteArray plain(bytes + 1, '\0');
        const QByteArray packed = stored.bytes().mid(static_cast<int>(position));
        z_stream z{};
        z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
        z.avail_in = static_cast<uInt>(packed.size());
        z.next_out = reinterpret_cast<Bytef*>(plain.data());
        z.avail_out = static_cast<uInt>(plain.size());
        inflateInit(&z);
        const int result = inflate(&z, Z_FINISH);
        inflateEnd(&z);
        EXPECT_EQ(result, Z_STREAM_END);
        position += static_cast<qint64>(z.total_in);
        return CBytes(plain.left(static_cast<int>(z.total_out)));
    }

    bool atEnd() const { return position == stored.size(); }
    qint64 at() const { return position; }

private:
    CBytes stored;
    qint64 position = 0;
};

// ---------------------------------------------------------------- the sample pile, version 27.0.3

static SDeckParticleTypes pileTypes()
{
    SDeckParticleType glass;
    glass.name = "Glass bead";
    glass.materialName = "glass";
    glass.rawMass = 4.2893211697012646e-05;
    glass.rawVolume = 1.7157284678805058e-08;
    glass.rawInertia = {4.392264877774096e-11, 4.392264877774096e-11, 4.392264877774096e-11};
    glass.spheres = {{"surface 0", 0.0016, 0.0016, {}}};
    SDeckParticleType seed;
    seed.name = "Seed (oval)";
    seed.materialName = "seed";
    seed.rawMass = 1.0133521263419233e-05;
    seed.rawVolume = 7.238229473870881e-09;
    seed.rawInertia = {5.836908247729478e-12, 7.296135309661846e-12, 7.296135309661846e-12};
    const double offset = 0.00047999999999999996;
    seed.spheres = {{"core", 0.0012, 0.0012, {}},
                    {"left", 0.0010199999999999999, 0.0009599999999999999, {-offset, 0.0, 0.0}},
                    {"right", 0.0010199999999999999, 0.0009599999999999999, {offset, 0.0, 0.0}}};
    SDeckParticleTypes particles;
    particles.types = {glass, seed};
    return particles;
}

static SDeckCreator pileModel()
{
    SDeckCreator c;
    c.particles = pileTypes();
    c.materials = {{"glass", 0.3, 1923076.923076923, 2500.0, 0.0},
                   {"seed", 0.25, 3200000.0, 1400.0, 0.0},
                   {"steel", 0.3, 70000000000.0, 7850.0, 0.0}};
    c.interactions = {{"glass~glass", 0.5, 0.5, 0.02},
                      {"glass~seed", 0.45, 0.4, 0.02},
                      {"seed~seed", 0.4, 0.35, 0.02},
                      {"glass~steel", 0.5, 0.45, 0.02},
                      {"seed~steel", 0.45, 0.4, 0.02}};
    c.title = "Pile";
    c.description = "Two kinds of grains fall into a box and settle. Positions, velocities and forces come from a "
                    "granular solver.";
    return c;
}

TEST(DeckBuilder, buildsTheModelOfTheSamplePileByteForByte)
{
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.announcedTimesteps = 4;
    deck.creator(pileModel());
    const CBytes built = deck.segment(0);
    EXPECT_EQ(firstDifference(built, sampleFile("pile-27.dem").first(built.size())), "");
}

TEST(DeckBuilder, buildsTheTimestepsOfTheSamplePileByteForByte)
{
    const quint32 version = makeVersion(27, 0, 3);
    const int rows[] = {523, 1477};
    const double times[] = {0.09, 0.18, 0.24, 0.3};
    const int bytesOfRow = 4 + 24 + 24 + 32 + 24 + 8 + 3 * 56;

    SDeckTimestep pile;
    pile.particles = pileTypes();
    pile.runNumber = 3;
    CWalk walk(sampleFile("pile-27.dem"));
    const CBytes model = creatorBytes(version, pileModel());
    ASSERT_TRUE(walk.next(CLegacyDeck(version).header().with(8, CBytes().i32(4))));
    ASSERT_TRUE(walk.next(CBytes().text("class CGenericData") + model));
    for (int step = 0; step < 4; ++step) {
        ASSERT_TRUE(walk.next(CBytes().text("class CTimestepData64").u32(0).u64(32)));
        ASSERT_TRUE(walk.next(timestepHeadBytes(version, pile)));
        ASSERT_TRUE(walk.next(CBytes().u32(8138).i32(2000).i32(2)));
        for (int type = 0; type < 2; ++type) {
            ASSERT_TRUE(walk.next(particleDefinitionBytes(pile.particles.types[type])));
            ASSERT_TRUE(walk.next(CBytes().i32(rows[type]).i32(deckFields)));
            const CBytes arrays = walk.group(rows[type] * bytesOfRow);
            ASSERT_EQ(arrays.size(), rows[type] * bytesOfRow);
            // Ids run through both types; after them the velocities, which tells where an array begins.
            EXPECT_EQ(arrays.first(8), CBytes().rawI32({type == 0 ? 1 : 524, type == 0 ? 2 : 525}));
            ASSERT_TRUE(walk.next(CBytes().i32(2).i32(rows[type])));
            for (const int width : {1, 3}) {
                ASSERT_TRUE(walk.next(CBytes().i32(rows[type]).i32(width)));
                ASSERT_EQ(walk.group(rows[type] * width * 8).size(), rows[type] * width * 8);
            }
        }
        ASSERT_TRUE(walk.next(pairBytes(version, SDeckPairs())));
        ASSERT_TRUE(walk.next(CBytes().i32(0)));

        // The numbers that differ from step to step are taken from the deck, all that frames them is built.
        SDeckTimestep tail;
        tail.runNumber = 3;
        tail.time = walk.peekF64();
        tail.elapsedTime = 12.5 * (step + 1);
        EXPECT_NEAR(tail.time, times[step], 1e-15);
        const CBytes built = timestepTailBytes(version, tail);
        ASSERT_TRUE(walk.next(built.first(8 + 8 + 4 + 4 + 16)));
        double energies[10];
        for (double& energy : energies) {
            energy = walk.peekF64();
            walk.next(CBytes().f64(energy));
        }
        EXPECT_EQ(energies[2], 0.25);
        EXPECT_DOUBLE_EQ(energies[7], energies[0] + energies[1]);
        ASSERT_TRUE(walk.next(CBytes().i32(2).text("Seed (oval)").i32(2 * step).text("Glass bead").i32(step)));
        SDeckCustomProperties own;
        own.itemCount = 1;
        own.lists = {{1, 1, {1.5 + 0.1 * step}, false}, {1, 3, {1.0 * step, 2.0 * step, -1.0}, false}};
        ASSERT_TRUE(walk.next(customPropertyBytes(own)));
    }
    EXPECT_TRUE(walk.atEnd());
}

TEST(DeckBuilder, buildsIndexSettingsAndConfigurationOfTheSamplePile)
{
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(pileModel());
    SDeckTimestep t;
    t.time = 0.09000000000000001;
    deck.timestep(t);
    EXPECT_EQ(firstDifference(deck.index().with(0, CBytes().u32(4)), sampleFile("pile-27.idx").first(28)), "");

    const std::vector<SSettingsProperty> particle = {{"Temperature", 0, 1, 20, {293.15}},
                                                     {"Wear Depth", 0, 3, 11, {0.0, 0.0, 0.0}},
                                                     {"Not yet used", 0, 2, 1, {1.0, 2.0}}};
    const std::vector<SSettingsProperty> simulation = {{"Feed Rate", 0, 1, 24, {1.5}},
                                                       {"Wind", 0, 3, 17, {0.0, 0.0, 0.0}}};
    EXPECT_EQ(
        firstDifference(settingsWith(makeVersion(27, 0, 3), 1, particle, 1, simulation), sampleFile("pile-27.ess")),
        "");
    EXPECT_EQ(firstDifference(
                  configurationFile(
                      "27.0.3", {"PROCESSOR:GENERAL:FIXED TIMESTEP=DOUBLE:1e-05", "PROCESSOR:GENERAL:NUM THREADS=INT:8",
                                 "PROCESSOR:WRITE:INTERVAL=DOUBLE:0.03", "PROCESSOR:DISPLAY:PARTICLES=BOOLEAN:TRUE",
                                 "ANALYST:ITERATION OPTIONS=STD INT SET:1,5,10,250",
                                 "ANALYST:IMAGE EXPORT:FILE NAME=QT STRING:pile view.png",
                                 "SITE NOTES:OWNER=STD STRING:line one\\nline two: kept = yes",
                                 "SITE NOTES:ORIGIN=3D POINT:(0, 0.5, -1e-05)"}),
                  sampleFile("pile-27.dfg")),
              "");
}

// ---------------------------------------------------------------- older versions, counted by hand

struct SVersionCase
{
    quint32 version;
    int stamp;    ///< fileVersion 4, reserved 4; from 20.0.18 revision 4 and branch 4 + 28
    int model;    ///< a creator block without anything in it, behind its stamp
    int head;     ///< of a timestep, behind its stamp
    int families; ///< contacts, collisions and bonds, none of each
    int type;     ///< what a particle type takes behind its fields word
    int tail;     ///< of a timestep, with an empty date
    int indexEntry;
};

// The model: gravity and domain 24 + 48 + 12, three chains 12, particle types 12, two maps 8, geometry 4,
// title 4 + 4 + 8, description 4, limits 24; below 22.0.0 the stream flag 4.
// A contact family: count, flag, mask 9; from 20.0.17 flag 1, collisions 9, an empty block of records 24;
// from 22.1.1 custom properties 8. Collisions 16 + 2 x 9, bonds 16 + 2 x 5.
// The tail: time, elapsed, run, date 24, energies 80, removed particles 4; from 23.0.0 custom properties 8.
// clang-format off
const SVersionCase versionCases[] = {
    // version                  stamp  model  head  families             type  tail  index entry
    {makeVersion(20, 0, 16),        8,   168,    4, 4 + 18,                 0,  108, 16},
    {makeVersion(3, 0, 16),         8,   168,    4, 4 + 18,                 0,  108, 16}, // counts as 20.0.16
    {makeVersion(20, 0, 17),        8,   168,    4, 16 + 86 + 34,           0,  108, 16},
    {makeVersion(20, 0, 18),       44,   168,    4, 16 + 86 + 34,           0,  108, 16},
    {makeVersion(20, 0, 22),       44,   168,    4, 16 + 86 + 34,           0,  108, 20},
    {makeVersion(21, 0, 0),        44,   168,    4, 16 + 86 + 34,           8,  108, 20},
    {makeVersion(21, 0, 2),        44,   168,    4, 16 + 86 + 34 + 26,      8,  108, 20},
    {makeVersion(22, 0, 0),        44,   164,   20, 16 + 86 + 34 + 26,      8,  108, 24},
    {makeVersion(22, 1, 1),        44,   164,   20, 16 + 102 + 34 + 26,     8,  108, 24},
    {makeVersion(23, 0, 0),        44,   164,   20, 16 + 102 + 34 + 26,     8,  116, 24},
    {makeVersion(27, 0, 3),        44,   164,   20, 16 + 102 + 34 + 26,     8,  116, 24},
};
// clang-format on

TEST(DeckBuilder, takesTheBytesThatEachVersionStores)
{
    SDeckCreator bare;
    bare.particleParticle.clear();
    bare.particleGeometry.clear();
    bare.title = "";
    bare.description = "";
    SDeckTimestep empty;
    empty.date = "";
    for (const SVersionCase& c : versionCases) {
        SCOPED_TRACE(versionText(c.version).toStdString());
        EXPECT_EQ(stampBytes(c.version, {}).size(), c.stamp);
        EXPECT_EQ(creatorBytes(c.version, bare).size(), c.stamp + c.model);
        EXPECT_EQ(timestepHeadBytes(c.version, empty).size(), c.stamp + c.head);
        EXPECT_EQ(pairBytes(c.version, SDeckPairs()).size(), c.families);
        const SDeckParticleType type;
        EXPECT_EQ(particleTypeBytes(c.version, type).size() - particleDefinitionBytes(type).size() - 8, c.type);
        EXPECT_EQ(timestepTailBytes(c.version, empty).size(), c.tail);
        EXPECT_EQ(timestepBytes(c.version, empty).size(), c.stamp + c.head + 12 + c.families + 4 + c.tail);
        const CLegacyDeck deck = sampleDeckOf(c.version);
        EXPECT_EQ(deck.index().size(), 4 + 3 * c.indexEntry);
    }
}

TEST(DeckBuilder, wordsOfTheStampAndTheGeometryForm)
{
    const SDeckStamp branched{1, 7};
    EXPECT_EQ(stampBytes(makeVersion(21, 0, 2), branched).size(), 44 + 4);
    EXPECT_EQ(stampBytes(makeVersion(21, 0, 3), branched).size(), 44);
    SDeckTimestep full;
    full.fullGeometry = 1;
    const CBytes stamp = stampBytes(makeVersion(21, 0, 4), full.stamp);
    EXPECT_EQ(timestepHeadBytes(makeVersion(21, 0, 4), full), stamp + CBytes().i32(1).i32(0));
    EXPECT_EQ(timestepHeadBytes(makeVersion(22, 0, 0), full).size(), 44 + 20); // there the form isn't chosen
}

// ---------------------------------------------------------------- families of files

TEST(DeckBuilder, blocksStandWhereTheIndexAndThePairsSay)
{
    CLegacyDeck deck(makeVersion(21, 0, 0));
    SDeckTimestep oldForm = sampleTimestep(0.2);
    oldForm.shortOffset = true;
    deck.creator(sampleCreator()).timestep(sampleTimestep(0.1)).nextSegment().timestep(oldForm);
    deck.nextSegment().creator(sampleCreator()).timestep(sampleTimestep(0.3));

    const CTempFolder folder;
    const QString path = deck.write(folder.path(), "run[1]");
    EXPECT_EQ(path, folder.path("run[1].dem"));
    EXPECT_EQ(folder.names(), QStringList({"run[1].dem", "run[1].dem.scn.1", "run[1].dem.scn.2", "run[1].idx"}));

    const auto at = [&](const SDeckPlace& place) {
        const QString name = place.segment == 0 ? path : path + ".scn." + QString::number(place.segment);
        return CBytes::fromFile(name).from(static_cast<qint64>(place.offset));
    };
    const auto startsWith = [](const CBytes& bytes, const CBytes& start) { return bytes.first(start.size()) == start; };
    for (const SDeckPlace& place : deck.creatorPlaces())
        EXPECT_TRUE(startsWith(at(place), CBytes().text("class CGenericData")));
    const CBytes longName = CBytes().text("class CTimestepData64");
    EXPECT_TRUE(startsWith(at(deck.timestepPlaces()[0]), CBytes(longName).u32(0).u64(32)));
    EXPECT_TRUE(startsWith(at(deck.timestepPlaces()[1]), CBytes().text("class CTimestepData").u32(0).u32(32)));
    EXPECT_TRUE(startsWith(at(deck.timestepPlaces()[2]), CBytes(longName).u32(2).u64(0)));
    EXPECT_EQ(deck.timestepPlaces()[1].offset, 0u); // a segment has no header
    EXPECT_EQ(folder.read("run[1].idx"), CBytes()
                                             .u32(3)
                                             .f64(0.1)
                                             .u32(0)
                                             .u64(deck.timestepPlaces()[0].offset)
                                             .f64(0.2)
                                             .u32(1)
                                             .u64(0)
                                             .f64(0.3)
                                             .u32(2)
                                             .u64(deck.creatorPlaces()[1].size)
                                             .bytes());
}

TEST(DeckBuilder, rowsHoldEveryArrayThatTheFieldsAnnounce)
{
    EXPECT_EQ(makeDeckRows(1, 3).arrays.size(), 3 * (4 + 24 + 24 + 32 + 24 + 8 + 56 + 56 + 56));
    EXPECT_EQ(makeDeckRows(1, 3, 1 << 11 | 1 << 12).arrays.size(), 3 * (8 + 24));
    EXPECT_EQ(makeDeckRows(1, 3, 1 << 13).arrays.size(), 0);
    const SDeckRows rows = makeDeckRows(5, 2, 1 | 1 << 5);
    EXPECT_EQ(rows.arrays, CBytes().rawI32({5, 6}).rawF64({5.125, 6.125}));
    EXPECT_EQ(particleRowBytes(makeDeckRows(1, 0)).size(), 8);    // no flag without rows
    EXPECT_EQ(particleRowBytes(makeDeckRows(1, 3, 0)).size(), 8); // nor without fields
}

// The encodings, from their definitions.
TEST(Bytes, encodesNumbersTextsAndBlocks)
{
    EXPECT_EQ(CBytes().i8(-1).i32(-2).u64(0x0102030405060708).bytes().toHex().toStdString(),
              "fffffffffe0102030405060708");
    EXPECT_EQ(CBytes().f64(-2.5).rawF64({-2.5}).rawI32({258}).bytes().toHex().toStdString(), "c004000000000000"
                                                                                             "00000000000004c0"
                                                                                             "02010000");
    EXPECT_EQ(CBytes().text(QStringLiteral("a€")).text(QString()).text("").bytes().toHex().toStdString(),
              "00000004006120ac"
              "ffffffff"
              "00000000");
    EXPECT_EQ(CBytes().block(4, CBytes().i8(9)).bytes().toHex().toStdString(), "000000040000000109"
                                                                               "0000000100000004");
    EXPECT_EQ(CBytes().block(2, {}).size(), 16);
}

TEST(Bytes, areCutPatchedAndCompared)
{
    const CBytes bytes = CBytes().u32(0x01020304);
    EXPECT_EQ(bytes.first(2) + bytes.from(2), bytes);
    EXPECT_EQ(bytes.with(1, CBytes().i8(9)), CBytes().u32(0x01090304));
    EXPECT_EQ(firstDifference(bytes, bytes), "");
    EXPECT_NE(firstDifference(bytes, bytes.first(3)), "");
    CWalk walk(CBytes().group(bytes, true).u32(7));
    EXPECT_EQ(walk.group(4), bytes);
    EXPECT_EQ(walk.peekI32(), 7); // the deflated stream ends where the next number begins
}

} // namespace NBrenmark
