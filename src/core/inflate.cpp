// Inflating with the library that this build was made with; failures are in zlib's words with either.
#include "core/inflate.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>

#ifdef BRENMARK_WITHOUT_ISAL
#include <zlib.h>
#else
#include <isa-l/igzip_lib.h>
#endif
#ifndef BRENMARK_WITHOUT_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace NBrenmark {

/// What one call moves at most: both libraries count in 32 bits.
static constexpr std::size_t mostAtOnce = std::size_t(1) << 30;

#ifdef BRENMARK_WITHOUT_ISAL

struct CInflater::SState
{
    z_stream stream{};
    bool ended = false;
};

/// \throws std::bad_alloc  where zlib ran out of memory: that says nothing of the input
static void check(int result, const char* message)
{
    if (result == Z_MEM_ERROR)
        throw std::bad_alloc();
    if (result != Z_OK)
        throw inflate_error(message != nullptr ? message : "zlib can't go on");
}

CInflater::CInflater() : state(std::make_unique<SState>()) { check(inflateInit(&state->stream), state->stream.msg); }

CInflater::~CInflater() { inflateEnd(&state->stream); }

void CInflater::restart()
{
    check(inflateReset(&state->stream), state->stream.msg);
    state->stream.avail_in = 0;
    state->ended = false;
}

void CInflater::feed(const char* data, std::size_t size)
{
    state->stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data)); // only read
    state->stream.avail_in = static_cast<uInt>(size);
}

std::size_t CInflater::inflate(char* target, std::size_t room)
{
    z_stream& stream = state->stream;
    const std::size_t wanted = std::min(room, mostAtOnce);
    stream.next_out = reinterpret_cast<Bytef*>(target);
    stream.avail_out = static_cast<uInt>(wanted);
    const int result = ::inflate(&stream, Z_NO_FLUSH);
    if (result == Z_STREAM_END)
        state->ended = true;
    else if (result != Z_BUF_ERROR)
        check(result, stream.msg);
    return wanted - stream.avail_out;
}

bool CInflater::isHungry() const { return state->stream.avail_in == 0; }
bool CInflater::hasEnded() const { return state->ended; }
std::size_t CInflater::waiting() const { return state->stream.avail_in; }
std::size_t CInflater::ready() const { return 0; }

#else

struct CInflater::SState
{
    inflate_state stream;
};

CInflater::CInflater() : state(new SState) { restart(); } // without zeros: the state is large

CInflater::~CInflater() = default;

void CInflater::restart()
{
    isal_inflate_init(&state->stream);
    state->stream.crc_flag = ISAL_ZLIB; // header and checksum are there, and looked at
}

void CInflater::feed(const char* data, std::size_t size)
{
    state->stream.next_in = reinterpret_cast<uint8_t*>(const_cast<char*>(data)); // only read
    state->stream.avail_in = static_cast<uint32_t>(size);
}

/// In the words of zlib.
static const char* textOfFailure(int result)
{
    switch (result) {
    case ISAL_INVALID_BLOCK: return "invalid block type";
    case ISAL_INVALID_SYMBOL: return "invalid code";
    case ISAL_INVALID_LOOKBACK: return "invalid distance too far back";
    case ISAL_INCORRECT_CHECKSUM: return "incorrect data check";
    case ISAL_NEED_DICT: return "it needs a dictionary";
    default: return "incorrect header check";
    }
}

std::size_t CInflater::inflate(char* target, std::size_t room)
{
    inflate_state& stream = state->stream;
    const std::size_t wanted = std::min(room, mostAtOnce);
    stream.next_out = reinterpret_cast<uint8_t*>(target);
    stream.avail_out = static_cast<uint32_t>(wanted);
    const int result = isal_inflate(&stream);
    if (result != ISAL_DECOMP_OK && result != ISAL_END_INPUT && result != ISAL_OUT_OVERFLOW)
        throw inflate_error(textOfFailure(result));
    return wanted - stream.avail_out;
}

bool CInflater::isHungry() const { return state->stream.avail_in == 0; }
bool CInflater::hasEnded() const { return state->stream.block_state == ISAL_BLOCK_FINISH; }

/// Whole bytes of what lies in the bit buffer count, or the end of the stream would be found too late.
std::size_t CInflater::waiting() const
{
    return state->stream.avail_in + static_cast<std::size_t>(std::max(state->stream.read_in_length, 0) / 8);
}

std::size_t CInflater::ready() const
{
    const inflate_state& stream = state->stream;
    return static_cast<std::size_t>(std::max<int>(stream.tmp_out_valid - stream.tmp_out_processed, 0));
}

#endif

#ifdef BRENMARK_WITHOUT_LIBDEFLATE

bool inflateWhole(const char* stream, std::size_t streamSize, char* target, std::size_t size)
{
    static thread_local CInflater inflater; // its tables are large
    try {
        inflater.restart();
        inflater.feed(stream, streamSize);
        std::size_t made = 0;
        for (std::size_t some = 1; made < size && some > 0; made += some)
            some = inflater.inflate(target + made, size - made);
        char surplus = 0;
        const bool isLonger = !inflater.hasEnded() && inflater.inflate(&surplus, 1) > 0;
        return made == size && !isLonger && inflater.hasEnded();
    }
    catch (const inflate_error&) {
        return false;
    }
}

#else

bool inflateWhole(const char* stream, std::size_t streamSize, char* target, std::size_t size)
{
    struct SFree
    {
        void operator()(libdeflate_decompressor* one) const { libdeflate_free_decompressor(one); }
    };
    static thread_local const std::unique_ptr<libdeflate_decompressor, SFree> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor)
        throw std::bad_alloc();
    // Bytes may follow the stream, as for HDF5's own filter. Fewer than wanted are an error here.
    std::size_t used = 0;
    return libdeflate_zlib_decompress_ex(decompressor.get(), stream, streamSize, target, size, &used, nullptr) ==
           LIBDEFLATE_SUCCESS;
}

#endif

} // namespace NBrenmark
