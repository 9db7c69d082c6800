#pragma once
// What became of a deck of an archive, as it is in the journal of the run and in the table at its end.

#include "brenmark/json_text.h"

#include <string>
#include <vector>

namespace NBrenmark {

enum EDeckState
{
    eDeckWaiting,
    eDeckStarted,
    eDeckConverted,
    eDeckWithLosses, ///< converted, and the source was damaged
    eDeckSkipped,
    eDeckFailed,
    eDeckInterrupted
};

/// "waiting", "started", "converted", "converted with losses", "skipped", "failed", "interrupted".
const char* deckStateName(EDeckState state);
/// \return eDeckWaiting for a word that is none of them
EDeckState deckStateFrom(const std::string& name);
/// Whether a resumed run has nothing to do there.
constexpr bool isFinal(EDeckState state) { return state >= eDeckConverted && state <= eDeckFailed; }

/// Whether there is a new deck.
constexpr bool isMade(EDeckState state) { return state == eDeckConverted || state == eDeckWithLosses; }

struct SDeckOutcome
{
    EDeckState state = eDeckWaiting;
    std::string deck;   ///< path of the new deck below DIR, in which what steers a terminal is escaped
    std::string reason; ///< why it was skipped or failed, in words of which there are few
    std::string text;   ///< of the failure, with what to do
    int code = 0;       ///< exit code of the conversion
    std::vector<std::string> losses;
    qint64 bytesRead = 0;
    qint64 bytesWritten = 0;
    quint32 timesteps = 0;
    double seconds = 0.0;
    std::string digest;      ///< of the values; empty if none was made
    std::string sourceFiles; ///< names, sizes and times of the source's files, digested
    std::string sourceBytes; ///< what they hold, digested
    std::string page;        ///< what a report shows of it, as JSON; empty without one
    std::string targetFiles; ///< names and sizes of the new deck's files, digested
};

/// Members that say nothing are left out.
Json jsonOutcome(const SDeckOutcome& outcome);
/// \throws nlohmann::json::exception
SDeckOutcome outcomeFrom(const Json& object);

/// Why a deck is skipped.
constexpr const char* skippedWhole = "is there already, whole";
constexpr const char* skippedCurrent = "is an HDF5 deck already";

/// The reason of a failure, from the word for its cause.
std::string reasonOf(const std::string& causeWord);

} // namespace NBrenmark
