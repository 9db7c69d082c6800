#include "core/versioned_stream.h"

#include <QIODevice>
#include <mutex>
#include <set>

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

qint64 CVersionedStream::bytesLeft() const
{
    return device() != nullptr ? qMax<qint64>(0, device()->size() - device()->pos()) : 0;
}

quint32 fileVersionOf(const QDataStream& stream)
{
    const std::lock_guard<std::mutex> guard(streamsLock());
    return versionedStreams().count(&stream) > 0 ? static_cast<const CVersionedStream&>(stream).fileVersion()
                                                 : currentFileVersion();
}

} // namespace NBrenmark
