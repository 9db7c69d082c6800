#pragma once
// The header at the start of a legacy deck's first file.

#include <QtGlobal>

class QIODevice;

namespace NBrenmark {

struct SDemHeader
{
    quint32 firstVersion = 0; ///< created the deck; decides which fields follow
    quint32 lastVersion = 0;  ///< wrote it last
    quint32 timesteps = 0;
    quint32 reservedFlag = 0;
    quint32 edition = 1;

    /// Reads what the creating version stores, and leaves the device after it.
    /// \return false if the header ends early
    bool read(QIODevice& device);
    /// Whether it is a header at all: any bytes can be read as one. A deck without a timestep has none.
    bool isOfFamily() const;
    /// Whether a deck created by that version has the eight words that a writer writes.
    static bool hasFullHeader(quint32 firstVersion);
    /// Whether a deck with this header may be read: not one of a later version, nor of a build between two that
    /// no other program may read.
    bool isAcceptable() const;
    /// Writes all eight words of a current header at the start of the device.
    bool write(QIODevice& device) const;
};

} // namespace NBrenmark
