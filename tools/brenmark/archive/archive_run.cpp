#include "brenmark/archive/archive_run.h"

#include "brenmark/archive/conversion_record.h"
#include "brenmark/disk.h"
#include "brenmark/interrupt.h"
#include "brenmark/page/deck_facts.h"
#include "brenmark/page/report_page.h"
#include "brenmark/target_checks.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "core/thread_pool.h"
#include "io/text/quick_digest.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace NBrenmark {

static const char* const recordFolderStart = "brenmark-records";
static const char* const memoryReason = "too little memory";
static const char* const busyReason = "another conversion is making it";

static QString decoded(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

/// Bytes that are free in a folder; -1 where that isn't known.
static qint64 freeBytes(const std::string& folder)
{
    struct statvfs disk = {};
    return statvfs(folder.c_str(), &disk) == 0 ? static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize)
                                               : -1;
}

CArchiveRun::CArchiveRun(const SArchiveOptions& options, std::vector<SArchiveDeck> found)
    : options(options),
      decks(std::move(found)),
      jobs(options.jobs > 0 ? options.jobs : threadCount()),
      began(Clock::now())
{}

// ---------------------------------------------------------------- what there is to do

void CArchiveRun::openJournal()
{
    makeTargetFolder(decoded(options.folder + ('/' + runJournalName(options.shard, options.shards))));
    journal.emplace(options.folder, options.shard, options.shards);
    const bool goesOn = options.resume || options.retryFailed || options.skipExisting;
    SRunState own;
    if (!goesOn && !options.force)
        addJournal(journal->path(), own);
    if (own.begin)
        throw CFailure(eExitTarget,
                       options.folder + ": holds the journal of a run that began at " + own.begin->time + " with " +
                           countText(own.begin->decks, "deck"),
                       "Go on with it by --resume, begin anew with --force, or choose another folder.");
    if (goesOn)
        for (const std::string& path : runJournals(options.folder))
            earlier.add(path);
    realDisk().makeFolder(recordFolder());
    SRunBegin run;
    run.time = timeNow();
    run.process = getpid();
    run.program = BRENMARK_VERSION;
    run.options = optionWords(options);
    run.decks = decks.size();
    for (const SArchiveDeck& deck : decks)
        run.bytes += deck.bytes;
    run.isFresh = !goesOn;
    journal->begin(run);
    if (!journal->failure().empty())
        throw CFailure(eExitTarget, journal->failure(), adviceForWriting(journal->failure()));
}

/// What an earlier run came to, if that still holds.
std::optional<SDeckOutcome> CArchiveRun::settledBefore(const SArchiveDeck& deck, const SDeckOutcome& known) const
{
    const bool hasDeck = isMade(known.state) || (known.state == eDeckSkipped && !known.targetFiles.empty());
    if (!isFinal(known.state) || (known.state == eDeckFailed && (options.retryFailed || !options.resume)))
        return std::nullopt;
    if (!hasDeck)
        return known;
    const QString source = decoded(deck.source), target = decoded(targetOf(deck));
    if (deckFilesDigest(target) != known.targetFiles) // gone, or not as it was made
        return std::nullopt;
    SDeckOutcome outcome = known;
    if (deck.files != known.sourceFiles) {
        try {
            if (sourceBytesDigest(source) == known.sourceBytes)
                return outcome;
        }
        catch (const CFailure& failure) {
            takeFailure(outcome, failure);
            return outcome;
        }
        if (options.force)
            return std::nullopt;
        takeFailure(outcome, CFailure(eExitTarget, deck.source + ": has changed since its deck was made",
                                      "Replace the deck with --force."));
        outcome.reason = "the source has changed since";
    }
    return outcome;
}

SDeckOutcome problemOutcome(const SArchiveDeck& deck)
{
    SDeckOutcome outcome;
    takeFailure(outcome, CFailure(static_cast<EExitCode>(deck.code), deck.problem, std::string()));
    if (deck.code == eExitTarget)
        outcome.reason = "two decks would have one name";
    return outcome;
}

/// What is known without a process.
std::optional<SDeckOutcome> CArchiveRun::settledNow(const SArchiveDeck& deck) const
{
    SDeckOutcome outcome;
    std::string cause;
    if (!deck.problem.empty())
        return problemOutcome(deck);
    const EDeckFormat format = detectFormat(decoded(deck.source), &cause);
    if (format == eFormatUnknown && cause.empty() && access(deck.source.c_str(), R_OK) == 0) {
        takeFailure(outcome, CFailure(eExitUnsupported, deck.source + ": isn't a deck that brenmark can read",
                                      deck.bytes == 0 ? "It is empty." : std::string()));
        return outcome;
    }
    if (format != eFormatHdf5)
        return std::nullopt;
    outcome.state = eDeckSkipped;
    outcome.reason = skippedCurrent;
    return outcome;
}

void CArchiveRun::sortOut()
{
    for (size_t number = 0; number < decks.size() && !interrupted(); ++number) {
        const SArchiveDeck& deck = decks[number];
        if (const std::optional<SDeckOutcome> known = earlier.find(oneLine(deck.target))) {
            const EDeckState was = known->state;
            if (std::optional<SDeckOutcome> outcome = settledBefore(deck, *known)) {
                ++settledEarlier;
                if (isMade(outcome->state) && options.skipExisting && !options.resume) {
                    outcome->state = eDeckSkipped;
                    outcome->reason = skippedWhole;
                    outcome->bytesRead = outcome->bytesWritten = 0;
                    outcome->seconds = 0.0;
                }
                if (outcome->state != was)
                    journal->note(*outcome);
                table.add(*outcome);
                continue;
            }
            if (was != eDeckStarted && was != eDeckInterrupted) // a record of what was under way is still good
                ::unlink(recordOf(deck).c_str());
        }
        if (std::optional<SDeckOutcome> outcome = settledNow(deck))
            settle(deck, std::move(*outcome));
        else
            waiting.push_back(number);
    }
    earlier = CRunIndex();
}

// ---------------------------------------------------------------- processes

/// Each share has its own, which it can remove while others are under way.
std::string CArchiveRun::recordFolder() const
{
    return options.folder + '/' + recordFolderStart + shareSuffix(options.shard, options.shards);
}

std::string CArchiveRun::recordOf(const SArchiveDeck& deck) const
{
    CQuickDigest name;
    name.add(deck.target);
    return recordFolder() + '/' + name.hex() + ".json";
}

std::vector<std::string> CArchiveRun::argumentsFor(const SArchiveDeck& deck, const std::string& record) const
{
    std::vector<std::string> arguments{"convert", "--quiet", "--progress", "none",
                                       "--color", "never",   "--record",   record};
    auto ofDeck = static_cast<const SDeckOptions&>(options);
    // A deck that is tried once more goes on with what it left the first time.
    ofDeck.resume = options.resume || options.retryFailed || options.skipExisting || isAlone;
    const std::vector<std::string> words = wordsOf(ofDeck);
    arguments.insert(arguments.end(), words.begin(), words.end());
    if (!options.page.empty())
        arguments.emplace_back("--facts");
    // The last decks have the cores to themselves.
    const size_t atOnce = std::max<size_t>(1, std::min<size_t>(jobs, waiting.size() + children.count() + 1));
    const unsigned threads =
        options.threads > 0 ? options.threads : std::max(1U, static_cast<unsigned>(threadCount() / atOnce));
    arguments.insert(arguments.end(), {"--threads", std::to_string(isAlone ? threadCount() : threads)});
    if (options.memory > 0)
        arguments.insert(arguments.end(),
                         {"--max-memory", std::to_string(isAlone ? options.memory : options.memory / jobs)});
    arguments.insert(arguments.end(), {"--", deck.source, targetOf(deck)});
    return arguments;
}

/// Whether another process is making a deck: a conversion by hand, or what is just ending of a run that was killed.
bool CArchiveRun::isBusy(const SArchiveDeck& deck) const
{
    const int lock = ::open((targetOf(deck) + ".partial/lock").c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (lock < 0)
        return false;
    const bool isTaken = ::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(lock);
    return isTaken;
}

void CArchiveRun::start(size_t number)
{
    const SArchiveDeck& deck = decks[number];
    SDeckOutcome outcome;
    const std::string record = recordOf(deck);
    if (const std::optional<SDeckOutcome> old = readRecord(record);
        old && (!isMade(old->state) || old->sourceFiles != deck.files))
        ::unlink(record.c_str());
    if (const qint64 isFree = freeBytes(options.folder); isFree >= 0 && isFree < deck.bytes) {
        takeFailure(outcome,
                    CFailure(eExitTarget,
                             deck.source + ": the new deck takes about " + sizeText(static_cast<double>(deck.bytes)) +
                                 ", and " + sizeText(static_cast<double>(isFree)) + " are free; " +
                                 sizeText(static_cast<double>(deck.bytes - isFree)) + " more are needed",
                             adviceForWriting(ENOSPC)));
        outcome.reason = "too little space";
        return settle(deck, std::move(outcome));
    }
    outcome.deck = oneLine(deck.target);
    outcome.state = eDeckStarted;
    journal->note(outcome);
    try {
        atWork[children.start(argumentsFor(deck, record))] = number;
    }
    catch (const CFailure& failure) {
        if (!atWork.empty()) { // when one of them has ended there is a process again
            waiting.push_front(number);
            return;
        }
        takeFailure(outcome, failure);
        settle(deck, std::move(outcome));
    }
}

/// Starts as many decks as may be under way.
void CArchiveRun::fill()
{
    constexpr int mostLooks = 300; // 100 ms apart
    if (waiting.empty() && atWork.empty() && !alone.empty()) {
        isAlone = true;
        waiting.swap(alone);
    }
    const size_t most = isAlone ? 1 : jobs;
    for (size_t looked = 0, all = waiting.size(); looked < all && atWork.size() < most && !interrupted(); ++looked) {
        if (waiting.empty())
            return;
        const size_t number = waiting.front();
        waiting.pop_front();
        if (isBusy(decks[number]) && ++postponed[number] < mostLooks)
            waiting.push_back(number);
        else
            start(number);
    }
}

SDeckOutcome CArchiveRun::outcomeOf(const SArchiveDeck& deck, const SChildEnd& end) const
{
    const std::optional<SDeckOutcome> record = readRecord(recordOf(deck));
    const bool isDone = end.signal == 0 && (end.code == eExitDone || end.code == eExitSource);
    const bool isRecordOfThis = record && (isDone || !isFinal(record->state) || record->state == eDeckFailed);
    SDeckOutcome outcome = isRecordOfThis ? *record : SDeckOutcome();
    if (end.signal != 0) {
        outcome = SDeckOutcome();
        outcome.state = eDeckFailed;
        outcome.reason = "the conversion crashed";
        outcome.code = 128 + end.signal; // as shells number it
        outcome.text = deck.source + ": the process was ended by signal " + std::to_string(end.signal) + ", " +
                       strsignal(end.signal) + ". Please report this; the source is untouched.";
    }
    else if (!isRecordOfThis) {
        takeFailure(outcome, CFailure(static_cast<EExitCode>(end.code),
                                      deck.source + ": " +
                                          (end.error.empty() ? "exit status " + std::to_string(end.code)
                                                             : withoutEnd(end.error)),
                                      std::string()));
    }
    return outcome;
}

void CArchiveRun::finish(const SChildEnd& end)
{
    const auto found = atWork.find(end.process);
    if (found == atWork.end())
        return;
    const size_t number = found->second;
    atWork.erase(found);
    fill(); // first of all: what follows takes a while on a slow disk
    const SArchiveDeck& deck = decks[number];
    SDeckOutcome outcome = outcomeOf(deck, end);
    if (outcome.state == eDeckFailed && outcome.reason == memoryReason && !isAlone && jobs > 1) {
        alone.push_back(number);
        ::unlink(recordOf(deck).c_str());
        return;
    }
    if (isMade(outcome.state)) {
        outcome.targetFiles = deckFilesDigest(decoded(targetOf(deck)));
        if (outcome.targetFiles.empty()) // a record of an earlier run, and no word of this one
            takeFailure(outcome, CFailure(eExitDifferent, deck.source + ": its new deck isn't there",
                                          "Convert it alone to see why: brenmark convert IN OUT."));
    }
    settle(deck, std::move(outcome));
    if (journal->failure().empty())
        ::unlink(recordOf(deck).c_str());
}

void CArchiveRun::settle(const SArchiveDeck& deck, SDeckOutcome outcome)
{
    outcome.deck = oneLine(deck.target);
    // The tree says where it is; who keeps it where is no matter of a journal that is handed on.
    outcome.text = withoutFolderOf(withoutFolderOf(outcome.text, deck.source), targetOf(deck));
    journal->note(outcome);
    table.add(outcome);
    if (!options.quiet)
        printError("brenmark: " + std::to_string(table.done()) + " of " + std::to_string(decks.size()) + ": " +
                   outcomeLine(outcome) + '\n');
}

void CArchiveRun::convertAll()
{
    constexpr int look = 100; // ms
    const auto isLeft = [&] { return !interrupted() && (!waiting.empty() || !alone.empty()); };
    for (fill(); !atWork.empty() || isLeft(); fill()) {
        if (interrupted() && !wasForwarded) {
            children.signal(SIGTERM); // each ends after its current timestep
            wasForwarded = true;
        }
        for (const SChildEnd& end : children.wait(look))
            finish(end);
    }
}

// ---------------------------------------------------------------- the result

/// All of them are in the journal. Some are of runs that were killed before they removed theirs; a run over all decks has
/// DIR to itself, and removes those of shares as well.
void CArchiveRun::removeRecords() const
{
    std::vector<std::string> folders{recordFolder()};
    if (options.shards == 0)
        for (const std::string& name : realDisk().names(options.folder))
            if (name.rfind(std::string(recordFolderStart) + '.', 0) == 0)
                folders.push_back((options.folder + '/').append(name));
    for (const std::string& folder : folders) {
        for (const std::string& name : realDisk().names(folder))
            ::unlink((folder + '/').append(name).c_str());
        ::rmdir(folder.c_str());
    }
}

EExitCode CArchiveRun::reportResult()
{
    const double seconds = std::chrono::duration<double>(Clock::now() - began).count();
    journal->end(interrupted(), seconds);
    if (journal->failure().empty())
        removeRecords();
    EExitCode code = interrupted() ? eExitInterrupted : table.exitCode();
    if (!journal->failure().empty()) {
        printFailure(CFailure(eExitTarget, journal->failure(), adviceForWriting(journal->failure())));
        code = code == eExitDone || code == eExitSource ? eExitTarget : code;
    }
    SRunState state;
    if (options.json || !options.page.empty())
        addJournal(journal->path(), state);
    if (!options.page.empty())
        try {
            writeRunPage(options.page, table, state);
        }
        catch (const CFailure& failure) { // the decks are what counts
            printFailure(failure);
        }
    reportWhereThatWorks([&] {
        if (options.json) {
            printArchiveJson(options.folder, table, state, code);
            return;
        }
        if (settledEarlier > 0)
            printResult(countText(settledEarlier, "deck") + " of these were done before\n");
        table.print(seconds, decks.size());
    });
    return code;
}

EExitCode CArchiveRun::run()
{
    openJournal();
    sortOut();
    convertAll();
    return reportResult();
}

} // namespace NBrenmark
