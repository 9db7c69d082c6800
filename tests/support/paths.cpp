#include "support/paths.h"

namespace NBrenmark {

std::string projectFolder() { return BRENMARK_SOURCE_DIR; }

std::string sampleDeck(const std::string& name) { return projectFolder() + "/samples/" + name; }

std::string commandLineProgram() { return std::string(BRENMARK_BINARY_DIR) + "/bin/brenmark"; }

std::string failingCallsModule()
{
    return std::string(BRENMARK_BEFORE_FAILING_CALLS) + BRENMARK_BINARY_DIR + "/tests/libfailing_calls.so";
}

std::string testPlugin(const std::string& name)
{
    return std::string(BRENMARK_BINARY_DIR) + "/tests/plugins/" + name + ".so";
}

} // namespace NBrenmark
