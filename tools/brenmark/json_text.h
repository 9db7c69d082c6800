#pragma once
// JSON on standard output, one value to its end.

#include "brenmark/ledger.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace NBrenmark {

class CFailure;

/// Keys in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Prints a value and a line feed. Text that is no UTF-8 gets replacement characters: a name in a
/// deck must not cost the report.
void printJson(const Json& value);

/// A failure as an object: code, cause, text, advice.
Json jsonFailure(const CFailure& failure);

/// The messages as objects: level, title, text, effect ("remark" for none), cause of a failure, place and count.
Json jsonMessages(const Ledger& messages);

} // namespace NBrenmark
