// By Qt's standard paths.
#include "platform/documents_folder.h"

#include <QDir>
#include <QStandardPaths>

namespace NBrenmark {

QString documentsFolder()
{
    QString folder = QDir::fromNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    if (folder.isEmpty())
        folder = QDir::rootPath();
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}

} // namespace NBrenmark
