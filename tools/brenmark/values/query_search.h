#pragma once
// Finds a query by its name.

#include "brenmark/deck_reader.h"
#include "brenmark/values/members.h"

#include "analysis/query.h"

#include <memory>
#include <optional>
#include <string>

namespace NBrenmark {

/// Of the selection that is asked about, or else of the deck's data exports. What a selection asks is about its own
/// members, and what a sensor asks about its region, whatever group it was saved with.
/// \throws CFailure  there is none of that name, or several
std::unique_ptr<CQuery> requiredQuery(CDeckReader& reader, const std::string& name,
                                      const std::optional<CSelectedRows>& selected);

} // namespace NBrenmark
