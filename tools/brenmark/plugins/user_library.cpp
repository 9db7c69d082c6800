#include "brenmark/plugins/user_library.h"

#include "brenmark/failure.h"
#include "physics/plugins/host/user_plugins.h"

namespace NBrenmark {

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
