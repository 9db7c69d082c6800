#pragma once
// Runs the command line as a user does: a process of its own, with pipes or a terminal behind it.

#include <QString>

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace NBrenmark {

struct SToolResult
{
    int exitCode = 0;   ///< -9 for a process that signal 9 has ended
    std::string output; ///< standard output
    std::string error;  ///< standard error; what the terminal got if there is one
};

class CToolRun
{
public:
    explicit CToolRun(std::vector<std::string> arguments);
    /// Ends a process that is still there.
    ~CToolRun();
    CToolRun(const CToolRun&) = delete;
    CToolRun& operator=(const CToolRun&) = delete;

    CToolRun& environment(const std::string& name, const std::string& value);
    /// Standard error is a terminal of 100 columns.
    CToolRun& errorOnTerminal();
    /// Standard output goes to a file that exists, for example /dev/full.
    CToolRun& outputTo(const std::string& path);
    /// Standard output goes to a pipe whose reader has gone.
    CToolRun& outputToNoOne();

    void start();
    /// Waits until standard error holds a text. False if the process ended or half a minute passed before.
    bool waitForError(const std::string& text);
    void signal(int number);
    /// Waits for the end of the process, for two minutes at most.
    SToolResult finish();

    SToolResult run()
    {
        start();
        return finish();
    }

private:
    void collect();

    std::vector<std::string> arguments;
    std::map<std::string, std::string> variables;
    std::string outputPath;
    bool terminal = false;
    bool nobodyReads = false;
    pid_t process = -1;
    int outputEnd = -1; // what the process writes comes out here
    int errorEnd = -1;
    SToolResult result;
};

/// brenmark with these arguments.
SToolResult runTool(std::vector<std::string> arguments);

/// A path as an argument.
std::string argument(const QString& path);

} // namespace NBrenmark
