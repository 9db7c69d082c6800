// Fetches chunks as they are stored, has the pool inflate them, and lays each into its place.
#include "io/hdf5/chunk_inflating.h"

#include "core/deflate.h"
#include "core/inflate.h"
#include "io/hdf5/chunk_tasks.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

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

} // namespace

/// The most bytes of chunks, as they are stored, that wait in memory.
static constexpr std::size_t mostStoredBytes = std::size_t(16) << 20;

struct CChunkInflating::SChunk
{
    SArray* array = nullptr;
    SBytes stream;
    char* target = nullptr;
    std::size_t bytes = 0;           ///< those that belong to the array
    std::size_t chunkBytes = 0;      ///< with those after its last row
    bool isWhole = false;            ///< all bytes of the chunk were made, and no more
    std::optional<CPooledTask> task; // the last member: it uses the others, and goes first

    void inflate()
    {
        SBytes all;
        if (bytes < chunkBytes)
            all.data.reset(new char[chunkBytes]);
        char* const at = all.data ? all.data.get() : target;
        isWhole = inflateWhole(stream.data.get(), stream.size, at, chunkBytes);
        if (isWhole && all.data)
            std::memcpy(target, at, bytes);
    }
};

CChunkInflating::CChunkInflating() = default;

CChunkInflating::~CChunkInflating() = default;

/// \return false if the file doesn't give the chunk
static bool fetch(const H5::DataSet& dataset, hsize_t row, std::size_t chunkBytes, SBytes& stream)
{
    const hsize_t place[2] = {row, 0};
    hsize_t size = 0;
    unsigned filters = 0;
    haddr_t address = 0;
    if (H5Dget_chunk_info_by_coord(dataset.getId(), place, &filters, &address, &size) < 0 || size == 0 ||
        filters != 0 || size > 2 * chunkBytes + 1024)
        return false;
    stream = {std::unique_ptr<char[]>(new char[size]), size};
    uint32_t skipped = 0;
    return H5Dread_chunk(dataset.getId(), H5P_DEFAULT, place, &skipped, stream.data.get()) >= 0;
}

bool CChunkInflating::add(const H5::DataSet& dataset, const H5::PredType& type, void* target,
                          std::function<void()> otherwise)
{
    const std::optional<SChunking> chunking = chunkingOf(dataset, type);
    if (!chunking)
        return false;
    SArray& array = arrays.emplace_back(SArray{std::move(otherwise), true});
    for (hsize_t row = 0; row < chunking->rows; row += chunking->chunkRows) {
        auto added = std::make_unique<SChunk>();
        SChunk& chunk = *added;
        chunk.array = &array;
        chunk.target = static_cast<char*>(target) + row * chunking->rowBytes;
        chunk.bytes = std::min(chunking->chunkRows, chunking->rows - row) * chunking->rowBytes;
        chunk.chunkBytes = chunking->chunkRows * chunking->rowBytes;
        if (!fetch(dataset, row, chunk.chunkBytes, chunk.stream)) {
            array.isWhole = false;
            break;
        }
        while (!waiting.empty() && waitingBytes + chunk.stream.size > mostStoredBytes)
            finishOldest();
        waitingBytes += chunk.stream.size;
        waiting.push_back(std::move(added));
        if (chunk.chunkBytes >= leastSharedChunk)
            chunk.task.emplace([&chunk] { chunk.inflate(); });
        else
            chunk.inflate();
    }
    return true;
}

void CChunkInflating::finishOldest()
{
    const std::unique_ptr<SChunk> chunk = std::move(waiting.front());
    waiting.pop_front();
    waitingBytes -= chunk->stream.size;
    finishTask(*chunk, waiting);
    chunk->array->isWhole = chunk->array->isWhole && chunk->isWhole;
}

void CChunkInflating::finish()
{
    while (!waiting.empty())
        finishOldest();
    for (const SArray& array : arrays)
        if (!array.isWhole)
            array.otherwise();
    arrays.clear();
}

} // namespace NBrenmark
