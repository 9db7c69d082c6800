#pragma once
// External forces of the interface version 2.0.0: instances of a class of the library's, and custom properties of
// particles.

#include "physics/plugins/external_force_instance.h"

#include <brenmark/plugin/external_force_2_0.h>

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V2_0_0
    : public CExternalForceOfInstance<IPluginExternalForce_2_0, SFirstCalls<IPluginExternalForce_2_0>>
{
};

} // namespace NBrenmark::NApiPbf
