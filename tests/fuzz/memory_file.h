#pragma once
// A file that has a name and lies in memory: the readers ask for a name, and a disk would be the slowest part of
// a fuzzer by far.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace NBrenmark {

class CMemoryFile
{
public:
    CMemoryFile() : file(memfd_create("fuzz", 0))
    {
        if (file < 0)
            std::abort();
    }
    CMemoryFile(const CMemoryFile&) = delete;
    CMemoryFile& operator=(const CMemoryFile&) = delete;
    ~CMemoryFile() { close(file); }

    /// Replaces what the file holds.
    void hold(const std::uint8_t* bytes, std::size_t size) const
    {
        if (ftruncate(file, 0) != 0 || pwrite(file, bytes, size, 0) != ssize_t(size))
            std::abort();
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string(file); }

private:
    int file;
};

} // namespace NBrenmark
