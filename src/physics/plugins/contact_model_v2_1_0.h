#pragma once
// Contact models of the interface version 2.1.0. Since 2.0.0: the API manager at setup, and properties of all owners.

#include "physics/plugins/contact_model_instance.h"

#include <brenmark/plugin/contact_model_2_1.h>

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_1_0
    : public CContactModelOfInstance<IPluginContactModel_2_1, SOwnerCalls<IPluginContactModel_2_1>>
{
public:
    using CContactModelOfInstance::CContactModelOfInstance;
};

} // namespace NBrenmark::NApiCm
