#include "brenmark/terminal.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

namespace NBrenmark {

bool errorIsTerminal()
{
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) && !(terminal && std::strcmp(terminal, "dumb") == 0);
}

bool errorHasColour()
{
    const char* const noColour = std::getenv("NO_COLOR"); // counts if it isn't empty: no-color.org
    return errorIsTerminal() && !(noColour && *noColour);
}

int errorColumns()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void printError(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

bool COutputFailure::readerGone() const { return error == EPIPE; }

std::string COutputFailure::text() const { return std::string("standard output: ") + std::strerror(error); }

void printResult(const std::string& text)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        throw COutputFailure(errno);
}

void flushResult()
{
    errno = 0;
    if (std::fflush(stdout) != 0)
        throw COutputFailure(errno);
}

} // namespace NBrenmark
