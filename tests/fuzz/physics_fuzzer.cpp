// Any bytes in place of the physics of a legacy model: the chains of laws and their parameters. What can be read is
// written in a form that reads and writes the same again.

#include "fuzz/legacy_stream.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

#include <cstdlib>
#include <exception>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size < 4)
        return 0;
    // The versions that decks of this line have, chosen by the first byte.
    static const quint32 versions[] = {makeVersion(20, 0, 16), makeVersion(22, 0, 0), makeVersion(24, 0, 30),
                                       makeVersion(25, 0, 3),  makeVersion(27, 0, 3), currentFileVersion()};
    CFuzzedStream source(bytes + 1, size - 1);
    source.stream.setFileVersion(versions[bytes[0] % 6]);
    CFuzzedFrame first;
    QByteArray text;
    try {
        CDemCreatorDataReader reader(source.stream);
        first.frame.creator.physicsModels.read(reader);
        text = written(first.frame.creator.physicsModels);
    }
    catch (const std::exception&) {
        return 0;
    }
    CFuzzedStream back(reinterpret_cast<const std::uint8_t*>(text.constData()), std::size_t(text.size()));
    CFuzzedFrame second;
    CDemCreatorDataReader reader(back.stream);
    second.frame.creator.physicsModels.read(reader);
    if (written(second.frame.creator.physicsModels) != text)
        std::abort();
    return 0;
}
