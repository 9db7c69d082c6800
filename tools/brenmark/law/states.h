#pragma once
// Contact states as JSON in, results as JSON out: for scripts, regression tests and comparison with other codes.

#include "brenmark/json_text.h"

namespace NBrenmark {

/// One result for each state of an array, in order. \throws CFailure  what isn't of the form of a state
Json resultsOf(const Json& states);

} // namespace NBrenmark
