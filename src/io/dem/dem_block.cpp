// Opens and closes blocks. A reading block limits the stream to its content, so that a damaged count inside can't
// run into what follows.
#include "io/dem/dem_block.h"

#include "core/plain_file.h"
#include "io/dem/dem_data_stream.h"

#include <QFileDevice>
#include <limits>
#include <stdexcept>

namespace NBrenmark {

static constexpr const char* wrongMarker = "Invalid marker found in data stream";
static constexpr const char* wrongSize = "Invalid size found in data stream";
static constexpr qint64 trailerBytes = 8; // size and tag again

block_error::block_error(const char* message, const CDemDataStream& stream, quint32 tag, bool saving)
    : text(std::string(message) + (saving ? " saving" : " loading") + " expected tag=" + std::to_string(tag) +
           " at pos=" + std::to_string(stream.position()) + ".")
{}

void checkMarker(CDemDataStream& stream, quint32 expected)
{
    quint32 found = 0;
    stream >> found;
    throwIfUnreadable(*stream.device());
    if (found != expected || stream.status() != QDataStream::Ok)
        throw block_error(wrongMarker, stream, expected, false);
}

CDemBlock::CDemBlock(CDemDataStream& stream, quint32 tag, bool saving) : stream(&stream), tag(tag), saving(saving)
{
    if (saving) {
        stream << tag;
        start = static_cast<quint64>(stream.position());
        stream << size; // to be replaced by close
        stream.checkStatus("block");
        return;
    }
    checkMarker(stream, tag);
    stream >> size;
    stream.checkStatus("size of a block");
    stream.require(size + trailerBytes, "block with tag " + std::to_string(tag));
    start = static_cast<quint64>(stream.position());
    outerLimit = stream.setLimit(static_cast<qint64>(start + size)); // blocks nest
}

CDemBlock::~CDemBlock()
{
    if (!saving)
        stream->setLimit(outerLimit);
}

void CDemBlock::close()
{
    if (saving) {
        const quint64 end = static_cast<quint64>(stream->position());
        const quint64 payload = end - start - sizeof(size);
        if (payload > std::numeric_limits<quint32>::max())
            throw std::length_error("block with tag " + std::to_string(tag) + ": more than 4 GiB");
        size = static_cast<quint32>(payload);
        QIODevice* device = stream->device();
        if (!device->seek(static_cast<qint64>(start)))
            throw block_error("Size can't be stored in data stream", *stream, tag, true);
        *stream << size;
        if (!device->seek(static_cast<qint64>(end)))
            throw block_error("End can't be found in data stream", *stream, tag, true);
        *stream << size << tag; // in the other order than in front
        auto* file = qobject_cast<QFileDevice*>(device);
        if (file != nullptr && !file->flush())
            stream->setStatus(QDataStream::WriteFailed);
        stream->checkStatus("block");
        return;
    }
    stream->setLimit(outerLimit);
    const bool isAtEnd = static_cast<quint64>(stream->position()) == start + size; // elsewhere, too, a trailer may seem
    quint32 found = 0;
    *stream >> found;
    throwIfUnreadable(*stream->device());
    if (!isAtEnd || found != size || stream->status() != QDataStream::Ok)
        throw block_error(wrongSize, *stream, tag, false);
    checkMarker(*stream, tag);
}

void CDemBlock::skip()
{
    if (saving)
        throw block_error("Attempt to use skip during save data", *stream, tag, true);
    stream->resetStatus(); // what ended early lies within this block
    seekTo(*stream->device(), static_cast<qint64>(start + size));
}

} // namespace NBrenmark
