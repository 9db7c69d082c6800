#pragma once
// Deflating a block as a whole, with the effort that it is worth.

#include <cstddef>
#include <memory>

namespace NBrenmark {

/// Bytes that were made by one and are used by another.
struct SBytes
{
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

/// Makes a zlib stream out of a block of at most 4 GB, the same bytes wherever and on whatever thread. Numbers that are as
/// rough as a solver leaves them hardly shrink, whatever is done: a quick encoder is tried first, and a thorough one
/// where a part of the block shows that it gains by it. A block that only grows is stored, and a few bytes longer then.
/// \throws std::bad_alloc
SBytes deflated(const char* data, std::size_t size);

/// The same for files that are made again at will: in a fraction of the time, with numbers that hardly shrink stored as
/// they are and the others left to the quick encoder alone.
/// \throws std::bad_alloc
SBytes quicklyDeflated(const char* data, std::size_t size);

} // namespace NBrenmark
