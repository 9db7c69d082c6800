// Refuses folders and whatever else isn't a plain file, and distinguishes a device that can't be read from a file
// that ends early.
#include "core/plain_file.h"

#include "core/cause.h"

#include <QFileInfo>

namespace NBrenmark {

std::string openPlainFile(QFile& file, QIODevice::OpenMode also)
{
    const QFileInfo info(file.fileName());
    if (info.exists() && !info.isFile())
        return info.isDir() ? "It is a folder" : "It isn't a regular file";
    if (!file.open(QIODevice::ReadOnly | also))
        return file.errorString().toStdString();
    return std::string();
}

void throwIfUnreadable(const QIODevice& device)
{
    const auto* const file = qobject_cast<const QFileDevice*>(&device);
    if (file && file->error() == QFileDevice::ReadError)
        throw device_error("byte " + std::to_string(file->pos()) +
                           " can't be read: " + file->errorString().toStdString());
    const auto* const source = dynamic_cast<const CSourceFile*>(&device);
    if (source && source->hasFailed())
        throw device_error("a read before byte " + std::to_string(source->pos()) + " failed");
}

void seekTo(QIODevice& device, qint64 byte)
{
    if (!device.seek(byte))
        throw device_error("byte " + std::to_string(byte) + " can't be reached");
}

bool hasEntry(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace NBrenmark
