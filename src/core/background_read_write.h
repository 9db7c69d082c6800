#pragma once
// Reads or writes one object on a thread of its own, while the caller waits and keeps the log flowing.

#include "core/cause.h"
#include "core/data_place.h"
#include "core/worker.h"

#include <string>

namespace NBrenmark {

class CVersionedStream;
class IProgressController;
class IReadWrite;

class CBackgroundReadWriteController : public CWorker
{
public:
    /// \param target, stream  not owned; nothing else touches them until execute is done
    /// \param progress        may be null
    CBackgroundReadWriteController(IReadWrite& target, CVersionedStream& stream, bool isWrite,
                                   IProgressController* progress);

    static constexpr qint64 defaultTimeLimit = 1200000; // ms

    /// Runs the read or write and waits for it; returns as soon as it is done. After the time limit the
    /// controller is asked to cancel, the stop flag is raised, and the result is false.
    bool execute(qint64 timeLimit = defaultTimeLimit);
    /// Why execute gave false, as far as an exception or the clock says so; else empty.
    const std::string& errorText() const { return error; }
    /// eCauseNone where the exception leaves it to the operation.
    ECause errorCause() const { return cause; }

protected:
    void run() override;

private:
    IReadWrite& target;
    CVersionedStream& stream;
    const bool isWrite;
    IProgressController* const progress;
    bool result = true;
    std::string error;
    ECause cause = eCauseNone;
    const SDataPlace place = placeAtWork(); // of the thread that made this
};

} // namespace NBrenmark
