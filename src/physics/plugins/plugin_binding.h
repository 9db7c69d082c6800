#pragma once
// Whether plug-in libraries are bound at all. A library runs its code as soon as it is loaded, so that a caller has to
// ask for it: while a CPluginBinding lives, models of plug-ins are bound wherever a deck names one; without it no
// library is ever loaded.

#include "physics/plugins/plugin_host.h"

#include <QString>

#include <atomic>

namespace NBrenmark {

/// Where libraries are sought, in this order.
struct SPluginFolders
{
    QString plugins;     ///< of the user, for all kinds
    QString preferences; ///< holds a folder for each kind
};

/// The switch of the process. Made and ended while no deck is being read; the inner one of two counts.
class CPluginBinding
{
public:
    /// \param host  not owned; must outlive what is bound
    CPluginBinding(SPluginFolders folders, IPluginHost& host);
    ~CPluginBinding();
    CPluginBinding(const CPluginBinding&) = delete;
    CPluginBinding& operator=(const CPluginBinding&) = delete;

    /// Null while nothing is to be bound.
    static const CPluginBinding* current();

    const SPluginFolders folders;
    IPluginHost& host;
    mutable std::atomic<bool> hasLoaded{false}; ///< a library, whatever became of it

private:
    const CPluginBinding* const before;
};

} // namespace NBrenmark
