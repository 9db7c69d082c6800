#include "brenmark/child_process.h"

#include "brenmark/failure.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace NBrenmark {

static const char* const ownProgram = "/proc/self/exe"; // still this one when its file was replaced meanwhile

/// Between fork and exec nothing may take memory or a lock.
[[noreturn]] static void becomeChild(char* const* arguments, pid_t parent, int input, int output, int error,
                                     int niceness)
{
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (niceness > 0)
        setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) + niceness);
    const int none = ::open("/dev/null", O_RDWR);
    if (getppid() == parent && none >= 0 && dup2(input >= 0 ? input : none, STDIN_FILENO) >= 0 &&
        dup2(output >= 0 ? output : none, STDOUT_FILENO) >= 0 && dup2(error >= 0 ? error : none, STDERR_FILENO) >= 0)
        execv(ownProgram, arguments);
    _exit(127);
}

pid_t CChildProcesses::start(const std::vector<std::string>& arguments, int input, int output, int niceness)
{
    std::vector<std::string> words{"brenmark"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const int error = memfd_create("errors", MFD_CLOEXEC);
    const pid_t parent = getpid(), process = fork();
    if (process == 0)
        becomeChild(pointers.data(), parent, input, output, error, niceness);
    if (process < 0) {
        const int cause = errno;
        ::close(error);
        throw CFailure(eExitTarget, std::string("no process can be started: ") + std::strerror(cause),
                       "End other programs, or give a smaller -j to a run over many decks.");
    }
    setpgid(process, process); // here as well: whichever is first
    children.push_back({process, static_cast<int>(syscall(SYS_pidfd_open, process, 0)), error});
    return process;
}

static std::string endOfFile(int file)
{
    constexpr off_t most = 2000;
    const off_t size = file < 0 ? 0 : lseek(file, 0, SEEK_END);
    std::string text(static_cast<size_t>(std::max<off_t>(0, std::min(size, most))), '\0');
    const ssize_t got =
        text.empty() ? 0 : pread(file, text.data(), text.size(), size - static_cast<off_t>(text.size()));
    text.resize(static_cast<size_t>(std::max<ssize_t>(0, got)));
    return text;
}

std::vector<SChildEnd> CChildProcesses::wait(int milliseconds)
{
    std::vector<pollfd> watched;
    watched.reserve(children.size());
    bool isBlind = false;
    for (const SChild& child : children) {
        isBlind = isBlind || child.watch < 0;
        watched.push_back({child.watch, POLLIN, 0}); // a negative one is passed over
    }
    constexpr int blindWait = 5; // ms
    poll(watched.data(), watched.size(), isBlind ? std::min(milliseconds, blindWait) : milliseconds);

    std::vector<SChildEnd> ends;
    for (size_t i = 0; i < children.size();) {
        int status = 0;
        const SChild child = children[i];
        if (waitpid(child.process, &status, WNOHANG) != child.process) {
            ++i;
            continue;
        }
        SChildEnd end;
        end.process = child.process;
        end.code = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
        end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        end.error = endOfFile(child.error);
        if (child.watch >= 0)
            ::close(child.watch);
        if (child.error >= 0)
            ::close(child.error);
        children.erase(children.begin() + static_cast<std::ptrdiff_t>(i));
        ends.push_back(std::move(end));
    }
    return ends;
}

void CChildProcesses::signal(int number) const
{
    for (const SChild& child : children)
        kill(child.process, number);
}

CChildProcesses::~CChildProcesses()
{
    signal(SIGKILL);
    while (!children.empty())
        wait(1000);
}

} // namespace NBrenmark
