#include "brenmark/archive/run_journal.h"

#include "brenmark/disk.h"
#include "brenmark/failure.h"
#include "brenmark/units_text.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <unistd.h>

namespace NBrenmark {

static constexpr int journalFormat = 1;
static const char* const journalStart = "brenmark-journal";
static const char* const journalEnd = ".jsonl";
static const char* const folderLockName = "brenmark-journal.lock";

std::string shareSuffix(quint32 shard, quint32 shards)
{
    return shards == 0 ? std::string() : '.' + std::to_string(shard) + "-of-" + std::to_string(shards);
}

std::string runJournalName(quint32 shard, quint32 shards)
{
    return journalStart + shareSuffix(shard, shards) + journalEnd;
}

std::vector<std::string> runJournals(const std::string& folder)
{
    std::vector<std::string> paths;
    for (const std::string& name : realDisk().names(folder)) {
        const size_t end = std::strlen(journalEnd);
        if (name.compare(0, std::strlen(journalStart), journalStart) == 0 && name.size() > end &&
            name.compare(name.size() - end, end, journalEnd) == 0)
            paths.push_back((folder + '/').append(name));
    }
    return paths;
}

std::string timeNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    gmtime_r(&now, &parts);
    char text[32] = {};
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

// ---------------------------------------------------------------- reading

static SRunBegin beginFrom(const Json& object)
{
    SRunBegin run;
    run.time = object.at("time").get<std::string>();
    run.process = object.value("process", qint64(0));
    run.program = object.value("program", std::string());
    run.options = object.value("options", std::vector<std::string>());
    run.decks = object.value("decks", quint64(0));
    run.bytes = object.value("bytes", qint64(0));
    run.isFresh = object.value("fresh", true);
    return run;
}

static void takeLine(const Json& object, SRunState& state)
{
    const auto event = object.at("event").get<std::string>();
    if (event == "begin") {
        const SRunBegin run = beginFrom(object);
        if (run.isFresh) {
            state.outcomes.clear();
            state.seconds = 0.0;
        }
        state.begin = run;
        state.isEnded = false;
    }
    else if (event == "deck") {
        SDeckOutcome outcome = outcomeFrom(object);
        SDeckOutcome& known = state.outcomes[outcome.deck];
        known = std::move(outcome);
    }
    else if (event == "end") {
        state.isEnded = true;
        state.seconds += object.value("seconds", 0.0);
    }
}

/// Hands on each line with where it begins. \return how many are none, torn by a kill; the states before them hold
/// \throws CFailure  the journal can't be read
static quint64 visitLines(const std::string& path, const std::function<void(const Json& object, qint64 at)>& visit)
{
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) {
        if (errno == ENOENT)
            return 0;
        throw CFailure(eExitTarget, path + ": can't be read: " + std::strerror(errno), "Check its permissions.");
    }
    quint64 torn = 0;
    std::string line;
    for (qint64 at = 0; std::getline(file, line); at += static_cast<qint64>(line.size()) + 1) {
        if (line.empty())
            continue;
        try {
            visit(Json::parse(line), at);
        }
        catch (const nlohmann::json::exception&) {
            ++torn;
        }
    }
    return torn;
}

void addJournal(const std::string& path, SRunState& state)
{
    SRunState own;
    own.unreadableLines = visitLines(path, [&own](const Json& object, qint64) { takeLine(object, own); });
    if (own.begin)
        state.decks += own.begin->decks;
    state.begin = own.begin ? own.begin : state.begin;
    state.isEnded = own.isEnded;
    state.seconds += own.seconds;
    state.unreadableLines += own.unreadableLines;
    state.outcomes.merge(own.outcomes);
    for (auto& [deck, outcome] : own.outcomes) // of several journals the one that made it counts
        if (isFinal(outcome.state) && !isFinal(state.outcomes[deck].state))
            state.outcomes[deck] = std::move(outcome);
}

void CRunIndex::add(const std::string& path)
{
    const size_t file = paths.size();
    paths.push_back(path);
    visitLines(path, [&](const Json& object, qint64 at) {
        const auto event = object.at("event").get<std::string>();
        if (event == "begin" && object.value("fresh", true))
            for (auto place = places.begin(); place != places.end();)
                place = place->second.file == file ? places.erase(place) : std::next(place);
        if (event != "deck")
            return;
        const bool isDone = isFinal(deckStateFrom(object.at("state").get<std::string>()));
        SPlace& place = places[std::hash<std::string>()(object.at("deck").get<std::string>())];
        if (place.file == file || place.at < 0 || isDone ||
            !place.isDone) // of several journals the one that made it counts
            place = {file, at, isDone};
    });
}

std::optional<SDeckOutcome> CRunIndex::find(const std::string& deck) const
{
    const auto place = places.find(std::hash<std::string>()(deck));
    if (place == places.end())
        return std::nullopt;
    std::ifstream file(paths[place->second.file], std::ios::binary);
    file.seekg(place->second.at);
    std::string line;
    std::getline(file, line);
    try {
        SDeckOutcome outcome = outcomeFrom(Json::parse(line));
        return outcome.deck == deck ? std::optional<SDeckOutcome>(std::move(outcome)) : std::nullopt;
    }
    catch (const nlohmann::json::exception&) { // changed meanwhile
        return std::nullopt;
    }
}

// ---------------------------------------------------------------- writing

/// Which runs are under way in a folder, as its journals say.
static std::string runsAtWork(const std::string& folder)
{
    std::string text;
    for (const std::string& path : runJournals(folder)) {
        SRunState state;
        addJournal(path, state);
        if (!state.begin || state.isEnded)
            continue;
        quint64 done = 0;
        for (const auto& [deck, outcome] : state.outcomes)
            done += isFinal(outcome.state) ? 1 : 0;
        text += (text.empty() ? "" : "; ") + std::string("process ") + std::to_string(state.begin->process) +
                " since " + state.begin->time + ", " + std::to_string(done) + " of " +
                countText(state.begin->decks, "deck");
    }
    return text.empty() ? "it has just begun" : text;
}

static int openLocked(const std::string& path, int mode, const std::string& folder)
{
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (file < 0)
        throw CFailure(eExitTarget, path + ": can't be opened: " + std::strerror(errno), adviceForWriting(errno));
    if (::flock(file, mode | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR))
        return file; // where locks are unknown the folder of each deck has one of its own, as far as it works
    ::close(file);
    throw CFailure(eExitTarget, folder + ": another run is under way there: " + runsAtWork(folder),
                   "Wait until it has finished, or convert in shares with --shard I/N.");
}

CRunJournal::CRunJournal(const std::string& folder, quint32 shard, quint32 shards)
    : name(folder + '/' + runJournalName(shard, shards))
{
    folderLock = openLocked(folder + '/' + folderLockName, shards == 0 ? LOCK_EX : LOCK_SH, folder);
    try {
        file = openLocked(name, LOCK_EX, folder);
    }
    catch (const CFailure&) {
        ::close(folderLock);
        throw;
    }
    char last = '\n';
    const off_t size = ::lseek(file, 0, SEEK_END);
    if (size > 0 && ::pread(file, &last, 1, size - 1) == 1 && last != '\n')
        unwritten = "\n"; // the line that a kill has torn ends here
}

CRunJournal::~CRunJournal()
{
    ::close(file);
    ::close(folderLock);
}

/// One call a line: appended as a whole, whoever else reads or writes. What a full disk doesn't take is tried again
/// with the next line, and a part of a line that it took is ended there.
void CRunJournal::append(const Json& object, bool isSynced)
{
    const std::string line = object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    const std::string text = unwritten + line;
    const ssize_t put = ::write(file, text.data(), text.size());
    const bool isWhole = put == static_cast<ssize_t>(text.size());
    const int error = isWhole ? 0 : put >= 0 ? ENOSPC : errno;
    if (!isWhole) {
        unwritten = put > 0 ? '\n' + unwritten + line : text;
        if (cause.empty())
            cause = name + ": can't be written: " + std::strerror(error);
        return;
    }
    unwritten.clear();
    if (isSynced && ::fdatasync(file) != 0 && errno != EINVAL && errno != EROFS && cause.empty())
        cause = name + ": can't be synced: " + std::strerror(errno);
}

void CRunJournal::begin(const SRunBegin& run)
{
    append({{"event", "begin"},
            {"form", journalFormat},
            {"time", run.time},
            {"process", run.process},
            {"program", run.program},
            {"options", run.options},
            {"decks", run.decks},
            {"bytes", run.bytes},
            {"fresh", run.isFresh}},
           true);
    realDisk().sync(name.substr(0, name.rfind('/')));
}

void CRunJournal::note(const SDeckOutcome& outcome)
{
    Json object{{"event", "deck"}, {"time", timeNow()}};
    object.update(jsonOutcome(outcome));
    append(object, isMade(outcome.state));
}

void CRunJournal::end(bool isInterrupted, double seconds)
{
    append({{"event", "end"},
            {"time", timeNow()},
            {"state", isInterrupted ? "interrupted" : "finished"},
            {"seconds", seconds}},
           true);
}

} // namespace NBrenmark
