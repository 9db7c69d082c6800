#pragma once
// Reading the finished timesteps of a new deck back from the disk while the next ones are still being converted, for the
// comparison that follows. One deck is open in a process: another process of this program does it.

#include "brenmark/digest_process.h"
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
    /// Ends the process.
    ~CEarlyReading();
    CEarlyReading(const CEarlyReading&) = delete;
    CEarlyReading& operator=(const CEarlyReading&) = delete;

    /// Has timesteps read if enough of them wait and the process is idle. The last of the deck is never read here.
    /// \param count  of the timesteps that are finished
    void finished(quint32 count);
    /// Waits until the process has ended.
    /// \return the digests that are equal to the source's, in the order of the timesteps
    DigestParts take(const SDeckDigest& source);

private:
    QString view() const;
    bool makeView();
    void collect();

    const CPartialFolder& folder;
    const QString source;
    const std::vector<double> sizes;
    CDigestProcess process;
    quint32 first = 0, next = 0; ///< of the timesteps that were given out last, and the one after them
    bool isOver = false;         ///< nothing is given out any more
    DigestParts parts;
};

} // namespace NBrenmark
