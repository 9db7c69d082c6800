#include "core/deck/conversion.h"

#include "analysis/data_miner.h"
#include "config/application_roles.h"
#include "config/file_replacer.h"
#include "config/user_preferences.h"
#include "core/deck/application_state.h"
#include "core/deck/deck_files.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "core/messages.h"

#include <QFile>

#include <memory>
#include <optional>

namespace NBrenmark {

namespace {

/// The place of a creator block, in whichever way its family counts.
struct SCreatorPlace
{
    quint32 index = CCreatorData::noStorageIndex;
    quint64 offset = CCreatorData::noStorageOffset;

    bool operator!=(const SCreatorPlace& other) const { return index != other.index || offset != other.offset; }
};

SCreatorPlace placeOf(const CCreatorData& creator) { return {creator.storageIndex(), creator.storageOffset()}; }

void setPlace(CCreatorData& creator, const SCreatorPlace& place)
{
    creator.setStorageIndex(place.index);
    creator.setStorageOffset(place.offset);
}

std::unique_ptr<IFileFormatManager> makeTargetManager(EDeckFormat format, CSimulation& simulation)
{
    return format == eFormatLegacy ? NLegacyFamily::makeManager(simulation) : NHdf5Family::makeManager(simulation);
}

/// The process-wide objects of one conversion. Whatever ends it, they go again, and nothing is
/// stored beside the source.
class CConversionObjects
{
public:
    CConversionObjects()
    {
        addLogModule(&logger);
        userPreferences(); // made on this thread: the writers' workers ask it, and its making has no lock
        ready = initialiseApplication(applicationState());
        if (!ready)
            return;
        roles.emplace(*simulation().configuration);
        miners.emplace(*simulation().configuration);
    }

    ~CConversionObjects()
    {
        if (ready)
            simulation().close(false);
        waitForCopies();
        flushLogModules();
        shutdownApplication(applicationState());
        clearLogModules();
        miners.reset();
        roles.reset();
        releaseUserPreferences();
    }

    CConversionObjects(const CConversionObjects&) = delete;
    CConversionObjects& operator=(const CConversionObjects&) = delete;

    CSimulation& simulation() { return *applicationState().simulation; }

    CPersistentLogger logger{eWarning};
    bool ready = false;

private:
    std::optional<SApplicationRoles> roles;
    std::optional<CDataMiners> miners;
};

} // namespace

EConvertError CConversion::run(const QString& inputPath, const QString& outputPath, EDeckFormat target)
{
    cancelled = false;
    error.clear();
    refreshMessages();

    EConvertError code = eConvertFailed;
    CConversionObjects objects;
    if (objects.ready)
        code = convert(inputPath, outputPath, target, objects.simulation());
    else
        error = messageText(eMessageNotInitialised);
    ledger = objects.logger.records();
    return code;
}

EConvertError CConversion::convert(const QString& inputPath, const QString& outputPath, EDeckFormat target,
                                   CSimulation& simulation)
{
    const auto checked = static_cast<EConvertError>(checkSourceFiles(inputPath, false));
    if (checked != eConvertOk) {
        reportFailure(NLogTitle::legacyRead,
                      (checked == eConvertNoIndex ? "The index file (.idx) is missing beside " : "There is no file ") +
                          inputPath.toStdString() + ".");
        return checked;
    }
    const EDeckFormat source = detectFormat(inputPath);
    if (source != eFormatLegacy || source == target)
        return eConvertOk;

    const auto manager = makeTargetManager(target, simulation);
    manager->reset();
    // A deck that couldn't be loaded has no timestep to go to: its first one fails below.
    simulation.load(inputPath);
    const TimestepIndex sourceIndex = simulation.index;
    TimestepIndex targetIndex = simulation.index; // the manager fills it in as it writes
    const int lastStep = 2 * static_cast<int>(sourceIndex.size());
    observer.starting(lastStep, messageText(eMessageConverting).arg(inputPath, outputPath));
    deleteFamily(outputPath);

    auto code = static_cast<EConvertError>(manager->setOutputName(outputPath));
    if (code == eConvertOk) {
        code = convertTimesteps(simulation, *manager, sourceIndex, targetIndex);
        observer.stepReached(lastStep);
        manager->reset();
        if (code == eConvertOk) {
            code = writeCompanions(simulation, stripLegacySuffix(inputPath), stripLegacySuffix(outputPath));
            observer.completed();
        }
    }
    simulation.close(false);
    if (code == eConvertDataFailed)
        error = messageText(eMessageConversionFailed).arg(inputPath);
    return code;
}

EConvertError CConversion::convertTimesteps(CSimulation& simulation, IFileFormatManager& manager,
                                            const TimestepIndex& sourceIndex, TimestepIndex& targetIndex)
{
    SSimulationFrame& frame = *simulation.currentFrame;
    SCreatorPlace sourcePlace;
    SCreatorPlace targetPlace;
    for (size_t i = 0; i < sourceIndex.size(); ++i) {
        // A read loads the creator block only if the timestep names another one than the frame does:
        // with each side's own place in the frame, a change of place tells that a new block began.
        setPlace(frame.creator, sourcePlace);
        if (!simulation.goToTimestep(static_cast<quint32>(i), eIntoCurrentFrame))
            return eConvertDataFailed;
        const bool creatorChanged = placeOf(frame.creator) != sourcePlace;
        sourcePlace = placeOf(frame.creator);
        observer.stepReached(2 * static_cast<int>(i));

        setPlace(frame.creator, targetPlace);
        SSaveOptions& options = simulation.writeOptions;
        options.fullSave = frame.timestep.isFull;
        options.timestepMask = frame.timestep.timestepMask;
        options.particleMask = frame.timestep.particleMask;
        options.geometryMask = frame.timestep.geometryMask;
        if (!manager.appendTimestep(frame, targetIndex, creatorChanged, sourceIndex[i].isFull))
            return eConvertDataFailed;
        targetPlace = placeOf(frame.creator);
        observer.stepReached(2 * static_cast<int>(i) + 1);

        if (cancelled)
            return eConvertFailed;
    }
    return eConvertOk;
}

EConvertError CConversion::writeCompanions(CSimulation& simulation, const QString& sourceBase,
                                           const QString& targetBase)
{
    EConvertError code = eConvertOk;
    bool settingsWritten = simulation.writeSettings(true, targetBase);
    bool configurationWritten = simulation.writeConfiguration(targetBase);
    // Both files take their place from threads of their own; what those can't do is a failure too.
    for (const SFailedCopy& failed : waitForCopies())
        (failed.target.endsWith(NDeckFile::settingsSuffix) ? settingsWritten : configurationWritten) = false;
    if (!settingsWritten) {
        error = messageText(eMessageSettingsNotWritten);
        code = eConvertFailed;
    }
    if (!configurationWritten) {
        error = messageText(eMessageConfigurationNotWritten);
        code = eConvertConfigWriteFailed;
    }

    const QString companion = sourceBase + NDeckFile::companionSuffix;
    const QString companionTarget = targetBase + NDeckFile::companionSuffix;
    std::string cause;
    if (QFile::exists(companion) && !copyOrTruncateFile(companion, companionTarget, wholeFile, &cause)) {
        reportFailure(NLogTitle::conversion, cause, eCauseTarget);
        error = messageText(eMessageCopyFailed).arg(companion, companionTarget);
        code = eConvertFailed;
    }
    return code;
}

} // namespace NBrenmark
