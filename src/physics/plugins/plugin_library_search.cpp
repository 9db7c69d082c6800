// Names of libraries are held against the folders with all links resolved.
#include "physics/plugins/plugin_library_search.h"

#include "core/control_characters.h"
#include "core/shortened.h"
#include "platform/plugin_library.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

const SPluginKind contactModelPlugins{"contact model", "GETCMINTERFACEVERSION", "ContactModels/"};
const SPluginKind externalForcePlugins{"external force", "GETEFINTERFACEVERSION", "ExternalForces/"};
const SPluginKind particleFactoryPlugins{"particle factory", "GETFACTINTERFACEVERSION", "ParticleFactories/"};

/// What keeps a name from being that of a file in a folder; empty if nothing does.
static std::string faultOfName(const QString& name)
{
    if (name.isEmpty())
        return "it is empty";
    if (name.contains('/') || name.contains('\\'))
        return "it holds a separator of paths";
    if (name.contains(QLatin1String("..")))
        return "it holds two dots";
    if (std::any_of(name.begin(), name.end(), [](QChar c) { return isControlCharacter(c.unicode()); }))
        return "it holds a control character";
    return std::string();
}

static QString withSlash(const QString& folder) { return folder.endsWith('/') ? folder : folder + '/'; }

QString preferenceFolder(const SPluginFolders& folders, const SPluginKind& kind)
{
    return withSlash(folders.preferences) + kind.folder;
}

/// \param path  without links
static bool isBelow(const QString& path, const QString& folder)
{
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    return !canonical.isEmpty() && path.startsWith(withSlash(canonical));
}

SLibraryPlace findPluginLibrary(const SPluginFolders& folders, const SPluginKind& kind, const QString& name)
{
    SLibraryPlace place;
    place.fault = faultOfName(name);
    if (!place.fault.empty())
        return place;
    const QString places[] = {folders.plugins, preferenceFolder(folders, kind)};
    for (const QString& folder : places) {
        if (QDir::isRelativePath(folder)) // an empty one would be whatever folder the program was started in
            continue;
        place.sought = withSlash(folder) + name + pluginExtension();
        if (!QFileInfo::exists(place.sought))
            continue;
        const QString path = QFileInfo(place.sought).canonicalFilePath();
        if (!isBelow(path, places[0]) && !isBelow(path, places[1]))
            place.fault = "it leads to " + shortened(path) + ", outside of the folders of plug-ins";
        else
            place.path = path;
        return place;
    }
    return place;
}

} // namespace NBrenmark
