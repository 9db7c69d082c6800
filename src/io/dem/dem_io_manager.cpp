// Which segment is open, and opening a deck with its index. The other operations are in dem_*.cpp beside it.
#include "io/dem/dem_io_manager.h"

#include "core/deck/deck_files.h"
#include "core/deck/file_families.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "core/memory_ceiling.h"
#include "core/plain_file.h"
#include "io/dem/dem_header.h"
#include "io/dem/dem_index.h"
#include "io/dem/dem_writer.h"
#include "io/dem/inflate_ahead.h"

#include <QFileInfo>

#include <set>

namespace NBrenmark {

// ---------------------------------------------------------------- the doors of the family

std::unique_ptr<IFileFormatManager> NLegacyFamily::makeManager(CSimulation& simulation)
{
    return std::make_unique<CDemIoManager>(simulation);
}

void NLegacyFamily::readObject(CDemDataStream& stream, CSimulationData& object)
{
    if (auto* creator = dynamic_cast<CCreatorData*>(&object)) {
        beginMemoryCount(eMemoryOfModel);
        CDemCreatorDataReader reader(stream);
        creator->read(reader);
    }
    else if (auto* timestep = dynamic_cast<CTimestepData*>(&object)) {
        beginMemoryCount(eMemoryOfTimestep);
        CDemTimestepDataReader reader(stream);
        timestep->read(reader);
    }
}

void NLegacyFamily::writeObject(CDemDataStream& stream, CSimulationData& object)
{
    if (auto* creator = dynamic_cast<CCreatorData*>(&object)) {
        CDemCreatorDataWriter writer(stream);
        creator->write(writer);
    }
    else if (auto* timestep = dynamic_cast<CTimestepData*>(&object)) {
        CDemTimestepDataWriter writer(stream);
        timestep->write(writer);
    }
}

// ---------------------------------------------------------------- files

bool fileFailed(const SLogTitle& title, const char* what, const QFile& file)
{
    reportFailure(title, "Could not " + std::string(what) + ' ' + file.fileName().toStdString() + ": " +
                             file.errorString().toStdString());
    return false;
}

bool flushed(QFile& file)
{
    if (file.flush() && file.error() == QFileDevice::NoError)
        return true;
    return fileFailed(NLogTitle::legacyWrite, "write", file);
}

SDataPlace placeIn(const QFile& file) { return placeIn(file.fileName()); }

/// Whether a file that is only to be read could be opened; else the log says which file and why.
static bool opened(QFile& file)
{
    const std::string cause = openPlainFile(file);
    if (!cause.empty())
        reportFailure(NLogTitle::legacyRead, "Could not open " + file.fileName().toStdString() + ": " + cause);
    return cause.empty();
}

CDemIoManager::CDemIoManager(CSimulation& simulation, qint64 segmentLimit)
    : IFileFormatManager(simulation), segmentLimit(segmentLimit)
{}

CDemIoManager::~CDemIoManager() = default; // files close themselves

QString CDemIoManager::segmentPath(const QString& name, quint32 n)
{
    return n == 0 ? name : name + NDeckFile::segmentInfix + QString::number(n);
}

bool CDemIoManager::openDataFile(const QString& name, quint32 n, QFile& file, EMissing missing)
{
    file.close();
    file.setFileName(segmentPath(name, n));
    if (!writing)
        return opened(file);
    const QIODevice::OpenMode mode = QIODevice::ReadWrite;
    if (file.open(missing == eIsError ? mode | QIODevice::ExistingOnly : mode))
        return true;
    return fileFailed(NLogTitle::legacyWrite, "open", file);
}

bool CDemIoManager::ensureSegment(quint32 n, EMissing missing)
{
    if (dataFile.isOpen() && openSegment == n)
        return true;
    if (!openDataFile(fileName, n, dataFile, missing))
        return false;
    openSegment = n;
    if (!writing && n > 0) { // of segment 0 the header is read first
        const CPlaceScope scope(placeIn(dataFile));
        return checkFirstBlock(0);
    }
    return true;
}

bool CDemIoManager::ensureIndexFile()
{
    if (indexFile.isOpen())
        return true;
    indexFile.setFileName(stripLegacySuffix(fileName) + NDeckFile::indexSuffix);
    if (!writing)
        return opened(indexFile);
    if (indexFile.open(QIODevice::ReadWrite))
        return true;
    return fileFailed(NLogTitle::legacyWrite, "open", indexFile);
}

bool CDemIoManager::hasFullHeader() const { return SDemHeader::hasFullHeader(firstVersion); }

bool CDemIoManager::startWriting()
{
    if (!hasFullHeader()) { // the one that is written would run over the first block
        reportFailure(NLogTitle::legacyWrite, fileName.toStdString() + " was created by version " +
                                                  versionText(firstVersion).toStdString() +
                                                  " and can't be changed: its header has no room.");
        return false;
    }
    if (!writing)
        closeFiles();
    writing = true;
    return true;
}

void CDemIoManager::closeFiles()
{
    ahead.reset();
    dataFile.close();
    indexFile.close();
}

bool CDemIoManager::goTo(const SPlace& place)
{
    if (!ensureSegment(place.segment))
        return false;
    const bool isInside = place.offset <= static_cast<quint64>(dataFile.size());
    if (isInside && dataFile.seek(static_cast<qint64>(place.offset)))
        return true;
    const std::string byte = "byte " + std::to_string(place.offset);
    reportFailure(writing ? NLogTitle::legacyWrite : NLogTitle::legacyRead,
                  dataFile.fileName().toStdString() + ": " +
                      (isInside ? byte + " can't be reached"
                                : "a block is announced at " + byte + ", the file has " +
                                      std::to_string(dataFile.size()) + " bytes"));
    return false;
}

void CDemIoManager::flush()
{
    for (QFile* file : {&dataFile, &indexFile})
        if (file->isOpen() && file->isWritable())
            flushed(*file);
}

void CDemIoManager::reset()
{
    resetFileState();
    clearLogOnceMemory();
    readModels.clear();
    closeFiles();
    lastSegment = 0;
    openSegment = 0;
    indexRewriteNeeded = false;
    writing = false;
}

// ---------------------------------------------------------------- opening

int CDemIoManager::setOutputName(const QString& path)
{
    fileName = path;
    return 0;
}

int CDemIoManager::open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex)
{
    if (path != fileName)
        closeFiles();
    fileName = path;
    if (!ensureSegment(0)) {
        openSegment = 0;
        return eOpenNoFile;
    }
    if (!readHeader())
        return eOpenHeaderRefused;
    blockStarts.clear();
    readModels.clear();
    const CPlaceScope scope(placeIn(dataFile));
    if (timestepCount > 0 && !checkFirstBlock(dataFile.pos()))
        return eOpenHeaderRefused;
    const QString indexName = stripLegacySuffix(dataFile.fileName()) + NDeckFile::indexSuffix;
    const bool isRead =
        regenerateIndex ? regenerateIndexFile(indexName, frame, index) : readIndexFile(indexName, index);
    if (!isRead)
        return regenerateIndex ? eOpenIndexNotRebuilt : eOpenIndexUnreadable;
    beginDeckMemory(bytesOfSegments(index));
    return eOpened;
}

quint64 CDemIoManager::bytesOfSegments(const TimestepIndex& index) const
{
    std::set<quint32> segments{0}; // each is counted once
    for (const STimestepIndexEntry& entry : index)
        segments.insert(entry.segment);
    quint64 bytes = 0;
    for (const quint32 n : segments)
        bytes += static_cast<quint64>(QFileInfo(segmentPath(fileName, n)).size());
    return bytes;
}

bool CDemIoManager::readHeader()
{
    SDemHeader header;
    const bool isWhole = header.read(dataFile);
    if (!isWhole || !header.isAcceptable()) {
        // A version of another program is sound, but none of ours; there is no version 0.
        const bool isDamaged = !isWhole || header.firstVersion == 0;
        reportFailure(NLogTitle::legacyRead,
                      dataFile.fileName().toStdString() + ": header of version " +
                          versionText(header.firstVersion).toStdString() + ", last written by " +
                          versionText(header.lastVersion).toStdString() + ", is " +
                          (isDamaged ? "damaged or cut short" : "of a version that can't be read here"),
                      isDamaged ? eCauseSource : eCauseUnsupported);
        return false;
    }
    firstVersion = header.firstVersion;
    lastVersion = header.lastVersion;
    timestepCount = header.timesteps;
    edition = header.edition;
    return true;
}

bool CDemIoManager::rewriteHeader()
{
    if (!ensureSegment(0))
        return false;
    lastVersion = qMax(lastVersion, currentFileVersion());
    const SDemHeader header{firstVersion, lastVersion, timestepCount, 0, edition};
    if (header.write(dataFile))
        return flushed(dataFile);
    return fileFailed(NLogTitle::legacyWrite, "write", dataFile);
}

bool CDemIoManager::readIndexFile(const QString& name, TimestepIndex& index)
{
    indexFile.close();
    if (!ensureIndexFile())
        return false;
    if (!NDemIndex::read(indexFile, lastVersion, timestepCount, index)) {
        reportFailure(NLogTitle::legacyRead, name.toStdString() + ": no index of the " +
                                                 counted(timestepCount, "timestep") +
                                                 " that the deck's header announces");
        return false;
    }
    // A tail of other bytes would come before the next entry.
    const qint64 bytes = 4 + qint64(timestepCount) * NDemIndex::entryBytes(lastVersion); // the count, and the entries
    indexRewriteNeeded = !NDemIndex::isCurrentForm(lastVersion) || indexFile.size() != bytes;
    if (indexFile.size() > bytes)
        report(eLost, NLogTitle::legacyRead,
               name.toStdString() + ": " + std::to_string(indexFile.size() - bytes) +
                   " bytes follow the last entry that the index announces");
    noteBlockStarts(index);
    lastSegment = index.empty() ? 0 : index.back().segment;
    return timestepCount == index.size();
}

bool CDemIoManager::writeIndexFile(const TimestepIndex& index)
{
    indexFile.close();
    if (!indexFile.open(QIODevice::ReadWrite | QIODevice::Truncate))
        return fileFailed(NLogTitle::legacyWrite, "open", indexFile);
    if (!NDemIndex::write(indexFile, index))
        return fileFailed(NLogTitle::legacyWrite, "write", indexFile);
    if (!flushed(indexFile))
        return false;
    indexRewriteNeeded = false;
    return true;
}

bool CDemIoManager::appendIndexEntry(const TimestepIndex& index, quint32 timestep)
{
    if (indexRewriteNeeded)
        return writeIndexFile(index);
    if (!ensureIndexFile() || !NDemIndex::append(indexFile, timestepCount, index[timestep])) {
        indexRewriteNeeded = true; // the next one replaces it as a whole
        return fileFailed(NLogTitle::legacyWrite, "write", indexFile);
    }
    return flushed(indexFile);
}

} // namespace NBrenmark
