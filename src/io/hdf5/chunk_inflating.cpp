// Fetches the chunks of a dataset as they are stored, has the pool inflate them, and lays each into its place.
#include "io/hdf5/chunk_inflating.h"

#include "core/deflate.h"
#include "core/inflate.h"
#include "core/thread_pool.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>
#include <optional>

namespace NBrenmark {

namespace {

/// How rows lie in chunks that are as wide as the dataset.
struct SChunking
{
    hsize_t rows = 0;
    hsize_t chunkRows = 0;
    std::size_t rowBytes = 0;
};

std::optional<SChunking> chunkingOf(const H5::DataSet& dataset, const H5::PredType& type)
{
    const H5::DSetCreatPropList properties = dataset.getCreatePlist();
    if (properties.getLayout() != H5D_CHUNKED || properties.getNfilters() != 1)
        return std::nullopt;
    unsigned flags = 0;
    std::size_t parameters = 0;
    unsigned configuration = 0;
    if (H5Pget_filter2(properties.getId(), 0, &flags, &parameters, nullptr, 0, nullptr, &configuration) !=
            H5Z_FILTER_DEFLATE ||
        H5Tequal(dataset.getDataType().getId(), type.getId()) <= 0)
        return std::nullopt;
    hsize_t dimensions[2] = {0, 1};
    hsize_t chunk[2] = {0, 1};
    const H5::DataSpace space = dataset.getSpace();
    const int rank = space.getSimpleExtentNdims();
    if (rank > 2 || properties.getChunk(2, chunk) != rank)
        return std::nullopt;
    space.getSimpleExtentDims(dimensions);
    if (chunk[0] == 0 || chunk[1] != dimensions[1])
        return std::nullopt;
    return SChunking{dimensions[0], chunk[0], dimensions[1] * type.getSize()};
}

class CChunk
{
public:
    CChunk(SBytes stream, char* target, std::size_t bytes, std::size_t chunkBytes)
        : stream(std::move(stream)), target(target), bytes(bytes), chunkBytes(chunkBytes), task([this] { inflate(); })
    {}

    /// Whether all bytes of the chunk were made, and no more.
    bool finish()
    {
        task.wait();
        return isWhole;
    }
    bool isDone() const { return task.isDone(); }
    bool runHere() { return task.runHere(); }
    std::size_t storedBytes() const { return stream.size; }

private:
    void inflate()
    {
        SBytes whole;
        if (bytes < chunkBytes)
            whole.data.reset(new char[chunkBytes]);
        char* const at = whole.data ? whole.data.get() : target;
        isWhole = inflateWhole(stream.data.get(), stream.size, at, chunkBytes);
        if (isWhole && whole.data)
            std::memcpy(target, at, bytes);
    }

    SBytes stream;
    char* target;
    std::size_t bytes; ///< those that belong to the dataset
    std::size_t chunkBytes;
    bool isWhole = false;
    CPooledTask task; // the last member: it uses the others
};

} // namespace

bool inflateChunks(const H5::DataSet& dataset, const H5::PredType& type, void* target)
{
    constexpr std::size_t mostWaiting = std::size_t(16) << 20; // bytes in memory
    const std::optional<SChunking> chunking = chunkingOf(dataset, type);
    if (!chunking)
        return false;
    const std::size_t chunkBytes = chunking->chunkRows * chunking->rowBytes;
    std::deque<std::unique_ptr<CChunk>> waiting;
    std::size_t waitingBytes = 0;
    const auto finishOldest = [&] {
        const std::unique_ptr<CChunk> oldest = std::move(waiting.front());
        waiting.pop_front();
        waitingBytes -= oldest->storedBytes();
        // Another thread may just be at it: to wait for that one would leave the others to it as well.
        const auto later = [](const std::unique_ptr<CChunk>& next) { return next->runHere(); };
        while (!oldest->runHere() && !oldest->isDone() && std::any_of(waiting.begin(), waiting.end(), later)) {
        }
        return oldest->finish();
    };
    for (hsize_t row = 0; row < chunking->rows; row += chunking->chunkRows) {
        const hsize_t place[2] = {row, 0};
        hsize_t size = 0;
        unsigned filters = 0;
        haddr_t address = 0;
        if (H5Dget_chunk_info_by_coord(dataset.getId(), place, &filters, &address, &size) < 0 || size == 0 ||
            filters != 0 || size > 2 * chunkBytes + 1024)
            return false;
        SBytes stream{std::unique_ptr<char[]>(new char[size]), size};
        uint32_t skipped = 0;
        if (H5Dread_chunk(dataset.getId(), H5P_DEFAULT, place, &skipped, stream.data.get()) < 0)
            return false;
        while (!waiting.empty() && waitingBytes + size > mostWaiting)
            if (!finishOldest())
                return false;
        const std::size_t bytes = std::min(chunking->chunkRows, chunking->rows - row) * chunking->rowBytes;
        waitingBytes += size;
        waiting.push_back(std::make_unique<CChunk>(
            std::move(stream), static_cast<char*>(target) + row * chunking->rowBytes, bytes, chunkBytes));
    }
    while (!waiting.empty())
        if (!finishOldest())
            return false;
    return true;
}

} // namespace NBrenmark
