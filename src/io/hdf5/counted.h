#pragma once
// The refusal of lists that can't be carried yet, in words.

#include "core/not_carried.h"

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// \throws not_carried_error  "12 geometry groups", unless the count is 0
/// \param one, many  what is counted: "geometry group", "geometry groups"
inline void refuseAny(quint64 count, const std::string& one, const std::string& many)
{
    if (count > 0)
        throw not_carried_error(std::to_string(count) + " " + (count == 1 ? one : many));
}

} // namespace NBrenmark
