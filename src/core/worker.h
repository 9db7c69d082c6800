#pragma once
// A thread that does one piece of work while its maker waits: how it starts and how it is stopped, in one place, for
// the stop flag belongs to all of them.
//
// It is none of Qt's threads: those end the process, or are waited for without an end, where there is too little memory
// or no further thread to be had. Nor is each begun anew where there is one that is kept: a deck of many timesteps
// without rows would spend more on the beginning and ending of threads than on the timesteps.

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace NBrenmark {

class CWorker;

/// While it lives, one thread does the work of all workers that the thread which made it starts one after the other.
/// Those that come while it is busy begin threads as they would without it. It outlives the workers.
class CKeptThread
{
public:
    CKeptThread();
    /// Waits for the thread.
    ~CKeptThread();
    CKeptThread(const CKeptThread&) = delete;
    CKeptThread& operator=(const CKeptThread&) = delete;

private:
    friend class CWorker;
    /// \return whether the thread takes it; not if it is busy, or if there is none to be had
    bool begin(CWorker& worker);
    void serve();

    std::mutex lock;
    std::condition_variable changed;
    CWorker* taken = nullptr;
    bool isEnding = false;
    CKeptThread* const before; ///< of the same maker
    std::thread thread;        ///< begun by the first worker
};

class CWorker
{
public:
    CWorker() = default;
    /// The work is done by then: who makes a worker waits for it.
    virtual ~CWorker();
    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;

    bool isRunning() const;
    /// Returns as soon as the work is done. \return false if it isn't after that time
    bool wait(std::chrono::milliseconds longest);
    void wait();

protected:
    /// The work. It lets no exception out.
    virtual void run() = 0;
    /// What run begins with, and what fails as the work may: Qt's own data of the thread. Qt makes it with the first
    /// object there, and doesn't survive if it can't.
    static void enterThread();

    /// Starts the work on the kept thread, else on a new one. If none is to be had it is done before this returns. A
    /// stop that was meant for another worker is forgotten before the thread begins, so that none that comes later can
    /// be lost.
    void startOrRun();
    /// Raises the stop flag and waits for the thread, which leaves by itself at its next test of the flag: killed, it
    /// would keep its files and the lock of the HDF5 library.
    void stopAndWait();

    /// Stops the work if the waiting for it ends by an exception.
    class CWaiting
    {
    public:
        explicit CWaiting(CWorker& worker) : worker(worker) {}
        ~CWaiting();
        CWaiting(const CWaiting&) = delete;
        CWaiting& operator=(const CWaiting&) = delete;

    private:
        CWorker& worker;
    };

private:
    friend class CKeptThread;
    void noteEnd();

    std::thread thread; ///< that does the work if the kept one doesn't
    mutable std::mutex mutex;
    std::condition_variable ended;
    bool isDone = true;
};

} // namespace NBrenmark
