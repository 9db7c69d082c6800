// brenmark plugins: where libraries are sought, and what those that are there can be used for.

#include "brenmark/commands.h"
#include "brenmark/failure.h"
#include "brenmark/info/table.h"
#include "brenmark/json_text.h"
#include "brenmark/plugins/library_report.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "physics/plugins/host/user_plugins.h"
#include "physics/plugins/plugin_library_search.h"
#include "platform/plugin_library.h"

#include <QDir>

namespace NBrenmark {

/// The libraries of one folder. One that leads out of the folders isn't asked: no deck could bind it.
/// \param only  the one kind that is sought there; null for all
static Json librariesOf(const SPluginFolders& folders, const SPluginKind* only, const QString& folder)
{
    const SPluginKind& kind = only != nullptr ? *only : contactModelPlugins;
    Json libraries = Json::array();
    const QStringList names = QDir(folder).entryList({'*' + pluginExtension()}, QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString& fileName : names) {
        const QString path = QDir(folder).filePath(fileName);
        const SLibraryPlace place = findPluginLibrary(folders, kind, fileName.chopped(pluginExtension().size()));
        Json report = place.fault.empty() ? libraryReport(path)
                                          : Json{{"path", utf8(path)},
                                                 {"plugins", Json::array()},
                                                 {"reason", "no deck can bind it: " + place.fault}};
        for (Json& plugin : report["plugins"]) {
            if (only == nullptr || plugin["kind"] == only->noun)
                continue;
            plugin["supported"] = false;
            plugin["reason"] = "isn't sought in this folder";
        }
        report["name"] = utf8(fileName.chopped(pluginExtension().size()));
        libraries.push_back(std::move(report));
    }
    return libraries;
}

/// The folders in the order in which they are searched, that of all kinds first.
static Json folderList()
{
    const SPluginFolders folders = userPluginFolders();
    Json list = Json::array();
    const auto add = [&](const QString& folder, const SPluginKind* only, const char* use) {
        list.push_back(
            {{"path", utf8(folder)},
             {"kinds", use},
             {"exists", QDir(folder).exists()},
             {"libraries", QDir::isAbsolutePath(folder) ? librariesOf(folders, only, folder) : Json::array()}});
    };
    add(folders.plugins, nullptr, "all kinds");
    for (const auto& [kind, use] :
         {std::pair(&contactModelPlugins, "contact models"), std::pair(&externalForcePlugins, "external forces"),
          std::pair(&particleFactoryPlugins, "particle factories")})
        add(preferenceFolder(folders, *kind), kind, use);
    return list;
}

static std::string pluginLine(const Json& plugin)
{
    std::string line = text(plugin["kind"]) + " " + text(plugin["version"]) +
                       (plugin["supported"].get<bool>() ? ", supported" : ", can't be bound");
    for (const Json& property : plugin["properties"])
        line += std::string(property == plugin["properties"].front() ? "; needs " : ", ") + shown(property["name"]) +
                " of " + text(property["owner"]);
    return line + (plugin["reason"].is_null() ? "" : ": " + shown(plugin["reason"]));
}

static void printFolders(const Json& folders)
{
    CTable places;
    CTable libraries;
    for (const Json& folder : folders) {
        places.row(shown(folder["path"]),
                   text(folder["kinds"]) + (folder["exists"].get<bool>() ? "" : "; doesn't exist"));
        for (const Json& library : folder["libraries"]) {
            for (const Json& plugin : library["plugins"])
                libraries.row(shown(library["path"]), pluginLine(plugin));
            if (!library["reason"].is_null())
                libraries.row(shown(library["path"]), shown(library["reason"]));
        }
    }
    places.print(countText(places.size(), "folder") + ", in the order in which they are searched");
    libraries.printUnlessEmpty(countText(libraries.size(), "library", "libraries"));
}

EExitCode runPlugins(const SPluginsOptions& options)
{
    if (!options.oneLibrary.isEmpty()) {
        printLibraryReport(options.oneLibrary);
        return eExitDone;
    }
    const Json folders = folderList();
    if (options.json)
        printJson({{"folders", folders}, {"error", Json()}});
    else
        printFolders(folders);
    flushResult();
    return eExitDone;
}

} // namespace NBrenmark
