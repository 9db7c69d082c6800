// Starting, and stopping by the flag. A thread that can't be had is no reason to fail: its work is done by who
// asked.
#include "core/worker.h"

#include "core/log.h"
#include "core/stop_flag.h"

#include <QAbstractEventDispatcher>

#include <new>

namespace NBrenmark {

namespace {

/// No events. Qt would give each thread a dispatcher of GLib's, which takes pipes and memory inside the new thread and
/// ends the process where there are none; a worker waits for no event.
class CNoEvents : public QAbstractEventDispatcher
{
    bool processEvents(QEventLoop::ProcessEventsFlags) override { return false; }
    bool hasPendingEvents() override { return false; }
    void registerSocketNotifier(QSocketNotifier*) override {}
    void unregisterSocketNotifier(QSocketNotifier*) override {}
    void registerTimer(int, int, Qt::TimerType, QObject*) override {}
    bool unregisterTimer(int) override { return false; }
    bool unregisterTimers(QObject*) override { return false; }
    QList<TimerInfo> registeredTimers(QObject*) const override { return {}; }
    int remainingTime(int) override { return -1; }
    void wakeUp() override {}
    void interrupt() override {}
    void flush() override {}
};

} // namespace

/// How often a worker is asked again to stop, ms.
static constexpr unsigned long stopPollMs = 100;

/// Memory for a thread object while it is made: Qt's own don't survive an allocation that fails in the middle of their
/// making. The first one that fails on this thread is given what is kept here; where a second one fails as well, which
/// takes a machine that is made to, the process ends as for a failure that nothing catches.
class CThreadReserve
{
public:
    CThreadReserve()
    {
        reserve = ::operator new(size);
        isAtWork = true;
        before = std::set_new_handler(spend);
    }
    ~CThreadReserve()
    {
        std::set_new_handler(before);
        isAtWork = false;
        ::operator delete(reserve);
    }
    CThreadReserve(const CThreadReserve&) = delete;
    CThreadReserve& operator=(const CThreadReserve&) = delete;

private:
    static void spend()
    {
        if (!isAtWork) // another thread's
            lackMemory();
        if (!reserve)
            endForMemory();
        ::operator delete(reserve);
        reserve = nullptr;
    }
    [[noreturn]] static void lackMemory() { throw std::bad_alloc(); }
    [[noreturn]] static void endForMemory() noexcept { lackMemory(); }

    static constexpr std::size_t size = 4096;
    static thread_local void* reserve;
    static thread_local bool isAtWork;

    std::new_handler before = nullptr;
};

thread_local void* CThreadReserve::reserve = nullptr;
thread_local bool CThreadReserve::isAtWork = false;

// The thread owns its dispatcher from here on.
CWorker::CWorker() : CWorker(CThreadReserve()) {}

CWorker::CWorker(const CThreadReserve&) { setEventDispatcher(new CNoEvents); }

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
