#pragma once
// The report of a conversion, or of a run over many decks, as a page.

#include "brenmark/archive/archive_table.h"
#include "brenmark/archive/run_journal.h"
#include "brenmark/json_text.h"

#include <string>

namespace NBrenmark {

/// \param facts  as deckFacts() gives them
/// \throws CFailure  the file can't be written
void writeDeckPage(const std::string& path, const Json& facts);
void writeRunPage(const std::string& path, const CArchiveTable& table, const SRunState& state);

} // namespace NBrenmark
