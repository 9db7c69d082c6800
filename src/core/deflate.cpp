#include "core/deflate.h"

#include <zlib.h>

#ifndef BRENMARK_WITHOUT_ISAL
#include <isa-l/igzip_lib.h>
#endif
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
#include <libdeflate.h>
#endif

#include <new>
#include <stdexcept>
#include <string>

namespace NBrenmark {

namespace {

constexpr int thoroughLevel = 6;
constexpr int quickLevel = 1;

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
    static thread_local std::unique_ptr<libdeflate_compressor, SFree> compressors[thoroughLevel + 1];
    auto& compressor = compressors[level];
    if (!compressor)
        compressor.reset(libdeflate_alloc_compressor(level));
    if (!compressor)
        throw std::bad_alloc();
    return libdeflate_zlib_compress(compressor.get(), data, size, target, room);
}
#endif

std::size_t thorough(const char* data, std::size_t size, char* target, std::size_t room)
{
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
    return byLibdeflate(thoroughLevel, data, size, target, room);
#else
    return byZlib(thoroughLevel, data, size, target, room);
#endif
}

std::size_t quick(const char* data, std::size_t size, char* target, std::size_t room)
{
#if !defined(BRENMARK_WITHOUT_ISAL)
    static thread_local std::unique_ptr<unsigned char[]> levelBuffer;
    if (!levelBuffer)
        levelBuffer.reset(new unsigned char[ISAL_DEF_LVL1_DEFAULT]);
    isal_zstream stream;
    isal_deflate_stateless_init(&stream);
    stream.level = quickLevel;
    stream.level_buf = levelBuffer.get();
    stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
    stream.gzip_flag = IGZIP_ZLIB;
    stream.end_of_stream = 1;
    stream.flush = NO_FLUSH;
    stream.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(data)); // only read
    stream.avail_in = static_cast<uint32_t>(size);
    stream.next_out = reinterpret_cast<unsigned char*>(target);
    stream.avail_out = static_cast<uint32_t>(room);
    return isal_deflate_stateless(&stream) == COMP_OK ? stream.total_out : 0;
#elif !defined(BRENMARK_WITHOUT_LIBDEFLATE)
    return byLibdeflate(quickLevel, data, size, target, room);
#else
    return byZlib(quickLevel, data, size, target, room);
#endif
}

/// Whether a thorough encoder gains what it costs.
bool isPromising(std::size_t quickSize, std::size_t size) { return quickSize < size - size / 10; }

SBytes withRoom(std::size_t room) { return {std::unique_ptr<char[]>(new char[room]), 0}; }

} // namespace

SBytes deflated(const char* data, std::size_t size)
{
    // Stored blocks of zlib are 16 kB long at least, with 5 bytes before each; header and trailer take 6.
    const std::size_t room = size + size / 1024 + 64;
    SBytes made = withRoom(room);
    made.size = quick(data, size, made.data.get(), room);
    if (made.size > 0 && !isPromising(made.size, size))
        return made;
    SBytes better = withRoom(made.size > 0 ? made.size : room);
    better.size = thorough(data, size, better.data.get(), made.size > 0 ? made.size : room);
    if (better.size == 0 && made.size == 0)
        throw std::runtime_error("a block of " + std::to_string(size) + " bytes can't be deflated");
    return better.size > 0 ? std::move(better) : std::move(made);
}

} // namespace NBrenmark
