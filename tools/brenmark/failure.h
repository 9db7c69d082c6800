#pragma once
// Failures as the command line reports them: what and where in the first line, what to do below it.

#include "brenmark/exit_codes.h"

#include "brenmark/ledger.h"

#include <QString>

#include <stdexcept>
#include <string>

namespace NBrenmark {

class CFailure : public std::runtime_error
{
public:
    /// \param text    where and what went wrong, no full stop
    /// \param advice  what to do, in full sentences
    /// \param cause   where it is narrower than that of the exit code
    CFailure(EExitCode code, const std::string& text, const std::string& advice, ECause cause = eCauseNone)
        : std::runtime_error(text), code(code), advice(advice), cause(cause)
    {}

    /// "usage", "source", "target", "output", "names", "unsupported", "memory", "nothing to do", "interrupted",
    /// "difference", "internal": a word for scripts.
    const char* causeWord() const;

    EExitCode code;
    std::string advice;
    ECause cause;
};

/// Reports a failure on standard error.
void printFailure(const CFailure& failure);

/// What helps against an error of the operating system while something is written; empty for one without an advice of
/// its own.
std::string adviceForWriting(int systemError);
/// The same for the error whose text is part of a message; for any other a general advice.
std::string adviceForWriting(const std::string& message);

/// What a failed read or conversion comes down to: the first error of the log, whose cause gives exit code and advice.
/// \param path      of the deck that was worked on
/// \param fallback  for a log without an error, and for an error without a cause
CFailure failureFromLog(const Ledger& messages, const std::string& path, const CFailure& fallback);

/// A text of several lines with all but the first indented, as they are below a first line.
std::string indented(std::string text);
/// A text without the full stop or line feed at its end.
std::string withoutEnd(std::string text);

/// Text for the terminal, in UTF-8.
std::string utf8(const QString& text);

} // namespace NBrenmark
