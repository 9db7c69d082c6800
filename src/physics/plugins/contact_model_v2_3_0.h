#pragma once
// Contact models of the interface version 2.3.0. Since 2.2.0: initial values of properties, and those of the simulation
// before each step.

#include "physics/plugins/contact_model_instance.h"

#include <brenmark/plugin/contact_model_2_3.h>

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_3_0
    : public CContactModelOfInstance<IPluginContactModel_2_3, SInitialValueCalls<IPluginContactModel_2_3>>
{
public:
    using CContactModelOfInstance::CContactModelOfInstance;
};

} // namespace NBrenmark::NApiCm
