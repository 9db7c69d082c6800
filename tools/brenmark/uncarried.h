#pragma once
// What a legacy deck may hold and the current family has no place for: a fixed list of places in the text of a deck.

#include "brenmark/text_diff.h"

namespace NBrenmark {

/// Whether a difference between a legacy deck and one of the current family is of that kind.
bool hasNoPlace(const SDifference& difference);

/// Whether a legacy deck alone has what is at a path below the root of a model or timestep.
bool isOfLegacyAlone(const std::string& path);

} // namespace NBrenmark
