// Any bytes in place of an HDF5 file: its skeleton is walked in no more steps than it has bytes.

#include "fuzz/memory_file.h"
#include "io/hdf5/file_structure.h"

#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const CMemoryFile file;
    file.hold(bytes, size);
    try {
        checkStructure(file.path());
    }
    catch (const std::exception&) {
    }
    return 0;
}
