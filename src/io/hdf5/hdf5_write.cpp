// Appending to a deck, cutting it and making a new one.

#include "io/hdf5/hdf5_io_manager.h"

#include "core/deck/deck_files.h"
#include "core/deck/simulation_frame.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/form.h"
#include "io/hdf5/guarded.h"
#include "io/hdf5/storable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace NBrenmark {

/// After the name of a numbered file until it is whole.
static const QLatin1String unfinishedSuffix(".part");

static QString couldNotWrite(const QString& path) { return QString("Could not write file %1.").arg(path); }

static SDataPlace timestepPlace(const QString& path, quint32 number)
{
    SDataPlace place;
    place.file = QFileInfo(path).fileName().toStdString();
    return place.inTimestep(number);
}

/// Whether the frame holds a timestep at all; reported if not.
static bool hasTimestep(const SSimulationFrame& frame, const QString& path)
{
    if (frame.timestep.timestepIndex != CTimestepData::noTimestep)
        return true;
    reportFailure(NLogTitle::hdf5Write, couldNotWrite(path) + "\nNo timestep is loaded.");
    return false;
}

/// Whether all texts and names have their place in the format, before anything is written.
static bool isStorable(SSimulationFrame& frame, const SSaveOptions& options, const QString& path)
{
    return guarded(NLogTitle::hdf5Write, couldNotWrite(path), [&] {
        checkStorable(frame.creator, options);
        checkStorable(frame.timestep, options);
    });
}

// ---------------------------------------------------------------- append

/// Puts a finished file in its place, over the one that was there.
static void moveOnto(const QString& from, const QString& to)
{
    std::error_code failure;
    std::filesystem::rename(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString(), failure);
    if (failure)
        throw hdf5_error("Could not give " + from.toStdString() + " its name: " + failure.message());
}

bool CHdf5IoManager::writeCreator(H5::H5File& file, SSimulationFrame& frame)
{
    const CPlaceScope scope(placeAtWork().inBlock(creatorBlock));
    return runWriter(file, frame.creator);
}

/// Writes a numbered file from its first byte to its last. It gets its name when it is whole: what a
/// process that was killed leaves must not be taken for a timestep by the next scan.
bool CHdf5IoManager::writeTimestepFile(quint32 number, SSimulationFrame& frame, bool withCreator)
{
    const QString path = timestepFilePath(fileName, number);
    const QString unfinished = path + unfinishedSuffix;
    const CPlaceScope scope(timestepPlace(path, number));
    bool written = false;
    const bool complete = guarded(NLogTitle::hdf5Write, couldNotWrite(path), [&] {
        File file = createInDataFolder(unfinished);
        written = (!withCreator || writeCreator(*file, frame)) && runWriter(*file, frame.timestep);
        if (written) {
            closeChecked(file);
            moveOnto(unfinished, path);
        }
    });
    if (written && complete)
        return true;
    if (QFile::exists(unfinished) && !QFile::remove(unfinished))
        reportFailure(NLogTitle::hdf5Write,
                      "The unfinished file " + unfinished.toStdString() + " could not be removed.");
    return false;
}

bool CHdf5IoManager::appendTimestep(SSimulationFrame& frame, TimestepIndex& index, bool creatorChanged, bool isFull)
{
    const quint32 number = frame.timestep.timestepIndex;
    const QString path = timestepFilePath(fileName, number);
    if (!hasTimestep(frame, fileName) || !isStorable(frame, writeOptions, path))
        return false;

    // Made anew, the folder would pass for a deck that holds all that was appended before.
    if (timestepCount > 0 && !QDir(dataFolderPath(fileName)).exists()) {
        reportFailure(NLogTitle::hdf5Write, couldNotWrite(path) + "\nIts folder is gone, with the timesteps before.");
        return false;
    }

    timestepFile.reset();
    currentFileNumber = -1; // none is open
    // A model that lies in the very file that is made anew goes with it.
    const bool withCreator =
        creatorChanged || creatorRewritePending || frame.creator.modified || frame.creator.storageIndex() == number;
    if (withCreator)
        frame.creator.setStorageIndex(number);
    const double time = writeOptions.overrideTime ? writeOptions.timeOverride : frame.timestep.time;
    creatorRewritePending = withCreator; // until it has arrived
    if (!writeTimestepFile(number, frame, withCreator))
        return false;
    creatorRewritePending = false;

    if (index.size() <= number)
        index.resize(std::size_t(number) + 1);
    STimestepIndexEntry& entry = index[number];
    entry.time = time;
    entry.segment = number; // here that of its file
    entry.offset = 1;       // not 0: the file is there
    entry.isFull = isFull;
    entry.creatorIndex = static_cast<qint32>(frame.creator.storageIndex());
    timestepCount += 1;
    return guarded(NLogTitle::hdf5Write, couldNotWrite(fileName), [&] { updateHeader(); });
}

// ---------------------------------------------------------------- cut

bool CHdf5IoManager::truncateAfterCurrent(SSimulationFrame& frame, TimestepIndex& index, bool discardCurrent)
{
    if (!hasTimestep(frame, fileName))
        return false;
    const quint32 keep = frame.timestep.timestepIndex + (discardCurrent ? 0 : 1);
    creatorRewritePending = false;
    // The file of the current timestep may hold the creator model of what follows: write it again.
    if (discardCurrent)
        creatorRewritePending =
            keep == 0 || (keep < index.size() && index[keep].creatorIndex > index[keep - 1].creatorIndex);
    timestepFile.reset();
    currentFileNumber = -1; // none is open
    const QString folder = dataFolderPath(fileName);
    for (const QString& name : dataFileNames(folder)) {
        const std::optional<quint32> number = timestepNumber(name);
        if (number && *number >= keep && !QFile::remove(folder + name))
            reportFailure(NLogTitle::hdf5Write, QString("File couldnt be deleted %1.").arg(folder + name));
    }
    index.resize(keep);
    timestepCount = keep;
    return guarded(NLogTitle::hdf5Write, couldNotWrite(fileName), [&] { updateHeader(); });
}

// ---------------------------------------------------------------- create

bool CHdf5IoManager::createSimulation(const QString& path, SSimulationFrame& frame, bool switchToNew,
                                      TimestepIndex& index)
{
    const double time = writeOptions.overrideTime ? writeOptions.timeOverride : frame.timestep.time;
    const bool isTimeFixed = writeOptions.overrideTime;
    const CPlaceScope scope(timestepPlace(timestepFilePath(path, 0), 0));
    bool isBegun = false;
    bool written = false;
    const bool complete =
        isStorable(frame, writeOptions, path) && guarded(NLogTitle::hdf5Write, couldNotWrite(path), [&] {
            File newMain = createFile(path);
            isBegun = true;
            writeHeader(*newMain, {currentFileVersion(), currentFileVersion(), 1, edition});
            File newTimestep = createInDataFolder(timestepFilePath(path, 0));
            frame.creator.setStorageIndex(0);
            written = writeCreator(*newTimestep, frame) && runWriter(*newTimestep, frame.timestep);
            if (written) {
                closeChecked(newTimestep);
                closeChecked(newMain);
            }
        });
    if (!complete || !written) {
        if (isBegun)
            deleteFamily(path);
        return false;
    }
    if (!switchToNew)
        return true;
    closeFiles();
    fileName = path;
    timestepCount = 1;
    index.assign(1, STimestepIndexEntry());
    index[0].time = time;
    index[0].offset = 1; // not 0: the file is there
    index[0].isFull = true;
    if (isTimeFixed)
        frame.timestep.time = time;
    firstVersion = currentFileVersion();
    lastVersion = currentFileVersion();
    return guarded(NLogTitle::hdf5Read, QString("Could not open file %1.").arg(path), [&] { openMainFile(); });
}

} // namespace NBrenmark
