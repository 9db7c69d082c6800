#pragma once
// Inflating the array groups of the next timestep while the current one is still being read and written.
//
// Nothing says where a group begins but what is stored before it, and reading that is the work of the next read. So the
// bytes of the timestep are searched for zlib streams: whatever inflates to its end, with the right checksum, is kept
// by its place. Several threads search, each in a part of the bytes of its own: the one whose part begins in the midst
// of a group meets no stream there, and goes on until it does. The read that comes to a group at that place finds it
// done. It finds nothing for a group that is damaged, or too large, and inflates it itself, as it would without this:
// what a read gives, and says, is the same.

#include "core/deflate.h"
#include "core/thread_pool.h"

#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace NBrenmark {

class CInflater;

/// The bytes of a whole stream, given out from the first to the last.
class CInflatedGroup
{
public:
    quint64 storedBytes = 0; ///< that the stream takes in the file
    std::deque<SBytes> pieces;

    /// \return how many bytes there were of those asked for
    std::size_t take(char* target, std::size_t bytes);

private:
    std::size_t used = 0; ///< of the first piece
};

class CInflateAhead
{
public:
    /// Begins on the pool. Nothing that fails here is reported: the read meets it again.
    /// \param path        of the file; a native name
    /// \param begin, end  bytes of it that are searched
    /// \param budget      the most bytes of memory
    CInflateAhead(std::string path, quint64 begin, quint64 end, std::size_t budget);
    /// Stops the search.
    ~CInflateAhead();
    CInflateAhead(const CInflateAhead&) = delete;
    CInflateAhead& operator=(const CInflateAhead&) = delete;

    /// The group at a byte of the file, as soon as it is known whether there is one; null if there isn't.
    std::unique_ptr<CInflatedGroup> takeGroup(qint64 position);

private:
    class CFileWindow;
    class CTaken;
    /// Bytes that one thread searches for the streams that begin there.
    struct SPart
    {
        quint64 begin = 0;
        quint64 end = 0;
        quint64 searched = 0; ///< before this byte it is known where streams begin
        bool isOver = false;
        std::optional<CPooledTask> task; // the last member: it uses the others
    };
    void search(SPart& part);
    std::unique_ptr<CInflatedGroup> inflated(CInflater& inflater, CFileWindow& window, quint64 place);
    void publish(SPart& part, quint64 position, std::unique_ptr<CInflatedGroup> group);
    void setSearched(SPart& part, quint64 position);

    const std::string path;
    const quint64 begin;
    const quint64 end;
    const std::size_t budget;
    std::atomic<bool> isStopping{false};
    std::atomic<std::size_t> held{0}; ///< that the groups found have taken, and those that are being inflated
    std::mutex lock;
    std::condition_variable changed;
    std::map<quint64, std::unique_ptr<CInflatedGroup>> groups;
    std::deque<SPart> parts; // the last member: their tasks use the others
};

} // namespace NBrenmark
