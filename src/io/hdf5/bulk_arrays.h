#pragma once
// The one place through which arrays of the family move: a value for each particle, triangle,
// contact or record. How they are chunked, compressed, written and read is known here alone.

#include <H5Cpp.h>

#include <functional>
#include <string>

namespace NBrenmark {

class CChunkInflating;

/// Rows of so many numbers; 0 columns make a list of one dimension.
struct SArrayShape
{
    hsize_t rows = 0;
    hsize_t columns = 0;

    hsize_t elements() const { return columns == 0 ? rows : rows * columns; }
};

/// How the dataset of an array is laid out.
struct SArrayLayout
{
    hsize_t chunkRows = 0; ///< 0: contiguous
    bool deflated = false;
};

/// Arrays from 256 values on are chunked, and deflated if the user wants that; a chunk holds at most
/// 250000 values, which the chunk cache takes twice.
/// \param count  what the rule goes by: the rows of an array, but all values of a custom property
SArrayLayout arrayLayout(hsize_t count, hsize_t columns, bool compress);

/// The user's preference "Compress".
bool compressionWanted();

class CArrayWriter
{
public:
    CArrayWriter(H5::H5Location& location, bool compress) : location(location), compress(compress) {}

    /// Writes an array, laid out by the rule for count. Deflated, it is copied and may reach the file later: see
    /// CChunkQueue.
    /// \param type  of a number, in memory and in the file
    void write(const std::string& name, const H5::PredType& type, const SArrayShape& shape, const void* data,
               hsize_t count) const;
    /// The same, with default creation properties: for short arrays of a fixed number of rows.
    void writePlain(const std::string& name, const H5::PredType& type, const SArrayShape& shape,
                    const void* data) const;

private:
    void write(const std::string& name, const H5::PredType& type, const SArrayShape& shape, const void* data,
               const H5::DSetCreatPropList& properties, const SArrayLayout& layout) const;

    H5::H5Location& location;
    bool compress;
};

class CArrayReader
{
public:
    static constexpr hsize_t anyColumns = ~hsize_t(0);
    /// Takes memory for an array, and gives the place for its numbers.
    using Allocate = std::function<void*(const SArrayShape&)>;

    /// \param inflating  where arrays may be left unfinished, to be full when it is; null: each is full when it is read
    explicit CArrayReader(const H5::H5Location& location, CChunkInflating* inflating = nullptr)
        : location(location), inflating(inflating)
    {}

    /// Reads an array in one transfer.
    /// \param type     of a number in memory; the file may hold another one that converts to it
    /// \param columns  that the dataset must have; 0 for a list, anyColumns for rows of any width
    /// \param allocate is asked once, for no more than what the file's bytes can hold
    void read(const std::string& name, const H5::PredType& type, hsize_t columns, const Allocate& allocate) const;

    /// Rows of an array, which isn't read.
    hsize_t storedRows(const std::string& name) const;

private:
    void fill(CChunkInflating& chunks, const H5::DataSet& dataset, const std::string& name, const H5::PredType& type,
              void* target) const;

    const H5::H5Location& location;
    CChunkInflating* const inflating; // not owned
};

} // namespace NBrenmark
