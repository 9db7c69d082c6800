// The threads of the pool, and the tasks that wait for one of them.
#include "core/thread_pool.h"

#include "platform/core_count.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <system_error>
#include <utility>

namespace NBrenmark {

static std::atomic<unsigned> chosenThreads{0};

void setThreadCount(unsigned threads) { chosenThreads = std::min(threads, mostThreads); }

unsigned threadCount()
{
    if (chosenThreads > 0)
        return chosenThreads;
    const char* const wanted = std::getenv("BRENMARK_THREADS");
    char* end = nullptr;
    const long number = wanted != nullptr ? std::strtol(wanted, &end, 10) : 0;
    if (number >= 1 && *end == '\0')
        return static_cast<unsigned>(std::min(number, long(mostThreads)));
    return availableCores();
}

// ---------------------------------------------------------------- a task

struct CPooledTask::SState
{
    std::function<void()> work;
    std::atomic<bool> isTaken{false}; ///< by the one who does the work, or by the one who lets it go
    std::mutex lock;
    std::condition_variable done;
    bool isDone = false;
    std::exception_ptr failure;
};

static std::atomic<CThreadPool*> poolAtWork{nullptr};
static std::atomic<int> poolsAlive{0}; // with those of one thread

CPooledTask::CPooledTask(std::function<void()> work) : state(std::make_shared<SState>())
{
    state->work = std::move(work);
    if (CThreadPool* const pool = CThreadPool::current())
        pool->add(state);
    else
        run(*state);
}

bool CPooledTask::run(SState& state)
{
    if (state.isTaken.exchange(true))
        return false;
    try {
        state.work();
    }
    catch (...) {
        state.failure = std::current_exception();
    }
    const std::lock_guard<std::mutex> guard(state.lock);
    state.isDone = true;
    state.done.notify_all();
    return true;
}

bool CPooledTask::isDone() const
{
    const std::lock_guard<std::mutex> guard(state->lock);
    return state->isDone;
}

void CPooledTask::wait()
{
    run(*state);
    std::unique_lock<std::mutex> guard(state->lock);
    state->done.wait(guard, [this] { return state->isDone; });
    if (state->failure)
        std::rethrow_exception(std::exchange(state->failure, nullptr));
}

CPooledTask::~CPooledTask()
{
    if (!state->isTaken.exchange(true))
        return;
    std::unique_lock<std::mutex> guard(state->lock);
    state->done.wait(guard, [this] { return state->isDone; });
}

// ---------------------------------------------------------------- the pool

CThreadPool::CThreadPool(unsigned count)
{
    ++poolsAlive;
    CThreadPool* none = nullptr;
    isCurrent = count > 1 && poolAtWork.compare_exchange_strong(none, this);
    if (!isCurrent)
        return;
    try {
        for (unsigned i = 1; i < count; ++i)
            threads.emplace_back([this] { serve(); });
    }
    catch (const std::system_error&) { // no more of them are to be had
    }
    catch (const std::bad_alloc&) {
    }
    if (threads.empty()) {
        poolAtWork = nullptr;
        isCurrent = false;
    }
}

CThreadPool::~CThreadPool()
{
    --poolsAlive;
    if (!isCurrent)
        return;
    poolAtWork = nullptr;
    {
        const std::lock_guard<std::mutex> guard(lock);
        isEnding = true;
    }
    wake.notify_all();
    for (std::thread& thread : threads)
        thread.join();
}

CThreadPool* CThreadPool::current() { return poolAtWork; }

bool CThreadPool::isSet() { return poolsAlive > 0; }

void CThreadPool::add(std::shared_ptr<CPooledTask::SState> task)
{
    {
        const std::lock_guard<std::mutex> guard(lock);
        waiting.push_back(std::move(task));
    }
    wake.notify_one();
}

std::shared_ptr<CPooledTask::SState> CThreadPool::oldest()
{
    std::shared_ptr<CPooledTask::SState> task = std::move(waiting.front());
    waiting.pop_front();
    return task;
}

bool CThreadPool::help()
{
    CThreadPool* const pool = current();
    if (pool == nullptr)
        return false;
    std::unique_lock<std::mutex> guard(pool->lock);
    while (!pool->waiting.empty()) { // with those that others took back
        const std::shared_ptr<CPooledTask::SState> task = pool->oldest();
        guard.unlock();
        if (CPooledTask::run(*task))
            return true;
        guard.lock();
    }
    return false;
}

void CThreadPool::serve()
{
    std::unique_lock<std::mutex> guard(lock);
    while (true) {
        wake.wait(guard, [this] { return isEnding || !waiting.empty(); });
        if (waiting.empty())
            return;
        const std::shared_ptr<CPooledTask::SState> task = oldest();
        guard.unlock();
        CPooledTask::run(*task);
        guard.lock();
    }
}

} // namespace NBrenmark
