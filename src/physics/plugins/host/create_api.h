#pragma once
// Makes the interface objects that plug-ins ask for.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/api.h>

#include <memory>

namespace NBrenmark::NApiCore {

/// A new object of an interface, its plug-in side; null for an identifier or version that the host doesn't have, and
/// without a context.
/// \param context     not owned; must outlive the object
/// \param identifier  an EApi
std::unique_ptr<IApi> createApi(const CHostContext* context, quint32 identifier, quint32 major, quint32 minor);

} // namespace NBrenmark::NApiCore
