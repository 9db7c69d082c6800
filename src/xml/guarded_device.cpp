// Counts what the parser takes for one token.
#include "xml/guarded_device.h"

#include <algorithm>

namespace NBrenmark {

static constexpr qint64 mostTokenBytes = qint64(16) << 20;
static constexpr qint64 mostTokenQuotes = 8192; // two an attribute

qint64 CGuardedDevice::readData(char* data, qint64 most)
{
    const qint64 count = source.read(data, most);
    if (count < 0) {
        broken = true;
        return -1;
    }
    tokenBytes += count;
    tokenQuotes += std::count_if(data, data + count, [](char c) { return c == '"' || c == '\''; });
    refused = refused || tokenBytes > mostTokenBytes || tokenQuotes > mostTokenQuotes;
    return refused ? -1 : count;
}

} // namespace NBrenmark
