// The stream's status as exceptions that name the byte.
#include "io/dem/dem_data_stream.h"

#include "core/plain_file.h"

#include <stdexcept>

namespace NBrenmark {

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
    throwIfUnreadable(*device());
    throw std::runtime_error("byte " + std::to_string(position()) + ": " + what + " ended early");
}

} // namespace NBrenmark
