// Any bytes in place of a message of an object header; the first byte says which.

#include "io/hdf5/stored_messages.h"

#include <cstddef>
#include <cstdint>
#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size == 0)
        return 0;
    CFileBytes message(QByteArray(reinterpret_cast<const char*>(bytes) + 1, int(size) - 1), 0);
    try {
        switch (bytes[0] % 7) {
        case 0: takeType(message); break;
        case 1: takeExtent(message); break;
        case 2: takeLayout(message); break;
        case 3: checkFillValue(message, true); break;
        case 4: checkFillValue(message, false); break;
        case 5: checkFilters(message); break;
        default: checkAttribute(message);
        }
    }
    catch (const std::exception&) {
    }
    return 0;
}
