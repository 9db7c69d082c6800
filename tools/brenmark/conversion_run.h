#pragma once
// One conversion into its own folder: what has been finished is synced and noted in the journal, about once a second,
// so that whatever ends the process, a later one can go on from there.

#include "brenmark/deck_digest.h"
#include "brenmark/partial_folder.h"

#include <optional>
#include <string>
#include <vector>

namespace NBrenmark {

class CProgressDisplay;

struct SConversionRun
{
    bool succeeded = false;
    bool interrupted = false;
    bool targetOpened = false; ///< a timestep was begun
    double seconds = 0.0;
    std::string error;
    Ledger messages;                   ///< of all runs that took part
    std::optional<SDeckDigest> source; ///< as it was read, if that was asked for and nothing came between
    DigestParts converted;             ///< timesteps of the new deck that agree with it
};

/// Converts the journal's source into the folder's deck, from the first timestep that isn't finished on.
/// \param journal   begun; says afterwards how far the deck is
/// \param sizes     bytes of each timestep of the source
/// \param verbose      a line for each timestep
/// \param bindPlugins  the libraries of the user's folders
/// \param digest       whether the source's digest is wanted
/// \param compared     whether the new deck is compared with it afterwards
SConversionRun runConversion(const CPartialFolder& folder, SJournal& journal, const std::vector<double>& sizes,
                             CProgressDisplay& progress, bool verbose, bool bindPlugins, bool digest, bool compared);

} // namespace NBrenmark
