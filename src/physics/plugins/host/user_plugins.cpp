#include "physics/plugins/host/user_plugins.h"

#include "config/user_preferences.h"
#include "core/deck/application_state.h"
#include "platform/documents_folder.h"

namespace NBrenmark {

SPluginFolders userPluginFolders() { return {userPreferences().pluginFolder(), documentsFolder()}; }

bool areUserPluginsForbidden() { return !qEnvironmentVariableIsEmpty("BRENMARK_NO_PLUGINS"); }

CUserPlugins::CUserPlugins()
    : host([] { return applicationState().simulation.get(); }), binding(userPluginFolders(), host)
{}

} // namespace NBrenmark
