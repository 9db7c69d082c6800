#pragma once
// Reading the finished timesteps of a new deck back from the disk while the next ones are still being converted, for the
// comparison that follows. One deck is open in a process: another process of this program does it.

#include "brenmark/child_process.h"
#include "brenmark/deck_digest.h"
#include "brenmark/partial_folder.h"

#include <QString>

#include <vector>

namespace NBrenmark {

/// Never fails: what can't be read this way is left to the comparison.
class CEarlyReading
{
public:
    /// \param folder  where the deck is being made
    /// \param source  whose settings the new deck gets at its end
    /// \param sizes   of the source's timesteps, bytes
    CEarlyReading(const CPartialFolder& folder, const QString& source, const std::vector<double>& sizes);
    /// Ends the process that is at work.
    ~CEarlyReading();
    CEarlyReading(const CEarlyReading&) = delete;
    CEarlyReading& operator=(const CEarlyReading&) = delete;

    /// Has timesteps read if enough of them wait and the process is idle. The last of the deck is never read here.
    /// \param count  of the timesteps that are finished
    void finished(quint32 count);
    /// Waits until the process has ended.
    /// \return the digests that are equal to the source's, in the order of the timesteps
    DigestParts take(const SDeckDigest& source);

    /// Whether the machine has a core for it, and no limit was set to the memory of one deck.
    static bool isPossible();

private:
    QString view() const;
    QString record() const;
    bool makeView();
    bool startProcess();
    bool giveOut(quint32 end);
    void collect();

    const CPartialFolder& folder;
    const QString source;
    const std::vector<double> sizes;
    CChildProcesses processes;
    int input = -1;              ///< of the process; it ends where that ends
    quint32 first = 0, next = 0; ///< of the timesteps that were given out last, and the one after them
    bool isAtWork = false;
    bool isOver = false; ///< nothing is given out any more
    DigestParts parts;
};

} // namespace NBrenmark
