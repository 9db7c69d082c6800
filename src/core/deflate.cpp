// Deflating with the libraries that this build was made with: which of them serves which effort.
#include "core/deflate.h"

#include <zlib.h>

#ifndef BRENMARK_WITHOUT_ISAL
#include <isa-l/igzip_lib.h>
#endif
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
#include <libdeflate.h>
#endif

#include <algorithm>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <utility>

namespace NBrenmark {

namespace {

constexpr int bestLevel = 6;
[[maybe_unused]] constexpr int thoroughLevel = 5;
[[maybe_unused]] constexpr int quickLevel = 1;

#if defined(BRENMARK_WITHOUT_ISAL) && defined(BRENMARK_WITHOUT_LIBDEFLATE)
constexpr bool hasQuickEncoder = false;
#else
constexpr bool hasQuickEncoder = true;
#endif

// Each encoder gives the size of the stream, or 0 if it has no room for it.

[[maybe_unused]] std::size_t byZlib(int level, const char* data, std::size_t size, char* target, std::size_t room)
{
    uLongf length = room;
    switch (compress2(reinterpret_cast<Bytef*>(target), &length, reinterpret_cast<const Bytef*>(data), size, level)) {
    case Z_OK: return length;
    case Z_BUF_ERROR: return 0;
    case Z_MEM_ERROR: throw std::bad_alloc();
    default: throw std::runtime_error("zlib can't deflate");
    }
}

#ifndef BRENMARK_WITHOUT_LIBDEFLATE
std::size_t byLibdeflate(int level, const char* data, std::size_t size, char* target, std::size_t room)
{
    struct SFree
    {
        void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
    };
    // A thread deflates many blocks, and a compressor takes some time to make.
    static thread_local std::unique_ptr<libdeflate_compressor, SFree> compressors[bestLevel + 1];
    auto& compressor = compressors[level];
    if (!compressor)
        compressor.reset(libdeflate_alloc_compressor(level));
    if (!compressor)
        throw std::bad_alloc();
    return libdeflate_zlib_compress(compressor.get(), data, size, target, room);
}
#endif

std::size_t thorough(int level, const char* data, std::size_t size, char* target, std::size_t room)
{
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
    return byLibdeflate(level, data, size, target, room);
#else
    return byZlib(level, data, size, target, room);
#endif
}

/// Smaller blocks take no time, and a few bytes more would be seen in them.
constexpr std::size_t leastQuickSize = 0x1000;

#ifndef BRENMARK_WITHOUT_ISAL
/// ISA-L hashes the stream's own address in place of the third position, so that its bytes would depend on where the stack
/// lies. Its path for short ends doesn't: a few bytes go ahead and are flushed, which takes about 10 bytes more.
std::size_t byIsal(const char* data, std::size_t size, char* target, std::size_t room)
{
    constexpr std::size_t headSize = 8;
    static_assert(headSize < leastQuickSize);
    static thread_local std::unique_ptr<unsigned char[]> levelBuffer;
    if (!levelBuffer)
        levelBuffer.reset(new unsigned char[ISAL_DEF_LVL1_DEFAULT]);
    isal_zstream stream;
    isal_deflate_init(&stream);
    stream.hist_bits = ISAL_DEF_MAX_HIST_BITS;
    stream.level = quickLevel;
    stream.level_buf = levelBuffer.get();
    stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
    stream.gzip_flag = IGZIP_ZLIB;
    stream.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(data)); // only read
    stream.next_out = reinterpret_cast<unsigned char*>(target);
    stream.avail_out = static_cast<uint32_t>(room);

    stream.avail_in = headSize;
    stream.flush = SYNC_FLUSH;
    if (isal_deflate(&stream) != COMP_OK)
        return 0;
    stream.avail_in = static_cast<uint32_t>(size - headSize);
    stream.flush = NO_FLUSH;
    stream.end_of_stream = 1;
    const bool isDone = isal_deflate(&stream) == COMP_OK && stream.internal_state.state == ZSTATE_END;
    return isDone ? stream.total_out : 0;
}
#endif

std::size_t quick(const char* data, std::size_t size, char* target, std::size_t room)
{
#if !defined(BRENMARK_WITHOUT_ISAL)
    return byIsal(data, size, target, room);
#elif !defined(BRENMARK_WITHOUT_LIBDEFLATE)
    return byLibdeflate(quickLevel, data, size, target, room);
#else
    // With numbers that hardly shrink, zlib's first level takes as long as its sixth: nothing is gained.
    return byZlib(bestLevel, data, size, target, room);
#endif
}

/// Stored blocks of zlib are 16 kB long at least, with 5 bytes before each; header and trailer take 6.
constexpr std::size_t roomFor(std::size_t size) { return size + size / 1024 + 64; }

constexpr std::size_t largestSample = 0x10000;
/// Smaller blocks are no work worth a trial.
constexpr std::size_t leastSampledSize = 0x4000;

/// A part from the middle of a block shows what all of it would gain.
struct SSample
{
    const char* data;
    std::size_t size;
};

SSample sampleOf(const char* data, std::size_t size)
{
    const std::size_t part = std::min(largestSample, size / 4);
    return {data + (size - part) / 2, part};
}

/// Rough numbers: nothing makes them shorter by a tenth.
bool isRough(std::size_t size, std::size_t quickSize) { return quickSize >= size - size / 10; }

/// The level that a thorough encoder is worth, for a block that the quick one made into so many bytes; 0 for none.
int levelWorth(const char* data, std::size_t size, std::size_t quickSize)
{
    if (!hasQuickEncoder || isRough(size, quickSize))
        return 0;
    if (size < leastSampledSize || quickSize < size / 50) // takes no time
        return bestLevel;
    const SSample sample = sampleOf(data, size);
    // With a twentieth gained, the time is well spent. A small sample shows less of it, where much is gone already.
    const std::size_t part = sample.size < largestSample && quickSize < size - 2 * size / 5 ? 40 : 20;
    char target[roomFor(largestSample)];
    const std::size_t quickPart = quick(sample.data, sample.size, target, sizeof target);
    const std::size_t thoroughPart = thorough(thoroughLevel, sample.data, sample.size, target, sizeof target);
    if (thoroughPart >= quickPart - quickPart / part)
        return 0;
    // Of numbers born from single precision, zeros among them, the best level takes another fortieth; of others nothing.
    return quickSize > size / 4 && quickSize < size / 2 ? bestLevel : thoroughLevel;
}

SBytes withRoom(std::size_t room)
{
    SBytes bytes;
    bytes.data.reset(new char[room]);
    return bytes;
}

std::uint32_t checksum(const char* data, std::size_t size)
{
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
    return libdeflate_adler32(1, data, size);
#else
    return static_cast<std::uint32_t>(adler32_z(1, reinterpret_cast<const Bytef*>(data), size));
#endif
}

/// A zlib stream (RFC 1950) of stored blocks (RFC 1951, 3.2.4), each with its length and its complement, low byte first.
SBytes stored(const char* data, std::size_t size)
{
    constexpr std::size_t longestBlock = 0xffff;
    const std::uint32_t sum = checksum(data, size);
    SBytes stream = withRoom(roomFor(size));
    char* target = stream.data.get();
    const auto put = [&target](unsigned byte) { *target++ = static_cast<char>(byte); };
    put(0x78); // a window of 32 kB
    put(0x01); // made quickly
    std::size_t left = size;
    do {
        const std::size_t length = std::min(longestBlock, left);
        left -= length;
        put(left == 0); // the last one
        for (const std::size_t word : {length, ~length})
            for (const int shift : {0, 8})
                put(word >> shift & 0xff);
        target = std::copy_n(data, length, target);
        data += length;
    } while (left > 0);
    for (const int shift : {24, 16, 8, 0})
        put(sum >> shift & 0xff);
    stream.size = static_cast<std::size_t>(target - stream.data.get());
    return stream;
}

SBytes thoroughlyDeflated(const char* data, std::size_t size)
{
    SBytes made = withRoom(roomFor(size));
    made.size = thorough(bestLevel, data, size, made.data.get(), roomFor(size));
    if (made.size == 0)
        return stored(data, size);
    return made;
}

} // namespace

SBytes deflated(const char* data, std::size_t size)
{
    if (size < leastQuickSize)
        return thoroughlyDeflated(data, size);
    SBytes made = withRoom(roomFor(size));
    made.size = quick(data, size, made.data.get(), roomFor(size));
    if (made.size == 0)
        return thoroughlyDeflated(data, size);
    const int level = levelWorth(data, size, made.size);
    if (level == 0)
        return made;
    SBytes better = withRoom(made.size);
    better.size = thorough(level, data, size, better.data.get(), made.size);
    return better.size > 0 ? std::move(better) : std::move(made);
}

SBytes quicklyDeflated(const char* data, std::size_t size)
{
    if (size < leastQuickSize)
        return thoroughlyDeflated(data, size);
    char target[roomFor(largestSample)];
    const SSample sample = sampleOf(data, size);
    if (size >= leastSampledSize && isRough(sample.size, quick(sample.data, sample.size, target, sizeof target)))
        return stored(data, size);
    SBytes made = withRoom(roomFor(size));
    made.size = quick(data, size, made.data.get(), roomFor(size));
    if (made.size == 0)
        return stored(data, size);
    return made;
}

} // namespace NBrenmark
