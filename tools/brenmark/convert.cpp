// brenmark convert.

#include "brenmark/archive/conversion_record.h"
#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/conversion_report.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_problems.h"
#include "brenmark/interrupt.h"
#include "brenmark/json_text.h"
#include "brenmark/page/deck_facts.h"
#include "brenmark/page/report_page.h"
#include "brenmark/progress_display.h"
#include "brenmark/target_checks.h"
#include "brenmark/terminal.h"
#include "brenmark/timestep_sizes.h"
#include "brenmark/units_text.h"
#include "brenmark/value_digest.h"
#include "brenmark/verify.h"
#include "brenmark/view/view.h"

#include "core/deck/deck_files.h"
#include "physics/plugins/host/user_plugins.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

namespace {

/// What is there for the next run, and how it goes on.
std::string leftoverAdvice(const CPartialFolder& folder, const SJournal& journal)
{
    if (journal.finished == 0)
        return "Nothing is left at the target.";
    return utf8(folder.path()) + " holds " + std::to_string(journal.finished) + " of " +
           countText(journal.timesteps, "timestep") +
           ". This command continues there with --resume, and starts over with --force.";
}

CFailure failureOf(const SConversionRun& run, const CPartialFolder& folder, const SJournal& journal)
{
    const std::string leftover = leftoverAdvice(folder, journal);
    if (run.interrupted)
        return CFailure(eExitInterrupted,
                        "interrupted after timestep " + std::to_string(journal.finished) + " of " +
                            std::to_string(journal.timesteps),
                        leftover + " The source is untouched.");
    // After the last timestep, and before the first one, only the target is touched.
    const bool reachedTarget = journal.finished == journal.timesteps || !run.targetOpened;
    const CFailure fallback(reachedTarget ? eExitTarget : eExitDifferent,
                            run.error.empty() ? utf8(folder.deck()) + ": can't be created" : run.error,
                            "The new deck isn't complete. " + leftover);
    CFailure failure = failureFromLog(run.messages, utf8(journal.source), fallback);
    if (failure.code == eExitSource)
        failure.advice =
            "The source is damaged, incomplete or still being written; it is untouched here. Copy it again "
            "from the archive and convert that" +
            std::string(journal.finished == 0 ? ". " : " with --force. ") + leftover;
    else
        failure.advice += ' ' + leftover;
    return failure;
}

// ---------------------------------------------------------------- before

/// Opens a deck, looks for its segments and lets it go again. \return bytes of each timestep
/// \throws CFailure  something is missing
std::vector<double> requireReadable(const QString& path, bool ignoreCompanions)
{
    const CDeckReader reader(path, eUpgradedModel, eNotExamined, ignoreCompanions);
    if (const QString segment = missingSegment(reader, path); !segment.isEmpty())
        throw CFailure(eExitSource, utf8(segment) + " is missing, and the deck's index names it",
                       "Copy the deck again from the archive, with all its files.");
    return timestepSizes(reader, path);
}

SJournal journalOf(const SConvertOptions& options, quint32 timesteps)
{
    SJournal journal;
    journal.program = BRENMARK_VERSION;
    journal.source = QFileInfo(options.source).absoluteFilePath();
    journal.sourceFiles = fileStates(sourceFiles(journal.source));
    journal.ignoresCompanions = options.ignoreCompanions;
    journal.replaces = options.force;
    journal.timesteps = timesteps;
    return journal;
}

/// \throws CFailure  what is there comes from another source, program or set of options
void requireSameRun(const SJournal& earlier, const SJournal& now, const CPartialFolder& folder)
{
    const auto refuse = [&](EExitCode code, const std::string& why) {
        throw CFailure(code, utf8(folder.path()) + ": can't be resumed: " + why,
                       "Start over with --force, which discards it.");
    };
    if (earlier.source != now.source)
        refuse(eExitUnsupported, "it was made from " + utf8(earlier.source));
    if (const std::string change = changeBetween(earlier.sourceFiles, now.sourceFiles); !change.empty())
        refuse(eExitSource, change + " since");
    if (earlier.timesteps != now.timesteps)
        refuse(eExitUnsupported, "its journal counts " + countText(earlier.timesteps, "timestep") +
                                     ", the source has " + std::to_string(now.timesteps));
    if (earlier.program != now.program)
        refuse(eExitUnsupported, "it was made by version " + earlier.program + ", and this is " + now.program);
    if (earlier.ignoresCompanions != now.ignoresCompanions)
        refuse(eExitUnsupported,
               std::string("it was made with") + (earlier.ignoresCompanions ? "" : "out") + " --ignore-companions");
}

[[noreturn]] void refuseUnfinished(const CPartialFolder& folder, const SJournal& earlier)
{
    throw CFailure(eExitTarget,
                   utf8(folder.path()) + ": holds an unfinished conversion, " + std::to_string(earlier.finished) +
                       " of " + countText(earlier.timesteps, "timestep"),
                   "Repeat this command with --resume to continue there, or with --force to start over.");
}

/// For the run of an archive that started this process.
void leaveRecord(const SConvertOptions& options, SDeckOutcome outcome)
{
    if (options.record.empty())
        return;
    outcome.sourceFiles = sourceFilesDigest(options.source);
    if (outcome.state == eDeckConverted || outcome.state == eDeckWithLosses)
        outcome.sourceBytes = sourceBytesDigest(options.source);
    writeRecord(options.record, outcome);
}

/// The same of what failed, or needed nothing. Its exit status says the most of it, where no record can be written.
void leaveRecordOf(const SConvertOptions& options, SDeckOutcome outcome, const CFailure* failure, const char* reason)
{
    try {
        outcome.reason = reason;
        if (failure != nullptr)
            takeFailure(outcome, *failure);
        leaveRecord(options, outcome);
    }
    catch (const CFailure& unwritten) {
        printFailure(unwritten);
    }
}

/// What was made before, and is in its place, has the record of its making unless none was asked for then.
void leaveRecordOfEarlier(const SConvertOptions& options, const SConversionResult& result, EDeckState state)
{
    if (options.record.empty() || readRecord(options.record))
        return;
    SDeckOutcome outcome = outcomeOf(result);
    if (state == eDeckSkipped)
        outcome.state = state;
    leaveRecordOf(options, outcome, nullptr, state == eDeckSkipped ? skippedWhole : "");
}

// ---------------------------------------------------------------- one conversion

class CConvertCommand
{
public:
    explicit CConvertCommand(const SConvertOptions& options)
        : options(options), target(targetPath(options.source, options.target))
    {}

    EExitCode run();

private:
    bool prepare();
    EExitCode sayComplete();
    EExitCode sayPossible();
    void writePage(const CFailure* failure) const;
    bool goOnWith(SJournal earlier);
    void makeDeck();
    void requireWhole();
    void addDigest(const QString& deck);
    std::optional<CFailure> addView();
    EExitCode sayWhole(const std::string& line);
    void finish();
    EExitCode fail(const CFailure& failure);
    EShownMessages messagesShown() const { return options.verbose ? eEveryMessage : eAllMessages; }

    const SConvertOptions& options;
    const QString target;
    std::optional<CPartialFolder> folder;
    SJournal journal;
    std::vector<double> sizes; ///< of the source's timesteps, bytes
    SConversionResult result;
};

/// What was begun here before: taken up, discarded, or in the way. \return whether the new deck is in its place
bool CConvertCommand::goOnWith(SJournal earlier)
{
    if (earlier.state >= eReplacing) { // that is finished, whoever asks
        folder->place(earlier);
        printError("brenmark: " + utf8(target) +
                   ": an earlier conversion was stopped while its deck took its place; that is "
                   "finished now\n");
        result.timesteps = earlier.timesteps;
        result.run.messages = earlier.ledger;
        printLedger(earlier.ledger, messagesShown());
        return !options.force && earlier.source == journal.source &&
               changeBetween(earlier.sourceFiles, journal.sourceFiles).empty();
    }
    if (options.resume) {
        requireSameRun(earlier, journal, *folder);
        earlier.replaces = earlier.replaces || options.force;
        journal = std::move(earlier);
    }
    else if (options.force) {
        earlier.state = eConverting; // from here on it isn't complete, whatever ends this process
        earlier.finished = 0;
        folder->write(earlier);
        folder->clear();
    }
    else {
        refuseUnfinished(*folder, earlier);
    }
    return false;
}

void CConvertCommand::makeDeck()
{
    if (journal.state == eComplete && folder->isWhole(journal.timesteps)) {
        result.run.messages = journal.ledger;
        printLedger(journal.ledger, messagesShown());
        return;
    }
    // The last timestep is made again if all are there: the deck's header is written with it.
    const quint32 there = folder->timestepsThere(journal.finished);
    const quint32 first = std::min(there, journal.timesteps - std::min<quint32>(journal.timesteps, 1));
    journal.finished = first;
    // What is made again says again what there is to say of it.
    Ledger& ledger = journal.ledger;
    ledger.erase(std::remove_if(ledger.begin(), ledger.end(),
                                [first](const SLogRecord& record) {
                                    return first == 0 || (record.place.timestep && *record.place.timestep >= first);
                                }),
                 ledger.end());
    journal.state = eConverting;
    std::optional<CFailure> failure;
    try {
        folder->write(journal);
        folder->keepTimesteps(first);
        CProgressDisplay progress(options.quiet, options.verbose ? eNothingElsewhere : eLinesElsewhere);
        result.run = runConversion(*folder, journal, sizes, progress, options.verbose,
                                   !options.noPlugins && !areUserPluginsForbidden(),
                                   options.wantsComparison() || options.digest, options.wantsComparison());
        if (!result.run.succeeded)
            failure = failureOf(result.run, *folder, journal);
    }
    catch (const CFailure& thrown) {
        failure = CFailure(thrown.code, thrown.what(), thrown.advice + ' ' + leftoverAdvice(*folder, journal));
    }
    printLedger(failure ? withoutFirstError(result.run.messages) : result.run.messages, messagesShown());
    if (!failure)
        return;
    if (journal.finished == 0) // files without a timestep in them are no deck, and in the next run's way
        folder->clear();
    throw CFailure(*failure);
}

/// Whether what was made may take its place. \throws CFailure
void CConvertCommand::requireWhole()
{
    const std::string advice = utf8(folder->path()) + " holds the whole deck anyway. ";
    if (interrupted())
        throw CFailure(eExitInterrupted,
                       "interrupted after timestep " + std::to_string(journal.timesteps) + " of " +
                           std::to_string(journal.timesteps),
                       leftoverAdvice(*folder, journal) + " The source is untouched.");
    if (options.strict && holdsDamage(result.run.messages))
        throw CFailure(eExitSource, utf8(options.source) + ": lost: " + damageText(result.run.messages),
                       "With --strict that makes no new deck. " + advice +
                           "Repeat this command with --resume and without --strict to take it as it is.");
    if (!options.wantsComparison())
        return;
    setInterruptPhase(eInComparison);
    CProgressDisplay progress(options.quiet, eNothingElsewhere);
    const std::optional<SDeckDigest>& read = result.run.source; // not in an earlier run
    result.verification = read ? verify(*read, result.run.converted, options.source, folder->deck(), progress)
                               : verify(options.source, folder->deck(), defaultDifferenceLimit, progress);
    result.code = result.verification->exitCode();
    if (!result.verification->equal())
        throw CFailure(eExitDifferent, utf8(target) + ": was not made: the new deck differs from its source",
                       advice + "Repeat this command with --resume and without --verify to take it as it is.");
    if (interrupted())
        throw CFailure(eExitInterrupted, "interrupted after the comparison",
                       leftoverAdvice(*folder, journal) + " The source is untouched.");
}

/// Puts the digest of the source's values beside a deck.
void CConvertCommand::addDigest(const QString& deck)
{
    if (!options.digest)
        return;
    if (result.run.source) {
        result.digest = valueDigestOf(*result.run.source);
    }
    else if (result.verification && !result.verification->sourceDigest.whole.empty()) {
        result.digest = result.verification->sourceDigest;
    }
    else {
        setInterruptPhase(eInComparison);
        CProgressDisplay progress(options.quiet, eNothingElsewhere);
        result.digest = valueDigestOf(digestOf(options.source, "reading source,", eEndsTheReading, progress));
    }
    writeDigestFile(digestFileOf(deck), result.digest);
}

/// Writes what --xdmf asks for beside the new deck, which remains whatever comes of that. \return why it can't be written
std::optional<CFailure> CConvertCommand::addView()
{
    if (!options.xdmf || (result.code != eExitDone && result.code != eExitSource))
        return std::nullopt;
    try {
        CDeckReader reader(target);
        result.view = writeView(reader, target, options.force);
    }
    catch (const CFailure& failure) {
        return failure;
    }
    result.view->leftOut.print(utf8(target));
    if (result.view->damaged)
        result.code = eExitSource;
    return std::nullopt;
}

void CConvertCommand::finish()
{
    requireFreeTarget(options.source, target, options.force || journal.replaces); // it took a while
    result.result = "converted";
    result.timesteps = journal.timesteps;
    if (result.code == eExitDone && holdsDamage(result.run.messages))
        result.code = eExitSource;
    addDigest(folder->deck());
    if (interrupted())
        throw CFailure(eExitInterrupted, "interrupted before the new deck got its name",
                       leftoverAdvice(*folder, journal) + " The source is untouched.");
    result.bytesWritten = bytesOf(familyFiles(folder->deck()));
    SDeckOutcome outcome = outcomeOf(result);
    if (options.facts)
        outcome.page = factsText(deckFacts(options, folder->deck(), result, nullptr));
    leaveRecord(options, std::move(outcome));
    setInterruptPhase(eInPlacing);
    folder->place(journal);
}

EExitCode CConvertCommand::fail(const CFailure& failure)
{
    result.result = "failed";
    result.timesteps = journal.finished;
    if (folder && folder->isBegun()) {
        result.partial = folder->path();
        result.bytesWritten = bytesOf(familyFiles(folder->deck()));
    }
    if (failure.code == eExitInterrupted)
        result.result = "interrupted";
    reportWhereThatWorks([&] {
        if (options.json) {
            printResultObject(options, target, result, &failure);
        }
        else if (result.verification) {
            printVerification(*result.verification, options.source, folder->deck());
            flushResult();
        }
    });
    printFailure(failure);
    SDeckOutcome outcome = outcomeOf(result);
    if (options.facts)
        outcome.page = factsText(deckFacts(options, target, result, &failure));
    leaveRecordOf(options, std::move(outcome), &failure, "");
    writePage(&failure);
    return failure.code;
}

/// \return whether there is anything to do
bool CConvertCommand::prepare()
{
    requirePossibleTarget(options.target, target);
    sizes = requireReadable(options.source, options.ignoreCompanions);
    const QString partial = CPartialFolder::pathFor(target);
    const bool isBegun = hasJournal(nativePath(partial)); // a folder without one is what a kill at the very end left
    if (!isBegun && options.resume && !options.force && isWholeConversion(target, options.source, sizes.size()))
        return false;
    if (!isBegun)
        requireFreeTarget(options.source, target, options.force);
    journal = journalOf(options, static_cast<quint32>(sizes.size()));
    result.bytesRead = bytesOf(sourceFiles(options.source));
    const qint64 there = bytesOf(familyFiles(partial + QLatin1Char('/') + QFileInfo(target).fileName()));
    requireRoom(target, result.bytesRead, there, journal.timesteps);
    if (interrupted())
        throw CFailure(eExitInterrupted, "interrupted before the first timestep",
                       "Nothing was written; the source is untouched.");
    if (options.dryRun && isBegun && !options.resume && !options.force)
        throw CFailure(eExitTarget, utf8(partial) + ": holds an unfinished conversion",
                       "It can be gone on with by --resume, and started over with --force.");
    return true;
}

/// What --dry-run says where nothing stops the conversion.
EExitCode CConvertCommand::sayPossible()
{
    result.result = "possible";
    SDeckOutcome outcome = outcomeOf(result);
    outcome.state = eDeckWaiting;
    outcome.timesteps = journal.timesteps;
    leaveRecordOf(options, outcome, nullptr, "");
    reportWhereThatWorks([&] {
        if (options.json)
            printResultObject(options, target, result);
        else if (!options.quiet)
            printResult(utf8(options.source) + ": can be converted to " + utf8(target) + ": " +
                        countText(journal.timesteps, "timestep") + ", " +
                        sizeText(static_cast<double>(result.bytesRead)) + " to read\n");
        flushResult();
    });
    return eExitDone;
}

/// A conversion counts, whether it can be reported or not.
void CConvertCommand::writePage(const CFailure* failure) const
{
    if (options.page.empty())
        return;
    try {
        writeDeckPage(options.page, deckFacts(options, target, result, failure));
    }
    catch (const CFailure& unwritten) {
        printFailure(unwritten);
    }
}

/// What --resume says where nothing is left to resume.
EExitCode CConvertCommand::sayComplete()
{
    if (!options.dryRun && QFileInfo::exists(CPartialFolder::pathFor(target)))
        folder.emplace(target); // removed again when the command ends, for no deck is in it
    result.result = "complete already";
    result.timesteps = static_cast<quint32>(sizes.size());
    result.bytesRead = bytesOf(sourceFiles(options.source));
    result.bytesWritten = bytesOf(familyFiles(target));
    if (options.wantsComparison()) {
        CProgressDisplay progress(options.quiet, eNothingElsewhere);
        result.verification = verify(options.source, target, defaultDifferenceLimit, progress);
        result.code = result.verification->exitCode();
    }
    if (!options.dryRun && !QFileInfo::exists(digestFileOf(target)))
        addDigest(target);
    leaveRecordOfEarlier(options, result, eDeckSkipped);
    return sayWhole(utf8(target) + ": is whole and has the timesteps of " + utf8(options.source) +
                    ": nothing to resume\n");
}

/// What there is to say of a deck that is in its place. \param line  unless all shall be quiet
EExitCode CConvertCommand::sayWhole(const std::string& line)
{
    writePage(nullptr);
    const std::optional<CFailure> failure = options.dryRun ? std::nullopt : addView();
    reportWhereThatWorks([&] {
        if (options.json)
            printResultObject(options, target, result, failure ? &*failure : nullptr);
        else
            printConverted(options, target, result, line);
    });
    if (failure)
        printFailure(*failure);
    return failure ? failure->code : result.code;
}

EExitCode CConvertCommand::run()
{
    try {
        if (!prepare())
            return sayComplete();
        if (options.dryRun)
            return sayPossible();
        makeTargetFolder(target);
        folder.emplace(target);
        const bool isPlaced = folder->isBegun() && goOnWith(folder->read());
        if (!isPlaced) {
            requireFreeTarget(options.source, target, options.force || journal.replaces);
            makeDeck();
            requireWhole();
            finish();
        }
        else {
            if (!QFileInfo::exists(digestFileOf(target)))
                addDigest(target);
            leaveRecordOfEarlier(options, result, eDeckConverted);
        }
    }
    catch (const CFailure& failure) {
        return fail(failure);
    }
    folder.reset();
    result.result = "converted";
    result.bytesWritten = bytesOf(familyFiles(target));
    return sayWhole(convertedText(options, target, result));
}

/// An HDF5 deck needs no conversion; what isn't at the target already is nowhere.
EExitCode nothingToDo(const SConvertOptions& options)
{
    {
        const CDeckReader reader(options.source);
    }
    const QString target = targetPath(options.source, options.target);
    SConversionResult result;
    result.result = "nothing to do";
    const bool isThere = QFileInfo(target).isFile() && detectFormat(target) == eFormatHdf5;
    result.code = isThere ? eExitDone : eExitNothingMade;
    const CFailure failure(eExitNothingMade,
                           utf8(options.source) + ": is an HDF5 deck already, and " + utf8(target) + " was not made",
                           "There is nothing to convert; copy the deck if it is to be there as well.");
    reportWhereThatWorks([&] {
        if (options.json)
            printResultObject(options, isThere ? target : options.source, result, isThere ? nullptr : &failure);
        else if (isThere && !options.quiet)
            printResult(utf8(options.source) + ": is an HDF5 deck already: nothing to convert\n");
        flushResult();
    });
    if (!isThere)
        printFailure(failure);
    SDeckOutcome outcome = outcomeOf(result);
    outcome.state = eDeckSkipped;
    leaveRecordOf(options, outcome, nullptr, skippedCurrent);
    return result.code;
}

} // namespace

EExitCode runConvert(const SConvertOptions& options)
{
    try {
        if (QFileInfo(options.source).isDir() && !partialDeckAt(options.source))
            throw CFailure(eExitUnsupported, utf8(options.source) + ": is a folder, which is converted with -o",
                           adviceForManyDecks(shellQuoted(utf8(QDir(options.source).path()))));
        if (requireDeck(options.source) == eFormatHdf5)
            return nothingToDo(options);
    }
    catch (const CFailure& failure) {
        if (options.json)
            reportWhereThatWorks([&] { printResultObject(options, options.target, SConversionResult(), &failure); });
        printFailure(failure);
        leaveRecordOf(options, SDeckOutcome(), &failure, "");
        return failure.code;
    }
    return CConvertCommand(options).run();
}

} // namespace NBrenmark
