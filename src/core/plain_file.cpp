#include "core/plain_file.h"

#include <QFile>
#include <QFileInfo>

namespace NBrenmark {

std::string openPlainFile(QFile& file, QIODevice::OpenMode also)
{
    const QFileInfo info(file.fileName());
    if (info.exists() && !info.isFile())
        return info.isDir() ? "It is a folder" : "It is no plain file";
    if (!file.open(QIODevice::ReadOnly | also))
        return file.errorString().toStdString();
    return std::string();
}

} // namespace NBrenmark
