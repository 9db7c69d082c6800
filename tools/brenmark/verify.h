#pragma once
// The comparison of two decks by their texts: the proof that a conversion lost nothing.

#include "brenmark/exit_codes.h"
#include "brenmark/json_text.h"
#include "brenmark/meant_changes.h"

#include "core/log.h"

#include <QString>
#include <string>
#include <vector>

namespace NBrenmark {

class CProgressDisplay;

/// One line that the two texts don't share. An empty side stands for a line that isn't there.
struct SDifference
{
    std::string path;
    std::string source;
    std::string converted;
};

struct SVerification
{
    std::vector<SDifference> differences; ///< in the order of the text, up to the limit
    bool more = false;                    ///< there are others behind them
    std::vector<SModelChange> meant;      ///< what the upgrades of a legacy source changed in its models
    quint32 timesteps = 0;                ///< of the source
    double seconds = 0.0;
    std::string lost; ///< of the source through damage, as it was read; empty for nothing
    Ledger messages;  ///< of reading both

    bool equal() const { return differences.empty(); }
    /// A loss of the source is missing on both sides, and no difference: it counts all the same.
    EExitCode exitCode() const { return !equal() ? eExitDifferent : lost.empty() ? eExitDone : eExitSource; }
};

constexpr unsigned int defaultDifferenceLimit = 100;

/// Reads both decks, each through its own family.
/// \param limit  differences that are named; 0 for all
/// \throws CFailure  one of them can't be read
SVerification verify(const QString& source, const QString& converted, unsigned int limit, CProgressDisplay& progress);

/// Tells the result on standard output.
void printVerification(const SVerification& verification, const QString& source, const QString& converted);
Json jsonVerification(const SVerification& verification);

} // namespace NBrenmark
