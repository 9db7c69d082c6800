// Starting, and stopping by the flag. A thread that can't be had is no reason to fail: its work is done by who
// asked.
#include "core/worker.h"

#include "core/log.h"
#include "core/stop_flag.h"

namespace NBrenmark {

/// How often a worker is asked again to stop, ms.
static constexpr unsigned long stopPollMs = 100;

void CWorker::startOrRun()
{
    clearStop();
    start(QThread::InheritPriority);
    // A thread that couldn't be started counts as neither: waiting for it ends at once, as if all were done.
    if (!isRunning() && !isFinished())
        run();
}

void CWorker::stopAndWait()
{
    do {
        requestStop();
        flushLogModules();
    } while (!wait(stopPollMs));
    clearStop();
}

} // namespace NBrenmark
