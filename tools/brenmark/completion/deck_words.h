#pragma once
// What a command line may name of a deck: the scripts of the shells ask for it while one is written.

#include "brenmark/exit_codes.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

/// "timesteps", "attributes", "types", "selections".
const std::vector<std::string>& deckWordKinds();
/// The kind of words that an option takes, by its long name; empty for none.
std::string deckWordKindOf(const std::string& option);
/// Prints all of a kind, one a line. \throws CFailure  no such kind, or the deck can't be read
EExitCode printDeckWords(const std::string& kind, const QString& deck);

} // namespace NBrenmark
