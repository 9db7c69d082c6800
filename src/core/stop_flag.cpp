// One flag for the process: there is one reading thread at a time.
#include "core/stop_flag.h"

#include <atomic>

namespace NBrenmark {

static std::atomic<bool> stopFlag{false};

void requestStop() { stopFlag.store(true); }

void clearStop() { stopFlag.store(false); }

bool stopRequested() { return stopFlag.load(); }

} // namespace NBrenmark
