#pragma once
// Chunks on their way into a file. HDF5 would deflate each in turn inside of its write; here they are deflated by the
// pool, several at a time, and handed to HDF5 as they are to lie in the file.

#include "core/deflate.h"
#include "core/thread_pool.h"

#include <H5Cpp.h>

#include <deque>
#include <memory>
#include <optional>

namespace NBrenmark {

/// Deflated datasets of a file, from the array in memory to the last chunk on the disk. What is added is written later,
/// in the order of its adding, while more is added: as soon as more than a fixed number of bytes is waiting. So the
/// file comes out the same however many threads there are.
class CChunkQueue
{
public:
    CChunkQueue();
    /// Lets go of what wasn't written.
    ~CChunkQueue();
    CChunkQueue(const CChunkQueue&) = delete;
    CChunkQueue& operator=(const CChunkQueue&) = delete;

    /// The newest one of the thread, or null.
    static CChunkQueue* current();

    /// Takes the dataset, which is closed with its last chunk, and a copy of its values.
    /// \param rows, rowBytes  of the values; a chunk holds chunkRows of them, and zeros after the last row
    /// \throws hdf5_error  if this or an earlier chunk couldn't be written
    void add(const H5::DataSet& dataset, const void* values, hsize_t rows, hsize_t rowBytes, hsize_t chunkRows);
    /// Writes all that is waiting. \throws hdf5_error
    void finish();

private:
    struct SChunk
    {
        std::shared_ptr<H5::DataSet> dataset;
        hsize_t row = 0; ///< the first one
        bool isLast = false;
        SBytes values;
        SBytes stream;                   ///< when the task is done
        std::optional<CPooledTask> task; // the last member: it uses the others, and goes first
    };
    void writeOldest();

    std::deque<std::unique_ptr<SChunk>> waiting;
    std::size_t waitingBytes = 0;
    CChunkQueue* const before;
};

} // namespace NBrenmark
