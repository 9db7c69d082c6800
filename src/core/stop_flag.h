#pragma once
// The wish that work shall end. Whoever has work done raises it, whoever does the work asks at places of its own choice,
// and nothing is ended from outside. docs/architecture.md says who may stop what.

#include <atomic>

namespace NBrenmark {

class CStopWish
{
public:
    /// From any thread, and from signal handlers.
    void raise() { raised = true; }
    void forget() { raised = false; }
    bool isRaised() const { return raised; }

private:
    std::atomic<bool> raised{false};
    static_assert(std::atomic<bool>::is_always_lock_free, "signal handlers raise it");
};

// The wish of the process that its read shall end. Who waits for a worker raises it, when the time limit passes or the
// user asks for it; long reads test it between elements, and the reading thread then unwinds.

void requestStop();
void clearStop();
bool stopRequested();

/// Leaves a read that shall end. Not a std::exception on purpose: the recovery of a damaged block catches those and goes
/// on, and a stopped read must not go on.
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
