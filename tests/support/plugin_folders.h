#pragma once
// The folders that plug-ins are sought in, with the switch on, and a copy of the plug-ins that a test wants in them.

#include "physics/plugins/host/host.h"
#include "physics/plugins/plugin_binding.h"

#include "support/log_capture.h"
#include "support/paths.h"
#include "support/temp_folder.h"

namespace NBrenmark {

/// Copies a plug-in of support/plugin to a path below a folder: "user/My Model.so". \return the whole path
inline QString putPlugin(const CTempFolder& folder, const std::string& plugin, const QString& path)
{
    QFile library(QString::fromStdString(testPlugin(plugin)));
    if (!library.open(QIODevice::ReadOnly))
        throw std::runtime_error("no plug-in " + plugin);
    return folder.write(path, library.readAll());
}

struct SPluginFoldersOfTest
{
    explicit SPluginFoldersOfTest(CSimulation* simulation = nullptr) : host([simulation] { return simulation; })
    {
        QDir().mkpath(places.preferences);
        clearLogOnceMemory();
    }

    QString put(const std::string& plugin, const QString& path) const { return putPlugin(folder, plugin, path); }

    const CTempFolder folder;
    const SPluginFolders places{folder.path("user"), folder.path("documents")};
    NApiCore::CPluginHost host;
    const CPluginBinding binding{places, host};
    const CLogCapture log;
};

} // namespace NBrenmark
