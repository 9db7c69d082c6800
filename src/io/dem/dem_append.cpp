// Operations that change a deck where it lies: appending, cutting, creating.
#include "core/deck/deck_files.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "io/dem/dem_header.h"
#include "io/dem/dem_index.h"
#include "io/dem/dem_io_manager.h"

#include <QFileInfo>

namespace NBrenmark {

bool CDemIoManager::appendTimestep(SSimulationFrame& frame, TimestepIndex& index, bool creatorChanged, bool isFull)
{
    const quint32 number = frame.timestep.timestepIndex;
    if (number >= index.size() || !startWriting() || !ensureSegment(lastSegment, eIsCreated))
        return false;
    if (dataFile.size() >= segmentLimit) { // tested before a block only: no block is split
        if (!ensureSegment(lastSegment + 1, eIsCreated))
            return false;
        ++lastSegment;
    }
    if (lastSegment == 0 && dataFile.size() == 0 && !rewriteHeader()) // the first block comes after it
        return false;
    if (!dataFile.seek(dataFile.size()))
        return fileFailed(NLogTitle::legacyWrite, "write", dataFile);

    CCreatorData& creator = frame.creator;
    // Otherwise the block that served the timestep before serves this one as well.
    if (creatorChanged || creatorRewritePending || creator.modified) {
        creator.setStorageIndex(lastSegment);
        creator.setStorageOffset(static_cast<quint64>(dataFile.pos()));
        if (!writeCreatorBlock(dataFile, frame))
            return false;
        creatorRewritePending = false;
    }
    STimestepIndexEntry& entry = index[number];
    entry.segment = lastSegment;
    entry.offset = static_cast<quint64>(dataFile.pos());
    entry.isFull = isFull;
    if (!writeTimestepBlock(dataFile, frame.timestep, SPlace{creator.storageIndex(), creator.storageOffset()}))
        return false;
    ++timestepCount;
    return appendIndexEntry(index, number) && rewriteHeader(); // the block is whole before anything announces it
}

/// Removes the segments of a deck after the last one that stays.
static bool removeSegmentsAbove(const QString& dataFile, quint32 last)
{
    const QStringList segments = segmentFiles(dataFile);
    for (const QString& segment : segments) {
        const quint32 number = segment.section(QLatin1Char('.'), -1).toUInt();
        QFile file(segment);
        if (number > last && !file.remove())
            return fileFailed(NLogTitle::legacyWrite, "delete", file);
    }
    return true;
}

bool CDemIoManager::truncateAfterCurrent(SSimulationFrame& frame, TimestepIndex& index, bool discardCurrent)
{
    const std::size_t kept = std::size_t(frame.timestep.timestepIndex) + (discardCurrent ? 0 : 1);
    if (kept > index.size() || (discardCurrent && kept == index.size()))
        return false;
    creatorRewritePending = false;
    if (kept == index.size())
        return true; // nothing comes after it
    if (!startWriting())
        return false;
    SPlace cut{index[kept].segment, index[kept].offset}; // the first byte that goes
    if (discardCurrent) {
        const CCreatorData& creator = frame.creator;
        const SPlace block{creator.storageIndex(), creator.storageOffset()};
        const auto liesBehind = [&](const STimestepIndexEntry& entry) {
            return block.segment > entry.segment || (block.segment == entry.segment && block.offset > entry.offset);
        };
        if (kept == 0 || liesBehind(index[kept - 1])) { // it serves the discarded timestep first
            cut = block;
            creatorRewritePending = true;
        }
    }
    if (!ensureSegment(cut.segment))
        return false;
    // Nothing of this segment stays, so its file goes.
    if (cut.offset == 0) {
        if (cut.segment == 0 || !dataFile.remove()) // closes it
            return fileFailed(NLogTitle::legacyWrite, "delete", dataFile);
        --cut.segment;
    }
    else if (!truncateFile(dataFile, static_cast<qint64>(cut.offset)))
        return fileFailed(NLogTitle::legacyWrite, "cut", dataFile);
    if (!removeSegmentsAbove(stripDeckSuffix(fileName) + NDeckFile::demSuffix, cut.segment))
        return false;

    index.resize(kept);
    timestepCount = static_cast<quint32>(kept);
    if (!writeIndexFile(index) || !rewriteHeader())
        return false;
    lastSegment = index.empty() ? 0 : index.back().segment;
    return true;
}

bool CDemIoManager::createSimulation(const QString& path, SSimulationFrame& frame, bool switchToNew,
                                     TimestepIndex& index)
{
    QFile newData(path);
    QFile newIndex(stripLegacySuffix(path) + NDeckFile::indexSuffix);
    const auto giveUp = [&] {
        newData.close();
        newIndex.close();
        deleteFamily(path);
        return false;
    };
    if (!newData.open(QIODevice::ReadWrite | QIODevice::Truncate))
        return fileFailed(NLogTitle::legacyWrite, "open", newData);
    if (!newIndex.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        fileFailed(NLogTitle::legacyWrite, "open", newIndex);
        return giveUp();
    }
    const quint32 current = currentFileVersion();
    if (!SDemHeader{current, current, 1, 0, edition}.write(newData)) { // one timestep, not marked
        fileFailed(NLogTitle::legacyWrite, "write", newData);
        return giveUp();
    }
    STimestepIndexEntry entry;
    entry.time = writeOptions.overrideTime ? writeOptions.timeOverride : frame.timestep.time;
    entry.isFull = true;
    const SPlace creator{0, static_cast<quint64>(newData.pos())};
    if (!writeCreatorBlock(newData, frame))
        return giveUp();
    entry.offset = static_cast<quint64>(newData.pos());
    if (!writeTimestepBlock(newData, frame.timestep, creator))
        return giveUp();
    const TimestepIndex newList{entry};
    if (!NDemIndex::write(newIndex, newList) || !flushed(newIndex)) {
        fileFailed(NLogTitle::legacyWrite, "write", newIndex);
        return giveUp();
    }
    newData.close();
    newIndex.close();
    if (!switchToNew)
        return true;

    closeFiles();
    fileName = path;
    indexFile.setFileName(newIndex.fileName());
    timestepCount = 1;
    index = newList;
    frame.timestep.time = entry.time;
    firstVersion = current;
    lastVersion = current;
    frame.creator.setStorageIndex(creator.segment);
    frame.creator.setStorageOffset(creator.offset);
    lastSegment = 0;
    indexRewriteNeeded = false;
    writing = true;
    return ensureSegment(0) && ensureIndexFile();
}

} // namespace NBrenmark
