// The rule for chunks and compression, and reading without more memory than the stored bytes can fill.
#include "io/hdf5/bulk_arrays.h"

#include "config/user_preferences.h"
#include "core/stop_flag.h"
#include "io/hdf5/chunk_inflating.h"
#include "io/hdf5/chunk_queue.h"
#include "io/hdf5/closed.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/read_audit.h"
#include "io/hdf5/soundness.h"

#include <algorithm>

namespace NBrenmark {

static constexpr hsize_t leastChunked = 256;       // values; smaller arrays are stored in one piece, not deflated
static constexpr hsize_t mostChunkValues = 250000; // 2 MB of doubles
static constexpr unsigned deflateLevel = 6;        // what a file says of its filter; CChunkQueue makes the streams

static int fillDimensions(const SArrayShape& shape, hsize_t (&dimensions)[2])
{
    dimensions[0] = shape.rows;
    dimensions[1] = shape.columns;
    return shape.columns == 0 ? 1 : 2;
}

/// Leaves the values to the queue that is at work, or writes them through one of their own.
static void deflate(const H5::DataSet& dataset, const void* data, hsize_t rows, hsize_t rowBytes, hsize_t chunkRows)
{
    if (CChunkQueue* const queue = CChunkQueue::current()) {
        queue->add(dataset, data, rows, rowBytes, chunkRows);
        return;
    }
    CChunkQueue queue;
    queue.add(dataset, data, rows, rowBytes, chunkRows);
    queue.finish();
}

SArrayLayout arrayLayout(hsize_t count, hsize_t columns, bool compress)
{
    SArrayLayout layout;
    const hsize_t values = std::min(count, mostChunkValues);
    if (values < leastChunked)
        return layout;
    layout.chunkRows = values / std::max<hsize_t>(columns, 1);
    layout.deflated = compress;
    return layout;
}

bool compressionWanted() { return userPreferences().compress(); }

// ---------------------------------------------------------------- writing

void CArrayWriter::write(const std::string& name, const H5::PredType& type, const SArrayShape& shape, const void* data,
                         hsize_t count) const
{
    const SArrayLayout layout = arrayLayout(count, shape.columns, compress);
    closed(H5::DSetCreatPropList(), [&](H5::DSetCreatPropList& properties) {
        if (layout.deflated)
            properties.setDeflate(deflateLevel);
        if (layout.chunkRows > 0) {
            hsize_t chunk[2];
            const int rank = fillDimensions({layout.chunkRows, shape.columns}, chunk);
            properties.setChunk(rank, chunk);
        }
        write(name, type, shape, data, properties, layout);
    });
}

void CArrayWriter::writePlain(const std::string& name, const H5::PredType& type, const SArrayShape& shape,
                              const void* data) const
{
    write(name, type, shape, data, H5::DSetCreatPropList::DEFAULT, SArrayLayout());
}

/// \param layout  that the properties announce
void CArrayWriter::write(const std::string& name, const H5::PredType& type, const SArrayShape& shape, const void* data,
                         const H5::DSetCreatPropList& properties, const SArrayLayout& layout) const
{
    requireRoomForArray(shape.elements() * type.getSize());
    try {
        hsize_t dimensions[2];
        const int rank = fillDimensions(shape, dimensions);
        closed(H5::DataSpace(rank, dimensions), [&](H5::DataSpace& space) {
            H5::DataSet dataset = location.createDataSet(name, type, space, properties);
            if (layout.deflated && layout.chunkRows > 0 && shape.elements() > 0) {
                const hsize_t rowBytes = std::max<hsize_t>(shape.columns, 1) * type.getSize();
                deflate(dataset, data, shape.rows, rowBytes, layout.chunkRows);
                return;
            }
            if (shape.elements() > 0)
                dataset.write(data, type);
            dataset.close();
        });
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

// ---------------------------------------------------------------- reading

hsize_t CArrayReader::storedRows(const std::string& name) const
{
    try {
        requireOwn(location, "dataset", name);
        const H5::DataSpace space = location.openDataSet(name).getSpace();
        hsize_t dimensions[H5S_MAX_RANK] = {0};
        space.getSimpleExtentDims(dimensions);
        return dimensions[0];
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

void CArrayReader::fill(CChunkInflating& chunks, const H5::DataSet& dataset, const std::string& name,
                        const H5::PredType& type, void* target) const
{
    const auto readByHdf5 = [&place = location, dataset, name, type, target] {
        try {
            dataset.read(target, type, H5::DataSpace::ALL, H5::DataSpace::ALL, wholeNumbersOnly());
        }
        catch (const H5::Exception& error) {
            throwAt(place, "dataset", name, error);
        }
    };
    if (!chunks.add(dataset, type, target, readByHdf5))
        readByHdf5();
}

void CArrayReader::read(const std::string& name, const H5::PredType& type, hsize_t columns,
                        const Allocate& allocate) const
{
    leaveIfStopped(); // nearly all of a long read's time goes by between two arrays
    try {
        CReadAudit::askedForObject(location, name);
        requireOwn(location, "dataset", name);
        const H5::DataSet dataset = location.openDataSet(name);
        CReadAudit::compareTypes(dataset.getDataType(), type, "dataset", name);
        const H5::DataSpace space = dataset.getSpace();
        const int wantedRank = columns == 0 ? 1 : 2;
        if (space.getSimpleExtentNdims() != wantedRank)
            throwAt(location, "dataset", name,
                    std::to_string(space.getSimpleExtentNdims()) + " dimensions where " + std::to_string(wantedRank) +
                        " are needed");
        hsize_t dimensions[2] = {0, 0};
        space.getSimpleExtentDims(dimensions);
        if (columns != 0 && columns != anyColumns && dimensions[1] != columns)
            throwAt(location, "dataset", name,
                    "rows of " + std::to_string(dimensions[1]) + " where rows of " + std::to_string(columns) +
                        " are needed");
        checkSound(dataset, location, name);
        void* const target = allocate({dimensions[0], dimensions[1]});
        requireRoomForArray(dataset.getStorageSize());
        if (space.getSimpleExtentNpoints() == 0)
            return;
        if (inflating != nullptr) {
            fill(*inflating, dataset, name, type, target);
            return;
        }
        CChunkInflating chunks;
        fill(chunks, dataset, name, type, target);
        chunks.finish();
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

} // namespace NBrenmark
