// Any JSON in place of the contact states of brenmark law: a result for each, or a failure of the command line.

#include "brenmark/failure.h"
#include "brenmark/law/states.h"

#include <cstdint>
#include <cstdlib>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const Json states = Json::parse(bytes, bytes + size, nullptr, false);
    if (states.is_discarded())
        return 0;
    try {
        if (resultsOf(states).size() != states.size())
            std::abort();
    }
    catch (const CFailure& failure) {
        if (failure.code != eExitUsage)
            std::abort();
    }
    return 0;
}
