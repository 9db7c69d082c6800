// Waits for the thread in steps, so that the log flows and a progress controller is asked meanwhile.
#include "core/background_read_write.h"

#include "core/log.h"
#include "core/progress.h"
#include "core/read_write.h"
#include "core/stop_flag.h"

#include "core/versioned_stream.h"
#include <QElapsedTimer>
#include <algorithm>
#include <exception>

namespace NBrenmark {

/// How often the log modules are flushed while the caller waits, ms. It paces nothing else.
static constexpr qint64 flushInterval = 100;

CBackgroundReadWriteController::CBackgroundReadWriteController(IReadWrite& target, CVersionedStream& stream,
                                                               bool isWrite, IProgressController* progress)
    : target(target), stream(stream), isWrite(isWrite), progress(progress)
{}

void CBackgroundReadWriteController::run()
{
    const CPlaceScope scope(place);
    try {
        enterThread();
        result = isWrite ? target.write(stream, progress) : target.read(stream, progress);
        if (!isWrite && result && wantsCancel(progress))
            result = false;
    }
    catch (const CReadStopped&) {
        result = false;
    }
    catch (const std::exception& failure) {
        result = false;
        cause = causeOf(failure, eCauseNone);
        try {
            error = textOf(failure);
        }
        catch (const std::bad_alloc&) { // the text may lack, the failure doesn't
            cause = eCauseMemory;
        }
    }
}

bool CBackgroundReadWriteController::execute(qint64 timeLimit)
{
    QElapsedTimer clock;
    clock.start();
    startOrRun();
    const CWaiting waiting(*this);
    while (true) {
        flushLogModules();
        const qint64 timeLeft = std::max<qint64>(timeLimit - clock.elapsed(), 0);
        if (wait(std::chrono::milliseconds(std::min(flushInterval, timeLeft))))
            break;
        if (timeLeft > 0)
            continue;
        if (progress)
            progress->cancel();
        stopAndWait();
        if (error.empty())
            error = "The time of " + std::to_string(timeLimit / 1000) + " s that this may take has passed.";
        result = false;
        break;
    }
    flushLogModules();
    return result;
}

} // namespace NBrenmark
