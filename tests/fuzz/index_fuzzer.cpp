// Any bytes in place of an index, of any version: the first four bytes. What is read is written as the same.

#include "fuzz/legacy_stream.h"
#include "io/dem/dem_index.h"

#include <cstdlib>
#include <cstring>

using namespace NBrenmark;

static bool isSame(const STimestepIndexEntry& a, const STimestepIndexEntry& b)
{
    return std::memcmp(&a.time, &b.time, sizeof a.time) == 0 && a.segment == b.segment && a.offset == b.offset &&
           a.isFull == b.isFull;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size < 8)
        return 0;
    QByteArray data(reinterpret_cast<const char*>(bytes) + 4, int(size) - 4);
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    const auto word = [&](int at) {
        return quint32(bytes[at]) << 24 | quint32(bytes[at + 1]) << 16 | quint32(bytes[at + 2]) << 8 | bytes[at + 3];
    };
    TimestepIndex index;
    if (!NDemIndex::read(buffer, word(0), word(4), index))
        return 0;
    index.erase(std::remove_if(index.begin(), index.end(),
                               [](const STimestepIndexEntry& e) { return e.segment == 0 && e.offset == 0; }),
                index.end()); // which stand for nothing, and aren't written
    QBuffer target;
    target.open(QIODevice::ReadWrite);
    TimestepIndex again;
    if (!NDemIndex::write(target, index) || !target.seek(0) ||
        !NDemIndex::read(target, currentFileVersion(), quint32(index.size()), again) ||
        !std::equal(index.begin(), index.end(), again.begin(), again.end(), isSame))
        std::abort();
    return 0;
}
