#pragma once
// The refusal of what this build can't carry whole.

#include <stdexcept>
#include <string>

namespace NBrenmark {

/// A deck holds an object whose stored form isn't known here. It is refused rather than carried
/// in part: recovery from damage doesn't catch this, it always ends the read or write.
class not_carried_error : public std::runtime_error
{
public:
    explicit not_carried_error(const std::string& what)
        : std::runtime_error("This deck holds " + what + ", which this version can't carry over yet.")
    {}
};

} // namespace NBrenmark
