#pragma once
// A thread that does one piece of work while its maker waits: how it starts and how it is stopped, in one place, for
// the stop flag belongs to all of them.

#include <QThread>

namespace NBrenmark {

class CThreadReserve;

class CWorker : public QThread
{
public:
    /// Takes all that the thread needs to begin. \throws std::bad_alloc
    CWorker();

protected:
    /// Starts the thread. If none is to be had the work is done before this returns. A stop that was meant for
    /// another worker is forgotten before the thread begins, so that none that comes later can be lost.
    void startOrRun();
    /// Raises the stop flag and waits for the thread, which leaves by itself at its next test of the flag: killed, it
    /// would keep its files and the lock of the HDF5 library.
    void stopAndWait();

private:
    explicit CWorker(const CThreadReserve& whileItIsMade);
};

} // namespace NBrenmark
