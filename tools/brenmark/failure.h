#pragma once
// Failures as the command line tells them: what and where in the first line, what to do below it.

#include "brenmark/exit_codes.h"

#include "core/log.h"

#include <QString>

#include <stdexcept>
#include <string>
#include <vector>

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

/// What a failed read or conversion comes down to. The log knows the cause: the title of its first
/// error says whose fault it was, its text says what and where.
/// \param path      of the deck that was worked on
/// \param fallback  for a log without an error
CFailure failureFromLog(const std::vector<SLogMessage>& messages, const std::string& path, const CFailure& fallback);

/// Tells on standard error what was dropped or mended: the same words once, with their number.
void printWarnings(const std::vector<SLogMessage>& messages);

/// Text for the terminal, in UTF-8.
std::string utf8(const QString& text);

} // namespace NBrenmark
