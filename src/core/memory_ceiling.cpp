// Counts what one read takes against a limit that follows from the file's size, unless the user has set one.
#include "core/memory_ceiling.h"

#include "platform/free_memory.h"

#include <algorithm>
#include <atomic>
#include <limits>

namespace NBrenmark {

static std::atomic<quint64> chosenCeiling{0};
static std::atomic<quint64> taken{0};
static std::atomic<quint64> bytesOfFile{0};

// Positions are in every timestep, and hardly to be deflated: a row takes 15 times what is stored of it in the worst
// of lawful decks. What takes four times as much again is zeros that somebody made.
static constexpr quint64 mostGrowth = 64;
static constexpr quint64 alwaysAllowed = quint64(192) << 20;

void setMemoryCeiling(quint64 bytes) { chosenCeiling = bytes; }

quint64 memoryCeiling()
{
    static const quint64 free = freeMemory();
    if (chosenCeiling > 0)
        return chosenCeiling;
    const quint64 half = free > 0 ? free / 2 : std::numeric_limits<quint64>::max();
    return bytesOfFile > 0 ? std::min(half, alwaysAllowed + mostGrowth * bytesOfFile) : half;
}

void beginMemoryCount(quint64 fileBytes)
{
    taken = 0;
    bytesOfFile = fileBytes;
}

void admitMemory(quint64 bytes, const char* what)
{
    const quint64 before = taken;
    const quint64 most = memoryCeiling();
    if (bytes > most || before > most - bytes)
        throw memory_ceiling_error(std::string(what) + " need " + std::to_string(bytes) + " bytes of memory beside " +
                                   std::to_string(before) + ", and one timestep or model may take " +
                                   std::to_string(most));
    taken += bytes;
}

} // namespace NBrenmark
