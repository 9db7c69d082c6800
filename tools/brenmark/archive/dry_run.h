#pragma once
// What a run would come to: every deck is opened, by a process of its own, and nothing is written to DIR.

#include "brenmark/archive/archive.h"
#include "brenmark/archive/deck_search.h"

namespace NBrenmark {

/// \param decks  the biggest first
EExitCode runDry(const SArchiveOptions& options, std::vector<SArchiveDeck> decks);

} // namespace NBrenmark
