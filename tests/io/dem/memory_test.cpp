// What is small in a deck and large in memory: deflated zeros and counts that nothing vouches for.
#include "dem_testing.h"

#include "core/memory_ceiling.h"
#include "io/dem/dem_reader.h"
#include "model/particle_type.h"

#include <functional>

namespace NBrenmark {

constexpr quint32 manyRows = 1 << 24;
constexpr quint64 ceiling = quint64(64) << 20;

/// The most that this process had in memory since the last call, in MiB.
static quint64 peak()
{
    QFile status("/proc/self/status");
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray text = status.readAll();
    const int at = text.indexOf("VmHWM:") + 6;
    QFile reset("/proc/self/clear_refs");
    EXPECT_TRUE(reset.open(QIODevice::WriteOnly) && reset.write("5") == 1);
    return text.mid(at, text.indexOf('k', at) - at).trimmed().toULongLong() >> 10;
}

struct SLarge
{
    const char* what;
    std::function<CBytes(CBytes)> after; ///< what follows the definition of a type
    bool fits;
};

static CBytes zeros(quint64 bytes) { return CBytes(QByteArray(static_cast<int>(bytes), '\0')); }

static const SLarge largeThings[] = {
    {"ids alone, of which each makes a whole slot",
     [](CBytes b) { return b.u32(manyRows).u32(eIds).i8(1).deflated(zeros(4 * quint64(manyRows))).u32(0).u32(0); },
     false},
    {"values without a width",
     [](CBytes b) { return b.u32(1).u32(eIds).i8(0).rawI32({1}).u32(1).u32(1).u32(0x7FFFFFFF).u32(0).i8(0); }, true},
    {"values of a property that isn't defined",
     [](CBytes b) {
         b.u32(1).u32(eIds).i8(0).rawI32({1}).u32(2).u32(1);
         b.u32(1).u32(1).i8(0).rawF64({1.0});
         return b.u32(manyRows).u32(1).i8(1).deflated(zeros(8 * quint64(manyRows)));
     },
     true},
};

TEST(DemMemory, isNotTakenForWhatIsSmallInTheDeck)
{
    setMemoryCeiling(ceiling);
    for (const SLarge& c : largeThings) {
        COwnFrame own;
        finalizeProperty(own.particle, "Heat", {0.0});
        CParticleType type(&own.particle);
        const CBytes empty = writtenBy<CDemTimestepDataWriter>(type); // ends in four words: no rows, no properties
        const CBytes bytes = c.after(empty.first(empty.size() - 16));
        beginMemoryCount(eMemoryOfTimestep);
        peak();
        const quint64 before = peak();
        ECause cause = eCauseNone;
        try {
            EXPECT_EQ(consumedBy<CDemTimestepDataReader>(type, bytes), bytes.size()) << c.what;
        }
        catch (const std::exception& error) {
            cause = causeOf(error, eCauseSource);
        }
        EXPECT_EQ(cause, c.fits ? eCauseNone : eCauseMemory) << c.what;
        EXPECT_LE(peak(), before + 2 * (ceiling >> 20)) << c.what;
    }
    setMemoryCeiling(0);
}

} // namespace NBrenmark
