#pragma once
// Decks shared out among N runs: each comes to the same shares by itself, for all of them find the same decks.

#include "brenmark/archive/deck_search.h"

#include <vector>

namespace NBrenmark {

/// Puts the biggest decks first; of equals the path decides.
void sortBySize(std::vector<SArchiveDeck>& decks);

/// The share of each deck, from 1 on: the biggest deck that is left goes to the share that has least.
/// \param decks  the biggest first
std::vector<quint32> shareOut(const std::vector<SArchiveDeck>& decks, quint32 shares);

} // namespace NBrenmark
