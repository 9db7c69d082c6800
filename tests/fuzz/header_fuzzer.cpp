// Any bytes in place of a deck's header. One that is accepted is written in a form that reads the same again.

#include "fuzz/legacy_stream.h"
#include "io/dem/dem_header.h"

#include <cstdlib>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    QByteArray data(reinterpret_cast<const char*>(bytes), int(size));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    SDemHeader header;
    if (!header.read(buffer) || header.firstVersion < makeVersion(2, 4, 58))
        return 0; // older headers are shorter than what is written
    QBuffer target;
    target.open(QIODevice::ReadWrite);
    SDemHeader again;
    if (!header.write(target) || !again.read(target) || again.firstVersion != header.firstVersion ||
        again.lastVersion != header.lastVersion || again.timesteps != header.timesteps ||
        again.edition != header.edition)
        std::abort();
    return 0;
}
