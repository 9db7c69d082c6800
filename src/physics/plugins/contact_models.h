#pragma once
// Binds contact models of customers' libraries.

#include "physics/plugins/contact_model_wrapper.h"
#include "physics/plugins/plugin_library.h"

namespace NBrenmark::NApiCm {

/// The model of a library by its name, or null, with the reason logged, if it can't be bound. Null as well, and nothing
/// loaded, while nothing is to be bound.
/// \param modelType  EContactModelType
std::unique_ptr<IPluginContactModelWrapper> bindContactModel(const QString& name, quint32 modelType);
/// The same of a loaded library.
std::unique_ptr<IPluginContactModelWrapper> bindContactModel(SLoadedLibrary loaded, const QString& name,
                                                             quint32 modelType);

} // namespace NBrenmark::NApiCm
