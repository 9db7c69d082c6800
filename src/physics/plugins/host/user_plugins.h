#pragma once
// The plug-in libraries of whoever runs this process: where the user's preferences say that they are, and a binding of
// them to the open deck.

#include "physics/plugins/host/host.h"
#include "physics/plugins/plugin_binding.h"

namespace NBrenmark {

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

} // namespace NBrenmark
