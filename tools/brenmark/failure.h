#pragma once
// Failures as the command line tells them: what and where in the first line, what to do below it.

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
    CFailure(EExitCode code, const std::string& text, const std::string& advice)
        : std::runtime_error(text), code(code), advice(advice)
    {}

    EExitCode code;
    std::string advice;
};

/// Tells a failure on standard error.
void printFailure(const CFailure& failure);

/// What a failed read or conversion comes down to: the first error of the log, whose cause gives exit code and advice.
/// \param path      of the deck that was worked on
/// \param fallback  for a log without an error, and for an error without a cause
CFailure failureFromLog(const Ledger& messages, const std::string& path, const CFailure& fallback);

/// A text of several lines with all but the first indented, as they stand below a first line, and without control
/// characters: names out of a deck must not steer the terminal.
std::string indented(std::string text);
/// A text without the full stop or line feed at its end.
std::string withoutEnd(std::string text);

/// Text for the terminal, in UTF-8.
std::string utf8(const QString& text);

} // namespace NBrenmark
