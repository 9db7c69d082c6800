// Any bytes in place of a group of arrays, raw or deflated. The first byte says how many rows are announced; a group
// that is read ends within its bytes.

#include "fuzz/legacy_stream.h"
#include "io/dem/array_group.h"

#include <cstdlib>
#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size < 2)
        return 0;
    CFuzzedStream source(bytes + 2, size - 2);
    const quint32 rows = quint32(1) << (bytes[0] % 32);
    try {
        CArrayGroupReader arrays(source.stream, (bytes[1] & 1) != 0, rows, bytes[1] & 2 ? 290 : 0);
        std::vector<quint32> ids;
        std::vector<double> numbers;
        arrays.rows("ids", ids);
        arrays.skip("others", rows, 24);
        arrays.elements("numbers", numbers, 3 * quint64(rows));
        arrays.finish();
        if (ids.size() != rows || numbers.size() != 3 * std::size_t(rows))
            std::abort();
    }
    catch (const std::exception&) {
    }
    if (source.stream.position() > qint64(size) - 2)
        std::abort();
    return 0;
}
