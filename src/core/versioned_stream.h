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
    ~CVersionedStream();

    quint32 fileVersion() const { return version; }
    /// Stores the version by the rule of old numbering: 3.a.b becomes 20.a.b.
    void setFileVersion(quint32 fileVersion) { version = mendOldNumbering(fileVersion); }
    /// The edition word of a settings file; 0 elsewhere.
    quint32 edition = 0;

    /// Bytes between the device's position and its end: what a count may still ask for.
    qint64 bytesLeft() const;

private:
    quint32 version = currentFileVersion();
};

/// The version beside a stream; the current one if the stream carries none. Objects that store
/// themselves know their stream as a QDataStream only.
quint32 fileVersionOf(const QDataStream& stream);

} // namespace NBrenmark
