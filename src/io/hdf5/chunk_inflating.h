#pragma once
// Inflating the chunks of datasets in place of HDF5's filter, which is slower: on the pool, several at a time.

#include <H5Cpp.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>

namespace NBrenmark {

/// Deflated datasets on their way from a file into arrays. Chunks are fetched in turn, and inflated while more are
/// fetched, be they of the next dataset: what an array holds is known at the end.
class CChunkInflating
{
public:
    CChunkInflating();
    /// Lets go of what wasn't inflated.
    ~CChunkInflating();
    CChunkInflating(const CChunkInflating&) = delete;
    CChunkInflating& operator=(const CChunkInflating&) = delete;

    /// Fills an array with the values of a sound dataset, if they are stored as CArrayWriter stores them and in the
    /// numbers that are wanted.
    /// \param target    remains in its place until finish() is done
    /// \param otherwise fills it through HDF5, which says what is wrong with a chunk that is damaged; called by finish()
    /// \return false where they aren't: nothing is done
    bool add(const H5::DataSet& dataset, const H5::PredType& type, void* target, std::function<void()> otherwise);
    /// Waits until the arrays are full. Throws what HDF5 has to say of one that can't be.
    void finish();

private:
    struct SArray
    {
        std::function<void()> otherwise;
        bool isWhole = true;
    };
    struct SChunk;
    void finishOldest();

    std::deque<SArray> arrays;
    std::size_t waitingBytes = 0;
    std::deque<std::unique_ptr<SChunk>> waiting; // the last member: they are part of the arrays
};

} // namespace NBrenmark
