// Opening and closing the files of a deck, and its header.

#include "io/hdf5/hdf5_io_manager.h"

#include "core/data_place.h"
#include "core/left_behind.h"
#include "core/thread_pool.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/closed.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/file_structure.h"
#include "io/hdf5/guarded.h"
#include "io/hdf5/read_audit.h"
#include "io/hdf5/shapes.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace NBrenmark {

// Attributes of the header, in file order.
static constexpr const char* firstVersionName = "original file version";
static constexpr const char* lastVersionName = "current file version";
static constexpr const char* countName = "num timesteps";
static constexpr const char* formatName = "file format";
static constexpr const char* editionName = "edition";

static constexpr quint32 onlyFormat = 0; // a deck of any other is refused

static std::string nativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

/// Ends the process if the HDF5 at run time isn't the one of the headers.
static void checkLibrary() { H5check_version(H5_VERS_MAJOR, H5_VERS_MINOR, H5_VERS_RELEASE); }

// ---------------------------------------------------------------- files

CHdf5IoManager::File CHdf5IoManager::createFile(const QString& path) const
{
    checkLibrary();
    requireRoomForHdf5();
    // Removed and made anew, not emptied: by a link that somebody laid there, another file would be emptied.
    std::error_code failure;
    std::filesystem::remove(nativePath(path), failure);
    auto file =
        std::make_unique<H5::H5File>(nativePath(path), H5F_ACC_EXCL, H5::FileCreatPropList::DEFAULT, fileAccess);
    for (const char* group : {creatorGroup, timestepGroup})
        closed(file->createGroup(group), [](H5::Group&) {});
    return file;
}

CHdf5IoManager::File CHdf5IoManager::createInDataFolder(const QString& path) const
{
    const QString folder = QFileInfo(path).path();
    std::error_code failure;
    std::filesystem::create_directories(nativePath(folder), failure);
    if (failure)
        throw hdf5_error("Could not make folder " + folder.toStdString() + ": " + failure.message() + ".");
    return createFile(path);
}

CHdf5IoManager::File CHdf5IoManager::openFile(const QString& path, EAccess access, CPooledTask* structureCheck) const
{
    checkLibrary();
    if (structureCheck != nullptr)
        structureCheck->wait();
    else
        checkStructure(nativePath(path));
    requireRoomForHdf5();
    return std::make_unique<H5::H5File>(nativePath(path), access == eReadOnly ? H5F_ACC_RDONLY : H5F_ACC_RDWR,
                                        H5::FileCreatPropList::DEFAULT, fileAccess);
}

CHdf5IoManager::File CHdf5IoManager::openNumberedFile(const QString& path, quint32 number, EAccess access) const
{
    return openFile(timestepFilePath(path, number), access);
}

void CHdf5IoManager::openMainFile()
{
    mainFile.reset();
    mainFile = openFile(fileName, eReadOnly);
}

void CHdf5IoManager::closeFiles()
{
    mainFile.reset();
    timestepFile.reset();
    currentFileNumber = -1; // none is open
    SDataPlace place;
    place.file = QFileInfo(fileName).fileName().toStdString();
    const CPlaceScope scope(place);
    reportLeftBehind(NLogTitle::hdf5Write);
}

bool CHdf5IoManager::switchToFile(qint64 number, CPooledTask* structureCheck)
{
    if (currentFileNumber == number && timestepFile)
        return true;
    const QString path = timestepFilePath(fileName, static_cast<quint32>(number));
    return guarded(NLogTitle::hdf5Read, QString("Could not open file %1.").arg(path), [&] {
        if (!QFileInfo(path).isFile())
            throw hdf5_error("There is no such file.");
        timestepFile.reset();
        currentFileNumber = -1; // none is open
        timestepFile = openFile(path, eReadOnly, structureCheck);
        currentFileNumber = number;
    });
}

// ---------------------------------------------------------------- header

void CHdf5IoManager::writeHeader(H5::H5File& mainFile, const SHeader& header)
{
    closed(mainFile.openGroup("/"), [&](H5::Group& root) {
        const bool isNew = root.getNumAttrs() == 0;
        const auto put = [&](const char* name, auto value) {
            isNew ? writeAttribute(name, value, root) : rewriteAttribute(name, value, root);
        };
        put(firstVersionName, header.firstVersion);            // of the program that made the deck
        put(lastVersionName, header.lastVersion);              // of the newest program that wrote to it
        put(countName, static_cast<qint32>(header.timesteps)); // signed in files
        put(formatName, onlyFormat);
        put(editionName, header.edition);
    });
    flushChecked(mainFile);
}

void CHdf5IoManager::updateHeader()
{
    mainFile.reset();
    File writable = openFile(fileName, eReadWrite);
    lastVersion = std::max(lastVersion, currentFileVersion());
    writeHeader(*writable, {firstVersion, lastVersion, timestepCount, edition});
    closeChecked(writable); // and nothing is read of it before the next header
}

bool CHdf5IoManager::readHeader()
{
    return guarded(NLogTitle::hdf5Read, QString("Could not read file %1.").arg(fileName), [&] {
        const H5::Group root = mainFile->openGroup("/");
        quint32 format = 0;
        qint32 count = 0;
        readAttribute(firstVersionName, firstVersion, root);
        readAttribute(lastVersionName, lastVersion, root);
        readAttribute(countName, count, root);
        readAttribute(formatName, format, root);
        readAttribute(editionName, edition, root);
        timestepCount = static_cast<quint32>(std::max(count, 0));
        if (readOptions.examine)
            reportStrayParts(*mainFile, {firstVersionName, lastVersionName, countName, formatName, editionName});
        if (format != onlyFormat)
            throw caused_error(eCauseUnsupported, "The file format is " + std::to_string(format) + ", only " +
                                                      std::to_string(onlyFormat) + " is known.");
    });
}

} // namespace NBrenmark
