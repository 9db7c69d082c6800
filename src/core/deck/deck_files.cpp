// Which files make a deck, by its suffixes, and how they are copied, renamed and deleted as one.
#include "core/deck/deck_files.h"

#include "core/deck/file_families.h"
#include "core/plain_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegExp>

#include <filesystem>
#include <system_error>

namespace NBrenmark {

using namespace NDeckFile;

constexpr qint64 copyBufferSize = 0x100000;

static const QRegExp& deckSuffixes()
{
    static const QRegExp expression(QStringLiteral("\\.(dfg|dem|dem\\.scn\\.[0-9]+|ess)$"));
    return expression;
}

static const QRegExp& legacySuffixes()
{
    static const QRegExp expression(QStringLiteral("\\.(|dem|dem\\.scn\\.[0-9]+)$"));
    return expression;
}

// ---------------------------------------------------------------- names and formats

EDeckFormat detectFormat(const QString& path, std::string* cause)
{
    const auto unreadable = [&](const std::string& why) {
        if (cause != nullptr && QFileInfo(path).isFile())
            *cause = why;
        return eFormatUnknown;
    };
    QFile file(path);
    if (const std::string why = openPlainFile(file); !why.empty())
        return unreadable(why);
    if (NHdf5Family::isOwnHeader(file))
        return eFormatHdf5;
    const EDeckFormat format = NLegacyFamily::isOwnHeader(file) ? eFormatLegacy : eFormatUnknown;
    return file.error() == QFileDevice::NoError ? format : unreadable(file.errorString().toStdString());
}

int checkSourceFiles(const QString& path, bool skipIndexCheck)
{
    if (!QFile::exists(path))
        return 1;
    if (!skipIndexCheck && detectFormat(path) == eFormatLegacy && !QFile::exists(stripDeckSuffix(path) + indexSuffix))
        return 2;
    return 0;
}

QString stripDeckSuffix(const QString& path) { return QString(path).remove(deckSuffixes()); }

QString stripLegacySuffix(const QString& path) { return QString(path).remove(legacySuffixes()); }

QStringList segmentFiles(const QString& dataFile)
{
    namespace fs = std::filesystem;
    // Names alone are looked at until one fits: ten thousand decks may lie in the folder.
    const QFileInfo info(dataFile);
    const std::string prefix = QFile::encodeName(info.fileName() + segmentInfix).toStdString();
    QStringList paths;
    std::error_code failure;
    const fs::path folder(QFile::encodeName(info.absolutePath()).toStdString());
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        std::error_code unknown;
        if (name.compare(0, prefix.size(), prefix) == 0 && entry->is_regular_file(unknown))
            paths.append(info.dir().filePath(QFile::decodeName(QByteArray::fromStdString(name))));
    }
    paths.sort();
    return paths;
}

QString dataFolderPath(const QString& mainFile)
{
    const QFileInfo info(mainFile);
    return info.absolutePath() + QLatin1Char('/') + info.completeBaseName() + dataFolderSuffix + QLatin1Char('/');
}

static QFileInfoList numberedFiles(const QString& mainFile)
{
    return QDir(dataFolderPath(mainFile))
        .entryInfoList({QLatin1Char('*') + timestepSuffix}, QDir::Files | QDir::Hidden | QDir::CaseSensitive);
}

std::string folderConflict(const QString& mainFile)
{
    if (numberedFiles(mainFile).isEmpty())
        return std::string();
    const std::string folder = "The folder " + dataFolderPath(mainFile).chopped(1).toStdString();
    const QFileInfo own(mainFile);
    const QFileInfoList neighbours = own.absoluteDir().entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QFileInfo& other : neighbours) {
        const bool isOther = other.fileName() != own.fileName() && other.canonicalFilePath() != own.canonicalFilePath();
        if (isOther && other.completeBaseName() == own.completeBaseName() &&
            detectFormat(other.filePath()) == eFormatHdf5)
            return folder + " belongs to the deck " + other.filePath().toStdString() +
                   ", and the new deck would write its timesteps into it: choose another name";
    }
    const bool clearedWithFamily =
        dataFolderPath(mainFile) == stripDeckSuffix(own.absoluteFilePath()) + dataFolderSuffix + QLatin1Char('/');
    if (clearedWithFamily || detectFormat(mainFile) == eFormatHdf5)
        return std::string();
    return folder + " holds the timesteps of a deck whose first file isn't there: choose another name";
}

bool removeNumberedFiles(const QString& mainFile)
{
    bool removed = true;
    for (const QFileInfo& file : numberedFiles(mainFile))
        removed = QFile::remove(file.filePath()) && removed;
    return removed;
}

// ---------------------------------------------------------------- whole families

static bool removeIfThere(const QString& path) { return !QFile::exists(path) || QFile::remove(path); }

static bool renameIfThere(const QString& from, const QString& to)
{
    return !QFile::exists(from) || QFile::rename(from, to);
}

bool deleteFamily(const QString& path)
{
    const QString base = stripDeckSuffix(path);
    for (const QLatin1String suffix : {demSuffix, indexSuffix, configurationSuffix, companionSuffix, settingsSuffix}) {
        if (!removeIfThere(base + suffix))
            return false;
    }
    const QStringList segments = segmentFiles(base + demSuffix);
    for (const QString& segment : segments) {
        if (!QFile::remove(segment))
            return false;
    }
    if (!removeIfThere(base + legacyPropertySuffix))
        return false;
    const QFileInfo folder(base + dataFolderSuffix);
    if (folder.isSymLink()) // the link goes, what it points to isn't the deck's
        return QFile::remove(folder.filePath());
    return !folder.isDir() || QDir(folder.filePath()).removeRecursively();
}

bool renameFamily(const QString& from, const QString& to)
{
    if (!QFile::exists(from))
        return false;
    const QFileInfo source(QDir::cleanPath(QFileInfo(from).absoluteFilePath()));
    const QFileInfo target(QDir::cleanPath(QFileInfo(to).absoluteFilePath()));
    // Making room for a deck under its own name would delete it.
    if (source.filePath() == target.filePath())
        return true;
    if (target.exists() && (stripDeckSuffix(source.filePath()) == stripDeckSuffix(target.filePath()) ||
                            source.canonicalFilePath() == target.canonicalFilePath()))
        return false;
    if (target.exists() && !deleteFamily(target.filePath()))
        return false;

    const QString sourceBase = source.absolutePath() + QLatin1Char('/') + source.completeBaseName();
    const QString targetBase = target.absolutePath() + QLatin1Char('/') + target.completeBaseName();
    if (!QFile::rename(source.filePath(), target.filePath()) ||
        !renameIfThere(sourceBase + indexSuffix, targetBase + indexSuffix) ||
        !QFile::rename(sourceBase + configurationSuffix, targetBase + configurationSuffix) ||
        !renameIfThere(sourceBase + companionSuffix, targetBase + companionSuffix) ||
        !QFile::rename(sourceBase + settingsSuffix, targetBase + settingsSuffix))
        return false;

    const int numberStart = source.completeBaseName().size() + demSuffix.size() + segmentInfix.size();
    const QStringList segments = segmentFiles(sourceBase + demSuffix);
    for (const QString& segment : segments) {
        const QString number = QFileInfo(segment).fileName().mid(numberStart);
        if (!QFile::rename(segment, targetBase + demSuffix + segmentInfix + number))
            return false;
    }
    return !QFile::exists(sourceBase + dataFolderSuffix) ||
           QDir().rename(sourceBase + dataFolderSuffix, targetBase + dataFolderSuffix);
}

// ---------------------------------------------------------------- bytes

/// Moves so many bytes from here on. False at the first one that can't be read or written.
static bool copyBytes(QFile& source, QFile& target, qint64 bytes)
{
    QByteArray buffer(static_cast<int>(copyBufferSize), '\0');
    while (bytes > 0) {
        const qint64 got = source.read(buffer.data(), qMin(bytes, copyBufferSize));
        if (got <= 0 || target.write(buffer.constData(), got) != got)
            return false;
        bytes -= got;
    }
    return true;
}

/// Closes a file that was written. False if anything of it didn't reach the disk: a full one may
/// show as late as here.
static bool closeWritten(QFile& file)
{
    const bool flushed = file.flush();
    file.close();
    return flushed && file.error() == QFileDevice::NoError;
}

static std::string causeIn(const QFile& file)
{
    return file.fileName().toStdString() + ": " + file.errorString().toStdString();
}

/// Copies so many bytes and closes the target.
static SCopyFailure copyAndClose(QFile& source, QFile& target, qint64 bytes)
{
    SCopyFailure failure;
    if (!copyBytes(source, target, bytes)) { // asked before closing, which forgets
        if (target.error() != QFileDevice::NoError)
            failure = {causeIn(target), eCauseTarget};
        else if (source.error() != QFileDevice::NoError)
            failure = {causeIn(source), eCauseSource};
        else
            failure = {source.fileName().toStdString() + ": It became shorter meanwhile", eCauseSource};
    }
    if (!closeWritten(target) && failure.text.empty())
        failure = {causeIn(target), eCauseTarget};
    return failure;
}

static SCopyFailure copyFailure(const QString& from, const QString& to, qint64 limit)
{
    QFile source(from);
    if (const std::string cause = openPlainFile(source, QIODevice::Unbuffered); !cause.empty())
        return {from.toStdString() + ": " + cause, eCauseSource};
    QFile target(to);
    if (limit == wholeFile) {
        if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            return {causeIn(target), eCauseTarget};
        SCopyFailure failure = copyAndClose(source, target, source.size());
        if (!failure.text.empty())
            target.remove(); // it wasn't there before
        else if (!target.setPermissions(source.permissions()))
            return {causeIn(target), eCauseTarget};
        return failure;
    }
    // Opening the target empties it, which must not be the source by another name.
    if (QFileInfo(from).canonicalFilePath() == QFileInfo(to).canonicalFilePath())
        return {to.toStdString() + ": It is the source itself", eCauseTarget};
    if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return {causeIn(target), eCauseTarget};
    return copyAndClose(source, target, qMin(limit, source.size()));
}

bool copyOrTruncateFile(const QString& from, const QString& to, qint64 limit, SCopyFailure* failure)
{
    const SCopyFailure found = copyFailure(from, to, limit);
    if (failure != nullptr)
        *failure = found;
    return found.text.empty();
}

bool truncateFile(QFile& file, qint64 length)
{
    const QString name = file.fileName();
    const QString temporaryName = name + QLatin1String(".tmp");
    const QString oldName = name + QLatin1String(".old");
    QFile temporary(temporaryName);
    if (length < 0 || !file.flush() || !temporary.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;

    const bool copied = file.seek(0) && copyBytes(file, temporary, length);
    const bool written = closeWritten(temporary) && temporary.setPermissions(file.permissions());
    if (!copied || !written) {
        temporary.remove();
        return false;
    }
    file.close();
    if (!QFile::rename(name, oldName)) {
        temporary.remove();
        file.open(QIODevice::ReadWrite);
        return false;
    }
    if (!QFile::rename(temporaryName, name)) {
        temporary.remove();
        if (QFile::rename(oldName, name)) // without its name the deck would be lost to its owner
            file.open(QIODevice::ReadWrite);
        return false;
    }
    return QFile::remove(oldName) && file.open(QIODevice::ReadWrite);
}

} // namespace NBrenmark
