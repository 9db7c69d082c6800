#include "brenmark/plugins/user_plugins.h"

#include "brenmark/failure.h"
#include "config/user_preferences.h"
#include "core/deck/application_state.h"
#include "core/shortened.h"
#include "platform/documents_folder.h"

namespace NBrenmark {

SPluginFolders userPluginFolders() { return {userPreferences().pluginFolder(), documentsFolder()}; }

bool areUserPluginsForbidden() { return !qEnvironmentVariableIsEmpty("BRENMARK_NO_PLUGINS"); }

CUserPlugins::CUserPlugins()
    : host([] { return applicationState().simulation.get(); }), binding(userPluginFolders(), host)
{}

SUserLibrary userLibrary(const SPluginKind& kind, const QString& name)
{
    const SPluginFolders folders = userPluginFolders();
    const SLibraryPlace place = findPluginLibrary(folders, kind, name);
    SUserLibrary library{place.path, std::string()};
    if (!place.path.isEmpty())
        library.words = "its library is " + utf8(place.path);
    else if (!place.fault.empty())
        library.words = "no library can have its name: " + place.fault;
    else
        library.words =
            "its library isn't in " + utf8(folders.plugins) + " or " + utf8(preferenceFolder(folders, kind));
    return library;
}

} // namespace NBrenmark
