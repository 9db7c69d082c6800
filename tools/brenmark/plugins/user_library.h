#pragma once
// Where a user's library of a name is.

#include "physics/plugins/plugin_library_search.h"

namespace NBrenmark {

struct SUserLibrary
{
    QString path;      ///< empty if there is none
    std::string words; ///< for a person: where it is, or where it isn't
};

/// The library of a name out of a deck. It isn't loaded.
SUserLibrary userLibrary(const SPluginKind& kind, const QString& name);

} // namespace NBrenmark
