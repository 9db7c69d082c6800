// The creator block, slot by slot and whole: what each version stores, and not one byte more.
#include "io/dem/dem_testing.h"
#include "maths/axis_angle.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

namespace NBrenmark {

// ---------------------------------------------------------------- bare values

TEST(DemPoints, haveTwoAnglesOfWhichTheSecondCounts)
{
    CAxisAngle axis;
    axis.end.y = 5.0;
    axis.angle = 8.0;
    CByteStream target;
    CDemCreatorDataWriter writer(target.stream);
    writer.writeAxisAngle(axis);
    EXPECT_EQ(target.written(), CBytes().f64s({0, 0, 0, 0, 5, 0, 0, 8}));
}

// ---------------------------------------------------------------- particle types

TEST(DemParticleType, givesEachBitItsArray)
{
    // Every array alone, then all: the builder says how many bytes a row takes.
    for (int bit = -1; bit <= 12; ++bit) {
        const qint32 fields = bit < 0 ? deckFields | 1 << 11 | 1 << 12 : 1 << bit;
        SDeckParticleType stored;
        stored.name = "Ball";
        stored.rows = makeDeckRows(5, 3, fields);
        if (bit == 9 || bit == 10)
            stored.rows.count = 0; // bits without an array can't announce rows
        const CBytes bytes = particleTypeBytes(makeVersion(20, 0, 16), stored);
        CParticleType type(nullptr);
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(type, bytes + CBytes::garbage(64), makeVersion(20, 0, 16)),
                  bytes.size())
            << bit;
        EXPECT_EQ(type.dataMask, static_cast<quint32>(fields));
        EXPECT_EQ(type.slotCount(), static_cast<quint32>(stored.rows.count));
        if (bit >= 0)
            continue;
        EXPECT_EQ(type.ids, (std::vector<qint32>{5, 6, 7}));
        EXPECT_EQ(type.velocity[1].y, deckValue(5, 1, 1, 1));
        EXPECT_EQ(type.position[2].z, deckValue(5, 2, 2, 2));
        EXPECT_EQ(type.orientation[0].z, deckValue(5, 3, 0, 3));
        EXPECT_EQ(type.angularVelocity[1].x, deckValue(5, 4, 1, 0));
        EXPECT_EQ(type.scale[2], deckValue(5, 5, 2, 0));
        EXPECT_EQ(type.forceTorque[0][6], deckValue(5, 6, 0, 6));
        EXPECT_EQ(type.unscaledForceTorque[1][5], deckValue(5, 7, 1, 5));
        EXPECT_EQ(type.externalForceTorque[2][4], deckValue(5, 8, 2, 4));
        EXPECT_EQ(type.electrostatic.charge[1], deckValue(5, 11, 1, 0));
        EXPECT_EQ(type.electrostatic.electrostaticForce[2].y, deckValue(5, 12, 2, 1));
        EXPECT_EQ(type.creationTime, std::vector<double>(3, 0.0));
    }
}

TEST(DemParticleType, deflatesFromFiftyOneRowsOn)
{
    for (const int rows : {50, 51}) {
        SDeckParticleType stored;
        stored.name = "Ball";
        stored.rows = makeDeckRows(1, rows, deckFields, rows > 50);
        const CBytes bytes = particleTypeBytes(makeVersion(27, 0, 3), stored);
        CParticleType type(nullptr);
        consumedBy<CDemReader>(type, bytes, makeVersion(27, 0, 3));
        EXPECT_EQ(firstDifference(bytes, writtenBy<CDemWriter>(type)), "") << rows;
    }
}

TEST(DemParticleType, readsTheOldOrientation)
{
    // Nine numbers a row up to 20.0.6, of which the first four are the quaternion; then four.
    const CBytes definition = particleDefinitionBytes({});
    const CBytes nine = CBytes().rawF64({1, 2, 3, 4, 5, 6, 7, 8, 9});
    const CBytes old = definition + CBytes().i32(1).i32(1 | 1 << 3).group(CBytes().rawI32({1}) + nine, false);
    const CBytes marked = definition + CBytes().i32(1).u32(1u | 1u << 31).group(CBytes().rawI32({1}) + nine, true) +
                          CBytes().i32(0).i32(0);
    for (const auto& [version, bytes] : {std::pair(makeVersion(20, 0, 6), old), {makeVersion(27, 0, 3), marked}}) {
        CParticleType type(nullptr);
        EXPECT_EQ(consumedBy<CDemReader>(type, bytes + CBytes::garbage(9), version), bytes.size());
        ASSERT_EQ(type.orientation.size(), 1u);
        EXPECT_EQ(type.orientation[0].w, 1.0);
        EXPECT_EQ(type.orientation[0].z, 4.0);
        EXPECT_EQ(type.dataMask, quint32(eIds | eOrientation));
    }
}

TEST(DemParticleType, rowsWithoutDataAreDroppedAndReported)
{
    const CLogCapture log;
    SDeckParticleType stored;
    stored.name = "Ball";
    stored.rows.count = 0x7FFFFFFF;
    stored.rows.fields = 0;
    CParticleType type(nullptr);
    const CBytes bytes = particleTypeBytes(makeVersion(20, 0, 16), stored);
    EXPECT_EQ(consumedBy<CDemReader>(type, bytes, makeVersion(20, 0, 16)), bytes.size());
    EXPECT_EQ(type.slotCount(), 0u);
    EXPECT_NE(log.text().find("2147483647 rows without data of Ball dropped"), std::string::npos);
}

TEST(DemParticleTypes, mendAGreatestIdThatIsTooSmall)
{
    const CLogCapture log;
    SDeckParticleTypes stored = sampleTimestep(0.0).particles;
    for (const int storedMax : {72, 71, -1, 1000}) {
        stored.maxId = storedMax;
        CParticleTypes types(nullptr);
        consumedBy<CDemReader>(types, particleTypesBytes(makeVersion(20, 0, 16), stored), makeVersion(20, 0, 16));
        EXPECT_EQ(types.maxId, storedMax == 1000 ? 1000u : 72u);
        quint32 type = 9;
        quint32 slot = 9;
        EXPECT_TRUE(types.locate(72, type, slot));
        EXPECT_EQ(type, 1u);
        EXPECT_EQ(slot, 11u);
    }
    EXPECT_EQ(log.count(), 2u); // 71 and -1
}

// ---------------------------------------------------------------- custom properties

TEST(DemCustomProperties, areFittedToTheirDefinitions)
{
    struct SFitCase
    {
        const char* what;
        SDeckCustomProperties stored;
        std::vector<double> first;  ///< of width 1, initial value 7
        std::vector<double> second; ///< of width 2, initial values 8 and 9
        std::size_t messages;
    };
    const std::vector<double> initial{8, 9, 8, 9, 8, 9};
    const SFitCase cases[] = {
        {"as defined",
         {{makeDeckValues(1, 3, 1), makeDeckValues(11, 3, 2, true)}, 3},
         {1, 2, 3},
         {11, 12, 13, 14, 15, 16},
         0},
        {"nothing stored", {}, {7, 7, 7}, initial, 0},
        {"lists without items", {{makeDeckValues(1, 0, 1)}, 0}, {7, 7, 7}, initial, 0},
        {"a list less", {{makeDeckValues(1, 3, 1)}, 3}, {1, 2, 3}, initial, 1},
        {"a list more",
         {{makeDeckValues(1, 3, 1), makeDeckValues(11, 3, 2), makeDeckValues(31, 3, 60, true)}, 3},
         {1, 2, 3},
         {11, 12, 13, 14, 15, 16},
         1},
        {"an item less",
         {{makeDeckValues(1, 2, 1), makeDeckValues(11, 3, 2)}, 3},
         {1, 2, 7},
         {11, 12, 13, 14, 15, 16},
         1},
        {"an item more",
         {{makeDeckValues(1, 4, 1), makeDeckValues(11, 3, 2)}, 3},
         {1, 2, 3},
         {11, 12, 13, 14, 15, 16},
         1},
        {"wider", {{makeDeckValues(1, 3, 1), makeDeckValues(11, 3, 3)}, 3}, {1, 2, 3}, {11, 12, 14, 15, 17, 18}, 1},
        {"narrower", {{makeDeckValues(1, 3, 1), makeDeckValues(11, 3, 1)}, 3}, {1, 2, 3}, {11, 9, 12, 9, 13, 9}, 1},
    };
    for (const SFitCase& c : cases) {
        CCustomPropertyManager manager("Particle Properties", eParticleOwner);
        finalizeProperty(manager, "first", {7});
        finalizeProperty(manager, "second", {8, 9});
        CCustomPropertyData data(&manager);
        data.resize(3);
        clearLogOnceMemory();
        const CLogCapture log;
        const CBytes bytes = customPropertyBytes(c.stored);
        EXPECT_EQ(consumedBy<CDemReader>(data, bytes + CBytes::garbage(30)), bytes.size()) << c.what;
        EXPECT_EQ(data.lists[0]->values, c.first) << c.what;
        EXPECT_EQ(data.lists[1]->values, c.second) << c.what;
        EXPECT_EQ(log.count(), c.messages) << c.what << "\n" << log.text();
    }
}

TEST(DemCustomProperties, writeWhatTheBuilderWrites)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    CCustomPropertyData data(&manager);
    data.resize(3);
    const CBytes nothing = CBytes().i32(0).i32(0);
    EXPECT_EQ(writtenBy<CDemWriter>(data), nothing); // no property has values
    finalizeProperty(manager, "first", {7});
    finalizeProperty(manager, "second", {8, 9, 10});
    data.lists[1]->values = makeDeckValues(1, 3, 3).values;
    // 3 x 8 bytes stay raw, 9 x 8 are above 50.
    const SDeckCustomProperties stored{{SDeckValueList{3, 1, {7, 7, 7}, false}, makeDeckValues(1, 3, 3, true)}, 3};
    EXPECT_EQ(writtenBy<CDemWriter>(data), customPropertyBytes(stored));
    data.resize(0);
    EXPECT_EQ(writtenBy<CDemWriter>(data), nothing);
}

// ---------------------------------------------------------------- the whole block

TEST(DemCreatorData, reportsNamesThatComeTwice)
{
    SDeckCreator stored = sampleCreator();
    stored.materials.push_back(stored.materials[0]);
    stored.interactions.push_back(stored.interactions[1]);
    const CBytes pairs = CBytes().i32(2).text("a").text("b").f64(1).text("b").text("a");
    stored.particleParticle = {{"Linear Cohesion V2", 0, pairs + CBytes().f64(2)},
                               {"Linear Cohesion V2", 0, pairs + CBytes().f64(1)}}; // the same once more is no loss
    stored.forces = {{"Temperature Update", 0, CBytes().i32(2).text("Ball").f64(1).text("Ball").f64(2)}};
    COwnFrame own;
    const CLogCapture log;
    consumedBy<CDemCreatorDataReader>(own.frame.creator, creatorBytes(makeVersion(27, 0, 3), stored));
    std::string expected;
    for (const char* twice :
         {"pair of names \"a - b\"", "number of \"Ball\"", "material \"glass\"", "interaction \"glass~seed\""})
        expected += "WARNING Legacy read: " + std::string(twice) + " is stored twice: the first is dropped\n";
    EXPECT_EQ(log.text(), expected);
}

TEST(DemCreatorData, everyPrefixEndsInACleanError)
{
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(27, 0, 3)})
        expectEveryPrefixToFail<CDemCreatorDataReader>(creatorBytes(version, sampleCreator()), newCreator);
}

TEST(DemCreatorData, noWordOfItTakesTheMachinesMemory)
{
    const CBytes bytes = creatorBytes(makeVersion(27, 0, 3), sampleCreator());
    damageEverywhere<CDemCreatorDataReader>(
        bytes, newCreator, [](CCreatorData&) {}, 4);
}

TEST(DemCreatorData, writesTheCurrentFormThatTheBuilderSays)
{
    COwnFrame own;
    CCreatorData& creator = own.frame.creator;
    consumedBy<CDemCreatorDataReader>(creator, creatorBytes(makeVersion(27, 0, 3), sampleCreator()));
    const quint32 now = makeVersion(30, 0, 20);
    const CBytes expected = creatorBytes(now, sampleCreator()); // both materials are in particles
    creator.modified = true;
    EXPECT_EQ(firstDifference(expected, writtenBy<CDemCreatorDataWriter>(creator)), "");
    EXPECT_FALSE(creator.modified);
    EXPECT_EQ(creator.fileVersion, now);
}

} // namespace NBrenmark
