#pragma once
// What an archive came to: how many decks were converted, skipped and failed, and why.

#include "brenmark/archive/run_journal.h"
#include "brenmark/exit_codes.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

class CArchiveTable
{
public:
    /// \param outcome  of a deck of which nothing was added yet
    void add(const SDeckOutcome& outcome);
    /// All decks of the journals of a folder.
    void add(const SRunState& state);

    quint64 count(EDeckState state) const;
    quint64 done() const;
    /// 0 all well, 1 some failed, 3 some with losses, 130 interrupted.
    EExitCode exitCode() const;

    void print(double seconds, quint64 decks) const;
    Json json() const;

private:
    struct SRow
    {
        quint64 decks = 0;
        qint64 bytesRead = 0;
        qint64 bytesWritten = 0;
    };
    SRow sum(EDeckState state) const;

    std::map<std::pair<EDeckState, std::string>, SRow> rows; ///< by state and reason
    std::vector<std::string> failures;                       ///< the first of them
};

/// "brenmark: deck.dem: failed: text", a line.
std::string outcomeLine(const SDeckOutcome& outcome);

/// Prints the result of a run or of several as one JSON object, deck by deck.
void printArchiveJson(const std::string& folder, const CArchiveTable& table, const SRunState& state, EExitCode code);

} // namespace NBrenmark
