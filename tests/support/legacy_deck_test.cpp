// The builders against a deck that somebody else wrote: the sample pile, byte for byte, and byte
// counts worked out by hand for the versions before it.
#include "support/legacy_deck.h"
#include "support/paths.h"

#include <gtest/gtest.h>

namespace NBrenmark {

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
    EXPECT_EQ(
        firstDifference(built, CBytes::fromFile(QString::fromStdString(sampleDeck("pile-27.dem"))).first(built.size())),
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

} // namespace NBrenmark
