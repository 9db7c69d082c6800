// Deflated groups have no length in front: the reader takes pieces, and gives back what belongs to the next field.
#include "io/dem/zlib_stream.h"

#include "core/inflate.h"
#include "core/plain_file.h"
#include "io/dem/dem_data_stream.h"
#include "io/dem/inflate_ahead.h"

#include <QIODevice>
#include <zlib.h>
#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace NBrenmark {

/// One for the process, taken by the first compressor and never given back: one compressor is at
/// work at a time.
static std::vector<char>& sharedBuffer()
{
    static std::vector<char> buffer(0x1000000);
    return buffer;
}

int& compressionLevel()
{
    static int level = Z_DEFAULT_COMPRESSION;
    return level;
}

/// What the two directions share: where the bytes come from or go to.
class zlib_wrapper : public zipio
{
public:
    explicit zlib_wrapper(CDemDataStream& stream) : stream(&stream) {}

protected:
    [[noreturn]] void fail(const std::string& what) const
    {
        throw std::runtime_error("byte " + std::to_string(stream->position()) + ": " + what);
    }

    CDemDataStream* stream; // not owned
};

/// Arrays that are inflated as they are asked for.
class zlib_reader : public zlib_wrapper
{
public:
    explicit zlib_reader(CDemDataStream& stream) : zlib_wrapper(stream) { sharedBuffer(); }

    qint64 mostBytes() const override
    {
        return static_cast<qint64>(inflater.ready()) +
               mostInflation * (stream->bytesLeft() + static_cast<qint64>(inflater.waiting()));
    }

    void transfer(void* buffer, quint32 length) override
    {
        char* target = static_cast<char*>(buffer);
        for (quint32 left = length; left > 0;) {
            if (inflater.hasEnded())
                fail("deflated arrays end " + std::to_string(left) + " bytes too early");
            const quint32 made = inflateSome(target, left);
            target += made;
            left -= made;
        }
    }

    void finish() override
    {
        // The last array is complete before the trailer was met: let it be read, into a byte that must stay unused.
        char surplus = 0;
        while (!inflater.hasEnded())
            if (inflateSome(&surplus, 1) > 0)
                fail("deflated arrays hold more bytes than announced");
        // Whole pieces were read: give back what was not inflated, or the next scalar is read from the
        // middle of somewhere else.
        seekTo(*stream->device(), stream->position() - static_cast<qint64>(inflater.waiting()));
    }

private:
    /// Takes a step that uses up input or gives output, or throws.
    quint32 inflateSome(char* target, quint32 room)
    {
        if (inflater.isHungry() && inflater.ready() == 0)
            readPiece(room);
        const std::size_t waiting = inflater.waiting();
        std::size_t made = 0;
        try {
            made = inflater.inflate(target, room);
        }
        catch (const inflate_error& error) {
            fail(std::string("deflated arrays are damaged (") + error.what() + ")");
        }
        if (made == 0 && inflater.waiting() == waiting && !inflater.isHungry() && !inflater.hasEnded())
            fail("deflated arrays don't inflate");
        return static_cast<quint32>(made);
    }

    void readPiece(quint32 wanted)
    {
        // Deflated data is hardly ever longer than what it gives. Asking for little more keeps small
        // groups from reading 16 MiB and giving nearly all of it back.
        constexpr qint64 slack = 4096;
        std::vector<char>& buffer = sharedBuffer();
        const qint64 piece =
            std::min<qint64>({static_cast<qint64>(buffer.size()), wanted + slack, stream->bytesLeft()});
        const qint64 taken = piece > 0 ? stream->device()->read(buffer.data(), piece) : 0;
        throwIfUnreadable(*stream->device());
        if (taken <= 0)
            fail("deflated arrays ended early");
        inflater.feed(buffer.data(), static_cast<std::size_t>(taken));
    }

    CInflater inflater;
};

/// Arrays that were inflated while something else was done.
class zlib_ahead_reader : public zlib_wrapper
{
public:
    zlib_ahead_reader(CDemDataStream& stream, std::unique_ptr<CInflatedGroup> group)
        : zlib_wrapper(stream), group(std::move(group)), start(stream.position())
    {}

    // As for a group that is still to be inflated: a count is believed as far.
    qint64 mostBytes() const override { return mostInflation * stream->bytesLeft(); }

    void transfer(void* buffer, quint32 length) override
    {
        const std::size_t taken = group->take(static_cast<char*>(buffer), length);
        if (taken < length)
            fail("deflated arrays end " + std::to_string(length - taken) + " bytes too early");
    }

    void finish() override
    {
        char surplus = 0;
        if (group->take(&surplus, 1) > 0)
            fail("deflated arrays hold more bytes than announced");
        seekTo(*stream->device(), start + static_cast<qint64>(group->storedBytes));
    }

private:
    std::unique_ptr<CInflatedGroup> group;
    qint64 start;
};

class zlib_writer : public zlib_wrapper
{
public:
    explicit zlib_writer(CDemDataStream& stream) : zlib_wrapper(stream)
    {
        sharedBuffer();
        check(deflateInit(&state, compressionLevel()), "zlib can't be started");
    }

    ~zlib_writer() override { deflateEnd(&state); }
    qint64 mostBytes() const override { return 0; }

    void transfer(void* buffer, quint32 length) override
    {
        state.next_in = static_cast<Bytef*>(buffer);
        state.avail_in = length;
        while (state.avail_in > 0)
            deflateSome(Z_NO_FLUSH); // one stream goes on through all arrays of a group
    }

    void finish() override
    {
        state.avail_in = 0;
        while (deflateSome(Z_FINISH) != Z_STREAM_END) {
        }
    }

private:
    /// \throws std::bad_alloc  where zlib ran out of memory
    void check(int result, const char* what) const
    {
        if (result == Z_MEM_ERROR)
            throw std::bad_alloc();
        if (result != Z_OK)
            fail(what + (state.msg != nullptr ? std::string(" (") + state.msg + ")" : std::string()));
    }

    int deflateSome(int flush)
    {
        std::vector<char>& buffer = sharedBuffer();
        state.next_out = reinterpret_cast<Bytef*>(buffer.data());
        state.avail_out = static_cast<uInt>(buffer.size());
        const int result = deflate(&state, flush);
        if (result != Z_STREAM_END)
            check(result, "arrays can't be deflated");
        const int made = static_cast<int>(buffer.size() - state.avail_out);
        if (stream->writeRawData(buffer.data(), made) != made)
            stream->setStatus(QDataStream::WriteFailed);
        stream->checkStatus("deflated arrays");
        return result;
    }

    z_stream state{};
};

std::unique_ptr<zipio> makeZip(CDemDataStream& stream, bool writing)
{
    if (writing)
        return std::make_unique<zlib_writer>(stream);
    if (auto group = stream.ahead != nullptr ? stream.ahead->takeGroup(stream.position()) : nullptr)
        return std::make_unique<zlib_ahead_reader>(stream, std::move(group));
    return std::make_unique<zlib_reader>(stream);
}

} // namespace NBrenmark
