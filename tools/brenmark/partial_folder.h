#pragma once
// The folder beside a target in which its deck is made: OUT.dem.partial/. It holds the deck so far, the journal, and a
// file whose lock says that a conversion is running; the lock goes with its process, however that ends.

#include "brenmark/deck_swap.h"
#include "brenmark/journal.h"

#include <QString>

#include <optional>
#include <string>

namespace NBrenmark {

class CPartialFolder
{
public:
    /// Opens the folder of a target, making it if it is missing, and takes its lock. It is this process's from then on.
    /// \throws CFailure  another conversion is at work there, or the folder can't be made
    explicit CPartialFolder(const QString& target);
    /// Lets go of the lock, and of the folder too if nothing but the lock is in it.
    ~CPartialFolder();
    CPartialFolder(const CPartialFolder&) = delete;
    CPartialFolder& operator=(const CPartialFolder&) = delete;

    /// Where the folder of a target is, or would be.
    static QString pathFor(const QString& target);
    QString path() const;
    /// Main file of the deck in the making.
    QString deck() const;
    /// Whether a conversion was begun here.
    bool isBegun() const { return hasJournal(places.partial); }

    SJournal read() const { return readJournal(places.partial); }
    void write(const SJournal& journal) const { writeJournal(realDisk(), places.partial, journal); }

    /// Syncs numbered files from first to before last, and their folder.
    void syncTimesteps(quint32 first, quint32 last) const;
    /// Syncs all else of the deck.
    void syncDeck() const;
    /// How many timesteps are there without a gap, at most so many.
    quint32 timestepsThere(quint32 most) const;
    /// Whether all files are there that a deck of so many timesteps has to have.
    bool isWhole(quint32 timesteps) const;
    /// Removes all of the deck but its first timesteps.
    void keepTimesteps(quint32 count) const;

    /// A folder in it for what is of use while this process is at work alone; it need not be there.
    QString scratch() const;
    void clearScratch() const;
    /// Removes what conversions leave here. \throws CFailure  something else is here
    void clear();
    /// Gives the finished deck its place, or goes on with that, and clears what is left.
    void place(SJournal journal);

private:
    void takeLock();
    void release() const;

    SSwapPlaces places;
    QString target;
    int lock = -1;
};

/// A deck that isn't finished.
struct SPartialDeck
{
    QString path;         ///< of its folder
    QString target;       ///< what it is to become
    QString source;       ///< empty if it isn't known
    quint32 finished = 0; ///< timesteps
    quint32 timesteps = 0;

    /// "3 of 8 timesteps".
    std::string countText() const;
    /// The command that goes on with it, as one types it.
    std::string command() const;
};

/// The unfinished deck that a path leads to: a target that isn't there with the folder beside it, that folder, or the
/// deck inside it. None for the one that this process is making.
std::optional<SPartialDeck> partialDeckAt(const QString& path);

} // namespace NBrenmark
