#include "brenmark/deck_family.h"
#include "brenmark/failure.h"

#include "core/deck/deck_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace NBrenmark {

namespace {

/// A file whatever its name is: hard links, symbolic links and file systems that don't tell case
/// apart lead to the same one.
using FileIdentity = std::pair<dev_t, ino_t>;

std::set<FileIdentity> identities(const QStringList& files)
{
    std::set<FileIdentity> found;
    for (const QString& file : files) {
        struct stat status = {};
        if (stat(QFile::encodeName(file).constData(), &status) == 0)
            found.emplace(status.st_dev, status.st_ino);
    }
    return found;
}

/// The deck's base name with all links of its folder resolved.
QString canonicalBase(const QString& path)
{
    const QFileInfo base(stripDeckSuffix(path));
    return QDir(base.absolutePath()).canonicalPath() + QLatin1Char('/') + base.fileName();
}

bool sharesFiles(const QString& source, const QString& target)
{
    if (canonicalBase(source) == canonicalBase(target))
        return true;
    const QStringList sourceFiles = familyFiles(source);
    const std::set<FileIdentity> own = identities(sourceFiles);
    for (const FileIdentity& identity : identities(familyFiles(target)))
        if (own.count(identity))
            return true;
    // The target's folder of numbered files is removed with all that is in it.
    const QString folder = QFileInfo(stripDeckSuffix(target) + NDeckFile::dataFolderSuffix).canonicalFilePath();
    for (const QString& file : sourceFiles)
        if (!folder.isEmpty() && QFileInfo(file).canonicalFilePath().startsWith(folder + QLatin1Char('/')))
            return true;
    return false;
}

} // namespace

QStringList familyFiles(const QString& path)
{
    const QString base = stripDeckSuffix(path);
    QStringList files;
    const auto add = [&files](const QString& file) {
        // A link that leads nowhere is a file too: something would be written through it.
        const QFileInfo info(file);
        if ((info.exists() || info.isSymLink()) && !files.contains(file))
            files.append(file);
    };
    add(path);
    for (const QLatin1String suffix :
         {NDeckFile::demSuffix, NDeckFile::indexSuffix, NDeckFile::settingsSuffix, NDeckFile::configurationSuffix,
          NDeckFile::companionSuffix, NDeckFile::legacyPropertySuffix})
        add(base + suffix);
    for (const QString& segment : segmentFiles(base + NDeckFile::demSuffix))
        add(segment);
    const QDir folder(base + NDeckFile::dataFolderSuffix);
    if (folder.exists()) {
        const QDir::Filters all = QDir::Files | QDir::Hidden | QDir::System;
        for (const QString& file : folder.entryList(all, QDir::Name))
            add(folder.filePath(file));
    }
    return files;
}

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

void makeTargetFolder(const QString& target)
{
    const QString folder = QFileInfo(target).absolutePath();
    std::error_code failure;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), failure);
    if (failure)
        throw CFailure(eExitTarget,
                       utf8(target) + ": its folder " + utf8(folder) + " can't be made: " + failure.message(),
                       "Check the path and its permissions, and repeat this command.");
}

void requireFreeTarget(const QString& source, const QString& target, bool force)
{
    if (sharesFiles(source, target))
        throw CFailure(eExitTarget, utf8(target) + ": shares files with the source " + utf8(source),
                       "Choose another name or folder for the new deck: the source must stay as it is.");
    const QStringList existing = familyFiles(target);
    const QFileInfo folder(stripDeckSuffix(target) + NDeckFile::dataFolderSuffix);
    if (force || (existing.isEmpty() && !folder.exists()))
        return;
    const QString first = existing.isEmpty() ? folder.filePath() : existing.first();
    throw CFailure(eExitTarget, utf8(first) + " exists already",
                   "Choose another name for the new deck, or replace all of " + utf8(stripDeckSuffix(target)) +
                       " with --force.");
}

} // namespace NBrenmark
