#pragma once
// External forces of the interface version 2.2.0. Since 2.1.0: initial values of properties, and those of the
// simulation before each step.

#include "physics/plugins/external_force_instance.h"

#include <brenmark/plugin/external_force_2_2.h>

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V2_2_0
    : public CExternalForceOfInstance<IPluginExternalForce_2_2, SInitialValueCalls<IPluginExternalForce_2_2>>
{
};

} // namespace NBrenmark::NApiPbf
