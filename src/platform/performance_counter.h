#pragma once
// The host's monotonic counter.

#include <QtGlobal>

namespace NBrenmark {

/// Ticks since an arbitrary start; never runs backwards.
qint64 performanceCounter();
/// Ticks per second.
qint64 performanceFrequency();

} // namespace NBrenmark
