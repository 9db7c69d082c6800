#pragma once
// The most memory that a deck may take. What is stored deflated may be a thousand times as large in memory: it is counted
// as its bytes arrive, and the read ends before the machine does.

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

/// What a read fills. Two of each kind may be in memory: while one is written the next one is read.
enum EMemoryOf
{
    eMemoryOfModel,
    eMemoryOfTimestep
};

/// \param bytes  that a deck may take; 0: what follows from its size, and no more than half of what was free when the
///               first one was read
void setMemoryCeiling(quint64 bytes);

/// Whether a number of bytes was set.
bool isMemoryCeilingSet();

/// What a deck may take whatever its size: one that was made from another may be stored much smaller.
/// \param bytes  0: nothing
void setLeastMemoryCeiling(quint64 bytes);
/// The most that was counted of the deck that was opened last.
quint64 mostMemoryTaken();

/// Begins the count of a deck.
/// \param bytes  of all of its files
void beginDeckMemory(quint64 bytes);
/// Begins the count of one read. Reads follow each other: one is at work at a time.
void beginMemoryCount(EMemoryOf kind);
/// Counts what is about to be taken.
/// \param what  it is for, in the plural: "velocities"
/// \throws memory_ceiling_error  if that would be too much
void admitMemory(quint64 bytes, const char* what);

} // namespace NBrenmark
