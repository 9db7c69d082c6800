#pragma once
// How plug-in libraries are named on this host.

#include <QString>

namespace NBrenmark {

/// File name extension of a plug-in library, with the dot.
QString pluginExtension();

/// Whether a library lacks the end of what is to be loaded of it, at which the loader of this host ends the process.
/// False for a file of a form that isn't known here, which the loader refuses.
bool isLibraryCutShort(const QString& path);

} // namespace NBrenmark
