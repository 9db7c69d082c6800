#include "brenmark/deck_family.h"

#include "core/deck/deck_files.h"

#include <QDir>
#include <QFileInfo>

namespace NBrenmark {

qint64 bytesOf(const QStringList& files)
{
    qint64 bytes = 0;
    for (const QString& file : files)
        bytes += QFileInfo(file).size();
    return bytes;
}

QString targetPath(const QString& source, const QString& out)
{
    QString target = out;
    if (QFileInfo(out).isDir() || out.endsWith(QLatin1Char('/')))
        target = QDir(out).filePath(QFileInfo(stripDeckSuffix(source)).fileName());
    if (!target.endsWith(NDeckFile::demSuffix))
        target += NDeckFile::demSuffix;
    return target;
}

} // namespace NBrenmark
