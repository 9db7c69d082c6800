#pragma once
// Inflating the chunks of a dataset in place of HDF5's filter, which is slower: on the pool, several at a time.

#include <H5Cpp.h>

namespace NBrenmark {

/// Fills an array with the values of a sound dataset, if they are stored as CArrayWriter stores them and in the numbers
/// that are wanted.
/// \return false where they aren't, and where a chunk is damaged: HDF5 then reads them, and says what is wrong; what the
///         target holds means nothing
bool inflateChunks(const H5::DataSet& dataset, const H5::PredType& type, void* target);

} // namespace NBrenmark
