#include "brenmark/target_checks.h"

#include "brenmark/deck_swap.h"
#include "brenmark/disk.h"
#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/value_digest.h"

#include "core/deck/deck_files.h"
#include "core/deck/family_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <sys/statvfs.h>
#include <unistd.h>

namespace NBrenmark {

namespace {

/// The nearest folder above a file that is there.
QString existingFolder(const QString& file)
{
    QString folder = QFileInfo(file).absolutePath();
    while (!QFileInfo::exists(folder) && QFileInfo(folder).absolutePath() != folder)
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

void requirePlace(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        throw CFailure(
            eExitTarget,
            utf8(path) + ": is " +
                (info.isDir() ? "a folder, where the new deck's file has to be" : "a device, pipe or socket"),
            "Choose another name for the new deck.");
}

void requireShortName(const QString& target)
{
    const QString folder = existingFolder(target);
    const long mostBytes = pathconf(nativePath(folder).c_str(), _PC_NAME_MAX);
    const auto bytes = static_cast<long>(nativePath(QFileInfo(target).fileName() + QLatin1String(".partial")).size());
    if (mostBytes > 0 && bytes > mostBytes)
        throw CFailure(eExitTarget,
                       utf8(target) + ": the name is too long by " +
                           countText(static_cast<quint64>(bytes - mostBytes), "byte") +
                           ": while the deck is made it has .partial at its end",
                       "Choose a shorter name for the new deck.");
    // The longest path is that of a numbered file in the making.
    const QFileInfo info(QDir::cleanPath(QFileInfo(target).absoluteFilePath()));
    const QString longest =
        info.filePath() + QLatin1String(".partial/") + info.completeBaseName() + QLatin1String("_data/0000000.h5.part");
    if (nativePath(longest).size() >= PATH_MAX)
        throw CFailure(eExitTarget, utf8(target) + ": the path is too long",
                       "Choose a folder nearer to the root, or a shorter name.");
}

void requireWritableFolder(const QString& target)
{
    const QString folder = existingFolder(target);
    int error = 0;
    struct statvfs disk = {};
    if (!QFileInfo(folder).isDir())
        error = ENOTDIR;
    else if (statvfs(nativePath(folder).c_str(), &disk) == 0 && (disk.f_flag & ST_RDONLY) != 0)
        error = EROFS;
    else if (access(nativePath(folder).c_str(), W_OK | X_OK) != 0)
        error = errno;
    if (error != 0)
        throw CFailure(eExitTarget, utf8(target) + ": can't be made in " + utf8(folder) + ": " + std::strerror(error),
                       error == ENOTDIR ? "Check the path." : adviceForWriting(error));
}

} // namespace

void requirePossibleTarget(const QString& out, const QString& target)
{
    if (!QFileInfo(out).isDir())
        requirePlace(out);
    for (const QLatin1String suffix :
         {NDeckFile::demSuffix, NDeckFile::settingsSuffix, NDeckFile::configurationSuffix, NDeckFile::companionSuffix})
        requirePlace(stripDeckSuffix(target) + suffix);
    requireShortName(target);
    requireWritableFolder(target);
}

void requireRoom(const QString& target, qint64 sourceBytes, qint64 there, quint32 timesteps)
{
    const QString folder = existingFolder(target);
    struct statvfs disk = {};
    if (statvfs(nativePath(folder).c_str(), &disk) != 0)
        return; // where that isn't known the writing itself will show it
    const double free = static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize);
    const double expected = static_cast<double>(sourceBytes - there);
    // No file takes less than a block. What more it takes depends on how well the source was compressed.
    const double surelyNeeded =
        static_cast<double>(timesteps) * static_cast<double>(disk.f_frsize) - static_cast<double>(there);
    const std::string isFree = sizeText(free) + (free == 1.0 ? " is" : " are") + " free";
    if (surelyNeeded > free)
        throw CFailure(eExitTarget,
                       utf8(target) + ": too little space: the new deck takes more than " + sizeText(surelyNeeded) +
                           ", and " + isFree + "; at least " + sizeText(surelyNeeded - free) + " more are needed",
                       adviceForWriting(ENOSPC));
    if (expected > free)
        printError("brenmark: warning: " + utf8(target) +
                   ": there may be too little space: the new deck takes about "
                   "as much as the source, " +
                   sizeText(static_cast<double>(sourceBytes)) + ", and " + isFree + ": " + sizeText(expected - free) +
                   " more may be needed.\n");
    if (disk.f_files > 0 && disk.f_favail < timesteps)
        throw CFailure(eExitTarget,
                       utf8(target) + ": too few files are free: each of " + countText(timesteps, "timestep") +
                           " takes one, and the disk has room for " + countText(disk.f_favail, "more file"),
                       "Remove files there, or choose another folder.");
}

void requireFreeTarget(const QString& source, const QString& target, bool force)
{
    if (const std::string shared = sharedWithSource(source, target); !shared.empty())
        throw CFailure(eExitTarget, shared,
                       "Choose another name or folder for the new deck: the source must stay as it is.");
    if (const std::string conflict = folderConflict(target); !conflict.empty())
        throw CFailure(eExitTarget, conflict, "The deck that is there must stay as it is.");
    QStringList existing = familyFiles(target);
    if (const QString digest = digestFileOf(target); QFileInfo::exists(digest))
        existing.append(digest);
    const QFileInfo folder(stripDeckSuffix(target) + NDeckFile::dataFolderSuffix);
    if (!force && (!existing.isEmpty() || folder.exists() || folder.isSymLink())) {
        const QString first = existing.isEmpty() ? folder.filePath() : existing.first();
        throw CFailure(eExitTarget, utf8(first) + " exists already",
                       "Choose another name for the new deck, or replace all of " + utf8(stripDeckSuffix(target)) +
                           " with --force.");
    }
    if (folder.exists() && !folder.isDir())
        throw CFailure(eExitTarget, utf8(folder.filePath()) + ": isn't a folder, as a deck's would be",
                       "It isn't replaced: move it elsewhere, or choose another name for the new deck.");
    const std::string stranger =
        folder.isSymLink() ? std::string() : strangerIn(realDisk(), nativePath(folder.filePath()));
    if (!stranger.empty())
        throw CFailure(eExitTarget, utf8(folder.filePath()) + '/' + stranger + ": isn't a file of a deck",
                       "It isn't replaced, with or without --force: move it elsewhere, or choose another name for the "
                       "new deck.");
}

void makeTargetFolder(const QString& target)
{
    const QString folder = QFileInfo(target).absolutePath();
    std::error_code failure;
    const bool isMade = std::filesystem::create_directories(nativePath(folder), failure);
    if (failure)
        throw CFailure(eExitTarget,
                       utf8(target) + ": its folder " + utf8(folder) + " can't be made: " + failure.message(),
                       adviceForWriting(failure.message()));
    if (isMade)
        realDisk().sync(nativePath(QFileInfo(folder).absolutePath()));
}

} // namespace NBrenmark
