// Starting, and stopping by the flag. A thread that can't be had is no reason to fail: its work is done by who
// asked.
#include "core/worker.h"

#include "core/stop_flag.h"

#include <QThread>

#include <exception>
#include <new>
#include <utility>

namespace NBrenmark {

namespace {

/// Memory for what doesn't survive an allocation that fails. The first one that fails on this thread is given what is
/// kept here; where a second one fails as well, which takes a machine that is made to, the process ends as for a failure
/// that nothing catches.
class CReserve
{
public:
    CReserve()
    {
        reserve = ::operator new(size);
        isAtWork = true;
        before = std::set_new_handler(spend);
    }
    ~CReserve()
    {
        std::set_new_handler(before);
        isAtWork = false;
        ::operator delete(reserve);
    }
    CReserve(const CReserve&) = delete;
    CReserve& operator=(const CReserve&) = delete;

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

thread_local void* CReserve::reserve = nullptr;
thread_local bool CReserve::isAtWork = false;

} // namespace

// ---------------------------------------------------------------- the kept thread

static thread_local CKeptThread* keptOfThread = nullptr;

CKeptThread::CKeptThread() : before(std::exchange(keptOfThread, this)) {}

CKeptThread::~CKeptThread()
{
    keptOfThread = before;
    {
        const std::lock_guard<std::mutex> guard(lock);
        isEnding = true;
    }
    changed.notify_one();
    if (thread.joinable())
        thread.join();
}

bool CKeptThread::begin(CWorker& worker)
{
    {
        const std::lock_guard<std::mutex> guard(lock);
        if (taken != nullptr)
            return false;
        if (!thread.joinable()) {
            try {
                thread = std::thread([this] { serve(); });
            }
            catch (const std::exception&) { // no thread, or no memory for its beginning
                return false;
            }
        }
        taken = &worker;
    }
    changed.notify_one();
    return true;
}

void CKeptThread::serve()
{
    std::unique_lock<std::mutex> guard(lock);
    while (true) {
        changed.wait(guard, [this] { return isEnding || taken != nullptr; });
        if (taken == nullptr)
            return;
        CWorker& worker = *taken;
        guard.unlock();
        worker.run();
        guard.lock();
        taken = nullptr;
        guard.unlock();
        worker.noteEnd(); // it may be gone afterwards
        guard.lock();
    }
}

// ---------------------------------------------------------------- a worker

CWorker::~CWorker() { wait(); }

bool CWorker::isRunning() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return !isDone;
}

bool CWorker::wait(std::chrono::milliseconds longest)
{
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (!ended.wait_for(lock, longest, [this] { return isDone; }))
            return false;
    }
    wait();
    return true;
}

void CWorker::wait()
{
    if (thread.joinable()) {
        thread.join();
        return;
    }
    std::unique_lock<std::mutex> lock(mutex);
    ended.wait(lock, [this] { return isDone; });
}

void CWorker::enterThread()
{
    const CReserve reserve;
    QThread::currentThread();
}

void CWorker::startOrRun()
{
    wait();
    clearStop();
    isDone = false;
    if (keptOfThread != nullptr && keptOfThread->begin(*this))
        return;
    try {
        thread = std::thread([this] {
            run();
            noteEnd();
        });
    }
    catch (const std::exception&) { // no thread, or no memory for its beginning
        run();
        noteEnd();
    }
}

void CWorker::noteEnd()
{
    const std::lock_guard<std::mutex> lock(mutex);
    isDone = true;
    ended.notify_all();
}

void CWorker::stopAndWait()
{
    requestStop();
    wait();
    clearStop();
}

CWorker::CWaiting::~CWaiting()
{
    if (worker.isRunning())
        worker.stopAndWait();
}

} // namespace NBrenmark
