#pragma once
// A run over the decks of an archive: which of them are to be done, each in a process of its own, the biggest first.

#include "brenmark/archive/archive.h"
#include "brenmark/archive/archive_table.h"
#include "brenmark/archive/deck_search.h"
#include "brenmark/archive/run_journal.h"
#include "brenmark/child_process.h"

#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

class CArchiveRun
{
public:
    /// \param decks  the biggest first
    CArchiveRun(const SArchiveOptions& options, std::vector<SArchiveDeck> decks);
    EExitCode run();

private:
    using Clock = std::chrono::steady_clock;

    void openJournal();
    void sortOut();
    std::optional<SDeckOutcome> settledBefore(const SArchiveDeck& deck, const SDeckOutcome& known) const;
    std::optional<SDeckOutcome> settledNow(const SArchiveDeck& deck) const;
    void convertAll();
    void fill();
    bool isBusy(const SArchiveDeck& deck) const;
    void start(size_t number);
    void finish(const SChildEnd& end);
    void settle(const SArchiveDeck& deck, SDeckOutcome outcome);
    SDeckOutcome outcomeOf(const SArchiveDeck& deck, const SChildEnd& end) const;
    std::vector<std::string> argumentsFor(const SArchiveDeck& deck, const std::string& record) const;
    void removeRecords() const;
    EExitCode reportResult();

    std::string targetOf(const SArchiveDeck& deck) const { return options.folder + '/' + deck.target; }
    std::string recordFolder() const;
    std::string recordOf(const SArchiveDeck& deck) const;

    const SArchiveOptions& options;
    std::vector<SArchiveDeck> decks;
    const unsigned jobs;
    std::optional<CRunJournal> journal;
    CRunIndex earlier; ///< what the journals say that are there
    std::deque<size_t> waiting;
    std::deque<size_t> alone;        ///< too large for a share of the memory
    std::map<size_t, int> postponed; ///< made by another process when they were looked at, how often
    std::map<pid_t, size_t> atWork;
    CChildProcesses children;
    CArchiveTable table;
    bool isAlone = false; ///< one deck at a time, with all of the memory
    bool wasForwarded = false;
    size_t settledEarlier = 0;
    Clock::time_point began;
};

/// What a deck comes to that can't be tried.
SDeckOutcome problemOutcome(const SArchiveDeck& deck);

} // namespace NBrenmark
