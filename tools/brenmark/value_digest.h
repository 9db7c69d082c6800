#pragma once
// The value digest of a deck: XXH3-128 over its canonical text, the same for a source and its conversion, on any machine
// and with any number of threads. It covers the settings, the companion, and the model and values of each timestep as
// they are read; not what belongs to the storing, what one family alone holds, and the configuration, whose real numbers
// have six digits in the one family and all of them in the other. What a reader repairs has the values of the repaired
// deck: so its faults go with the digest, and one that the source hadn't is a difference.

#include "brenmark/deck_digest.h"
#include "brenmark/json_text.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

struct SValueDigest
{
    std::string whole; ///< 32 hexadecimal digits; empty if a timestep can't be read
    std::string beside;
    struct STimestep
    {
        std::string model; ///< in force there
        std::string values;
    };
    std::vector<STimestep> timesteps;
    Ledger faults; ///< of the reading
};

SValueDigest valueDigestOf(const SDeckDigest& deck);

/// Name of the companion that holds the digest of a deck, NAME.digest.json.
QString digestFileOf(const QString& deck);
/// Puts the companion in the place of an earlier one. \throws CFailure
void writeDigestFile(const QString& path, const SValueDigest& digest);
/// \throws CFailure  it can't be read, or isn't such a file
SValueDigest readDigestFile(const QString& path);

/// Where two digests differ, a line each: "timestep/3", "creator@3"; empty for none.
std::vector<std::string> digestDifferences(const SValueDigest& wanted, const SValueDigest& found);
/// What had to be repaired or couldn't be read of a deck, and not of the one of the wanted digest; a line each.
std::vector<std::string> newFaults(const SValueDigest& wanted, const SValueDigest& found);

} // namespace NBrenmark
