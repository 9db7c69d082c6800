#pragma once
// A full disk for one process.

#include <csignal>
#include <sys/resource.h>

namespace NBrenmark {

/// Makes every file end at so many bytes while it lives.
class CFullDisk
{
public:
    explicit CFullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &limitBefore);
        handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, limitBefore.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~CFullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &limitBefore);
        std::signal(SIGXFSZ, handlerBefore);
    }

private:
    rlimit limitBefore{};
    void (*handlerBefore)(int) = nullptr;
};

} // namespace NBrenmark
