#pragma once
// The options of a conversion that a run over many decks hands on to each.

#include <string>
#include <vector>

namespace NBrenmark {

struct SDeckOptions
{
    bool force = false;
    bool resume = false; ///< goes on where an unfinished conversion was broken off
    bool strict = false; ///< makes no deck if anything was lost through damage
    bool verify = false;
    bool ignoreCompanions = false; ///< goes on without companions that can't be read
    bool noPlugins = false;        ///< leaves the libraries of the user's folders alone
    bool digest = false;           ///< writes the digest of the values beside the new deck
};

/// Those that are given, as they are written.
std::vector<std::string> wordsOf(const SDeckOptions& options);

} // namespace NBrenmark
