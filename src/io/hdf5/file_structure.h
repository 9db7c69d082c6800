#pragma once
// The skeleton of an HDF5 file, walked before HDF5 is let at it. What holds it together in the form that decks are of,
// object headers, tables of links, trees of chunks and heaps of texts, has no checksums, and the library believes it: one
// flipped bit has it read where nothing is, or for ever.

#include <string>

namespace NBrenmark {

/// \throws hdf5_error    if a part leads out of the file or itself, or doesn't hold what it announces
/// \throws device_error  if the file can't be read
void checkStructure(const std::string& path);

} // namespace NBrenmark
