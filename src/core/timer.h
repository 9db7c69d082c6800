#pragma once
// A stopwatch on the performance counter of the platform.

#include <QtGlobal>

namespace NBrenmark {

/// Adds up the spans between start and stop. stop twice after one start counts from that start twice.
class CTimer
{
public:
    CTimer();
    virtual ~CTimer() = default;
    void start();
    void stop();
    /// Seconds of all spans so far.
    double elapsedSeconds() const;

private:
    qint64 startCount = 0;
    qint64 elapsedCount = 0;
    double secondsPerCount;
};

} // namespace NBrenmark
