#pragma once
// The plug-in libraries of whoever runs this program.

#include "physics/plugins/host/host.h"
#include "physics/plugins/plugin_binding.h"
#include "physics/plugins/plugin_library_search.h"

namespace NBrenmark {

/// Where the user's preferences say that libraries are.
SPluginFolders userPluginFolders();

/// Whether the environment forbids to bind any (BRENMARK_NO_PLUGINS, set to something).
bool areUserPluginsForbidden();

/// Binds plug-ins of the user's folders while it lives; they reach whichever deck is open.
class CUserPlugins
{
public:
    CUserPlugins();
    /// Whether the code of a library has run.
    bool haveLoaded() const { return binding.hasLoaded; }

private:
    NApiCore::CPluginHost host;
    CPluginBinding binding;
};

struct SUserLibrary
{
    QString path;      ///< empty if there is none
    std::string words; ///< for a person: where it is, or where it isn't
};

/// The library of a name out of a deck. It isn't loaded.
SUserLibrary userLibrary(const SPluginKind& kind, const QString& name);

} // namespace NBrenmark
