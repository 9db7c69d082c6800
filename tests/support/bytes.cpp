#include "support/bytes.h"

#include <QFile>
#include <zlib.h>
#include <algorithm>
#include <cstring>
#include <ostream>
#include <stdexcept>

namespace NBrenmark {

static quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

CBytes& CBytes::bigEndian(quint64 value, int width)
{
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        content.append(static_cast<char>(value >> shift));
    return *this;
}

CBytes& CBytes::littleEndian(quint64 value, int width)
{
    for (int shift = 0; shift < 8 * width; shift += 8)
        content.append(static_cast<char>(value >> shift));
    return *this;
}

CBytes& CBytes::i8(int value) { return bigEndian(static_cast<quint64>(value), 1); }

CBytes& CBytes::i32(qint32 value) { return bigEndian(static_cast<quint32>(value), 4); }

CBytes& CBytes::u32(quint32 value) { return bigEndian(value, 4); }

CBytes& CBytes::u64(quint64 value) { return bigEndian(value, 8); }

CBytes& CBytes::f64(double value) { return bigEndian(bitsOf(value), 8); }

CBytes& CBytes::f64s(std::initializer_list<double> values)
{
    for (const double value : values)
        f64(value);
    return *this;
}

CBytes& CBytes::text(const QString& value)
{
    if (value.isNull())
        return u32(0xFFFFFFFFu);
    u32(2 * static_cast<quint32>(value.size()));
    for (const QChar character : value)
        bigEndian(character.unicode(), 2);
    return *this;
}

CBytes& CBytes::ascii(const char* characters)
{
    content.append(characters);
    return *this;
}

CBytes& CBytes::rawF64(const std::vector<double>& values)
{
    for (const double value : values)
        littleEndian(bitsOf(value), 8);
    return *this;
}

CBytes& CBytes::rawI32(const std::vector<qint32>& values)
{
    for (const qint32 value : values)
        littleEndian(static_cast<quint32>(value), 4);
    return *this;
}

CBytes& CBytes::deflated(const CBytes& plain)
{
    uLongf size = compressBound(static_cast<uLong>(plain.size()));
    QByteArray packed(static_cast<int>(size), '\0');
    if (compress(reinterpret_cast<Bytef*>(packed.data()), &size,
                 reinterpret_cast<const Bytef*>(plain.content.constData()), static_cast<uLong>(plain.size())) != Z_OK)
        throw std::runtime_error("deflating failed");
    packed.truncate(static_cast<int>(size));
    content.append(packed);
    return *this;
}

CBytes& CBytes::group(const CBytes& arrays, bool deflate)
{
    i8(deflate ? 1 : 0);
    return deflate ? deflated(arrays) : *this += arrays;
}

CBytes& CBytes::block(quint32 tag, const CBytes& payload)
{
    const auto size = static_cast<quint32>(payload.size());
    u32(tag).u32(size);
    *this += payload;
    return u32(size).u32(tag);
}

CBytes& CBytes::operator+=(const CBytes& other) { return *this += other.content; }

CBytes& CBytes::operator+=(const QByteArray& other)
{
    content.append(other);
    return *this;
}

CBytes CBytes::first(qint64 count) const { return CBytes(content.left(static_cast<int>(count))); }

CBytes CBytes::from(qint64 position) const { return CBytes(content.mid(static_cast<int>(position))); }

CBytes CBytes::with(qint64 position, const CBytes& patch) const
{
    return first(position) + patch + from(position + patch.size());
}

void CBytes::toFile(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        throw std::runtime_error("can't write " + path.toStdString());
}

CBytes CBytes::fromFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't read " + path.toStdString());
    return CBytes(file.readAll());
}

CBytes CBytes::garbage(int count)
{
    CBytes bytes;
    for (int i = 0; i < count; ++i)
        bytes.i8(0xC1 + 7 * i % 61);
    return bytes;
}

void PrintTo(const CBytes& bytes, std::ostream* out)
{
    constexpr int shown = 64;
    *out << bytes.size() << " bytes " << bytes.bytes().left(shown).toHex(' ').toStdString();
    if (bytes.size() > shown)
        *out << " ...";
}

std::string firstDifference(const CBytes& expected, const CBytes& found)
{
    const QByteArray& a = expected.bytes();
    const QByteArray& b = found.bytes();
    const auto parting = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (parting.first == a.end() && parting.second == b.end())
        return std::string();
    const auto at = static_cast<int>(parting.first - a.begin());
    const int start = std::max(0, at - 8);
    return "they part at byte " + std::to_string(at) + " of " + std::to_string(a.size()) + " and " +
           std::to_string(b.size()) + "; from byte " + std::to_string(start) + "\n  expected " +
           a.mid(start, 24).toHex(' ').toStdString() + "\n  found    " + b.mid(start, 24).toHex(' ').toStdString();
}

} // namespace NBrenmark
