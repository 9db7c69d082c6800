#pragma once
// Other processes of this program. One deck is open in a process, and whatever ends one costs its deck alone.

#include <string>
#include <sys/types.h>
#include <vector>

namespace NBrenmark {

/// How a process ended.
struct SChildEnd
{
    pid_t process = -1;
    int code = 0;      ///< exit status; 0 if a signal ended it
    int signal = 0;    ///< that ended it; 0 for none
    std::string error; ///< the end of what it printed on standard error
};

class CChildProcesses
{
public:
    CChildProcesses() = default;
    /// Ends those that are still there.
    ~CChildProcesses();
    CChildProcesses(const CChildProcesses&) = delete;
    CChildProcesses& operator=(const CChildProcesses&) = delete;

    /// Runs this program in a group of its own, where no Ctrl-C reaches it. It ends with this process, however that ends.
    /// \throws CFailure  the machine has no process to give
    /// \param input, output  its standard input and output; -1 for none. Not owned
    /// \param niceness       how far it steps back where cores are scarce, as for nice(1)
    pid_t start(const std::vector<std::string>& arguments, int input = -1, int output = -1, int niceness = 0);
    size_t count() const { return children.size(); }
    /// Waits until at least one has ended, for so many milliseconds at most.
    std::vector<SChildEnd> wait(int milliseconds);
    /// Sends a signal to all of them.
    void signal(int number) const;

private:
    struct SChild
    {
        pid_t process;
        int watch; ///< becomes readable at the end; -1 where the system has no such thing
        int error; ///< a file in memory
    };
    std::vector<SChild> children;
};

} // namespace NBrenmark
