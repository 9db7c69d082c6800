// The order of a conversion: look at the source, make the target, move timestep by timestep, then the companions.
// Each end has its code, its text and its outcome.
#include "core/deck/conversion.h"

#include "config/file_replacer.h"
#include "core/deck/conversion_objects.h"
#include "core/deck/deck_files.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"
#include "core/first_failure.h"
#include "core/log.h"
#include "core/log_titles.h"
#include "core/messages.h"
#include "core/plain_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <utility>

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

// The run of this process, if there is one: all that it works on is process-wide.
std::atomic<const CConversion*> atWork{nullptr};

/// A text that isn't in the table of messages, which belongs to the run that goes on.
QString busyText()
{
    return QCoreApplication::translate("FileOperations", "Another conversion is running in this process.");
}

/// What a path leads to that is no deck of either family.
QString whatItIs(const QString& path)
{
    if (QFileInfo(path).isDir())
        return path + QStringLiteral(" is a folder, not the first file of a deck.");
    QFile file(path);
    if (const std::string cause = openPlainFile(file); !cause.empty())
        return path + QStringLiteral(" can't be opened as a deck: ") + QString::fromStdString(cause) + '.';
    return path +
           QStringLiteral(" isn't a deck: its first bytes are neither those of an HDF5 file nor those of a legacy "
                          "deck with timesteps, of a version from 2.0.0 to below 30.0.0.");
}

/// The error text, and below it the first error of the ledger, with its place.
QString failureOf(const QString& error, const std::vector<SLogRecord>& ledger)
{
    const SLogRecord* const first = firstFailure(ledger);
    if (first == nullptr)
        return error;
    const QString cause = QString::fromStdString(first->placedText());
    return error.isEmpty() ? cause : error + '\n' + cause;
}

/// Whether the companions that a load does without can be opened if they are there, or may be left out: what they hold
/// would be missing beside the new deck.
bool companionsOpen(const QString& base, bool mayBeLeftOut)
{
    bool all = true;
    for (const QLatin1String suffix : {NDeckFile::settingsSuffix, NDeckFile::companionSuffix}) {
        QFile file(base + suffix);
        const std::string cause = hasEntry(file.fileName()) ? openPlainFile(file) : std::string();
        if (cause.empty())
            continue;
        const std::string text = file.fileName().toStdString() + " is there and can't be opened: " + cause + ".";
        if (!mayBeLeftOut)
            reportFailure(NLogTitle::conversion, text, eCauseSource);
        else if (suffix == NDeckFile::companionSuffix) // the load reports the settings
            report(eLost, NLogTitle::conversion, text);
        all = false;
    }
    return all || mayBeLeftOut;
}

/// Makes room for a new deck, at the cost of the one that has its name and of no other.
bool clearTarget(const QString& target)
{
    if (const std::string conflict = folderConflict(target); !conflict.empty()) {
        reportFailure(NLogTitle::conversion, conflict + '.', eCauseTarget);
        return false;
    }
    deleteFamily(target);
    // Timesteps that stay would pass for those of the new deck.
    if (removeNumberedFiles(target))
        return true;
    reportFailure(NLogTitle::conversion, "The files in " + dataFolderPath(target).toStdString() + " can't be removed.",
                  eCauseTarget);
    return false;
}

} // namespace

/// The right to run, while it lives. Whatever ends the run, others find a result afterwards.
class CConversion::CClaim
{
public:
    explicit CClaim(CConversion& owner) : conversion(owner)
    {
        granted = atWork.compare_exchange_strong(holder, &conversion);
    }
    ~CClaim()
    {
        if (!granted)
            return;
        conversion.publish(std::exchange(conversion.running, SResult()));
        atWork = nullptr;
    }
    CClaim(const CClaim&) = delete;
    CClaim& operator=(const CClaim&) = delete;

    bool granted = false;
    const CConversion* holder = nullptr; ///< of the right, where it wasn't granted

private:
    CConversion& conversion;
};

void CConversion::publish(SResult result)
{
    const std::lock_guard<std::mutex> lock(lastLock);
    last = std::move(result);
}

EConvertError CConversion::cancelledResult()
{
    setEnd(eOutcomeCancelled, QStringLiteral("The conversion was cancelled."));
    return eConvertFailed;
}

/// A failure until it is known better, so that whatever ends the run, it has a text.
void CConversion::begin(const QString& source)
{
    setEnd(eOutcomeFailed, messageText(eMessageConversionFailed).arg(source));
    const std::lock_guard<std::mutex> lock(lastLock);
    last.outcome = eOutcomeBusy;
    last.error.clear();
    last.failure = busyText(); // the ledger stays until there is another
}

void CConversion::setEnd(EConversionOutcome outcome, const QString& failure)
{
    running.outcome = outcome;
    running.failure = failure;
}

EConversionOutcome CConversion::outcome() const
{
    const std::lock_guard<std::mutex> lock(lastLock);
    return last.outcome;
}

QString CConversion::errorText() const
{
    const std::lock_guard<std::mutex> lock(lastLock);
    return last.error;
}

QString CConversion::failureText() const
{
    const std::lock_guard<std::mutex> lock(lastLock);
    return last.failure;
}

std::vector<SLogRecord> CConversion::records() const
{
    const std::lock_guard<std::mutex> lock(lastLock);
    return last.ledger;
}

const std::vector<SLogRecord>& CConversion::recordsSoFar() const
{
    static const std::vector<SLogRecord> none;
    return logger != nullptr ? logger->records() : none;
}

EConvertError CConversion::run(const QString& inputPath, const QString& outputPath, EDeckFormat target,
                               const SConversionOptions& wanted)
{
    const CClaim claim(*this);
    if (!claim.granted) {
        if (claim.holder != this) {
            SLogRecord refusal;
            refusal.level = eError;
            refusal.title = NLogTitle::conversion.text;
            refusal.text = busyText().toStdString();
            refusal.cause = eCauseInternal;
            publish({eOutcomeBusy, busyText(), busyText(), {refusal}});
        }
        return eConvertFailed;
    }
    ownWish.forget();
    options = wanted;
    refreshMessages();
    begin(inputPath);

    EConvertError code = eConvertFailed;
    const std::shared_ptr<const void> plugins = options.bindPlugins ? options.bindPlugins() : nullptr;
    CConversionObjects objects;
    logger = &objects.logger;
    try {
        if (objects.ready)
            code = convert(inputPath, outputPath, target, objects.simulation());
        else
            running.error = messageText(eMessageNotInitialised);
    }
    catch (const std::exception& thrown) {
        reportFailure(NLogTitle::conversion, textOf(thrown), causeOf(thrown, eCauseInternal));
        running.error = messageText(eMessageConversionFailed).arg(inputPath);
        code = eConvertDataFailed;
    }
    logger = nullptr;
    running.ledger = objects.logger.records();
    if (running.outcome != eOutcomeFailed)
        return code;
    if (code == eConvertOk)
        setEnd(eOutcomeConverted);
    else if (const QString failure = failureOf(running.error, running.ledger); !failure.isEmpty())
        setEnd(eOutcomeFailed, failure);
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
    std::string cause;
    const EDeckFormat source = detectFormat(inputPath, &cause);
    if (!cause.empty()) { // which says nothing of what the file holds
        reportFailure(NLogTitle::legacyRead, inputPath.toStdString() + ": " + cause, eCauseSource);
        return eConvertFailed;
    }
    if (source != eFormatLegacy || source == target) {
        if (source == eFormatUnknown)
            setEnd(eOutcomeNotADeck, whatItIs(inputPath));
        else
            setEnd(eOutcomeNothingToDo);
        return eConvertOk;
    }

    sourceStates = fileStates(sourceFiles(inputPath));
    const auto manager = makeTargetManager(target, simulation);
    manager->reset();
    if (!companionsOpen(stripLegacySuffix(inputPath), ignoreUnreadableCompanions)) {
        running.error = messageText(eMessageConversionFailed).arg(inputPath);
        return eConvertDataFailed;
    }
    simulation.ignoreUnreadableCompanions = ignoreUnreadableCompanions;
    simulation.readOptions.isInOrder = true;
    simulation.readOptions.upgrades = options.upgrades;
    // A deck that couldn't be loaded has no timestep to go to: its first one fails below.
    simulation.load(inputPath);
    const TimestepIndex sourceIndex = simulation.index;
    TimestepIndex targetIndex = simulation.index; // the manager fills it in as it writes
    const int lastStep = 2 * static_cast<int>(sourceIndex.size());
    observer.starting(lastStep, messageText(eMessageConverting).arg(inputPath, outputPath));
    EConvertError code = eConvertFailed;
    if (prepareTarget(inputPath, outputPath))
        code = static_cast<EConvertError>(manager->setOutputName(outputPath));
    if (code == eConvertOk) {
        manager->timestepCount = options.firstTimestep;
        code = convertTimesteps(simulation, *manager, sourceIndex, targetIndex);
        observer.stepReached(lastStep);
        manager->reset();
        if (code == eConvertOk) {
            observer.timestepsMoved(simulation);
            code = writeCompanions(simulation, stripLegacySuffix(inputPath), stripLegacySuffix(outputPath));
            observer.completed();
            if (code == eConvertOk && !isUnchanged(sourceFiles(inputPath)))
                code = eConvertDataFailed;
        }
    }
    simulation.close(false);
    if (code == eConvertDataFailed)
        running.error = messageText(eMessageConversionFailed).arg(inputPath);
    return code;
}

/// Makes room for the new deck, unless part of it is there already.
bool CConversion::prepareTarget(const QString& inputPath, const QString& outputPath)
{
    if (const std::string shared = sharedWithSource(inputPath, outputPath); !shared.empty()) {
        running.error = QString::fromStdString(shared + '.');
        reportFailure(NLogTitle::conversion, shared + '.', eCauseTarget);
        return false;
    }
    return options.firstTimestep > 0 || clearTarget(outputPath);
}

/// A deck that is written to meanwhile would come out as neither the one nor the other.
/// \param files  those that it began with, or all that it has by now
bool CConversion::isUnchanged(const QStringList& files) const
{
    const std::string change = changeBetween(sourceStates, fileStates(files));
    if (!change.empty())
        reportFailure(NLogTitle::legacyRead, change + " while the deck was converted.", eCauseSource);
    return change.empty();
}

EConvertError CConversion::convertTimesteps(CSimulation& simulation, IFileFormatManager& manager,
                                            const TimestepIndex& sourceIndex, TimestepIndex& targetIndex)
{
    SSimulationFrame& frame = *simulation.currentFrame;
    SCreatorPlace sourcePlace;
    SCreatorPlace targetPlace;
    QStringList beganWith; // no folder is listed between timesteps: it may be a large one
    for (const SFileState& file : sourceStates)
        beganWith.append(file.path);
    for (size_t i = 0; i < sourceIndex.size(); ++i) {
        // A read loads the creator block only if the timestep names another one than the frame does:
        // with each side's own place in the frame, a change of place shows that a new block began.
        setPlace(frame.creator, sourcePlace);
        if (!simulation.goToTimestep(static_cast<quint32>(i), eIntoCurrentFrame))
            return eConvertDataFailed;
        const bool creatorChanged = placeOf(frame.creator) != sourcePlace;
        sourcePlace = placeOf(frame.creator);
        const bool isModified = frame.creator.modified;
        observer.timestepRead(simulation, creatorChanged || isModified);
        frame.creator.modified = isModified; // an observer that writes it, as a text, has stored nothing
        if (i < options.firstTimestep) {
            // Its file is there, with the model if that began here.
            if (creatorChanged || frame.creator.modified)
                targetPlace.index = static_cast<quint32>(i);
            frame.creator.modified = false;
            observer.rereadDone(static_cast<quint32>(i));
            if (wish.isRaised())
                return cancelledResult();
            continue;
        }
        observer.stepReached(2 * static_cast<int>(i));

        setPlace(frame.creator, targetPlace);
        SSaveOptions& saved = simulation.writeOptions;
        saved.fullSave = frame.timestep.isFull;
        saved.timestepMask = frame.timestep.timestepMask;
        saved.particleMask = frame.timestep.particleMask;
        saved.geometryMask = frame.timestep.geometryMask;
        if (!manager.appendTimestep(frame, targetIndex, creatorChanged, sourceIndex[i].isFull))
            return eConvertDataFailed;
        targetPlace = placeOf(frame.creator);
        if (!isUnchanged(beganWith))
            return eConvertDataFailed;
        observer.stepReached(2 * static_cast<int>(i) + 1);

        if (wish.isRaised())
            return cancelledResult();
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
        running.error = messageText(eMessageSettingsNotWritten);
        code = eConvertFailed;
    }
    if (!configurationWritten) {
        running.error = messageText(eMessageConfigurationNotWritten);
        code = eConvertConfigWriteFailed;
    }

    const QString companion = sourceBase + NDeckFile::companionSuffix;
    const QString companionTarget = targetBase + NDeckFile::companionSuffix;
    SCopyFailure failure;
    QFile source(companion);
    const bool isLeftOut = ignoreUnreadableCompanions && !openPlainFile(source).empty();
    source.close();
    if (QFile::exists(companion) && !isLeftOut &&
        !copyOrTruncateFile(companion, companionTarget, wholeFile, &failure)) {
        reportFailure(NLogTitle::conversion, failure.text, failure.side);
        running.error = messageText(eMessageCopyFailed).arg(companion, companionTarget);
        code = eConvertFailed;
    }
    return code;
}

} // namespace NBrenmark
