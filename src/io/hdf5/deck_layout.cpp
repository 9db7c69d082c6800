// Names of files and folders from the name of the main file, and numbers from the names of timesteps' files.
#include "io/hdf5/deck_layout.h"

#include <QDir>

#include <algorithm>

namespace NBrenmark {

QString timestepFilePath(const QString& mainFile, quint32 number)
{
    return dataFolderPath(mainFile) + QString::number(number) + NDeckFile::timestepSuffix;
}

std::optional<quint32> timestepNumber(const QString& fileName)
{
    if (!fileName.endsWith(NDeckFile::timestepSuffix))
        return std::nullopt;
    const QString digits = fileName.chopped(NDeckFile::timestepSuffix.size());
    bool isNumber = false;
    const quint32 number = digits.toUInt(&isNumber);
    // "+5" and "007" are numbers too, but not as a deck writes them.
    if (!isNumber || QString::number(number) != digits)
        return std::nullopt;
    return number;
}

QStringList dataFileNames(const QString& folder)
{
    const QString pattern = QLatin1Char('*') + NDeckFile::timestepSuffix;
    QStringList names = QDir(folder).entryList({pattern}, QDir::Files | QDir::CaseSensitive, QDir::Unsorted);
    const auto isOther = [](const QString& name) { return !timestepNumber(name); };
    // Timesteps by their numbers; what only looks like one comes after them.
    std::sort(names.begin(), names.end(), [&](const QString& a, const QString& b) {
        if (isOther(a) || isOther(b))
            return isOther(a) == isOther(b) ? a < b : isOther(b);
        return *timestepNumber(a) < *timestepNumber(b);
    });
    return names;
}

} // namespace NBrenmark
