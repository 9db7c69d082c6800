#pragma once
// Whose fault a failure is. What throws knows it, and what reports it to the user must: the exit code of the command
// line comes from here, never from the words of a text.

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace NBrenmark {

enum ECause
{
    eCauseNone,        ///< nothing failed
    eCauseSource,      ///< what is read is missing, damaged or can't be opened
    eCauseTarget,      ///< what is written can't be
    eCauseNames,       ///< a name or text that the target's format can't hold
    eCauseUnsupported, ///< sound, and of a later version than this program knows, or of another kind
    eCauseMemory,      ///< too little memory
    eCauseInternal     ///< a fault of this program
};

/// A failure that knows its cause. Everything else takes that of the operation that it ends.
class caused_error : public std::runtime_error
{
public:
    caused_error(ECause cause, const std::string& what) : std::runtime_error(what), cause(cause) {}

    const ECause cause;
};

/// The device itself can't be read, whatever is stored on it: nothing may be skipped for its sake.
class device_error : public caused_error
{
public:
    explicit device_error(const std::string& what) : caused_error(eCauseSource, what) {}
};

/// \param otherwise  of an exception that doesn't know
inline ECause causeOf(const std::exception& error, ECause otherwise)
{
    if (const auto* caused = dynamic_cast<const caused_error*>(&error))
        return caused->cause;
    return dynamic_cast<const std::bad_alloc*>(&error) ? eCauseMemory : otherwise;
}

/// Whether an exception means that what is being read is damaged there: recovery from damage leaves all others alone.
inline bool meansDamage(const std::exception& error)
{
    return causeOf(error, eCauseSource) == eCauseSource && dynamic_cast<const device_error*>(&error) == nullptr;
}

/// What an exception says, for users: the standard library's own name of too little memory isn't a text.
inline const char* textOf(const std::exception& error)
{
    return dynamic_cast<const std::bad_alloc*>(&error) ? "too little memory" : error.what();
}

} // namespace NBrenmark
