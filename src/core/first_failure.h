#pragma once
// Which message of a ledger says what ended the work.

#include "core/log.h"

#include <algorithm>
#include <vector>

namespace NBrenmark {

/// The first error whose cause is known, else the first error, else null: a plug-in that can't be bound is an error
/// that ends nothing, and has no cause.
inline const SLogRecord* firstFailure(const std::vector<SLogRecord>& messages)
{
    const auto isFailure = [](const SLogRecord& message) {
        return message.level == eError && message.cause != eCauseNone;
    };
    const auto isError = [](const SLogRecord& message) { return message.level == eError; };
    auto found = std::find_if(messages.begin(), messages.end(), isFailure);
    if (found == messages.end())
        found = std::find_if(messages.begin(), messages.end(), isError);
    return found == messages.end() ? nullptr : &*found;
}

} // namespace NBrenmark
