#pragma once
// Opening what a deck's folder holds under the name of one of its files, which may be anything.

#include <QIODevice>

#include <string>

class QFile;

namespace NBrenmark {

/// Opens a file for reading, unless it is none: a pipe would keep its reader waiting for somebody
/// who writes, and a device has no end.
/// \return empty if the file is open, else the cause
std::string openPlainFile(QFile& file, QIODevice::OpenMode also = QIODevice::NotOpen);

} // namespace NBrenmark
