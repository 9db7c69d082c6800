#pragma once
// What a report shows of one conversion, as JSON: it comes from the process that converts the deck and is kept in the
// journal of a run, so that the page can be made later. No path of a folder is in it.

#include "brenmark/conversion_report.h"
#include "brenmark/json_text.h"

#include <QString>

namespace NBrenmark {

/// \param failure  what ended the conversion; null for none
Json deckFacts(const SConvertOptions& options, const QString& target, const SConversionResult& result,
               const CFailure* failure);

/// In one line.
std::string factsText(const Json& facts);

/// A text without the folder of a path wherever that is in it: no page names who keeps decks where.
std::string withoutFolderOf(std::string text, const std::string& path);

} // namespace NBrenmark
