#pragma once
// The answers of a query of the deck's configuration.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"

#include <string>

namespace NBrenmark {

/// A table with commas: a head line, then a line for each number of an answer. A query over time answers once, at the
/// last timestep; a timestep without values for an answer has no line. In base units.
/// \param first, end  timesteps
/// \throws CFailure  there is no such query, it asks for what isn't calculated here, or the deck lacks what it needs
std::string queryText(CDeckReader& reader, const SValuesOptions& options, quint32 first, quint32 end);

} // namespace NBrenmark
