// The encoding, by name, and how far the block goes that is being read.
#include "core/versioned_stream.h"

#include <QIODevice>
#include <utility>

namespace NBrenmark {

static_assert(QDataStream::Qt_4_5 == 11, "the number that the family's format goes by");

CVersionedStream::CVersionedStream(QIODevice* device) : QDataStream(device)
{
    // Named, not left to the running Qt: from the next version on the precision setting decides how wide a
    // double is, and later ones change what a QColor or a null string looks like.
    setVersion(QDataStream::Qt_4_5);
    setByteOrder(QDataStream::BigEndian);
}

qint64 CVersionedStream::bytesLeft() const
{
    if (device() == nullptr)
        return 0;
    const qint64 at = device()->pos();
    if (blockEnd < 0)
        return qMax<qint64>(0, device()->size() - at);
    if (deviceSize < 0)
        deviceSize = device()->size();
    return qMax<qint64>(0, qMin(blockEnd, deviceSize) - at);
}

qint64 CVersionedStream::setLimit(qint64 end)
{
    if (blockEnd < 0 || end < 0)
        deviceSize = -1;
    return std::exchange(blockEnd, end);
}

} // namespace NBrenmark
