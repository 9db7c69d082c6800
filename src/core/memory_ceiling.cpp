#include "core/memory_ceiling.h"

#include "platform/free_memory.h"

#include <atomic>
#include <limits>

namespace NBrenmark {

static std::atomic<quint64> chosenCeiling{0};
static std::atomic<quint64> taken{0};

void setMemoryCeiling(quint64 bytes) { chosenCeiling = bytes; }

quint64 memoryCeiling()
{
    static const quint64 free = freeMemory();
    if (chosenCeiling > 0)
        return chosenCeiling;
    return free > 0 ? free / 2 : std::numeric_limits<quint64>::max();
}

void beginMemoryCount() { taken = 0; }

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
