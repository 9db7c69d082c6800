#pragma once
// The way from a plug-in's name to a loaded library and its interface version, the same for all kinds.

#include "physics/plugins/plugin_errors.h"
#include "physics/plugins/plugin_library_search.h"

#include <QLibrary>

#include <memory>
#include <vector>

namespace NBrenmark {

struct SLoadedLibrary
{
    std::unique_ptr<QLibrary> library; ///< null if there is none, which was logged
    quint32 version = 0;               ///< as the library packs it
};

/// Finds and loads the library of a plug-in, and asks for its interface version. The folder of the kind is made if the
/// library isn't in the user's, and there is one to make it in. While nothing is to be bound, nothing is sought.
SLoadedLibrary loadPluginLibrary(const SPluginKind& kind, const QString& name);
/// The same of a file.
SLoadedLibrary loadPluginFile(const SPluginKind& kind, const QString& path);
/// Loads a library, which runs code of it. \return why that can't be, in words of the loader's; empty if it is loaded
QString loadFault(QLibrary& library);

/// Reports that the interface version of a library isn't one of those that are known.
/// \param name     of the plug-in
/// \param further  what else there is to say; may be empty
void reportUnsupportedVersion(quint32 version, const QString& name, const QString& further);

/// One row of a kind's table of versions.
template <class TWrapper, class... TArguments>
struct SPluginVersion
{
    quint32 version;
    std::unique_ptr<TWrapper> (*make)(TArguments... arguments);
};

/// The row of a version, by an exact match, or null.
template <class TRow>
const TRow* versionRow(const std::vector<TRow>& rows, quint32 version)
{
    for (const TRow& row : rows)
        if (row.version == version)
            return &row;
    return nullptr;
}

/// A function that a library exports; null if it doesn't.
template <class TFunction>
TFunction resolved(QLibrary& library, const char* name)
{
    return reinterpret_cast<TFunction>(library.resolve(name));
}

} // namespace NBrenmark
