#include "brenmark/archive/dry_run.h"

#include "brenmark/archive/archive_run.h"
#include "brenmark/archive/conversion_record.h"
#include "brenmark/child_process.h"
#include "brenmark/disk.h"
#include "brenmark/interrupt.h"
#include "brenmark/journal.h"
#include "brenmark/partial_folder.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "core/thread_pool.h"

#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <csignal>
#include <map>
#include <optional>
#include <sys/statvfs.h>

namespace NBrenmark {

namespace {

using Clock = std::chrono::steady_clock;

/// How fast a conversion is here.
struct SPace
{
    double bytesPerSecond = 0.0; ///< of the source; 0: not known
    double written = 0.0;        ///< bytes for a byte of the source; 0: not known
};

class CDryRun
{
public:
    CDryRun(const SArchiveOptions& options, std::vector<SArchiveDeck> found)
        : options(options), decks(std::move(found)), jobs(options.jobs > 0 ? options.jobs : threadCount())
    {}
    EExitCode run();

private:
    void lookAtAll();
    void take(const SArchiveDeck& deck, const SChildEnd& end, const std::string& record);
    SPace calibrate();
    double freeSpace() const;
    void print(const SPace& pace) const;
    void reportAsJson(const SPace& pace, EExitCode code) const;
    double minutes(const SPace& pace) const;
    double neededSpace(const SPace& pace) const
    {
        return static_cast<double>(bytes) * (pace.written > 0.0 ? pace.written : 1.0);
    }

    const SArchiveOptions& options;
    const std::vector<SArchiveDeck> decks;
    const unsigned jobs;
    QTemporaryDir scratch;
    std::vector<SDeckOutcome> refused;   ///< what would fail or be skipped
    const SArchiveDeck* first = nullptr; ///< the biggest that can be converted
    quint64 possible = 0, timesteps = 0;
    qint64 bytes = 0; ///< of those
};

void CDryRun::take(const SArchiveDeck& deck, const SChildEnd& end, const std::string& record)
{
    std::optional<SDeckOutcome> outcome = readRecord(record);
    QFile::remove(QFile::decodeName(QByteArray::fromStdString(record)));
    if (outcome && outcome->state == eDeckWaiting && end.signal == 0) {
        ++possible;
        timesteps += outcome->timesteps;
        bytes += deck.bytes;
        if (first == nullptr || deck.bytes > first->bytes)
            first = &deck;
        return;
    }
    if (!outcome || end.signal != 0) {
        outcome.emplace();
        takeFailure(*outcome, CFailure(end.signal != 0 ? eExitDifferent : static_cast<EExitCode>(end.code),
                                       deck.source + ": can't be examined: " + withoutEnd(end.error), std::string()));
    }
    outcome->deck = oneLine(deck.target);
    refused.push_back(std::move(*outcome));
}

void CDryRun::lookAtAll()
{
    CChildProcesses children;
    std::map<pid_t, size_t> atWork;
    const auto recordOf = [&](size_t number) {
        return nativePath(scratch.path()) + '/' + std::to_string(number) + ".json";
    };
    for (size_t next = 0; (next < decks.size() && !interrupted()) || !atWork.empty();) {
        while (next < decks.size() && atWork.size() < jobs && !interrupted()) {
            const size_t number = next++;
            const SArchiveDeck& deck = decks[number];
            if (!deck.problem.empty()) {
                SDeckOutcome outcome = problemOutcome(deck);
                outcome.deck = oneLine(deck.target);
                refused.push_back(std::move(outcome));
                continue;
            }
            std::vector<std::string> arguments{"convert",       "--quiet", "--dry-run", "--progress", "none",
                                               "--threads",     "1",       "--color",   "never",      "--record",
                                               recordOf(number)};
            if (options.resume || options.skipExisting)
                arguments.emplace_back("--resume");
            if (options.force)
                arguments.emplace_back("--force");
            if (options.ignoreCompanions)
                arguments.emplace_back("--ignore-companions");
            arguments.insert(arguments.end(), {"--", deck.source, options.folder + '/' + deck.target});
            atWork[children.start(arguments)] = number;
        }
        if (interrupted())
            children.signal(SIGTERM);
        for (const SChildEnd& end : children.wait(100)) {
            const size_t number = atWork.at(end.process);
            take(decks[number], end, recordOf(number));
            atWork.erase(end.process);
        }
    }
}

/// Converts the biggest deck for two seconds, or to the end of the timestep after them, outside of DIR.
SPace CDryRun::calibrate()
{
    constexpr std::chrono::seconds longEnough(2);
    if (first == nullptr || interrupted())
        return {};
    const std::string target = nativePath(scratch.path()) + "/calibration.dem";
    const std::string record = nativePath(scratch.path()) + "/calibration.json";
    CChildProcesses children;
    const Clock::time_point begin = Clock::now();
    // No one wants the code of a library run to learn a speed.
    children.start({"convert", "--quiet", "--no-plugins", "--progress", "none", "--record", record, "--threads",
                    std::to_string(std::max(1U, threadCount() / jobs)), "--", first->source, target});
    bool isAsked = false;
    while (children.count() > 0) {
        children.wait(20);
        if (!isAsked && children.count() > 0 && (interrupted() || Clock::now() - begin > longEnough)) {
            children.signal(SIGTERM);
            isAsked = true;
        }
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    const auto size = static_cast<double>(first->bytes);
    const std::optional<SDeckOutcome> outcome = readRecord(record);
    if (outcome && isMade(outcome->state))
        return {size / seconds, static_cast<double>(outcome->bytesWritten) / std::max(1.0, size)};
    try {
        const SJournal journal = readJournal(target + ".partial");
        return {size * journal.finished / std::max<quint32>(1, journal.timesteps) / seconds, 0.0};
    }
    catch (const CFailure&) { // not even one timestep was finished
        return {};
    }
}

double CDryRun::freeSpace() const
{
    std::string folder = options.folder;
    struct statvfs disk = {};
    while (statvfs(folder.c_str(), &disk) != 0 && folder.size() > 1)
        folder.resize(std::max<size_t>(1, folder.rfind('/')));
    return static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize);
}

double CDryRun::minutes(const SPace& pace) const
{
    constexpr double secondsPerDeck = 0.05; // what a process takes whatever its deck is
    const double atOnce = std::max(1.0, std::min(static_cast<double>(jobs), static_cast<double>(possible)));
    return (static_cast<double>(bytes) / pace.bytesPerSecond + secondsPerDeck * static_cast<double>(possible)) /
           atOnce / 60.0;
}

void CDryRun::print(const SPace& pace) const
{
    for (const SDeckOutcome& outcome : refused)
        printResult(outcomeLine(outcome) + '\n');
    printResult(countText(possible, "deck") + " of " + std::to_string(decks.size()) + " can be converted: " +
                countText(timesteps, "timestep") + ", " + sizeText(static_cast<double>(bytes)) + " to read\n");
    if (possible > 0 && pace.bytesPerSecond > 0.0)
        printResult("  about " + durationText(60.0 * minutes(pace)) + " with " + countText(jobs, "deck") +
                    " at once, by two seconds of converting " + oneLine(first->source) + '\n');
    else if (possible > 0)
        printResult("  how long it takes isn't known: two seconds aren't enough for a timestep of " +
                    oneLine(first->source) + '\n');
    const double needed = neededSpace(pace), there = freeSpace();
    printResult("  about " + sizeText(needed) + " to write; " + sizeText(there) + " are free in " +
                oneLine(options.folder) + (needed > there ? ", " + sizeText(needed - there) + " too little" : "") +
                '\n');
    flushResult();
}

void CDryRun::reportAsJson(const SPace& pace, EExitCode code) const
{
    Json list = Json::array();
    for (const SDeckOutcome& outcome : refused)
        list.push_back(jsonOutcome(outcome));
    const bool isKnown = possible > 0 && pace.bytesPerSecond > 0.0;
    printJson({{"code", code},
               {"folder", options.folder},
               {"decks", decks.size()},
               {"possible", possible},
               {"timesteps", timesteps},
               {"bytes", bytes},
               {"minutes", isKnown ? Json(minutes(pace)) : Json()},
               {"bytesNeeded", neededSpace(pace)},
               {"bytesFree", freeSpace()},
               {"refused", list},
               {"error", nullptr}});
}

EExitCode CDryRun::run()
{
    if (!scratch.isValid())
        throw CFailure(eExitTarget, "no temporary folder: " + utf8(scratch.errorString()),
                       "Set TMPDIR to another one.");
    lookAtAll();
    const SPace pace = calibrate();
    CArchiveTable table;
    for (const SDeckOutcome& outcome : refused)
        table.add(outcome);
    EExitCode code = interrupted() ? eExitInterrupted : table.exitCode();
    if (code == eExitDone && neededSpace(pace) > freeSpace())
        code = eExitTarget;
    unlessReaderIsGone([&] { options.json ? reportAsJson(pace, code) : print(pace); });
    return code;
}

} // namespace

EExitCode runDry(const SArchiveOptions& options, std::vector<SArchiveDeck> decks)
{
    return CDryRun(options, std::move(decks)).run();
}

} // namespace NBrenmark
