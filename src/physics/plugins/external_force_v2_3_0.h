#pragma once
// External forces of the interface version 2.3.0. Since 2.2.0: the query, and the managers before each step.

#include "physics/plugins/external_force_instance.h"

#include <brenmark/plugin/external_force_2_3.h>

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V2_3_0
    : public CExternalForceOfInstance<IPluginExternalForce_2_3, SManagerCalls<IPluginExternalForce_2_3>>
{
};

} // namespace NBrenmark::NApiPbf
