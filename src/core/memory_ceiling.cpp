// Counts what a deck takes against a limit that follows from its size, unless the user has set one.
#include "core/memory_ceiling.h"

#include "platform/free_memory.h"

#include <algorithm>
#include <array>
#include <limits>
#include <mutex>

namespace NBrenmark {

// A process needs room beside what is counted: for itself, for HDF5, and for a part of an array on its way. Together
// with that a deck without worth, of up to 5 MiB, stays below 256 MiB and four times its size.
static constexpr quint64 alwaysAllowed = quint64(128) << 20;
// A bed at rest that was saved once takes 15 times what is stored of it: of its arrays positions alone hardly deflate.
static constexpr quint64 growthOfDeck = 16;

static std::mutex memoryLock;
static quint64 chosenCeiling = 0;
static std::array<quint64, 2> taken{};       // by the newest read of a kind
static std::array<quint64, 2> takenBefore{}; // by the one before it, which may be in memory still
static EMemoryOf kindAtWork = eMemoryOfTimestep;
static quint64 bytesOfDeck = 0;
static quint64 mostOfDeck = 0;
static quint64 leastCeiling = 0;

static quint64 memoryTaken() { return taken[0] + taken[1] + takenBefore[0] + takenBefore[1]; }

void setMemoryCeiling(quint64 bytes)
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    chosenCeiling = bytes;
}

bool isMemoryCeilingSet()
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    return chosenCeiling > 0;
}

void setLeastMemoryCeiling(quint64 bytes)
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    leastCeiling = bytes;
}

quint64 mostMemoryTaken()
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    return mostOfDeck;
}

static quint64 memoryCeiling()
{
    static const quint64 free = freeMemory();
    if (chosenCeiling > 0)
        return chosenCeiling;
    const quint64 half = free > 0 ? free / 2 : std::numeric_limits<quint64>::max();
    if (bytesOfDeck == 0) // no deck is open: what is read has no size to be held against
        return half;
    return std::min(half, std::max(leastCeiling, alwaysAllowed + growthOfDeck * bytesOfDeck));
}

void beginDeckMemory(quint64 bytes)
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    bytesOfDeck = bytes;
    mostOfDeck = 0;
    taken = {};
    takenBefore = {};
}

void beginMemoryCount(EMemoryOf kind)
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    kindAtWork = kind;
    takenBefore[kind] = taken[kind];
    taken[kind] = 0;
}

void admitMemory(quint64 bytes, const char* what)
{
    const std::lock_guard<std::mutex> lock(memoryLock);
    const quint64 sofar = memoryTaken();
    const quint64 most = memoryCeiling();
    if (bytes > most || sofar > most - bytes)
        throw memory_ceiling_error(std::string(what) + " need " + std::to_string(bytes) + " bytes of memory beside " +
                                   std::to_string(sofar) + ", and a deck of this size may take " +
                                   std::to_string(most));
    taken[kindAtWork] += bytes;
    mostOfDeck = std::max(mostOfDeck, memoryTaken());
}

} // namespace NBrenmark
