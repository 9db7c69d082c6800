#pragma once
// Where the project's own data lies, for tests that read it.

#include <string>

namespace NBrenmark {

/// The project's root folder, without a slash at the end.
std::string projectFolder();

/// Path of a deck of samples/, for example sampleDeck("pile-27.dem"). Tests copy it before they write beside it.
std::string sampleDeck(const std::string& name);

/// Path of the command line of this build, for tests that run it as a user does.
std::string commandLineProgram();

/// What is to be preloaded to make calls fail: the module built from support/failing_calls.c, after the runtime of a
/// sanitizer if there is one, with a colon between them.
std::string failingCallsModule();

/// Path of a plug-in that was built from support/plugin, for example testPlugin("model_250").
std::string testPlugin(const std::string& name);

} // namespace NBrenmark
