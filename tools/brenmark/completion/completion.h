#pragma once
// What a shell offers after the Tab key, made of the tables that --help is made of.

#include "brenmark/exit_codes.h"

#include <string>

namespace CLI {
class App;
}

namespace NBrenmark {

/// Prints the completion of a shell: bash, zsh or fish. \throws CFailure  another one
EExitCode printCompletion(const CLI::App& app, const std::string& shell);

} // namespace NBrenmark
