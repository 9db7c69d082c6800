// Any bytes in place of the creator data of a legacy deck.

#include "fuzz/legacy_mutator.h"
#include "fuzz/legacy_stream.h"
#include "io/dem/dem_reader.h"

#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedStream source(bytes, size);
    CFuzzedFrame fuzzed;
    CDemCreatorDataReader reader(source.stream);
    try {
        fuzzed.frame.creator.read(reader);
    }
    catch (const std::exception&) {
    }
    return 0;
}
