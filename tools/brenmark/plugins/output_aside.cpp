#include "brenmark/plugins/output_aside.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace NBrenmark {

COutputAside::COutputAside()
{
    std::fflush(stdout);
    output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (output >= 0)
        dup2(STDERR_FILENO, STDOUT_FILENO);
}

COutputAside::~COutputAside()
{
    if (output < 0)
        return;
    std::fflush(stdout); // what a library has printed and not yet written
    dup2(output, STDOUT_FILENO);
    close(output);
}

} // namespace NBrenmark
