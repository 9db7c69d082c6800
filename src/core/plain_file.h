#pragma once
// Opening what a deck's folder holds under the name of one of its files, which may be anything.

#include <QFile>

#include <string>

namespace NBrenmark {

/// A file that doesn't forget that a read of it failed, for readers that go on after damage.
class CSourceFile : public QFile
{
public:
    using QFile::QFile;
    bool hasFailed() const { return failed; }

protected:
    qint64 readData(char* data, qint64 most) override
    {
        const qint64 count = QFile::readData(data, most);
        failed = failed || error() == ReadError;
        return count;
    }

private:
    bool failed = false;
};

/// Opens a file for reading, unless it is none: a pipe would keep its reader waiting for somebody
/// who writes, and a device has no end.
/// \return empty if the file is open, else the cause
std::string openPlainFile(QFile& file, QIODevice::OpenMode also = QIODevice::NotOpen);

/// Whether a folder has an entry of that name, even one that can't be opened or a link that leads nowhere.
bool hasEntry(const QString& path);

/// Files but a CSourceFile forget it at their next read or seek: they are to be asked before.
/// \throws device_error  if a read of the device failed, whatever is stored on it
void throwIfUnreadable(const QIODevice& device);

/// Goes to a byte of a device that is read.
/// \throws device_error  it can't: a fault of the device, since a byte beyond the end of a file can be reached
void seekTo(QIODevice& device, qint64 byte);

} // namespace NBrenmark
