#pragma once
// The journal of a run, brenmark-journal.jsonl in DIR: one line a change of state, appended and synced, so that a run
// that was killed at any moment can be gone on with. A shard has a journal of its own, brenmark-journal.2-of-8.jsonl.

#include "brenmark/archive/deck_outcome.h"

#include <QtGlobal>

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace NBrenmark {

/// ".2-of-8" for a shard, at the end of what it has to itself; empty without shards.
std::string shareSuffix(quint32 shard, quint32 shards);
/// Name of the journal of a shard; of all decks without shards.
std::string runJournalName(quint32 shard, quint32 shards);
/// Paths of all journals in a folder, sorted.
std::vector<std::string> runJournals(const std::string& folder);

/// How a run began.
struct SRunBegin
{
    std::string time; ///< UTC, "2026-01-31T12:00:00Z"
    qint64 process = 0;
    std::string program; ///< version
    std::vector<std::string> options;
    quint64 decks = 0;
    qint64 bytes = 0;
    bool isFresh = true; ///< what is before it in the journal doesn't count any more
};

/// What a journal comes to: the last state of each deck.
struct SRunState
{
    std::optional<SRunBegin> begin; ///< of the last run
    bool isEnded = false;           ///< the last run came to its end
    quint64 decks = 0;              ///< announced
    double seconds = 0.0;           ///< of all runs that came to an end
    std::unordered_map<std::string, SDeckOutcome> outcomes;
    quint64 unreadableLines = 0; ///< torn by a kill
};

/// Adds a journal up; one that isn't there is empty. \throws CFailure  it can't be read
void addJournal(const std::string& path, SRunState& state);

/// Where the last state of each deck is: for a run that goes on, which may have a hundred thousand of them.
class CRunIndex
{
public:
    /// \throws CFailure  the journal can't be read
    void add(const std::string& path);
    std::optional<SDeckOutcome> find(const std::string& deck) const;

private:
    struct SPlace
    {
        size_t file = 0;
        qint64 at = -1; ///< byte
        bool isDone = false;
    };
    std::vector<std::string> paths;
    std::unordered_map<size_t, SPlace> places; ///< by a digest of the deck's name
};

/// "2026-01-31T12:00:00Z".
std::string timeNow();

/// The journal that this process writes. It has the lock on DIR, or on its shard, as long as it lives.
class CRunJournal
{
public:
    /// \throws CFailure  another run is under way there, which is named, or it can't be opened
    CRunJournal(const std::string& folder, quint32 shard, quint32 shards);
    ~CRunJournal();
    CRunJournal(const CRunJournal&) = delete;
    CRunJournal& operator=(const CRunJournal&) = delete;

    const std::string& path() const { return name; }
    void begin(const SRunBegin& run);
    void note(const SDeckOutcome& outcome);
    void end(bool isInterrupted, double seconds);
    /// Why the journal couldn't be written, the first time; empty if it was.
    const std::string& failure() const { return cause; }

private:
    void append(const Json& object, bool isSynced);

    std::string name;
    std::string cause;
    int file = -1;
    int folderLock = -1;
    std::string unwritten; ///< what a full disk didn't take
};

} // namespace NBrenmark
