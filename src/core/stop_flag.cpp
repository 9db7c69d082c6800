// One wish for the process: there is one reading thread at a time.
#include "core/stop_flag.h"

namespace NBrenmark {

static CStopWish readShallEnd;

void requestStop() { readShallEnd.raise(); }

void clearStop() { readShallEnd.forget(); }

bool stopRequested() { return readShallEnd.isRaised(); }

} // namespace NBrenmark
