// Loads libraries. They stay in the process until its end: a library may have threads at work that it has started, or
// be bound elsewhere.
#include "physics/plugins/plugin_library.h"

#include "core/shortened.h"
#include "core/version.h"
#include "platform/plugin_library.h"

#include <brenmark/plugin/exports.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace NBrenmark {

static QString pluginText(const char* text) { return QCoreApplication::translate("Plugins", text); }

QString loadFault(QLibrary& library)
{
    const QString path = library.fileName();
    if (!QFileInfo(path).isFile()) // the loader waits for ever at a pipe of that name
        return QString("Cannot load library %1: it isn't a file").arg(path);
    if (isLibraryCutShort(path))
        return QString("Cannot load library %1: the file is cut short").arg(path);
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint); // what is missing shows now, and not in the middle of a call
    CPluginErrors errors;
    if (errors.guarded(false, [&] { return library.load(); }))
        return QString();
    return library.errorString();
}

SLoadedLibrary loadPluginFile(const SPluginKind& kind, const QString& path)
{
    SLoadedLibrary loaded;
    const auto failed = [&](const QString& text) {
        reportPluginError(pluginTitle, text);
        return SLoadedLibrary();
    };
    auto library = std::make_unique<QLibrary>(path);
    if (const QString fault = loadFault(*library); !fault.isEmpty()) {
        failed(pluginText("Could not load plugin file:\n    %1").arg(path));
        return failed(fault);
    }
    const auto version = resolved<NApiCore::GetInterfaceVersion>(*library, kind.versionExport);
    if (version == nullptr)
        return failed(
            pluginText("Could not locate method:\n    %1\nIn plugin file:\n    %2").arg(kind.versionExport, path));
    CPluginErrors errors;
    loaded.version = errors.guarded(0u, version);
    loaded.library = std::move(library);
    return loaded;
}

SLoadedLibrary loadPluginLibrary(const SPluginKind& kind, const QString& name)
{
    const CPluginBinding* const binding = CPluginBinding::current();
    if (binding == nullptr)
        return {};
    const SLibraryPlace place = findPluginLibrary(binding->folders, kind, name);
    if (!place.path.isEmpty()) {
        binding->hasLoaded = true;
        return loadPluginFile(kind, place.path);
    }
    if (!place.fault.empty()) {
        reportPluginWarning(pluginTitle, QString("No library is loaded for the %1 \"%2\": %3.")
                                             .arg(kind.noun, QString::fromStdString(shortened(name)),
                                                  QString::fromStdString(place.fault)));
        return {};
    }
    // Where the user may put it. A user without a folder of documents gets none: it would be anywhere.
    if (!QDir::isRelativePath(binding->folders.preferences))
        QDir(binding->folders.preferences).mkdir(kind.folder);
    reportPluginWarning(
        pluginTitle,
        pluginText("Plugin file does not exist:\n    %1").arg(QString::fromStdString(shortened(place.sought))));
    return {};
}

void reportUnsupportedVersion(quint32 version, const QString& name, const QString& further)
{
    const std::string title = pluginTitle + (" (" + name.toStdString()) + ')';
    reportPluginError(
        title, pluginText("The library interface version (%1) is not supported by this release.")
                   .arg(QString("%1.%2.%3").arg(version >> 16).arg((version >> 8) & 0xFFu).arg(version & 0xFFu)));
    if (!further.isEmpty())
        reportPluginError(title, further);
}

} // namespace NBrenmark
