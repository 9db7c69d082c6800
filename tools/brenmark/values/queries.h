#pragma once
// The answers of a query that is stored with a deck.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"

#include <string>

namespace NBrenmark {

/// A table with commas: a head line, then a line for each number of an answer. A query over time answers once, at the
/// last timestep; a timestep without values for an answer has no line. A query of a data export has a name; one of a
/// selection is named by its class and attribute, "Average Velocity Magnitude". Both may have their section in front:
/// "Averages/Average Velocity Magnitude".
/// \param first, end  timesteps
/// \throws CFailure  there is no such query, it asks for what isn't calculated here, or the deck lacks what it needs
std::string queryText(CDeckReader& reader, const SValuesOptions& options, quint32 first, quint32 end);

} // namespace NBrenmark
