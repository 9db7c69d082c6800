// Hands the chunks to HDF5 in the order in which they came, whichever is deflated first.
#include "io/hdf5/chunk_queue.h"

#include "io/hdf5/chunk_tasks.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/soundness.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace NBrenmark {

/// Twelve chunks of the greatest size. It decides where chunks lie in a file, and so must not depend on the machine.
static constexpr std::size_t mostWaitingBytes = std::size_t(12) * 250000 * 8;

static thread_local CChunkQueue* queueOfThread = nullptr;

[[noreturn]] void failAt(const H5::DataSet& dataset, const std::string& what)
{
    std::string path(512, '\0');
    const ssize_t length = H5Iget_name(dataset.getId(), &path[0], path.size());
    path.resize(length > 0 ? std::min(path.size() - 1, static_cast<std::size_t>(length)) : 0);
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
    throw hdf5_error(folder + ", dataset \"" + path.substr(slash + 1) + "\": " + what);
}

CChunkQueue::CChunkQueue() : before(std::exchange(queueOfThread, this)) {}

CChunkQueue::~CChunkQueue() { queueOfThread = before; }

CChunkQueue* CChunkQueue::current() { return queueOfThread; }

void CChunkQueue::add(const H5::DataSet& dataset, const void* values, hsize_t rows, hsize_t rowBytes, hsize_t chunkRows)
{
    const auto shared = std::make_shared<H5::DataSet>(dataset);
    const std::size_t chunkBytes = chunkRows * rowBytes;
    for (hsize_t row = 0; row < rows; row += chunkRows) {
        while (!waiting.empty() && waitingBytes + chunkBytes > mostWaitingBytes)
            writeOldest();
        auto added = std::make_unique<SChunk>();
        SChunk& chunk = *added;
        chunk.dataset = shared;
        chunk.row = row;
        chunk.isLast = rows - row <= chunkRows;
        chunk.values = {std::unique_ptr<char[]>(new char[chunkBytes]), chunkBytes};
        const std::size_t filled = std::min(chunkRows, rows - row) * rowBytes;
        std::memcpy(chunk.values.data.get(), static_cast<const char*>(values) + row * rowBytes, filled);
        std::memset(chunk.values.data.get() + filled, 0, chunkBytes - filled);
        const auto work = [&chunk] {
            chunk.stream = deflated(chunk.values.data.get(), chunk.values.size);
            chunk.values.data.reset();
        };
        waiting.push_back(std::move(added));
        waitingBytes += chunkBytes;
        if (chunkBytes >= leastSharedChunk)
            chunk.task.emplace(work);
        else
            work();
    }
}

void CChunkQueue::writeOldest()
{
    const std::unique_ptr<SChunk> chunk = std::move(waiting.front());
    waiting.pop_front();
    waitingBytes -= chunk->values.size;
    finishTask(*chunk, waiting);
    requireRoomForHdf5();
    const hsize_t place[2] = {chunk->row, 0};
    constexpr uint32_t allFilters = 0;
    if (H5Dwrite_chunk(chunk->dataset->getId(), H5P_DEFAULT, allFilters, place, chunk->stream.size,
                       chunk->stream.data.get()) < 0)
        failAt(*chunk->dataset, "a chunk could not be written");
    if (!chunk->isLast)
        return;
    try {
        chunk->dataset->close();
    }
    catch (const H5::Exception& error) {
        failAt(*chunk->dataset, error.getDetailMsg());
    }
}

void CChunkQueue::finish()
{
    while (!waiting.empty())
        writeOldest();
}

} // namespace NBrenmark
