#include "io/dem/dem_data_stream.h"

#include "core/cause.h"

#include <QFileDevice>
#include <stdexcept>

namespace NBrenmark {

std::string counted(qint64 count, const char* noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

CDemDataStream::CDemDataStream(QIODevice* device, const SSaveOptions& options)
    : CVersionedStream(device), options(options)
{}

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
    default: break;
    }
    const auto* const file = qobject_cast<const QFileDevice*>(device());
    if (file != nullptr && file->error() == QFileDevice::ReadError)
        throw device_error("byte " + std::to_string(position()) + ": " + what +
                           " not read: " + file->errorString().toStdString());
    throw std::runtime_error("byte " + std::to_string(position()) + ": " + what + " ended early");
}

} // namespace NBrenmark
