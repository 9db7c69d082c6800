#pragma once
// How plug-in libraries are named on this host.

#include <QString>

namespace NBrenmark {

/// File name extension of a plug-in library, with the dot.
QString pluginExtension();

} // namespace NBrenmark
