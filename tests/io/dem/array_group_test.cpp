// Array groups, raw and deflated, whole and damaged. Deflated bytes come from zlib's one-call
// interface by way of the builder, not from the compressors under test.
#include "io/dem/array_group.h"

#include "core/stop_flag.h"
#include "io/dem/dem_testing.h"

#include <gtest/gtest.h>

namespace NBrenmark {

static std::vector<double> noisyValues(std::size_t count)
{
    std::vector<double> values(count);
    quint64 state = 88172645463325252ull;
    for (double& value : values) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        value = static_cast<double>(state >> 11) * 0x1p-53;
    }
    return values;
}

struct SGroupRead
{
    std::vector<qint32> ids;
    std::vector<double> values;
    qint64 end = -1;
    std::string error;
};

/// Reads ids and values of a group of so many rows.
static SGroupRead readGroup(const CBytes& bytes, bool deflated, quint32 rows)
{
    SGroupRead read;
    CByteStream source(bytes);
    try {
        CArrayGroupReader arrays(source.stream, deflated, rows);
        arrays.rows("ids", read.ids);
        arrays.rows("values", read.values);
        arrays.finish();
        read.end = source.stream.position();
    }
    catch (const std::exception& error) {
        read.error = error.what();
    }
    return read;
}

static CBytes groupBytes(const std::vector<qint32>& ids, const std::vector<double>& values)
{
    return CBytes().rawI32(ids).rawF64(values);
}

TEST(ArrayGroup, readsRowsAndStandsOnTheByteBehind)
{
    // The last array is longer than the 16 MiB that are believed at first, and deflates to much less.
    for (const std::size_t rows : {std::size_t(1), std::size_t(51), std::size_t(50000), std::size_t(2200000)}) {
        std::vector<qint32> ids(rows);
        for (std::size_t i = 0; i < rows; ++i)
            ids[i] = static_cast<qint32>(i) - 5;
        const std::vector<double> values = rows < 1000000 ? noisyValues(rows) : std::vector<double>(rows, 0.25);
        const CBytes arrays = groupBytes(ids, values);
        for (const bool deflated : {false, true}) {
            const CBytes stored = deflated ? CBytes().deflated(arrays) : arrays;
            const SGroupRead read = readGroup(stored + CBytes::garbage(5000), deflated, static_cast<quint32>(rows));
            EXPECT_EQ(read.error, "");
            EXPECT_EQ(read.end, stored.size()) << rows << " rows, deflated " << deflated;
            EXPECT_TRUE(read.ids == ids && read.values == values);
        }
    }
}

TEST(ArrayGroup, writesWhatTheBuilderReads)
{
    const std::vector<qint32> ids(300, 7);
    const std::vector<double> values = noisyValues(300);
    for (const bool deflated : {false, true}) {
        CByteStream target;
        CArrayGroupWriter arrays(target.stream, deflated, 300);
        arrays.rows("ids", ids);
        arrays.rows("values", values);
        arrays.finish();
        const CBytes plain = groupBytes(ids, values);
        // The same library at the same level: one stream for both arrays gives the same bytes.
        EXPECT_EQ(target.written(), deflated ? CBytes().deflated(plain) : plain);
    }
}

TEST(ArrayGroup, refusesAnArrayOfAnotherLength)
{
    CByteStream target;
    CArrayGroupWriter arrays(target.stream, false, 3);
    EXPECT_THROW(arrays.rows("ids", std::vector<qint32>(2)), std::length_error);
}

TEST(ArrayGroup, believesNoCount)
{
    const std::vector<qint32> ids(10, 1);
    const std::vector<double> values(10, 1.0);
    const CBytes plain = groupBytes(ids, values);
    EXPECT_EQ(readGroup(plain, false, 0x7FFFFFFF).error,
              "byte 0: 2147483647 ids announced (4 bytes each), 120 bytes follow");
    EXPECT_EQ(readGroup(plain, false, 11).error, "byte 44: 11 values announced (8 bytes each), 76 bytes follow");
    const CBytes deflated = CBytes().deflated(plain);
    EXPECT_NE(readGroup(deflated, true, 0x7FFFFFFF).error.find("announced"), std::string::npos);
    // Within the bound of what deflate can do, the bytes themselves are missed.
    EXPECT_NE(readGroup(deflated, true, 11).error.find("too early"), std::string::npos);
    EXPECT_NE(readGroup(deflated, true, 9).error.find("more bytes than announced"), std::string::npos);
}

TEST(ArrayGroup, endsCleanlyInEveryCutAndEveryFlippedByte)
{
    const std::vector<qint32> ids(100, 3);
    const std::vector<double> values = noisyValues(100);
    const CBytes stored = CBytes().deflated(groupBytes(ids, values));
    for (qint64 cut = 0; cut < stored.size(); ++cut)
        EXPECT_NE(readGroup(stored.first(cut), true, 100).error, "") << "cut at " << cut;
    for (qint64 at = 0; at < stored.size(); ++at) {
        const int flipped = static_cast<unsigned char>(stored.bytes().at(static_cast<int>(at))) ^ 0x41;
        const SGroupRead read = readGroup(stored.with(at, CBytes().i8(static_cast<signed char>(flipped))), true, 100);
        EXPECT_TRUE(!read.error.empty() || (read.ids == ids && read.values == values)) << "flipped at " << at;
    }
}

TEST(ArrayGroup, leavesAReadThatIsToStop)
{
    requestStop();
    std::vector<qint32> ids;
    CByteStream source(CBytes().rawI32({1, 2}));
    CArrayGroupReader arrays(source.stream, false, 2);
    EXPECT_THROW(arrays.rows("ids", ids), CReadStopped);
    clearStop();
}

TEST(ArrayGroup, consumesAnEmptyDeflatedGroup)
{
    const CBytes stored = CBytes().deflated(CBytes());
    EXPECT_EQ(readGroup(stored + CBytes::garbage(20), true, 0).end, stored.size());
}

} // namespace NBrenmark
