// Any bytes in place of a numbered HDF5 file, read for its timestep.

#include "fuzz/hdf5_file.h"

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedFrame fuzzed;
    readHdf5(bytes, size, fuzzed.frame.timestep);
    return 0;
}
