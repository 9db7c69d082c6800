#include "io/dem/dem_data_stream.h"

#include <QIODevice>
#include <stdexcept>

namespace NBrenmark {

std::string counted(qint64 count, const char* noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

CDemDataStream::CDemDataStream(QIODevice* device, const SSaveOptions& options)
    : CVersionedStream(device), options(options)
{}

qint64 CDemDataStream::bytesLeft() const
{
    const qint64 inDevice = CVersionedStream::bytesLeft();
    return limit < 0 ? inDevice : qBound<qint64>(0, limit - position(), inDevice);
}

qint64 CDemDataStream::setLimit(qint64 end)
{
    const qint64 before = limit;
    limit = end;
    return before;
}

void CDemDataStream::require(qint64 bytes, const std::string& what) const
{
    const qint64 left = bytesLeft();
    if (bytes > left)
        throw std::length_error("byte " + std::to_string(position()) + ": " + what + " announced (" +
                                std::to_string(bytes) + " bytes), " + std::to_string(left) + " bytes follow");
}

void CDemDataStream::checkStatus(const char* what) const
{
    switch (status()) {
    case QDataStream::Ok: return;
    case QDataStream::WriteFailed:
        throw std::runtime_error("byte " + std::to_string(position()) + ": " + what +
                                 " not written: " + device()->errorString().toStdString());
    default: throw std::runtime_error("byte " + std::to_string(position()) + ": " + what + " ended early");
    }
}

} // namespace NBrenmark
