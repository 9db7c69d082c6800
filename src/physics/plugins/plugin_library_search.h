#pragma once
// Where the library of a plug-in is. The name comes out of a deck: it is data, and never leads out of the two folders.

#include "physics/plugins/plugin_binding.h"

#include <QString>

#include <string>

namespace NBrenmark {

/// What distinguishes the kinds of plug-ins until a library is loaded.
struct SPluginKind
{
    const char* noun;          ///< for a person: "contact model"
    const char* versionExport; ///< gives the interface version
    const char* folder;        ///< of preferences and libraries, below that of all kinds; with a slash
};

extern const SPluginKind contactModelPlugins;
extern const SPluginKind externalForcePlugins;
extern const SPluginKind particleFactoryPlugins;

struct SLibraryPlace
{
    QString path;      ///< of the library, without links; empty if there is none
    QString sought;    ///< the last path that was looked at
    std::string fault; ///< why the name is no library's; empty if it may be one
};

/// Looks in the folder of the user's plug-ins, then in that of the kind. Nothing is loaded or made.
SLibraryPlace findPluginLibrary(const SPluginFolders& folders, const SPluginKind& kind, const QString& name);

/// The folder of a kind, with a slash at the end.
QString preferenceFolder(const SPluginFolders& folders, const SPluginKind& kind);

} // namespace NBrenmark
