// What of reading isn't a template: texts with a length that the file must bear out, counts, and the report of a
// skipped block.
#include "io/dem/form.h"

#include "core/log.h"
#include "core/shortened.h"

#include <QtEndian>
#include <algorithm>
#include <stdexcept>

namespace NBrenmark {

void reportSkippedBlock(const CDemDataStream& stream, const char* what, const std::exception& error)
{
    report(eLost, NLogTitle::legacyRead, std::string(what) + " skipped: " + error.what(),
           std::max<quint64>(1, stream.rowsAtWork));
}

/// A length in bytes, then UTF-16; all bits set for a null text. Not by the stream's own operator,
/// which takes memory for a damaged length up to the end of the file.
void CInForm::text(QString& value)
{
    constexpr quint32 nullText = 0xFFFFFFFFu;
    quint32 bytes = 0;
    take(bytes, "length of a text");
    value = QString();
    if (bytes == nullText)
        return;
    if (bytes % sizeof(QChar) != 0)
        throw std::length_error("byte " + std::to_string(stream.position()) + ": text of an odd number of bytes");
    stream.require(bytes, "text");
    value = QString(static_cast<int>(bytes / sizeof(QChar)), Qt::Uninitialized);
    if (stream.readRawData(reinterpret_cast<char*>(value.data()), static_cast<int>(bytes)) != static_cast<int>(bytes))
        stream.setStatus(QDataStream::ReadPastEnd);
    stream.checkStatus("text");
    qFromBigEndian<ushort>(value.data(), value.size(), value.data());
    // Half a pair is no character, and no encoding of bytes has it.
    if (!value.isValidUtf16())
        report(eDefaulted, NLogTitle::legacyRead,
               "byte " + std::to_string(stream.position()) + ": the text \"" + shortened(value) +
                   "\" has characters that are none, each kept as \"?\"");
}

void CInForm::text(std::string& value)
{
    QString stored;
    text(stored);
    value = stored.toStdString();
}

quint32 CInForm::count(const char* noun, qint64 elementBytes)
{
    qint32 stored = 0;
    i32(stored);
    if (stored < 0)
        throw std::length_error("byte " + std::to_string(stream.position()) + ": " + counted(stored, noun) +
                                " announced");
    stream.require(stored * elementBytes, counted(stored, noun));
    return static_cast<quint32>(stored);
}

} // namespace NBrenmark
