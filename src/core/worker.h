#pragma once
// A thread that does one piece of work while its maker waits: how it starts and how it is stopped, in one place, for
// the stop flag belongs to all of them.
//
// It is none of Qt's threads: those end the process, or are waited for without an end, where there is too little memory
// or no further thread to be had.

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace NBrenmark {

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

    /// Starts the thread. If none is to be had the work is done before this returns. A stop that was meant for
    /// another worker is forgotten before the thread begins, so that none that comes later can be lost.
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
    void noteEnd();

    std::thread thread;
    mutable std::mutex mutex;
    std::condition_variable ended;
    bool isDone = true;
};

} // namespace NBrenmark
