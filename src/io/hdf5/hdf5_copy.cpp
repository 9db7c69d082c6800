// Whole-deck copies: numbered files move as they are, and only what names them is changed inside.

#include "io/hdf5/hdf5_io_manager.h"

#include "config/file_replacer.h"
#include "core/deck/deck_files.h"
#include "core/deck/simulation.h"
#include "core/log.h"
#include "core/progress.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/closed.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/guarded.h"
#include "io/hdf5/shapes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace NBrenmark {

// ---------------------------------------------------------------- subset

static void moveCreator(H5::H5File& copy, quint32 from, quint32 to)
{
    if (from == to)
        return;
    closed(copy.openGroup(creatorGroup),
           [&](H5::Group& creators) { creators.moveLink(std::to_string(from), std::to_string(to)); });
}

/// Brings a creator model into a file whose timestep uses it, from the earlier file that holds it.
static void copyCreator(H5::H5File& holder, quint32 from, H5::H5File& copy, quint32 to)
{
    const std::string source = creatorGroup + std::to_string(from);
    const std::string target = std::to_string(to);
    herr_t result = -1;
    closed(copy.openGroup(creatorGroup), [&](H5::Group& creators) {
        const hid_t copyProperties = H5Pcreate(H5P_OBJECT_COPY);
        const hid_t linkProperties = H5Pcreate(H5P_LINK_CREATE);
        if (H5Pset_copy_object(copyProperties, H5O_COPY_MERGE_COMMITTED_DTYPE_FLAG) >= 0)
            result = H5Ocopy(holder.getId(), source.c_str(), creators.getId(), target.c_str(), copyProperties,
                             linkProperties);
        H5Pclose(linkProperties);
        H5Pclose(copyProperties);
    });
    if (result < 0)
        throw hdf5_error(" Couldn't copy Creator Data across files. (" + std::to_string(from) + " to " + target + ").");
}

void CHdf5IoManager::copyTimestep(SSubset& subset, quint32 source)
{
    const quint32 target = subset.timesteps;
    const QString sourcePath = timestepFilePath(fileName, source);
    const QString targetPath = timestepFilePath(subset.name, target);
    if (!QFile::copy(sourcePath, targetPath))
        throw hdf5_error(QString(" Couldn't copy %1 to %2").arg(sourcePath, targetPath).toStdString());
    subset.files = target + 1;
    // The copy is ours to change, whatever the source's permissions are.
    QFile::setPermissions(targetPath, QFile::permissions(targetPath) | QFileDevice::WriteOwner);
    const auto opened = [&](const QString& deck, quint32 number, EAccess access, const char* kind) {
        try {
            return openNumberedFile(deck, number, access);
        }
        catch (const H5::Exception&) {
            throw hdf5_error(QString(" Couldn't open %1 %2 file %3").arg(deck, kind).arg(number).toStdString());
        }
    };

    File copy = opened(subset.name, target, eReadWrite, "timestep data");
    const quint32 creator = creatorIndexOf(*copy);
    if (subset.sourceCreator != creator) {
        subset.sourceCreator = creator;
        subset.targetCreator = target;
        if (copy->openGroup(creatorGroup).getNumObjs() > 0) {
            moveCreator(*copy, creator, target); // a model is named by the number of its file
        }
        else {
            File holder = opened(fileName, creator, eReadOnly, "Creator Data");
            copyCreator(*holder, creator, *copy, target); // the file that holds it isn't part of the subset
        }
    }
    closed(openOnlyTimestep(*copy),
           [&](H5::Group& timestep) { rewriteAttribute(creatorIndexName, subset.targetCreator, timestep); });
    closeChecked(copy);
    ++subset.timesteps;
}

bool CHdf5IoManager::saveSubset(const QString& newName, quint32 first, quint32 last, quint32 stride,
                                IProgressController* progress)
{
    const auto isCancelled = [&] { return progress != nullptr && progress->cancelState() != eGoOn; };
    SSubset subset;
    subset.name = newName;
    bool isBegun = false;
    bool cancelled = false;
    const bool complete = guarded(NLogTitle::hdf5Write, "Could not clone simulation to new file.", [&] {
        if (QFileInfo(newName).canonicalFilePath() == QFileInfo(fileName).canonicalFilePath())
            throw hdf5_error(newName.toStdString() + " is the deck itself.");
        File newMain = createFile(newName);
        isBegun = true;
        // The true count comes when the copies are made.
        writeHeader(*newMain, {firstVersion, currentFileVersion(), 1, edition});
        if (!QDir().mkpath(dataFolderPath(newName)))
            throw hdf5_error("Could not make folder " + dataFolderPath(newName).toStdString() + ".");

        for (quint64 source = first; source <= last;) {
            cancelled = isCancelled();
            if (cancelled)
                return;
            copyTimestep(subset, static_cast<quint32>(source));
            if (progress != nullptr)
                progress->tick(1);
            // The last timestep is taken whatever the stride.
            source = source == last ? source + 1 : std::min<quint64>(source + std::max(stride, 1u), last);
        }
        writeHeader(*newMain, {firstVersion, currentFileVersion(), subset.timesteps, edition});
        closeChecked(newMain);
        if (progress != nullptr)
            progress->tick(1);
        cancelled = isCancelled();
    });
    if (complete && !cancelled)
        return true;
    // Nothing of a half-made deck stays, and nothing that isn't of this copy goes.
    if (isBegun) {
        QFile::remove(newName);
        for (quint32 number = 0; number < subset.files; ++number)
            QFile::remove(timestepFilePath(newName, number));
        QDir().rmdir(dataFolderPath(newName));
    }
    return false;
}

// ---------------------------------------------------------------- save as

static bool copyOrReport(const QString& from, const QString& to)
{
    if (copyOrTruncateFile(from, to, wholeFile))
        return true;
    reportFailure(NLogTitle::hdf5Write,
                  QString("Could not copy file\n    Source: %1\n    Destination %2").arg(from, to));
    return false;
}

bool CHdf5IoManager::saveCopyUpToCurrent(SSimulationFrame& frame, TimestepIndex& index, const QString& newName,
                                         const QString& tempFolder)
{
    const quint32 current = frame.timestep.timestepIndex;
    if (current >= index.size()) {
        reportFailure(NLogTitle::hdf5Write, QString("Could not write file %1.\nNo timestep is loaded.").arg(newName));
        return false;
    }
    closeFiles();
    const QString temp = tempFolder + QFileInfo(newName).fileName();
    if (!copyOrReport(fileName, temp) || !QDir().mkpath(dataFolderPath(temp)))
        return false;
    for (quint32 number = 0; number <= index[current].segment; ++number) {
        const QString source = timestepFilePath(fileName, number);
        if (QFileInfo::exists(source) && !copyOrReport(source, timestepFilePath(temp, number)))
            return false;
    }

    fileName = temp;
    if (!guarded(NLogTitle::hdf5Read, QString("Could not open file %1.").arg(temp), [&] { openMainFile(); }) ||
        !truncateAfterCurrent(frame, index, true))
        return false;
    index.resize(std::size_t(current) + 1);
    index[current].time = frame.timestep.time;
    index[current].isFull = true;
    index[current].creatorIndex = -1; // not known before the timestep is appended
    timestepCount = current;
    if (!appendTimestep(frame, index, true, true))
        return false;

    // A deck takes its settings and its configuration with it: without them it can't be renamed.
    const QString tempBase = stripDeckSuffix(temp);
    if (!QFileInfo::exists(tempBase + NDeckFile::settingsSuffix))
        simulation.writeSettings(true, tempBase);
    if (!QFileInfo::exists(tempBase + NDeckFile::configurationSuffix))
        simulation.writeConfiguration(tempBase);
    if (!waitForCopies().empty()) // reported; the target is whole as yet
        return false;

    closeFiles();
    if (!deleteFamily(newName)) {
        reportFailure(NLogTitle::hdf5Write, QString("Could not delete files for simulation (%1)").arg(newName));
        return false;
    }
    if (!renameFamily(temp, newName)) {
        // What is under the temporary name is the only copy by now: it stays.
        reportFailure(NLogTitle::hdf5Write,
                      QString("Could not rename %1 to %2. The deck was left under the first name.").arg(temp, newName));
        return false;
    }
    fileName = newName;
    return guarded(NLogTitle::hdf5Read, QString("Could not open file %1.").arg(newName), [&] { openMainFile(); });
}

} // namespace NBrenmark
