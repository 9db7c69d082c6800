#pragma once
// The command line: what is asked for, and what can't be understood in this program's own words.

#include "brenmark/exit_codes.h"

#include <string>
#include <vector>

namespace NBrenmark {

/// Parses the arguments, the first of which names the program, and runs the command.
/// \throws CFailure, COutputFailure
EExitCode runCommandLine(int argumentCount, char** arguments);

/// Whether a result as JSON is asked for, whatever else the arguments are.
bool isJsonAsked(int argumentCount, char** arguments);

/// The nearest of some words, if it is near enough to have been meant; else empty.
std::string nearestOf(const std::string& word, const std::vector<std::string>& words);

} // namespace NBrenmark
