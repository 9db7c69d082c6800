// From what the kernel says is available, which counts caches that it can drop.
#include "platform/free_memory.h"

#include <fstream>
#include <limits>
#include <string>

#include <malloc.h>
#include <sys/mman.h>

namespace NBrenmark {

quint64 freeMemory()
{
    std::ifstream file("/proc/meminfo"); // lines such as "MemAvailable:   22071404 kB"
    std::string key;
    quint64 kilobytes = 0;
    while (file >> key >> kilobytes) {
        if (key == "MemAvailable:")
            return kilobytes * 1024;
        file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return 0;
}

bool isMemoryToBeHad(std::size_t bytes)
{
    void* room = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return room != MAP_FAILED && munmap(room, bytes) == 0;
}

void keepFreedMemory()
{
    constexpr int largest = 32 << 20; // bytes; what is larger goes back at once
    mallopt(M_MMAP_THRESHOLD, largest);
    mallopt(M_TRIM_THRESHOLD, 2 * largest);
}

} // namespace NBrenmark
