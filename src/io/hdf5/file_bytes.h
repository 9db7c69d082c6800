#pragma once
// The bytes of a file, taken out only where there are some.

#include "io/hdf5/error_text.h"

#include <QtEndian>
#include <QtGlobal>

#include <QByteArray>

#include <string>

namespace NBrenmark {

/// Bytes of a file, one after the other, with their place for messages. Numbers are little-endian.
class CFileBytes
{
public:
    /// \param place  in the file
    CFileBytes(QByteArray bytes, quint64 place) : bytes(std::move(bytes)), start(place) {}

    quint64 place() const { return start + quint64(at); }
    quint64 left() const { return quint64(bytes.size() - at); }

    template <class T>
    T number()
    {
        need(sizeof(T));
        const T value = qFromLittleEndian<T>(bytes.constData() + at);
        at += int(sizeof(T));
        return value;
    }
    quint8 u8() { return number<quint8>(); }
    quint16 u16() { return number<quint16>(); }
    quint32 u32() { return number<quint32>(); }
    quint64 u64() { return number<quint64>(); }

    void skip(quint64 count)
    {
        need(count);
        at += int(count);
    }
    /// The next bytes, as a reader of their own.
    CFileBytes part(quint64 count)
    {
        need(count);
        CFileBytes taken(bytes.mid(at, int(count)), place());
        at += int(count);
        return taken;
    }
    /// Consumes a text up to its zero byte, which must be there.
    /// \param step  that the bytes with the zero byte are filled up to
    void text(quint64 step)
    {
        const int end = bytes.indexOf('\0', at);
        require(end >= 0, "a name has no end");
        skip((quint64(end - at) / step + 1) * step);
    }
    void signature(const char* expected)
    {
        need(4);
        require(bytes.mid(at, 4) == expected, "something else is there");
        at += 4;
    }

    /// \throws hdf5_error  unless it holds
    void require(bool holds, const char* otherwise) const
    {
        if (!holds)
            throw hdf5_error("The file is damaged near byte " + std::to_string(place()) + ": " + otherwise);
    }

private:
    void need(quint64 count) const { require(count <= left(), "a part ends early"); }

    QByteArray bytes;
    quint64 start;
    int at = 0;
};

} // namespace NBrenmark
