#pragma once
// How much memory the host system has left.

#include <QtGlobal>

namespace NBrenmark {

/// Bytes that can be taken without swapping; 0 where the system doesn't say.
quint64 freeMemory();

} // namespace NBrenmark
