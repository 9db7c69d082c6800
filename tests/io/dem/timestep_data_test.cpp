// The timestep block: every version to its last byte, cut and damaged anywhere, refused where it
// holds what can't be carried.
#include "io/dem/dem_testing.h"
#include "model/geometry/geometry_group.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <QDate>
#include <gtest/gtest.h>

namespace NBrenmark {

TEST(DemTimestepData, propertiesThatAVersionDoesntStoreAreReset)
{
    const SDeckTimestep stored = sampleTimestep(0.125);
    for (const quint32 version : {makeVersion(20, 0, 23), makeVersion(27, 0, 3)}) {
        COwnFrame own;
        finalizeProperty(own.particle, "Temperature", {293.0});
        finalizeProperty(own.simulation, "Tilt", {1.0, 2.0});
        own.frame.timestep.simulationProperties.lists[0]->values = {5.0, 6.0}; // of the timestep before
        consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestepBytes(version, stored));
        EXPECT_EQ(own.frame.timestep.simulationProperties.lists[0]->values, (std::vector<double>{1.0, 2.0}));
        EXPECT_EQ(own.frame.timestep.particleTypes.types[0]->customProperties.lists[0]->values,
                  std::vector<double>(60, 293.0));
    }
}

/// A timestep with few particles, of which one type's are deflated.
static CBytes smallTimestep(quint32 version)
{
    SDeckTimestep stored = sampleTimestep(0.125);
    stored.particles.types[0].rows = makeDeckRows(1, 3, deckFields, true);
    stored.particles.types[1].rows = makeDeckRows(4, 2);
    return timestepBytes(version, stored);
}

TEST(DemTimestepData, everyPrefixEndsInACleanError)
{
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(27, 0, 3)})
        expectEveryPrefixToFail<CDemTimestepDataReader>(smallTimestep(version), newTimestep);
}

TEST(DemTimestepData, noWordOfItTakesTheMachinesMemory)
{
    damageEverywhere<CDemTimestepDataReader>(
        smallTimestep(makeVersion(27, 0, 3)), newTimestep, [](CTimestepData&) {}, 4);
}

// ---------------------------------------------------------------- writing

/// A timestep as the builder has it, in a frame.
static void fill(COwnFrame& own)
{
    consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestepBytes(makeVersion(27, 0, 3), sampleTimestep(0.125)));
}

TEST(DemTimestepData, writesTheCurrentFormThatTheBuilderSays)
{
    COwnFrame own;
    fill(own);
    SDeckTimestep expected = sampleTimestep(0.125);
    expected.date = QDate::currentDate().toString("dd/MM/yy");
    // 60 rows are deflated, 12 aren't: as in the sample.
    const CBytes written = writtenBy<CDemTimestepDataWriter>(own.frame.timestep);
    EXPECT_EQ(firstDifference(timestepBytes(makeVersion(30, 0, 20), expected), written), "");
}

TEST(DemTimestepData, storesWhatTheMasksKeep)
{
    COwnFrame own;
    finalizeProperty(own.particle, "Temperature", {293.0});
    finalizeProperty(own.simulation, "Tilt", {1.0});
    fill(own);
    SSaveOptions options;
    options.fullSave = false;
    options.particleMask = 0; // no velocities, angular velocities, forces, properties
    options.writeCustomProperties = false;
    SDeckTimestep expected = sampleTimestep(0.125);
    expected.date = QDate::currentDate().toString("dd/MM/yy");
    expected.isFull = 0;
    expected.particleMask = 0;
    const qint32 kept = deckFields & ~(1 << 1 | 1 << 4 | 7 << 6);
    expected.particles.types[0].rows = makeDeckRows(1, 60, kept, true);
    expected.particles.types[1].rows = makeDeckRows(61, 12, kept);
    EXPECT_EQ(firstDifference(timestepBytes(makeVersion(30, 0, 20), expected),
                              writtenBy<CDemTimestepDataWriter>(own.frame.timestep, options)),
              "");
    EXPECT_FALSE(own.frame.timestep.isFull);

    options.timestepMask = 0; // and no rows at all
    expected.timestepMask = 0;
    for (SDeckParticleType& type : expected.particles.types) {
        type.rows = SDeckRows();
        type.rows.fields = kept;
    }
    EXPECT_EQ(firstDifference(timestepBytes(makeVersion(30, 0, 20), expected),
                              writtenBy<CDemTimestepDataWriter>(own.frame.timestep, options)),
              "");
}

TEST(DemTimestepData, anotherTimeStandsInOnce)
{
    COwnFrame own;
    fill(own);
    CByteStream target;
    target.stream.options.overrideTime = true;
    target.stream.options.timeOverride = 4.75;
    CDemTimestepDataWriter writer(target.stream);
    own.frame.timestep.write(writer);
    const qint64 second = target.stream.position();
    own.frame.timestep.write(writer);
    for (const auto& [at, time] : {std::pair(qint64(0), 4.75), {second, 0.125}}) {
        COwnFrame read;
        consumedBy<CDemTimestepDataReader>(read.frame.timestep, target.written().from(at));
        EXPECT_EQ(read.frame.timestep.time, time);
    }
    EXPECT_EQ(own.frame.timestep.time, 0.125);
}

} // namespace NBrenmark
