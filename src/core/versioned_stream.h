#pragma once
// The stream of the legacy family and of the settings file: QDataStream values in the encoding of
// Qt 4.5 (big-endian, doubles of 8 bytes), with the version of what is being read beside them.

#include "core/version.h"

#include <QDataStream>

namespace NBrenmark {

class CVersionedStream : public QDataStream
{
public:
    /// \param device  not owned
    explicit CVersionedStream(QIODevice* device);

    quint32 fileVersion() const { return version; }
    /// Stores the version by the rule of old numbering: 3.a.b becomes 20.a.b.
    void setFileVersion(quint32 fileVersion) { version = mendOldNumbering(fileVersion); }
    /// The edition word of a settings file; 0 elsewhere.
    quint32 edition = 0;

    /// Bytes from here to the end of the innermost block, or of the device outside of blocks: what a count may
    /// still ask for. Within blocks the device is asked once for its size, for each time is a call of the system; what
    /// a device loses meanwhile fails the read that comes to it.
    qint64 bytesLeft() const;
    /// Sets where the innermost block ends; -1 outside of blocks. \return what stood before
    qint64 setLimit(qint64 end);
    qint64 limit() const { return blockEnd; }

private:
    quint32 version = currentFileVersion();
    qint64 blockEnd = -1;
    mutable qint64 deviceSize = -1; ///< when the outermost block was first asked for; -1: not asked
};

/// Has a block of the stream end somewhere while this lives.
class CBlockLimit
{
public:
    CBlockLimit(CVersionedStream& stream, qint64 end) : stream(stream), before(stream.setLimit(end)) {}
    ~CBlockLimit() { stream.setLimit(before); }
    CBlockLimit(const CBlockLimit&) = delete;
    CBlockLimit& operator=(const CBlockLimit&) = delete;

private:
    CVersionedStream& stream;
    const qint64 before;
};

} // namespace NBrenmark
