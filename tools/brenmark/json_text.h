#pragma once
// JSON on standard output, one value to its end.

#include "core/log.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace NBrenmark {

/// Keys in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Prints a value and a line feed. Text that is no UTF-8 gets replacement characters: a name in a
/// deck must not cost the report.
void printJson(const Json& value);

/// The messages as objects with level, title and text.
Json jsonMessages(const std::vector<SLogMessage>& messages);

} // namespace NBrenmark
