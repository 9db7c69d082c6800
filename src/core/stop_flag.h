#pragma once
// The process-wide stop flag. A manager sets it when its time limit passes or the user asks to
// stop; long reads test it between elements, and the reading thread then unwinds.

namespace NBrenmark {

void requestStop();
void clearStop();
bool stopRequested();

/// Leaves a read whose stop flag is set. Not a std::exception on purpose: the recovery of a
/// damaged block catches those and goes on, and a stopped read must not go on.
class CReadStopped
{
};

/// Throws CReadStopped if a stop was requested.
inline void leaveIfStopped()
{
    if (stopRequested())
        throw CReadStopped();
}

} // namespace NBrenmark
