#pragma once
// What the reader of a converted deck had to say of it. A conversion writes nothing that its reader has to repair, skip
// or leave unread: each such message is a difference, even where what is read equals the source.

#include "brenmark/ledger.h"
#include "brenmark/text_diff.h"

#include <vector>

namespace NBrenmark {

/// Joins the messages of damage and repair to the differences: a fault that shows in the model too stays one.
/// \param differences  of the model, after which come those that only messages show
/// \param messages     of the converted deck
/// \param known          what isn't reported again
/// \param reportedTimesteps  of which nothing more is reported
void joinReadingFaults(std::vector<SDifference>& differences, const Ledger& messages, const Ledger& ofSource,
                       const SConsequences& known, const std::set<quint32>& reportedTimesteps);

/// Whether a message is such a difference.
bool isReadingFault(const SLogRecord& message);

} // namespace NBrenmark
