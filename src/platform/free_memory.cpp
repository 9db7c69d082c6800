// From what the kernel says is available, which counts caches that it can drop.
#include "platform/free_memory.h"

#include <fstream>
#include <limits>
#include <string>

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

} // namespace NBrenmark
