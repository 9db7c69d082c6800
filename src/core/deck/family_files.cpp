// Lists what is there of a deck with sizes and times, by which a change of the source during a conversion is
// noticed.
#include "core/deck/family_files.h"

#include "core/deck/deck_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace NBrenmark {

namespace {

/// Appends a file that is there. A link that leads nowhere is a file too: something would be written through it.
void addIfThere(QStringList& files, const QString& file)
{
    const QFileInfo info(file);
    if ((info.exists() || info.isSymLink()) && !files.contains(file))
        files.append(file);
}

/// A file whatever its name is: hard links, symbolic links and file systems that don't distinguish case
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

/// A base name with all links of its folder resolved.
QString canonicalBase(const QString& path)
{
    const QFileInfo base(path);
    return QDir(base.absolutePath()).canonicalPath() + QLatin1Char('/') + base.fileName();
}

/// What a conversion replaces or writes at its target, as far as it is there. Companions go by another suffix rule
/// than all the rest, and numbered files by a third.
QStringList touchedFiles(const QString& target)
{
    QStringList files = familyFiles(target);
    const QString companions = stripLegacySuffix(target);
    for (const QLatin1String suffix : {NDeckFile::settingsSuffix, NDeckFile::configurationSuffix,
                                       NDeckFile::companionSuffix, NDeckFile::legacyPropertySuffix})
        addIfThere(files, companions + suffix);
    const QDir folder(dataFolderPath(target));
    if (folder.exists())
        for (const QString& file : folder.entryList(QDir::Files | QDir::Hidden | QDir::System))
            files.append(folder.filePath(file));
    return files;
}

} // namespace

QStringList sourceFiles(const QString& path)
{
    const QString base = stripDeckSuffix(path);
    QStringList files;
    addIfThere(files, path);
    for (const QLatin1String suffix :
         {NDeckFile::demSuffix, NDeckFile::indexSuffix, NDeckFile::settingsSuffix, NDeckFile::configurationSuffix,
          NDeckFile::companionSuffix, NDeckFile::legacyPropertySuffix})
        addIfThere(files, base + suffix);
    QStringList segments = segmentFiles(base + NDeckFile::demSuffix);
    segments.sort();
    for (const QString& segment : segments)
        addIfThere(files, segment);
    return files;
}

QStringList familyFiles(const QString& path)
{
    QStringList files = sourceFiles(path);
    const QDir folder(stripDeckSuffix(path) + NDeckFile::dataFolderSuffix);
    if (folder.exists()) {
        const QDir::Filters all = QDir::Files | QDir::Hidden | QDir::System;
        for (const QString& file : folder.entryList(all, QDir::Name))
            files.append(folder.filePath(file));
    }
    return files;
}

std::string sharedWithSource(const QString& source, const QString& target)
{
    std::string shared = target.toStdString() + ": shares files with the source " + source.toStdString();
    // Companions that aren't there yet would be written beside the source's, as its own.
    const QString own = canonicalBase(stripDeckSuffix(source));
    if (own == canonicalBase(stripDeckSuffix(target)) || own == canonicalBase(stripLegacySuffix(target)))
        return shared;
    const QStringList files = sourceFiles(source);
    const std::set<FileIdentity> ownFiles = identities(files);
    for (const FileIdentity& identity : identities(touchedFiles(target)))
        if (ownFiles.count(identity) != 0)
            return shared;
    // The target's folder of numbered files is removed with all that is in it.
    const QString folder = QFileInfo(stripDeckSuffix(target) + NDeckFile::dataFolderSuffix).canonicalFilePath();
    for (const QString& file : files)
        if (!folder.isEmpty() && QFileInfo(file).canonicalFilePath().startsWith(folder + QLatin1Char('/')))
            return shared;
    return std::string();
}

FileStates fileStates(const QStringList& files)
{
    FileStates states;
    for (const QString& file : files) {
        SFileState state;
        state.path = file;
        struct stat status = {};
        if (stat(QFile::encodeName(file).constData(), &status) == 0) {
            state.size = status.st_size;
            state.modified = qint64(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec;
            state.inode = status.st_ino;
        }
        else {
            state.size = -1;
        }
        states.push_back(state);
    }
    return states;
}

std::string changeBetween(const FileStates& before, const FileStates& now)
{
    for (const SFileState& was : before) {
        const auto is = std::find_if(now.begin(), now.end(), [&](const SFileState& s) { return s.path == was.path; });
        if (is != now.end() && *is == was) // which a link that leads nowhere can be as well
            continue;
        return was.path.toStdString() + (is == now.end() || is->size < 0 ? " is gone" : " has changed");
    }
    for (const SFileState& is : now)
        if (std::none_of(before.begin(), before.end(), [&](const SFileState& s) { return s.path == is.path; }))
            return is.path.toStdString() + " is new";
    return std::string();
}

} // namespace NBrenmark
