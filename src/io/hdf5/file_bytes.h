#pragma once
// The bytes of a file, taken out only where there are some.

#include "io/hdf5/error_text.h"

#include <QtEndian>
#include <QtGlobal>

#include <QByteArray>

#include <cstring>
#include <string>

namespace NBrenmark {

/// Bytes of a file, one after the other, with their place for messages. Numbers are little-endian. Its parts and copies
/// share the bytes, and keep all of them in memory.
class CFileBytes
{
public:
    /// \param place  in the file
    CFileBytes(QByteArray bytes, quint64 place) : bytes(std::move(bytes)), start(place), end(this->bytes.size()) {}

    quint64 place() const { return start + quint64(at); }
    quint64 left() const { return quint64(end - at); }

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
        CFileBytes taken(*this);
        at += int(count);
        taken.end = at;
        return taken;
    }
    /// Consumes a text up to its zero byte, which must be there.
    /// \param step  that the bytes with the zero byte are filled up to
    void text(quint64 step)
    {
        const char* const from = bytes.constData() + at;
        const void* const zero = std::memchr(from, '\0', left());
        require(zero != nullptr, "a name has no end");
        skip((quint64(static_cast<const char*>(zero) - from) / step + 1) * step);
    }
    void signature(const char* expected)
    {
        need(4);
        require(std::memcmp(bytes.constData() + at, expected, 4) == 0, "something else is there");
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
    int end;
};

} // namespace NBrenmark
