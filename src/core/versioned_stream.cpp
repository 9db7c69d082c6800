// Finds the version that goes with a QDataStream. Objects that store themselves know their stream by that base
// alone, which has no place for one.
#include "core/versioned_stream.h"

#include <QIODevice>
#include <mutex>
#include <set>
#include <utility>

namespace NBrenmark {

static_assert(QDataStream::Qt_4_5 == 11, "the number that the family's format goes by");

/// The streams that carry a version. A QDataStream has no virtual operation to ask by, so a stream
/// that comes back by its base is looked up here.
static std::set<const QDataStream*>& versionedStreams()
{
    static std::set<const QDataStream*> streams;
    return streams;
}

static std::mutex& streamsLock()
{
    static std::mutex mutex;
    return mutex;
}

CVersionedStream::CVersionedStream(QIODevice* device) : QDataStream(device)
{
    // Named, not left to the running Qt: from the next version on the precision setting decides how wide a
    // double is, and later ones change what a QColor or a null string looks like.
    setVersion(QDataStream::Qt_4_5);
    setByteOrder(QDataStream::BigEndian);
    const std::lock_guard<std::mutex> guard(streamsLock());
    versionedStreams().insert(this);
}

CVersionedStream::~CVersionedStream()
{
    const std::lock_guard<std::mutex> guard(streamsLock());
    versionedStreams().erase(this);
}

static qint64 bytesInDevice(const QDataStream& stream)
{
    return stream.device() != nullptr ? qMax<qint64>(0, stream.device()->size() - stream.device()->pos()) : 0;
}

qint64 CVersionedStream::bytesLeft() const
{
    const qint64 inDevice = bytesInDevice(*this);
    return blockEnd < 0 ? inDevice : qBound<qint64>(0, blockEnd - device()->pos(), inDevice);
}

qint64 CVersionedStream::setLimit(qint64 end) { return std::exchange(blockEnd, end); }

/// The stream as one that carries a version; null if it is none.
static const CVersionedStream* versioned(const QDataStream& stream)
{
    const std::lock_guard<std::mutex> guard(streamsLock());
    return versionedStreams().count(&stream) > 0 ? static_cast<const CVersionedStream*>(&stream) : nullptr;
}

quint32 fileVersionOf(const QDataStream& stream)
{
    const CVersionedStream* const found = versioned(stream);
    return found ? found->fileVersion() : currentFileVersion();
}

quint32 editionOf(const QDataStream& stream)
{
    const CVersionedStream* const found = versioned(stream);
    return found ? found->edition : 0;
}

qint64 bytesLeftOf(const QDataStream& stream)
{
    const CVersionedStream* const found = versioned(stream);
    return found ? found->bytesLeft() : bytesInDevice(stream);
}

qint64 blockEndOf(const QDataStream& stream)
{
    const CVersionedStream* const found = versioned(stream);
    return found ? found->limit() : -1;
}

CBlockLimit::CBlockLimit(QDataStream& stream, qint64 end)
    : stream(versioned(stream) ? static_cast<CVersionedStream*>(&stream) : nullptr)
{
    if (this->stream)
        before = this->stream->setLimit(end);
}

CBlockLimit::~CBlockLimit()
{
    if (stream)
        stream->setLimit(before);
}

} // namespace NBrenmark
