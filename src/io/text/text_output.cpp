// Builds paths and lines, and escapes what would break the grammar.
#include "io/text/text_output.h"

#include "io/text/quick_digest.h"

#include <QCryptographicHash>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace NBrenmark {

static constexpr size_t mostInlineValues = 8;      // an array this small is shown, not digested
static constexpr size_t digestBytes = 1024 * 1024; // handed to the digest at a time

/// Hands the values over as little-endian bytes, piece by piece.
template <class TTake>
static void littleEndianPieces(const void* data, size_t count, size_t bytes, TTake&& take)
{
    const auto* at = static_cast<const char*>(data);
#if Q_BYTE_ORDER == Q_BIG_ENDIAN
    std::vector<char> swapped(digestBytes);
#endif
    for (size_t left = count * bytes; left > 0;) {
        const size_t piece = std::min(left, digestBytes);
#if Q_BYTE_ORDER == Q_BIG_ENDIAN
        if (bytes == 8)
            qToLittleEndian<quint64>(at, static_cast<qsizetype>(piece / 8), swapped.data());
        else
            qToLittleEndian<quint32>(at, static_cast<qsizetype>(piece / 4), swapped.data());
        take(swapped.data(), piece);
#else
        take(at, piece);
#endif
        at += piece;
        left -= piece;
    }
}

/// In hexadecimal, as all of them.
static std::string digestOf(const void* data, size_t count, size_t bytes)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    littleEndianPieces(data, count, bytes,
                       [&](const char* piece, size_t size) { hash.addData(piece, static_cast<int>(size)); });
    return hash.result().toHex().toStdString();
}

static std::string quickDigestOf(const void* data, size_t count, size_t bytes)
{
    CQuickDigest digest;
    littleEndianPieces(data, count, bytes, [&](const char* piece, size_t size) { digest.add(piece, size); });
    return digest.hex();
}

/// Appends the value at a place of an array, by the array's kind.
static void appendElement(std::string& out, const char* kind, const void* data, size_t index)
{
    const auto* bytes = static_cast<const char*>(data);
    if (kind[0] == 'f') {
        double value = 0.0;
        std::memcpy(&value, bytes + 8 * index, sizeof value);
        NText::append(out, value);
        return;
    }
    qint32 value = 0;
    std::memcpy(&value, bytes + 4 * index, sizeof value);
    out += kind[0] == 'i' ? NText::text(value) : NText::text(static_cast<quint32>(value));
}

std::string SArrayView::row(size_t number) const
{
    std::string out;
    if (columns == 1) {
        appendElement(out, kind, data, number);
        return out;
    }
    constexpr size_t longestNumber = 26; // with what separates it from the next
    out.reserve(columns * longestNumber);
    out += '(';
    for (size_t i = 0; i < columns; ++i) {
        if (i > 0)
            out += ", ";
        appendElement(out, kind, data, number * columns + i);
    }
    out += ')';
    return out;
}

void CTextOutput::rows(const std::string& where, const SArrayView& array)
{
    std::string text = std::string(array.kind) + '[' + std::to_string(array.rows);
    if (array.columns != 1)
        text += ',' + std::to_string(array.columns);
    text += ']';

    const size_t count = array.rows * array.columns;
    if (count <= mostInlineValues) {
        for (size_t i = 0; i < array.rows; ++i)
            text += ' ' + array.row(i);
        sink.array(where, text, array);
        return;
    }
    if (sink.wantsQuickDigests()) {
        sink.array(where, text + " xxh3:" + quickDigestOf(array.data, count, array.elementBytes()), array);
        return;
    }
    sink.array(where, text + " sha256:" + digestOf(array.data, count, array.elementBytes()), array);
    if (!fullArrays)
        return;
    for (size_t i = 0; i < array.rows; ++i)
        sink.line(joined(where, std::to_string(i)), array.row(i));
}

void CTextOutput::bytes(const char* name, QIODevice& device)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    qint64 size = 0;
    for (QByteArray piece = device.read(digestBytes); !piece.isEmpty(); piece = device.read(digestBytes)) {
        hash.addData(piece);
        size += piece.size();
    }
    sink.line(joined(path, name), "u8[" + std::to_string(size) + "] sha256:" + hash.result().toHex().toStdString());
}

} // namespace NBrenmark
