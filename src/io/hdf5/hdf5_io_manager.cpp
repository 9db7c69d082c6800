// Opening a deck, finding its timesteps and reading them. Writing is in hdf5_write.cpp, whole decks in
// hdf5_copy.cpp.
#include "io/hdf5/hdf5_io_manager.h"

#include "core/deck/file_families.h"
#include "core/deck/serialiser.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/progress.h"
#include "io/hdf5/bulk_arrays.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/chunk_queue.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/guarded.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "io/hdf5/shapes.h"
#include "io/hdf5/soundness.h"

#include <QFileInfo>

#include <new>

namespace NBrenmark {

/// Takes two chunks of the greatest size that the chunk rule makes.
static constexpr size_t chunkCacheBytes = 0x500000;

static H5::FileAccPropList makeFileAccess()
{
    H5::FileAccPropList access;
    int metadataElements = 0; // not used by HDF5 any more
    size_t slotCount = 0;
    size_t bytes = 0;
    double preemption = 0.0;
    access.getCache(metadataElements, slotCount, bytes, preemption);
    access.setCache(metadataElements, slotCount, chunkCacheBytes, preemption);
    useCheckedFiles(access);
    return access;
}

/// Runs body with HDF5's errors caught for this thread, and HDF5's exceptions made standard ones.
template <class TBody>
static void inHdf5(TBody&& body)
{
    catchHdf5Errors();
    requireRoomForHdf5();
    try {
        body();
    }
    catch (const H5::Exception& error) {
        throw hdf5_error(error.getDetailMsg());
    }
}

static SDataPlace placeIn(const H5::H5File& file)
{
    return NBrenmark::placeIn(QString::fromStdString(file.getFileName()));
}

static QString nameOf(const H5::H5File& file) { return QString::fromStdString(file.getFileName()); }

// ---------------------------------------------------------------- the family's doors

void NHdf5Family::openLibrary()
{
    H5open();
    catchHdf5Errors();
    const CWithoutFilterPlugins starts; // that part of the library as well
    makeFileAccess();
}

bool NHdf5Family::isOwnHeader(QIODevice& device)
{
    const QByteArray signature("\x89HDF\r\n\x1a\n", 8);
    return device.seek(0) && device.read(signature.size()) == signature;
}

std::unique_ptr<IFileFormatManager> NHdf5Family::makeManager(CSimulation& simulation)
{
    try {
        return std::make_unique<CHdf5IoManager>(simulation);
    }
    catch (const H5::Exception&) { // there is no file yet: nothing but memory can lack
        throw std::bad_alloc();
    }
}

void NHdf5Family::readObject(H5::H5File& file, SSaveOptions& options, CSimulationData& object)
{
    beginStorageCount();
    inHdf5([&] {
        CReadAudit audit(options.examine);
        if (const auto* const creator = dynamic_cast<CCreatorData*>(&object)) {
            beginMemoryCount(eMemoryOfModel);
            const std::string number = std::to_string(creator->storageIndex());
            CHdf5CreatorDataReader reader(file, options);
            object.read(reader);
            audit.reportUnread(file, creatorGroup + number);
        }
        else if (dynamic_cast<CTimestepData*>(&object)) {
            beginMemoryCount(eMemoryOfTimestep);
            CHdf5TimestepDataReader reader(file, options);
            object.read(reader);
            audit.reportUnread(file, timestepGroup + openOnlyTimestepName(file));
        }
    });
}

void NHdf5Family::writeObject(H5::H5File& file, SSaveOptions& options, CSimulationData& object)
{
    inHdf5([&] {
        CChunkQueue chunks;
        if (dynamic_cast<CCreatorData*>(&object)) {
            CHdf5CreatorDataWriter writer(file, options);
            object.write(writer);
        }
        else if (dynamic_cast<CTimestepData*>(&object)) {
            CHdf5TimestepDataWriter writer(file, options);
            object.write(writer);
        }
        chunks.finish();
    });
    throwIfFailed(file);
}

// ---------------------------------------------------------------- life

CHdf5IoManager::CHdf5IoManager(CSimulation& simulation) : IFileFormatManager(simulation), fileAccess(makeFileAccess())
{
    catchHdf5Errors();
    compressionWanted(); // the preferences are read here, before a worker asks for them
}

CHdf5IoManager::~CHdf5IoManager() { closeFiles(); }

void CHdf5IoManager::flush()
{
    if (timestepFile)
        guarded(NLogTitle::hdf5Write, QString("Could not write file %1.").arg(nameOf(*timestepFile)),
                [&] { flushChecked(*timestepFile); });
}

void CHdf5IoManager::reset()
{
    resetFileState();
    clearLogOnceMemory();
    closeFiles();
}

int CHdf5IoManager::setOutputName(const QString& path)
{
    closeFiles();
    fileName = path;
    const bool isMade = guarded(NLogTitle::hdf5Write, QString("Could not write file %1.").arg(path), [&] {
        File created = createFile(path);
        writeHeader(*created, {firstVersion, std::max(lastVersion, currentFileVersion()), 0, edition});
        closeChecked(created);
        openMainFile();
    });
    return isMade ? 0 : 1;
}

int CHdf5IoManager::open(const QString& path, SSimulationFrame&, TimestepIndex& index, bool)
{
    closeFiles();
    fileName = path;
    if (!guarded(NLogTitle::hdf5Read, QString("Could not open file %1.").arg(path), [&] { openMainFile(); }))
        return eOpenNoFile;
    if (!readHeader())
        return eOpenHeaderRefused;
    if (!scanDataFolder(index) || !switchToFile(0)) // no index is stored: the folder is what there is
        return eOpenNoFile;
    return eOpened;
}

// ---------------------------------------------------------------- one object

bool CHdf5IoManager::runReader(H5::H5File& file, CSimulationData& object, IProgressController* progress)
{
    clearLastHdf5Error();
    CSimDataReader reader(readOptions);
    reader.object = &object;
    reader.hdf5File = &file;
    reader.format = eHdf5File;
    if (reader.runAndWait(progress))
        return true;
    if (progress != nullptr && progress->cancelState() == eCancel)
        return false; // the user knows
    if (reader.errorFlag)
        reportFailure(NLogTitle::hdf5Read,
                      QString("Could not read file %1.\n%2.").arg(nameOf(file), reader.errorText + lastHdf5Error()),
                      reader.errorCause == eCauseNone && lastHdf5ErrorWasMemory() ? eCauseMemory : reader.errorCause);
    else
        reportFailure(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(nameOf(file)));
    return false;
}

bool CHdf5IoManager::runWriter(H5::H5File& file, CSimulationData& object)
{
    clearLastHdf5Error();
    CSimDataWriter writer(writeOptions);
    writer.object = &object;
    writer.hdf5File = &file;
    writer.format = eHdf5File;
    if (writer.runAndWait())
        return true;
    reportFailure(NLogTitle::hdf5Write,
                  QString("Could not write file %1.\n%2.").arg(nameOf(file), writer.errorText + lastHdf5Error()),
                  writer.errorCause);
    return false;
}

bool CHdf5IoManager::readCreatorData(SSimulationFrame& frame)
{
    const quint32 number = frame.creator.storageIndex();
    const qint64 before = currentFileNumber;
    if (!switchToFile(number))
        return false;
    frame.creator.setStorageIndex(number);
    frame.creator.clear();
    frame.creator.setStorageIndex(number);
    const CPlaceScope scope(placeIn(*timestepFile).inBlock(creatorBlock));
    const bool read = runReader(*timestepFile, frame.creator, nullptr);
    return (before < 0 || switchToFile(before)) && read;
}

bool CHdf5IoManager::readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                                  IProgressController* progress)
{
    const quint32 number = frame.timestep.timestepIndex;
    const qint64 before = currentFileNumber;
    // An entry without an offset is that of a file that isn't there; its number would be another's.
    if (number >= index.size() || index[number].offset == 0) {
        reportFailure(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(timestepFilePath(fileName, number)));
        return false;
    }
    STimestepIndexEntry& entry = index[number];
    if (!switchToFile(entry.segment))
        return false;
    if (!guarded(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(nameOf(*timestepFile)), [&] {
            entry.creatorIndex = static_cast<qint32>(creatorIndexOf(*timestepFile));
            checkOwnNumber(*timestepFile, entry.segment);
        }))
        return false;

    const CPlaceScope scope(placeIn(*timestepFile).inTimestep(number));
    const quint32 creatorNumber = static_cast<quint32>(entry.creatorIndex);
    if (creatorNumber != frame.creator.storageIndex()) {
        frame.creator.setStorageIndex(creatorNumber);
        if (!readCreatorData(frame)) {
            // What the frame holds now is no model: the next read must not take it for one.
            frame.creator.setStorageIndex(CCreatorData::noStorageIndex);
            return false;
        }
    }
    frame.timestep.clear();
    const bool read = runReader(*timestepFile, frame.timestep, progress);
    if (readOptions.examine)
        guarded(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(nameOf(*timestepFile)),
                [&] { reportStrayParts(*timestepFile, number, creatorNumber); });
    return (!restorePosition || before < 0 || switchToFile(before)) && read;
}

} // namespace NBrenmark
