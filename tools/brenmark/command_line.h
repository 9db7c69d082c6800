#pragma once
// The command line: what is asked for, and what can't be understood in this program's own words.

#include "brenmark/exit_codes.h"

namespace NBrenmark {

/// Parses the arguments, the first of which names the program, and runs the command.
/// \throws CFailure, COutputFailure
EExitCode runCommandLine(int argumentCount, char** arguments);

/// Whether a result as JSON is asked for, whatever else the arguments are.
bool isJsonAsked(int argumentCount, char** arguments);

} // namespace NBrenmark
