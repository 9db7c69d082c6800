#include "support/tool_run.h"
#include "support/paths.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

namespace {

using Clock = std::chrono::steady_clock;

void require(bool condition, const char* what)
{
    if (!condition)
        throw std::runtime_error(what);
}

std::pair<int, int> makePipe()
{
    int ends[2];
    require(pipe2(ends, O_CLOEXEC) == 0, "no pipe");
    return {ends[0], ends[1]};
}

/// Both ends of a terminal: what is written to the second can be read from the first.
std::pair<int, int> makeTerminal()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    require(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0, "no terminal");
    const int slave = open(ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
    require(slave >= 0, "no terminal");
    winsize size{};
    size.ws_col = 100;
    size.ws_row = 24;
    ioctl(slave, TIOCSWINSZ, &size);
    return {master, slave};
}

/// Takes what a descriptor has at the moment. False at its end.
bool drain(int descriptor, std::string& text)
{
    char bytes[65536];
    for (;;) {
        const ssize_t count = read(descriptor, bytes, sizeof bytes);
        if (count > 0)
            text.append(bytes, static_cast<size_t>(count));
        else
            return count < 0 && (errno == EAGAIN || errno == EINTR); // a closed terminal gives EIO
    }
}

} // namespace

CToolRun::CToolRun(std::vector<std::string> arguments) : arguments(std::move(arguments)) {}

CToolRun::~CToolRun()
{
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    for (const int descriptor : {outputEnd, errorEnd})
        if (descriptor >= 0)
            close(descriptor);
}

CToolRun& CToolRun::environment(const std::string& name, const std::string& value)
{
    variables[name] = value;
    return *this;
}

CToolRun& CToolRun::errorOnTerminal()
{
    terminal = true;
    return *this;
}

CToolRun& CToolRun::outputTo(const std::string& path)
{
    outputPath = path;
    return *this;
}

CToolRun& CToolRun::outputToNoOne()
{
    nobodyReads = true;
    return *this;
}

void CToolRun::start()
{
    const std::string program = commandLineProgram();
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& value : arguments)
        argv.push_back(const_cast<char*>(value.c_str()));
    argv.push_back(nullptr);

    auto [outRead, outWrite] = makePipe();
    const auto [errRead, errWrite] = terminal ? makeTerminal() : makePipe();
    if (!outputPath.empty()) {
        close(outWrite);
        outWrite = open(outputPath.c_str(), O_WRONLY | O_CLOEXEC);
        require(outWrite >= 0, "can't open where the output goes");
    }
    process = fork();
    require(process >= 0, "no process");
    if (process == 0) {
        setenv("BRENMARK_NO_PLUGINS", "1", 0); // libraries and folders of whoever runs the tests are no part of them
        for (const auto& [name, value] : variables)
            setenv(name.c_str(), value.c_str(), 1);
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(outWrite, STDOUT_FILENO);
        dup2(errWrite, STDERR_FILENO);
        std::signal(SIGPIPE, SIG_DFL);
        std::signal(SIGINT, SIG_DFL);
        if (nobodyReads)
            close(outRead);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(outWrite);
    close(errWrite);
    outputEnd = outRead;
    errorEnd = errRead;
    if (nobodyReads) {
        close(outputEnd);
        outputEnd = -1;
    }
    for (const int descriptor : {outputEnd, errorEnd})
        if (descriptor >= 0)
            fcntl(descriptor, F_SETFL, O_NONBLOCK);
}

void CToolRun::collect()
{
    for (auto [descriptor, text] : {std::pair(&outputEnd, &result.output), std::pair(&errorEnd, &result.error)}) {
        if (*descriptor >= 0 && !drain(*descriptor, *text)) {
            close(*descriptor);
            *descriptor = -1;
        }
    }
}

bool CToolRun::waitForError(const std::string& text)
{
    for (const auto end = Clock::now() + std::chrono::seconds(30); Clock::now() < end;) {
        collect();
        if (result.error.find(text) != std::string::npos)
            return true;
        if (errorEnd < 0)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

void CToolRun::signal(int number) { kill(process, number); }

SToolResult CToolRun::finish()
{
    const auto end = Clock::now() + std::chrono::minutes(2);
    while (outputEnd >= 0 || errorEnd >= 0) {
        pollfd ends[2] = {{outputEnd, POLLIN, 0}, {errorEnd, POLLIN, 0}}; // a negative one is passed over
        poll(ends, 2, 1000);
        collect();
        require(Clock::now() < end, "the tool hangs");
    }
    int status = 0;
    require(waitpid(process, &status, 0) == process, "the process is lost");
    process = -1;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
}

SToolResult runTool(std::vector<std::string> arguments) { return CToolRun(std::move(arguments)).run(); }

std::string argument(const QString& path) { return path.toStdString(); }

} // namespace NBrenmark
