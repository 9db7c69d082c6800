// Any bytes in place of what frames legacy data: markers, blocks within blocks, texts, counts. Whatever is read, the
// stream ends within its bytes.

#include "fuzz/legacy_stream.h"
#include "io/dem/form.h"

#include <cstdlib>
#include <exception>

using namespace NBrenmark;

static void readBlocks(CInForm& f, int depth)
{
    for (quint32 tag = 1; tag <= 4; ++tag)
        f.block(tag, "block", [&] {
            QString text;
            f.text(text);
            std::vector<double> numbers;
            f.length("number", 8, numbers);
            for (double& number : numbers)
                f.f64(number);
            if (depth < 8 && f.stream.bytesLeft() > 0)
                readBlocks(f, depth + 1);
        });
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedStream source(bytes, size);
    CInForm f(source.stream);
    try {
        f.marker(timestepMarker);
        readBlocks(f, 0);
    }
    catch (const std::exception&) {
    }
    if (source.stream.position() > qint64(size) || source.stream.limit() != -1)
        std::abort();
    return 0;
}
