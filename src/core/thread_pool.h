#pragma once
// The threads that help with work which can be cut into pieces: one pool for the process, made by whoever drives a
// conversion or a comparison, and found by those who have pieces of work.

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace NBrenmark {

/// Threads that compute: those chosen, else those of the environment variable BRENMARK_THREADS if it is a number from 1
/// on, else one for each core that the process may use.
unsigned threadCount();
/// \param threads  0: as if none had been chosen
void setThreadCount(unsigned threads);
constexpr unsigned mostThreads = 1024;

/// A piece of work. Handed to the pool when it is made; whoever waits for it takes it back if no thread has begun it.
class CPooledTask
{
public:
    /// Without a pool the work is done here and now.
    explicit CPooledTask(std::function<void()> work);
    /// Waits, or takes the work back; what it throws is lost.
    ~CPooledTask();
    CPooledTask(const CPooledTask&) = delete;
    CPooledTask& operator=(const CPooledTask&) = delete;

    /// Until the work is done. Throws what the work threw.
    void wait();
    bool isDone() const;
    /// Does the work here if no thread has begun it. \return whether it did
    bool runHere() { return run(*state); }

private:
    friend class CThreadPool;
    struct SState;
    static bool run(SState& state);

    std::shared_ptr<SState> state;
};

/// While it lives, tasks made by any thread of the process go to its threads. There is one less than threads, for the
/// one who waits works too. Where the system gives no more of them, those that there are do the work.
class CThreadPool
{
public:
    explicit CThreadPool(unsigned threads);
    /// Waits for the threads. All tasks must be gone.
    ~CThreadPool();
    CThreadPool(const CThreadPool&) = delete;
    CThreadPool& operator=(const CThreadPool&) = delete;

    /// The one at work, or null: where one thread does all there is none.
    static CThreadPool* current();
    /// Does the oldest piece of work that no thread has begun: for one who waits for what a thread has begun.
    /// \return whether there was one
    static bool help();
    /// Whether someone has set a number of threads for this work, be it one: no others must compute beside them.
    static bool isSet();

private:
    friend class CPooledTask;
    void add(std::shared_ptr<CPooledTask::SState> task);
    std::shared_ptr<CPooledTask::SState> oldest();
    void serve();

    std::mutex lock;
    std::condition_variable wake;
    std::deque<std::shared_ptr<CPooledTask::SState>> waiting;
    bool isEnding = false;
    std::vector<std::thread> threads;
    bool isCurrent = false;
};

} // namespace NBrenmark
