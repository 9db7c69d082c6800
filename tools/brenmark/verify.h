#pragma once
// The comparison of two decks by their texts: the proof that a conversion lost nothing.

#include "brenmark/exit_codes.h"
#include "brenmark/json_text.h"
#include "brenmark/ledger.h"
#include "brenmark/text_diff.h"
#include "brenmark/tolerance.h"
#include "brenmark/value_digest.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

class CProgressDisplay;
struct SDeckDigest;

enum EVerdict
{
    eHoldsAll,
    eHoldsWhatCouldBeRead, ///< the source was damaged: what was lost of it is missing on both sides
    eDiffers
};

struct SVerification
{
    std::vector<SDifference> differences;
    bool more = false;               ///< there are others, beyond the limit
    std::vector<SModelChange> meant; ///< what the upgrades of a legacy source changed in its models, each change once
    std::vector<std::string> lost;   ///< of the source, through damage
    std::vector<std::string> notCarried; ///< of the source: the converted deck's family has no place for it
    quint32 timesteps = 0;               ///< of the source
    double seconds = 0.0;
    SValueDigest sourceDigest, convertedDigest;
    std::vector<STimestepFigures> sourceFigures, convertedFigures;
    Ledger messages; ///< of reading both, without those that are differences

    bool equal() const { return differences.empty(); }
    EVerdict verdict() const
    {
        return !differences.empty() ? eDiffers : lost.empty() ? eHoldsAll : eHoldsWhatCouldBeRead;
    }
    EExitCode exitCode() const;
};

/// "equal", "partial", "different".
const char* verdictName(EVerdict verdict);

constexpr unsigned int defaultDifferenceLimit = 100;

/// What counts as a difference.
struct SComparison
{
    STolerances tolerances;
    bool isConversion = true; ///< else only what the decks hold counts: not how it is stored, nor what upgrades change
};

/// Reads both decks, each through its own family.
/// \param limit  differences that are named; 0 for all
/// \throws CFailure  one of them can't be opened, or the source can't be read
SVerification verify(const QString& source, const QString& converted, unsigned int limit, CProgressDisplay& progress,
                     const SComparison& comparison = SComparison());

/// The same after a conversion.
/// \param first  the digest of the source, taken while it was read to be converted
/// \param read   digests of the converted deck's timesteps that were read back while others were converted
SVerification verify(const SDeckDigest& first, const DigestParts& read, const QString& source, const QString& converted,
                     CProgressDisplay& progress);

/// Prints the result on standard output.
void printVerification(const SVerification& verification, const QString& source, const QString& converted);
Json jsonVerification(const SVerification& verification);

} // namespace NBrenmark
