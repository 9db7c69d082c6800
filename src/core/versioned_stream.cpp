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
    const qint64 inDevice = qMax<qint64>(0, device()->size() - device()->pos());
    return blockEnd < 0 ? inDevice : qBound<qint64>(0, blockEnd - device()->pos(), inDevice);
}

qint64 CVersionedStream::setLimit(qint64 end) { return std::exchange(blockEnd, end); }

} // namespace NBrenmark
