#pragma once
// Opening what a deck's folder holds under the name of one of its files, which may be anything.

#include <QIODevice>

#include <string>

class QFile;
class QString;

namespace NBrenmark {

/// Opens a file for reading, unless it is none: a pipe would keep its reader waiting for somebody
/// who writes, and a device has no end.
/// \return empty if the file is open, else the cause
std::string openPlainFile(QFile& file, QIODevice::OpenMode also = QIODevice::NotOpen);

/// Whether a folder has an entry of that name, even one that can't be opened or a link that leads nowhere.
bool hasEntry(const QString& path);

/// \throws device_error  if a read of the device failed, whatever is stored on it
void throwIfUnreadable(const QIODevice& device);

} // namespace NBrenmark
