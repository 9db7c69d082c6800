// Whole decks: a copy up to the current timestep, and a subset of timesteps as a new deck.
#include "core/deck/deck_files.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "core/progress.h"
#include "io/dem/dem_header.h"
#include "io/dem/dem_index.h"
#include "io/dem/dem_io_manager.h"

#include <QFileInfo>

namespace NBrenmark {

bool CDemIoManager::saveCopyUpToCurrent(SSimulationFrame& frame, TimestepIndex& index, const QString& newName,
                                        const QString& tempBase)
{
    const quint32 number = frame.timestep.timestepIndex;
    if (number >= index.size())
        return false;
    closeFiles();
    const SPlace cut{index[number].segment, index[number].offset};
    const QString tempName = tempBase + QLatin1Char('.') + QFileInfo(newName).suffix();
    for (quint32 segment = 0; segment <= cut.segment; ++segment) {
        const QString source = segmentPath(fileName, segment);
        const QString target = segmentPath(tempName, segment);
        const qint64 limit = segment == cut.segment ? static_cast<qint64>(cut.offset) : wholeFile;
        if (!copyOrTruncateFile(source, target, limit)) {
            reportFailure(NLogTitle::legacyWrite, "Could not copy file\n    Source: " + source.toStdString() +
                                                      "\n    Destination: " + target.toStdString());
            return false;
        }
    }
    fileName = tempName;
    lastSegment = cut.segment;
    index.resize(std::size_t(number) + 1);
    index.back() = STimestepIndexEntry(); // of the current timestep, which is written anew
    index.back().time = frame.timestep.time;
    index.back().isFull = true;
    timestepCount = number; // the append counts the last one
    indexFile.setFileName(tempBase + NDeckFile::indexSuffix);
    indexRewriteNeeded = true;                                      // the copy has no index yet
    const bool appended = appendTimestep(frame, index, true, true); // with the model as the frame has it
    closeFiles();
    if (!appended || !deleteFamily(newName))
        return false;
    if (!renameFamily(tempName, newName)) {
        reportFailure(NLogTitle::legacyWrite,
                      "Could not rename " + tempName.toStdString() + " to " + newName.toStdString());
        deleteFamily(newName);
        deleteFamily(tempName);
        return false;
    }
    fileName = newName;
    return ensureSegment(0) && ensureIndexFile();
}

namespace {

/// The deck that a subset goes to.
class CSubsetTarget
{
public:
    explicit CSubsetTarget(const QString& name) : name(name), list(stripLegacySuffix(name) + NDeckFile::indexSuffix) {}

    bool openSegment(quint32 n)
    {
        data.close();
        data.setFileName(CDemIoManager::segmentPath(name, n));
        segment = n;
        return data.open(QIODevice::ReadWrite | QIODevice::Truncate) ||
               fileFailed(NLogTitle::legacyWrite, "open", data);
    }
    bool openIndex()
    {
        return list.open(QIODevice::ReadWrite | QIODevice::Truncate) ||
               fileFailed(NLogTitle::legacyWrite, "open", list);
    }
    bool writeHeader(const SDemHeader& header)
    {
        return (header.write(data) && flushed(data)) || fileFailed(NLogTitle::legacyWrite, "write", data);
    }
    /// Opens the first segment again and gives it its final header, then writes the index.
    bool finish(const SDemHeader& header)
    {
        data.close();
        data.setFileName(name);
        if (!data.open(QIODevice::ReadWrite))
            return fileFailed(NLogTitle::legacyWrite, "open", data);
        if (!writeHeader(header))
            return false;
        return (NDemIndex::write(list, index) && flushed(list)) || fileFailed(NLogTitle::legacyWrite, "write", list);
    }

    QString name;
    QFile data;
    QFile list;
    quint32 segment = 0;
    TimestepIndex index;
};

/// Gives the writer's options back as they were.
class CKeptOptions
{
public:
    explicit CKeptOptions(SSaveOptions& options) : options(options), kept(options) {}
    ~CKeptOptions() { options = kept; }
    CKeptOptions(const CKeptOptions&) = delete;
    CKeptOptions& operator=(const CKeptOptions&) = delete;

private:
    SSaveOptions& options;
    SSaveOptions kept;
};

bool isCancelled(IProgressController* progress) { return progress != nullptr && progress->cancelState() != eGoOn; }

} // namespace

bool CDemIoManager::saveSubset(const QString& newName, quint32 first, quint32 last, quint32 stride,
                               IProgressController* progress)
{
    if (stride == 0)
        return false;
    CSubsetTarget target(newName);
    // The creating version decides how long the header is, and only the full one is written.
    const quint32 creator = hasFullHeader() ? firstVersion : currentFileVersion();
    if (!target.openSegment(0) || !target.openIndex() ||
        !target.writeHeader(SDemHeader{creator, currentFileVersion(), 1, 0, edition}))
        return false;

    const CKeptOptions keptOptions(writeOptions);
    bool anyWritten = false;
    SPlace source{0, 0};   // of the creator block last written, in this deck
    quint32 inSegment = 0; // of the new deck that block went to
    SPlace copied{0, 0};   // and where it is there
    quint64 next = first;
    while (next <= last) {
        if (isCancelled(progress))
            return false;
        if (!simulation.goToTimestep(static_cast<quint32>(next), eIntoBackFrame))
            return false;
        SSimulationFrame& frame = *simulation.backFrame;
        if (target.data.size() > segmentLimit && !target.openSegment(target.segment + 1))
            return false;
        const SPlace present{frame.creator.storageIndex(), frame.creator.storageOffset()};
        if (!anyWritten || target.segment != inSegment || present.segment != source.segment ||
            present.offset != source.offset) {
            source = present;
            inSegment = target.segment;
            copied = SPlace{target.segment, static_cast<quint64>(target.data.pos())};
            anyWritten = true;
            if (!writeCreatorBlock(target.data, frame))
                return false;
        }
        CTimestepData& timestep = frame.timestep;
        writeOptions.fullSave = timestep.isFull; // each is written with as much as was saved of it
        writeOptions.timestepMask = timestep.timestepMask;
        writeOptions.particleMask = timestep.particleMask;
        writeOptions.geometryMask = timestep.geometryMask;
        STimestepIndexEntry entry;
        entry.time = timestep.time;
        entry.segment = target.segment;
        entry.offset = static_cast<quint64>(target.data.pos());
        entry.isFull = timestep.isFull;
        if (!writeTimestepBlock(target.data, timestep, copied))
            return false;
        target.index.push_back(entry);
        if (progress != nullptr)
            progress->tick(1);
        next = next + stride > last && next != last ? last : next + stride; // the last is taken whatever the stride
    }
    const auto written = static_cast<quint32>(target.index.size());
    if (!target.finish(SDemHeader{creator, currentFileVersion(), written, 0, edition}))
        return false;
    if (progress != nullptr)
        progress->tick(1);
    return !isCancelled(progress);
}

} // namespace NBrenmark
