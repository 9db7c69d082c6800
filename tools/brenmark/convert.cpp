// brenmark convert.

#include "brenmark/commands.h"
#include "brenmark/conversion_run.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_problems.h"
#include "brenmark/interrupt.h"
#include "brenmark/json_text.h"
#include "brenmark/progress_display.h"
#include "brenmark/target_checks.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/verify.h"

#include "core/deck/deck_files.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

namespace {

/// What a conversion comes to, whichever way it ends.
struct SResult
{
    const char* result = "failed";
    EExitCode code = eExitDone;
    SConversionRun run;
    quint32 timesteps = 0; ///< finished, in the new deck or in its folder
    qint64 bytesRead = 0;
    qint64 bytesWritten = 0;
    QString partial; ///< the folder that holds them, if they aren't at the target
    std::optional<SVerification> verification;
};

void printResultObject(const SConvertOptions& options, const QString& target, const SResult& result,
                       const CFailure* failure = nullptr)
{
    Json object{{"result", result.result},
                {"code", failure ? failure->code : result.code},
                {"source", utf8(options.source)},
                {"target", utf8(target)},
                {"seconds", result.run.seconds},
                {"bytesRead", result.bytesRead},
                {"bytesWritten", result.bytesWritten},
                {"timesteps", result.timesteps},
                {"messages", jsonMessages(result.run.messages)}};
    if (!result.partial.isEmpty())
        object["partial"] = utf8(result.partial);
    if (failure)
        object["error"] = failure->what();
    if (result.verification)
        object["verification"] = jsonVerification(*result.verification);
    unlessReaderIsGone([&] { printJson(object); });
}

void tellConverted(const SConvertOptions& options, const QString& target, const SResult& result)
{
    if (!options.quiet)
        printResult(utf8(options.source) + ": converted to " + utf8(target) + ": " +
                    countText(result.timesteps, "timestep") + ", " + sizeText(static_cast<double>(result.bytesRead)) +
                    " read, " + sizeText(static_cast<double>(result.bytesWritten)) + " written in " +
                    durationText(result.run.seconds) +
                    (holdsDamage(result.run.messages) ? "; lost: " + damageText(result.run.messages) : "") + '\n');
    if (result.verification && (!options.quiet || result.code != eExitDone))
        printVerification(*result.verification, options.source, target);
    flushResult();
}

/// What is there for the next run, and how it goes on.
std::string leftoverAdvice(const CPartialFolder& folder, const SJournal& journal)
{
    if (journal.finished == 0)
        return "Nothing is left at the target.";
    return utf8(folder.path()) + " holds " + std::to_string(journal.finished) + " of " +
           countText(journal.timesteps, "timestep") +
           ". With --resume this command goes on there, with --force it begins anew.";
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
            "from the archive and repeat this command" +
            std::string(journal.finished == 0 ? ". " : " with --force. ") + leftover;
    else
        failure.advice += ' ' + leftover;
    return failure;
}

// ---------------------------------------------------------------- before

/// Opens a deck, looks for its segments and lets it go again. \return its timesteps
/// \throws CFailure  something is missing
quint32 requireReadable(const QString& path, bool ignoreCompanions)
{
    const CDeckReader reader(path, eUpgradedModel, eNotExamined, ignoreCompanions);
    if (const QString segment = missingSegment(reader, path); !segment.isEmpty())
        throw CFailure(eExitSource, utf8(segment) + " is missing, and the deck's index names it",
                       "Copy the deck again from the archive, with all its files, and repeat this command.");
    return reader.timestepCount();
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
                       "Begin anew with --force, which discards it.");
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
                   "Repeat this command with --resume to go on there, or with --force to begin anew.");
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
    void prepare();
    bool goOnWith(SJournal earlier);
    void makeDeck();
    void requireWhole();
    void finish();
    EExitCode fail(const CFailure& failure);

    const SConvertOptions& options;
    const QString target;
    std::optional<CPartialFolder> folder;
    SJournal journal;
    SResult result;
};

/// What was begun here before: taken up, discarded, or in the way. \return whether the new deck is in its place
bool CConvertCommand::goOnWith(SJournal earlier)
{
    if (earlier.state >= eReplacing) { // that is finished, whoever asks
        folder->place(earlier);
        printError("brenmark: " + utf8(target) +
                   ": an earlier conversion had been stopped while its deck took its "
                   "place, which is finished now\n");
        result.timesteps = earlier.timesteps;
        result.run.messages = earlier.ledger;
        printLedger(earlier.ledger);
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
        printLedger(journal.ledger);
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
        CProgressDisplay progress(options.quiet);
        result.run = runConversion(*folder, journal, result.bytesRead, progress);
        if (!result.run.succeeded)
            failure = failureOf(result.run, *folder, journal);
    }
    catch (const CFailure& thrown) {
        failure = CFailure(thrown.code, thrown.what(), thrown.advice + ' ' + leftoverAdvice(*folder, journal));
    }
    printLedger(result.run.messages);
    if (!failure)
        return;
    if (journal.finished == 0) // files without a timestep in them are no deck, and in the next run's way
        folder->clear();
    throw CFailure(*failure);
}

/// Whether what was made may take its place. \throws CFailure
void CConvertCommand::requireWhole()
{
    const std::string advice = utf8(folder->path()) + " holds the whole deck all the same. ";
    if (interrupted())
        throw CFailure(eExitInterrupted,
                       "interrupted after timestep " + std::to_string(journal.timesteps) + " of " +
                           std::to_string(journal.timesteps),
                       leftoverAdvice(*folder, journal) + " The source is untouched.");
    if (options.strict && holdsDamage(result.run.messages))
        throw CFailure(eExitSource, utf8(options.source) + ": lost: " + damageText(result.run.messages),
                       "With --strict that makes no new deck. " + advice +
                           "Repeat this command with --resume and without --strict to take it as it is.");
    if (!options.verify)
        return;
    setInterruptPhase(eInComparison);
    CProgressDisplay progress(options.quiet || !errorIsTerminal());
    result.verification = verify(options.source, folder->deck(), defaultDifferenceLimit, progress);
    result.code = result.verification->exitCode();
    if (!result.verification->equal())
        throw CFailure(eExitDifferent, utf8(target) + ": isn't made: the new deck differs from its source",
                       advice + "Repeat this command with --resume and without --verify to take it as it is.");
    if (interrupted())
        throw CFailure(eExitInterrupted, "interrupted after the comparison",
                       leftoverAdvice(*folder, journal) + " The source is untouched.");
}

void CConvertCommand::finish()
{
    requireFreeTarget(options.source, target, options.force || journal.replaces); // it took a while
    setInterruptPhase(eInPlacing);
    folder->place(journal);
    result.timesteps = journal.timesteps;
    if (result.code == eExitDone && holdsDamage(result.run.messages))
        result.code = eExitSource;
}

EExitCode CConvertCommand::fail(const CFailure& failure)
{
    result.timesteps = journal.finished;
    if (folder && folder->isBegun()) {
        result.partial = folder->path();
        result.bytesWritten = bytesOf(familyFiles(folder->deck()));
    }
    if (failure.code == eExitInterrupted)
        result.result = "interrupted";
    if (options.json)
        printResultObject(options, target, result, &failure);
    else if (result.verification)
        unlessReaderIsGone([&] {
            printVerification(*result.verification, options.source, folder->deck());
            flushResult();
        });
    printFailure(failure);
    return failure.code;
}

void CConvertCommand::prepare()
{
    requirePossibleTarget(options.target, target);
    const QString partial = CPartialFolder::pathFor(target);
    const bool isBegun = QFileInfo::exists(partial);
    if (!isBegun)
        requireFreeTarget(options.source, target, options.force);
    journal = journalOf(options, requireReadable(options.source, options.ignoreCompanions));
    result.bytesRead = bytesOf(sourceFiles(options.source));
    const qint64 there = bytesOf(familyFiles(partial + QLatin1Char('/') + QFileInfo(target).fileName()));
    requireRoom(target, result.bytesRead, there, journal.timesteps);
    if (interrupted())
        throw CFailure(eExitInterrupted, "interrupted before the first timestep",
                       "Nothing was written. Repeat this command to convert all; the source is untouched.");
    makeTargetFolder(target);
    folder.emplace(target);
}

EExitCode CConvertCommand::run()
{
    try {
        prepare();
        const bool isPlaced = folder->isBegun() && goOnWith(folder->read());
        if (!isPlaced) {
            requireFreeTarget(options.source, target, options.force || journal.replaces);
            makeDeck();
            requireWhole();
            finish();
        }
    }
    catch (const CFailure& failure) {
        return fail(failure);
    }
    folder.reset();
    result.result = "converted";
    result.bytesWritten = bytesOf(familyFiles(target));
    if (options.json)
        printResultObject(options, target, result);
    else
        unlessReaderIsGone([&] { tellConverted(options, target, result); });
    return result.code;
}

/// An HDF5 deck needs no conversion; what isn't at the target already is nowhere.
EExitCode nothingToDo(const SConvertOptions& options)
{
    {
        const CDeckReader reader(options.source);
    }
    const QString target = targetPath(options.source, options.target);
    SResult result;
    result.result = "nothing to do";
    const bool isThere = QFileInfo(target).isFile() && detectFormat(target) == eFormatHdf5;
    result.code = isThere ? eExitDone : eExitNothingMade;
    if (options.json)
        printResultObject(options, isThere ? target : options.source, result);
    else if (isThere && !options.quiet)
        printResult(utf8(options.source) + ": is an HDF5 deck already: nothing to convert\n");
    flushResult();
    if (!isThere)
        printFailure(CFailure(eExitNothingMade,
                              utf8(options.source) + ": is an HDF5 deck already, and " + utf8(target) + " was not made",
                              "There is nothing to convert; copy the deck if it is to be there as well."));
    return result.code;
}

} // namespace

EExitCode runConvert(const SConvertOptions& options)
{
    try {
        if (requireDeck(options.source) == eFormatHdf5)
            return nothingToDo(options);
    }
    catch (const CFailure& failure) {
        if (options.json)
            printResultObject(options, options.target, SResult(), &failure);
        throw;
    }
    return CConvertCommand(options).run();
}

} // namespace NBrenmark
