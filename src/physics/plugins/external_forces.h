#pragma once
// Binds external forces of customers' libraries.

#include "physics/plugins/external_force_wrapper.h"
#include "physics/plugins/plugin_library.h"

namespace NBrenmark::NApiPbf {

/// The force of a library by its name, or null, with the reason logged, if it can't be bound. Null as well, and nothing
/// loaded, while nothing is to be bound.
std::unique_ptr<IPluginExternalForceWrapper> bindExternalForce(const QString& name);
/// The same of a loaded library.
std::unique_ptr<IPluginExternalForceWrapper> bindExternalForce(SLoadedLibrary loaded, const QString& name);

} // namespace NBrenmark::NApiPbf
