// Any bytes in place of a numbered HDF5 file, read for its model.

#include "fuzz/hdf5_file.h"

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedFrame fuzzed;
    fuzzed.frame.creator.setStorageIndex(0);
    readHdf5(bytes, size, fuzzed.frame.creator);
    return 0;
}
