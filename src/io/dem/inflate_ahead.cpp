// Cuts a timestep's bytes into parts, searches each for whole zlib streams, and keeps what they inflate to until a read
// asks for it.
#include "io/dem/inflate_ahead.h"

#include "core/inflate.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

static constexpr std::size_t windowBytes = 0x40000; // read from the file at a time
static constexpr std::size_t pieceBytes = 0x100000;
/// A group of a large timestep is longer than a part, so that each has a thread.
static constexpr quint64 leastPartBytes = 0x100000;
static constexpr quint64 mostParts = 32;

/// Whether a zlib stream may begin here: deflate with a window of 32 kB, no dictionary, and the check of both bytes.
static bool isHeader(const char* bytes)
{
    const unsigned first = static_cast<unsigned char>(bytes[0]);
    const unsigned second = static_cast<unsigned char>(bytes[1]);
    return first == 0x78 && (second & 0x20) == 0 && (first * 256 + second) % 31 == 0;
}

/// Bytes of a file by their place, a window of them at a time.
class CInflateAhead::CFileWindow
{
public:
    CFileWindow(const std::string& path, quint64 end)
        : end(end), descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC)), bytes(new char[windowBytes])
    {}
    ~CFileWindow()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
    CFileWindow(const CFileWindow&) = delete;
    CFileWindow& operator=(const CFileWindow&) = delete;

    /// What there is from a place on: at least so many bytes, if the file has them. \return their number; 0 at the end
    std::size_t at(quint64 place, std::size_t wanted, const char*& found)
    {
        const bool isInside = place >= start && place < start + size;
        if (!isInside || (start + size - place < wanted && start + size < end))
            read(place);
        found = bytes.get() + (place - start);
        return place < start + size ? static_cast<std::size_t>(start + size - place) : 0;
    }

private:
    void read(quint64 place)
    {
        start = place;
        size = 0;
        const std::size_t wanted =
            static_cast<std::size_t>(std::min<quint64>(windowBytes, end > place ? end - place : 0));
        while (descriptor >= 0 && size < wanted) {
            const ssize_t got =
                ::pread(descriptor, bytes.get() + size, wanted - size, static_cast<off_t>(start + size));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            size += static_cast<std::size_t>(got);
        }
    }

    quint64 end;
    int descriptor;
    std::unique_ptr<char[]> bytes;
    quint64 start = 0;
    std::size_t size = 0;
};

std::size_t CInflatedGroup::take(char* target, std::size_t bytes)
{
    std::size_t taken = 0;
    while (taken < bytes && !pieces.empty()) {
        const SBytes& piece = pieces.front();
        const std::size_t some = std::min(bytes - taken, piece.size - used);
        std::memcpy(target + taken, piece.data.get() + used, some);
        taken += some;
        used += some;
        if (used == piece.size) {
            pieces.pop_front();
            used = 0;
        }
    }
    return taken;
}

/// Bytes of memory that are counted until they are given back, or kept for the groups that are found.
class CInflateAhead::CTaken
{
public:
    CTaken(std::atomic<std::size_t>& held, std::size_t most) : held(held), most(most) {}
    ~CTaken() { held -= bytes; }
    CTaken(const CTaken&) = delete;
    CTaken& operator=(const CTaken&) = delete;

    /// \return whether that isn't too much
    bool take(std::size_t more)
    {
        bytes += more;
        return held.fetch_add(more) + more <= most;
    }
    void keep(std::size_t kept)
    {
        held -= bytes - kept;
        bytes = 0;
    }

private:
    std::atomic<std::size_t>& held;
    const std::size_t most;
    std::size_t bytes = 0;
};

CInflateAhead::CInflateAhead(std::string path, quint64 begin, quint64 end, std::size_t budget)
    : path(std::move(path)), begin(begin), end(end), budget(budget)
{
    const quint64 most = CThreadPool::current() != nullptr ? mostParts : 1;
    const quint64 count = std::max<quint64>(1, std::min(most, (end - begin) / leastPartBytes));
    for (quint64 i = 0; i < count; ++i) {
        SPart& part = parts.emplace_back();
        part.begin = part.searched = begin + (end - begin) / count * i;
        part.end = i + 1 == count ? end : begin + (end - begin) / count * (i + 1);
    }
    for (SPart& part : parts)
        part.task.emplace([this, &part] {
            try {
                search(part);
            }
            catch (const std::exception&) { // too little memory: the read takes its own
            }
            const std::lock_guard<std::mutex> guard(lock);
            part.isOver = true;
            changed.notify_all();
        });
}

CInflateAhead::~CInflateAhead()
{
    isStopping = true; // parts that are being searched end soon
    parts.clear();     // lets go of those not begun, and waits for the others
}

void CInflateAhead::setSearched(SPart& part, quint64 position)
{
    const std::lock_guard<std::mutex> guard(lock);
    part.searched = position;
    changed.notify_all();
}

void CInflateAhead::publish(SPart& part, quint64 position, std::unique_ptr<CInflatedGroup> group)
{
    const std::lock_guard<std::mutex> guard(lock);
    part.searched = position + group->storedBytes;
    groups[position] = std::move(group);
    changed.notify_all();
}

std::unique_ptr<CInflatedGroup> CInflateAhead::takeGroup(qint64 position)
{
    const quint64 place = static_cast<quint64>(position);
    if (place < begin || place >= end)
        return nullptr;
    const SPart& part = *std::find_if(parts.begin(), parts.end(), [&](const SPart& one) { return place < one.end; });
    std::unique_lock<std::mutex> guard(lock);
    const auto isKnown = [&] { return part.isOver || part.searched > place; };
    while (!isKnown()) {
        guard.unlock();
        const bool isHelping = CThreadPool::help(); // rather than wait idly
        guard.lock();
        if (!isHelping)
            changed.wait(guard, isKnown);
    }
    const auto found = groups.find(place);
    if (found == groups.end())
        return nullptr;
    std::unique_ptr<CInflatedGroup> group = std::move(found->second);
    groups.erase(groups.begin(), std::next(found)); // a read goes forward
    return group;
}

/// Inflates what begins at a place of the file. \return null if that is too much, or no longer wanted
/// \throws inflate_error  if it is no whole stream
std::unique_ptr<CInflatedGroup> CInflateAhead::inflated(CInflater& inflater, CFileWindow& window, quint64 place)
{
    auto group = std::make_unique<CInflatedGroup>();
    CTaken taken(held, budget);
    quint64 next = place;
    inflater.restart();
    while (!inflater.hasEnded()) {
        if (isStopping || !taken.take(pieceBytes))
            return nullptr;
        SBytes piece{std::unique_ptr<char[]>(new char[pieceBytes]), 0};
        while (piece.size < pieceBytes && !inflater.hasEnded()) {
            if (inflater.isHungry() && inflater.ready() == 0) {
                const char* bytes = nullptr;
                const std::size_t size = window.at(next, 1, bytes);
                if (size == 0)
                    throw inflate_error("the input ended");
                inflater.feed(bytes, size);
                next += size;
            }
            const std::size_t waiting = inflater.waiting();
            const std::size_t made = inflater.inflate(piece.data.get() + piece.size, pieceBytes - piece.size);
            if (made == 0 && inflater.waiting() == waiting && !inflater.isHungry() && !inflater.hasEnded())
                throw inflate_error("it doesn't go on");
            piece.size += made;
        }
        group->pieces.push_back(std::move(piece));
    }
    SBytes& last = group->pieces.back();
    SBytes exact{std::unique_ptr<char[]>(new char[last.size]), last.size}; // the last piece is hardly ever full
    std::copy_n(last.data.get(), last.size, exact.data.get());
    last = std::move(exact);
    taken.keep((group->pieces.size() - 1) * pieceBytes + last.size);
    group->storedBytes = next - inflater.waiting() - place;
    return group;
}

void CInflateAhead::search(SPart& part)
{
    CFileWindow window(path, end);
    CInflater inflater;
    for (quint64 place = part.begin; place < part.end && !isStopping;) {
        const char* bytes = nullptr;
        const std::size_t there = window.at(place, 2, bytes);
        if (there < 2)
            return;
        // Every header begins with this byte.
        const auto* const first = static_cast<const char*>(std::memchr(bytes, 0x78, there - 1));
        place += first != nullptr ? static_cast<std::size_t>(first - bytes) : there - 1;
        if (first == nullptr)
            continue;
        if (!isHeader(first)) {
            ++place;
            continue;
        }
        setSearched(part, place);
        try {
            std::unique_ptr<CInflatedGroup> group = inflated(inflater, window, place);
            if (!group)
                return;
            const quint64 after = place + group->storedBytes;
            publish(part, place, std::move(group));
            place = after; // groups don't overlap
        }
        catch (const inflate_error&) { // what looked like a header was none, or its group is damaged
            ++place;
        }
    }
}

} // namespace NBrenmark
