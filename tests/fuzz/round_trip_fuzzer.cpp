// Any bytes in place of the creator data of a legacy deck: what can be read is written in a form that reads and writes
// the same again. The model stays as it is stored: an upgrade drops what it finds nothing for, once it looks.

#include "fuzz/legacy_mutator.h"
#include "fuzz/legacy_stream.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

#include <cstdlib>
#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    CFuzzedStream source(bytes, size);
    source.stream.options.upgradeOldModels = false;
    CFuzzedFrame first;
    QByteArray text;
    try {
        CDemCreatorDataReader reader(source.stream);
        first.frame.creator.read(reader);
        text = written(first.frame.creator);
    }
    catch (const std::exception&) {
        return 0;
    }
    CFuzzedStream back(reinterpret_cast<const std::uint8_t*>(text.constData()), std::size_t(text.size()));
    back.stream.options.upgradeOldModels = false;
    CFuzzedFrame second;
    CDemCreatorDataReader reader(back.stream);
    second.frame.creator.read(reader); // throws, and is found, if it can't be read
    if (back.stream.position() != text.size() || written(second.frame.creator) != text)
        std::abort();
    return 0;
}
