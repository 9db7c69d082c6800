// Moves arrays in pieces that an int can count, and believes a count only as far as the bytes that follow can bear
// it out.
#include "io/dem/array_group.h"

#include "config/user_preferences.h"
#include "core/memory_ceiling.h"
#include "core/stop_flag.h"
#include "io/dem/dem_data_stream.h"

#include <QSysInfo>
#include <algorithm>
#include <stdexcept>
#include <string>

namespace NBrenmark {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "arrays are in the files as the writing machines had them");

/// The most that one call moves: what a QDataStream counts is an int.
static constexpr quint64 largestMove = 0x40000000;
static constexpr quint64 firstBytes = 0x1000000; // that an array may take before any of it was inflated

bool compressArrays() { return userPreferences().compress(); }

void ReadAttribute::transfer(void* data, quint32 bytes)
{
    const int length = static_cast<int>(bytes);
    if (stream->readRawData(static_cast<char*>(data), length) != length)
        stream->setStatus(QDataStream::ReadPastEnd);
    stream->checkStatus("array");
}

qint64 ReadAttribute::mostBytes() const { return stream->bytesLeft(); }

ReadAttributeCompressed::ReadAttributeCompressed(CDemDataStream& stream, quint32 count)
    : ReadAttribute(stream, count), zip(makeZip(stream, false))
{}

void ReadAttributeCompressed::transfer(void* data, quint32 bytes) { zip->transfer(data, bytes); }

void ReadAttributeCompressed::finish() { zip->finish(); }

qint64 ReadAttributeCompressed::mostBytes() const { return zip->mostBytes(); }

void WriteAttribute::transfer(const void* data, quint32 bytes)
{
    const int length = static_cast<int>(bytes);
    if (stream->writeRawData(static_cast<const char*>(data), length) != length)
        stream->setStatus(QDataStream::WriteFailed);
    stream->checkStatus("array");
}

WriteAttributeCompressed::WriteAttributeCompressed(CDemDataStream& stream, quint32 count)
    : WriteAttribute(stream, count), zip(makeZip(stream, true))
{}

void WriteAttributeCompressed::transfer(const void* data, quint32 bytes)
{
    zip->transfer(const_cast<void*>(data), bytes); // zlib's input is only read
}

void WriteAttributeCompressed::finish() { zip->finish(); }

CArrayGroupReader::CArrayGroupReader(CDemDataStream& stream, bool deflated, quint32 rows, quint64 rowBytes)
    : stream(&stream), rowBytes(rowBytes)
{
    if (deflated)
        attribute = std::make_unique<ReadAttributeCompressed>(stream, rows);
    else
        attribute = std::make_unique<ReadAttribute>(stream, rows);
}

quint64 CArrayGroupReader::admit(const char* what, quint64 count, quint64 elementBytes) const
{
    leaveIfStopped(); // nearly all of a long read's time goes by between two arrays
    const quint64 most = static_cast<quint64>(attribute->mostBytes());
    if (count > most / elementBytes) // divided, for a product could run over
        throw std::length_error("byte " + std::to_string(stream->position()) + ": " + std::to_string(count) + ' ' +
                                what + " announced (" + std::to_string(elementBytes) + " bytes each), " +
                                std::to_string(stream->bytesLeft()) + " bytes follow");
    // Raw, this is all of them. Deflated, most arrays are not much longer than what follows.
    const quint64 credible = std::max<quint64>(firstBytes, static_cast<quint64>(stream->bytesLeft()));
    return std::max<quint64>(1, credible / elementBytes);
}

void CArrayGroupReader::admitElements(const char* what, quint64 count, quint64 bytes)
{
    if (rowBytes == 0) {
        admitMemory(bytes, what);
    }
    else if (count > admittedRows) { // the first array to prove them pays for all
        admitMemory((count - admittedRows) * rowBytes, what);
        admittedRows = count;
    }
}

void CArrayGroupReader::skip(const char* what, quint64 count, quint64 elementBytes)
{
    admit(what, count, elementBytes);
    if (rowBytes > 0) // those that are kept have as many
        admitElements(what, count, 0);
    char piece[0x4000];
    for (quint64 left = count * elementBytes; left > 0; left -= std::min<quint64>(left, sizeof piece))
        move(piece, std::min<quint64>(left, sizeof piece));
}

void CArrayGroupReader::noteRows() { stream->rowsAtWork = attribute->count; }

void CArrayGroupReader::move(void* data, quint64 bytes)
{
    auto* next = static_cast<char*>(data);
    for (; bytes > 0; bytes -= std::min(bytes, largestMove)) {
        const quint64 piece = std::min(bytes, largestMove);
        attribute->transfer(next, static_cast<quint32>(piece));
        next += piece;
    }
}

CArrayGroupWriter::CArrayGroupWriter(CDemDataStream& stream, bool deflated, quint32 rows)
{
    if (deflated)
        attribute = std::make_unique<WriteAttributeCompressed>(stream, rows);
    else
        attribute = std::make_unique<WriteAttribute>(stream, rows);
}

void CArrayGroupWriter::admit(const char* what, quint64 count, quint64 present)
{
    if (count != present)
        throw std::length_error(std::to_string(present) + ' ' + what + " for " + std::to_string(count) + " rows");
}

void CArrayGroupWriter::move(const void* data, quint64 bytes)
{
    const auto* next = static_cast<const char*>(data);
    for (; bytes > 0; bytes -= std::min(bytes, largestMove)) {
        const quint64 piece = std::min(bytes, largestMove);
        attribute->transfer(next, static_cast<quint32>(piece));
        next += piece;
    }
}

} // namespace NBrenmark
