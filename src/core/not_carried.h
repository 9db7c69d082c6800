#pragma once
// The refusal of what this build can't carry whole.

#include "core/cause.h"

#include <string>

namespace NBrenmark {

/// A deck holds something whose stored form isn't known here. It is refused rather than carried
/// in part: recovery from damage doesn't catch this, it always ends the read or write.
class not_carried_error : public caused_error
{
public:
    /// \param what  in the plural, such as "12 geometry groups"
    explicit not_carried_error(const std::string& what)
        : caused_error(eCauseUnsupported, "This deck holds " + what + ", which this version can't carry over yet.")
    {}
};

/// Refuses a stored class by its name: the body of a slot whose forms aren't written yet.
[[noreturn]] inline void refuseNotCarried(const char* className)
{
    throw not_carried_error(std::string("objects of class ") + className);
}

} // namespace NBrenmark
