// Deflated groups have no length in front: the reader takes pieces, and gives back what belongs to the next field.
#include "io/dem/zlib_stream.h"

#include "core/plain_file.h"
#include "io/dem/dem_data_stream.h"

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
static std::vector<Bytef>& sharedBuffer()
{
    static std::vector<Bytef> buffer(0x1000000);
    return buffer;
}

int& compressionLevel()
{
    static int level = Z_DEFAULT_COMPRESSION;
    return level;
}

/// What the two directions share: zlib's state and where its bytes come from or go to.
class zlib_wrapper : public zipio
{
public:
    explicit zlib_wrapper(CDemDataStream& stream) : stream(&stream) { sharedBuffer(); }
    quint32 waiting() const override { return state.avail_in; }

protected:
    [[noreturn]] void fail(const std::string& what) const
    {
        throw std::runtime_error("byte " + std::to_string(stream->position()) + ": " + what +
                                 (state.msg != nullptr ? std::string(" (") + state.msg + ")" : std::string()));
    }

    /// \throws std::bad_alloc  where zlib ran out of memory: that says nothing of the file
    void check(int result, const char* what) const
    {
        if (result == Z_MEM_ERROR)
            throw std::bad_alloc();
        if (result != Z_OK)
            fail(what);
    }

    z_stream state{};
    CDemDataStream* stream; // not owned
};

class zlib_reader : public zlib_wrapper
{
public:
    explicit zlib_reader(CDemDataStream& stream) : zlib_wrapper(stream)
    {
        check(inflateInit(&state), "zlib can't be started");
    }

    ~zlib_reader() override { inflateEnd(&state); }

    void transfer(void* buffer, quint32 length) override
    {
        state.next_out = static_cast<Bytef*>(buffer);
        state.avail_out = length;
        while (state.avail_out > 0) {
            if (ended)
                fail("deflated arrays end " + std::to_string(state.avail_out) + " bytes too early");
            inflateSome(state.avail_out);
        }
    }

    void finish() override
    {
        // The last array is complete before zlib has met its own trailer: let it read on, into a
        // byte that must stay unused.
        Bytef surplus = 0;
        state.next_out = &surplus;
        state.avail_out = 1;
        while (!ended) {
            inflateSome(1);
            if (state.avail_out == 0)
                fail("deflated arrays hold more bytes than announced");
        }
        // Whole pieces were read: give back what was not inflated, or the next scalar is read from the
        // middle of somewhere else.
        if (!stream->device()->seek(stream->position() - static_cast<qint64>(state.avail_in)))
            fail("end of deflated arrays can't be found");
        state.avail_in = 0;
    }

private:
    /// Takes a step that uses up input or gives output, or throws.
    void inflateSome(quint32 wanted)
    {
        if (state.avail_in == 0)
            readPiece(wanted);
        const int result = inflate(&state, Z_NO_FLUSH);
        if (result == Z_STREAM_END)
            ended = true;
        else if (result != Z_BUF_ERROR)
            check(result, "deflated arrays are damaged");
        else if (state.avail_in > 0)
            fail("deflated arrays don't inflate");
    }

    void readPiece(quint32 wanted)
    {
        // Deflated data is hardly ever longer than what it gives. Asking for little more keeps small
        // groups from reading 16 MiB and giving nearly all of it back.
        constexpr qint64 slack = 4096;
        std::vector<Bytef>& buffer = sharedBuffer();
        const qint64 piece =
            std::min<qint64>({static_cast<qint64>(buffer.size()), wanted + slack, stream->bytesLeft()});
        const qint64 taken = piece > 0 ? stream->device()->read(reinterpret_cast<char*>(buffer.data()), piece) : 0;
        throwIfUnreadable(*stream->device());
        if (taken <= 0)
            fail("deflated arrays ended early");
        state.next_in = buffer.data();
        state.avail_in = static_cast<uInt>(taken);
    }

    bool ended = false;
};

class zlib_writer : public zlib_wrapper
{
public:
    explicit zlib_writer(CDemDataStream& stream) : zlib_wrapper(stream)
    {
        check(deflateInit(&state, compressionLevel()), "zlib can't be started");
    }

    ~zlib_writer() override { deflateEnd(&state); }

    void transfer(void* buffer, quint32 length) override
    {
        state.next_in = static_cast<Bytef*>(buffer);
        state.avail_in = length;
        while (state.avail_in > 0)
            deflateSome(Z_NO_FLUSH);
    }

    void finish() override
    {
        state.avail_in = 0;
        while (deflateSome(Z_FINISH) != Z_STREAM_END) {
        }
    }

private:
    int deflateSome(int flush)
    {
        std::vector<Bytef>& buffer = sharedBuffer();
        state.next_out = buffer.data();
        state.avail_out = static_cast<uInt>(buffer.size());
        const int result = deflate(&state, flush);
        if (result != Z_STREAM_END)
            check(result, "arrays can't be deflated");
        const int made = static_cast<int>(buffer.size() - state.avail_out);
        if (stream->writeRawData(reinterpret_cast<const char*>(buffer.data()), made) != made)
            stream->setStatus(QDataStream::WriteFailed);
        stream->checkStatus("deflated arrays");
        return result;
    }
};

std::unique_ptr<zipio> makeZip(CDemDataStream& stream, bool writing)
{
    if (writing)
        return std::make_unique<zlib_writer>(stream);
    return std::make_unique<zlib_reader>(stream);
}

} // namespace NBrenmark
