// Seconds since a start, from the platform's counter.
#include "core/timer.h"

#include "platform/performance_counter.h"

namespace NBrenmark {

CTimer::CTimer() : secondsPerCount(1.0 / static_cast<double>(performanceFrequency())) {}

void CTimer::start() { startCount = performanceCounter(); }

void CTimer::stop() { elapsedCount += performanceCounter() - startCount; }

double CTimer::elapsedSeconds() const { return static_cast<double>(elapsedCount) * secondsPerCount; }

} // namespace NBrenmark
