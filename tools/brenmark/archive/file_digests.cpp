#include "brenmark/archive/file_digests.h"

#include "brenmark/deck_family.h"
#include "brenmark/disk.h"
#include "brenmark/failure.h"

#include "core/deck/deck_files.h"
#include "core/plain_file.h"
#include "io/text/quick_digest.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

static std::string nameOf(const QString& file) { return nativePath(QFileInfo(file).fileName()); }

std::string filesDigest(std::vector<SDeckFile> files)
{
    std::sort(files.begin(), files.end(), [](const SDeckFile& a, const SDeckFile& b) { return a.name < b.name; });
    CQuickDigest digest;
    for (const SDeckFile& file : files)
        digest.add(file.name + '\n' + std::to_string(file.size) + '\n' + std::to_string(file.modified));
    return digest.hex();
}

std::string sourceFilesDigest(const QString& source)
{
    std::vector<SDeckFile> files;
    for (const SFileState& file : fileStates(sourceFiles(source)))
        files.push_back({nameOf(file.path), file.size, file.modified});
    return filesDigest(std::move(files));
}

std::string sourceBytesDigest(const QString& source)
{
    constexpr qint64 pieceBytes = 1 << 20;
    CQuickDigest digest;
    for (const QString& path : sourceFiles(source)) {
        QFile file(path);
        if (!QFileInfo::exists(path)) // a link that leads nowhere
            continue;
        if (const std::string cause = openPlainFile(file); !cause.empty())
            throw CFailure(eExitSource, utf8(path) + ": can't be opened: " + cause, "Check the file's permissions.");
        digest.add(nameOf(path) + '\n' + std::to_string(file.size()));
        for (QByteArray piece = file.read(pieceBytes); !piece.isEmpty(); piece = file.read(pieceBytes))
            digest.add(piece.constData(), static_cast<size_t>(piece.size()));
        if (file.error() != QFile::NoError)
            throw CFailure(eExitSource, utf8(path) + ": can't be read: " + utf8(file.errorString()), "Check the disk.");
    }
    return digest.hex();
}

/// The folder of the deck isn't listed: ten thousand others may lie in it.
std::string deckFilesDigest(const QString& deck)
{
    if (!QFileInfo(deck).isFile())
        return std::string();
    const QString base = stripDeckSuffix(deck);
    QStringList paths{deck};
    for (const QLatin1String suffix :
         {NDeckFile::settingsSuffix, NDeckFile::configurationSuffix, NDeckFile::companionSuffix})
        paths.append(base + suffix);
    const QString data = base + NDeckFile::dataFolderSuffix;
    for (const std::string& name : realDisk().names(nativePath(data)))
        paths.append(data + '/' + QFile::decodeName(QByteArray::fromStdString(name)));
    CQuickDigest digest;
    for (const SFileState& file : fileStates(paths))
        digest.add(nameOf(file.path) + '\n' + std::to_string(file.size));
    return digest.hex();
}

} // namespace NBrenmark
