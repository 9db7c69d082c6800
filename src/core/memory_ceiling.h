#pragma once
// The most memory that one read may take. What is stored deflated may be a thousand times as large in memory, in lawful
// decks too: it is counted as its bytes arrive, and the read ends before the machine does.

#include "core/cause.h"

#include <QtGlobal>

#include <string>

namespace NBrenmark {

/// What is read takes more memory than it may.
class memory_ceiling_error : public caused_error
{
public:
    explicit memory_ceiling_error(const std::string& what) : caused_error(eCauseMemory, what) {}
};

/// \param bytes  that one creator model or timestep may take; 0: half of what was free when the first one was read, and
///               no more than what a file of its size is known to need
void setMemoryCeiling(quint64 bytes);
quint64 memoryCeiling();

/// Begins the count of one read. Reads follow each other: one is at work at a time.
/// \param fileBytes  of the file that is read; 0: not known
void beginMemoryCount(quint64 fileBytes = 0);
/// Counts what is about to be taken.
/// \param what  it is for, in the plural: "velocities"
/// \throws memory_ceiling_error  if that would be too much
void admitMemory(quint64 bytes, const char* what);

} // namespace NBrenmark
