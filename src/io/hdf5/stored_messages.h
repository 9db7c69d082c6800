#pragma once
// The messages of object headers, as far as HDF5 believes their sizes: types, extents, layouts, filters.

#include "io/hdf5/file_bytes.h"

#include <vector>

namespace NBrenmark {

/// What a datatype says of itself.
struct SStoredType
{
    quint64 size = 0;              ///< bytes of an element
    bool isVariableLength = false; ///< its elements are in a global heap
};

/// How the values of a dataset are laid out.
struct SStoredLayout
{
    enum EClass : quint8
    {
        eCompact,
        eContiguous,
        eChunked,
        eNone
    };
    EClass kind = eNone;
    quint64 address = 0;
    quint64 size = 0;             ///< bytes of contiguous and compact values
    std::vector<quint32> extents; ///< of a chunk, the last one the bytes of an element
};

/// Each consumes one message. \throws hdf5_error  if it doesn't hold what it announces
SStoredType takeType(CFileBytes& bytes);
/// \return the number of elements, saturated
quint64 takeExtent(CFileBytes& bytes);
SStoredLayout takeLayout(CFileBytes& bytes);
void checkFillValue(CFileBytes bytes, bool isOldForm);
void checkFilters(CFileBytes bytes);
void checkAttribute(CFileBytes bytes);

} // namespace NBrenmark
