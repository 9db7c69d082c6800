#pragma once
// External forces of the interface version 2.1.0. Since 2.0.0: the API manager at setup, and properties of all owners.

#include "physics/plugins/external_force_instance.h"

#include <brenmark/plugin/external_force_2_1.h>

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V2_1_0
    : public CExternalForceOfInstance<IPluginExternalForce_2_1, SOwnerCalls<IPluginExternalForce_2_1>>
{
};

} // namespace NBrenmark::NApiPbf
