// Any bytes in place of a timestep of a legacy deck. The model that it belongs to is in front of it; as a timestep is
// read by its model, both may be damaged.

#include "fuzz/legacy_mutator.h"
#include "fuzz/legacy_stream.h"
#include "io/dem/dem_reader.h"

#include <cstdlib>
#include <exception>

using namespace NBrenmark;

/// All arrays of a type go by one number.
static void checkTypes(const CTimestepData& timestep)
{
    for (const auto& type : timestep.particleTypes.types)
        if (type->position.size() != type->ids.size() || type->customProperties.itemCount() != type->ids.size())
            std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedStream source(bytes, size);
    CFuzzedFrame fuzzed;
    try {
        CDemCreatorDataReader creatorReader(source.stream);
        fuzzed.frame.creator.read(creatorReader);
        beginMemoryCount(eMemoryOfTimestep);
        CDemTimestepDataReader reader(source.stream);
        fuzzed.frame.timestep.read(reader);
        checkTypes(fuzzed.frame.timestep);
    }
    catch (const std::exception&) {
    }
    return 0;
}
