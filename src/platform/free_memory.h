#pragma once
// How much memory the host system has left.

#include <QtGlobal>

#include <cstddef>

namespace NBrenmark {

/// Bytes that can be taken without swapping; 0 where the system doesn't say.
quint64 freeMemory();

/// Whether this process can still get so many bytes at once. They are asked for and given back untouched, so it costs
/// no memory and next to no time.
bool isMemoryToBeHad(std::size_t bytes);

/// Has this process keep some of the memory that it frees for what it asks for next. What goes back to the system comes
/// again page by page, each zeroed: a fifth of the time of a timestep without rows, whose files are opened anew.
void keepFreedMemory();

} // namespace NBrenmark
