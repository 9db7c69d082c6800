// By the steady clock.
#include "platform/performance_counter.h"

#include <chrono>

namespace NBrenmark {

using Clock = std::chrono::steady_clock;
static_assert(Clock::period::num == 1, "a tick is a whole fraction of a second");

qint64 performanceCounter() { return Clock::now().time_since_epoch().count(); }

qint64 performanceFrequency() { return Clock::period::den; }

} // namespace NBrenmark
