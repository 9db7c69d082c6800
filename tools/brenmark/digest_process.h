#pragma once
// Another process of this program, which reads a deck and takes its digest while this one does something else: one deck is
// open in a process.

#include "brenmark/child_process.h"
#include "brenmark/deck_digest.h"

#include <QString>

#include <optional>

namespace NBrenmark {

/// Never fails: what it gives no answer to is left to this process.
class CDigestProcess
{
public:
    /// \param deck  is opened anew for each request
    explicit CDigestProcess(QString deck);
    /// Ends the process.
    ~CDigestProcess();
    CDigestProcess(const CDigestProcess&) = delete;
    CDigestProcess& operator=(const CDigestProcess&) = delete;

    /// Whether the machine has a core for it, and no limit was set to the memory of one deck.
    static bool isPossible();
    /// Fewer bytes of a deck are read sooner than a process opens it.
    static constexpr double leastBytes = 16e6;

    /// Asks for the timesteps from one on, without what is beside them. \return false: no answer will come
    bool askForTimesteps(quint32 first);
    /// Asks for all of a deck of the HDF5 family.
    bool askForAll();
    /// Whether an answer is still to come.
    bool isAtWork() const { return isAwaited && processes.count() > 0; }
    /// The answer, if it has come. There is none where a timestep couldn't be read, or there was anything to say.
    std::optional<SDigestPart> answer();
    /// The same, after the process has ended; there are no more requests.
    std::optional<SDigestPart> lastAnswer();

private:
    bool ask(const std::string& line);
    bool startProcess();

    const QString deck;
    CChildProcesses processes;
    int input = -1;   ///< of the process, which ends where that ends
    int output = -1;  ///< a file in memory, to whose end it adds its answers
    qint64 taken = 0; ///< bytes of that
    bool isAwaited = false;
};

/// What that process does: a request is a line of standard input, an answer goes to standard output.
/// \throws CFailure  a timestep can't be read, there is something to say of one, or the answer can't be written
void answerDigestRequests(const QString& deck);

} // namespace NBrenmark
