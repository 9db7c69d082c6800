#pragma once
// What is in a plug-in library. Only the library itself knows, so it is loaded, in a process of its own: one that
// crashes or never comes back says no more than that.

#include "brenmark/json_text.h"

#include <QString>

namespace NBrenmark {

/// Has a process of its own ask a library, for ten seconds at most.
/// \return "path", "plugins" and "reason"; "plugins" has a row for each kind that the library is of, with "kind",
///         "version", "supported", "reason" and "properties"; a reason is null where there is nothing to say
Json libraryReport(const QString& path);

/// The other end: loads a library and prints its report. What the library prints goes to standard error.
void printLibraryReport(const QString& path);

} // namespace NBrenmark
