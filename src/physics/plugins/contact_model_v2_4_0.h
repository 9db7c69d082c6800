#pragma once
// Contact models of the interface version 2.4.0. Since 2.3.0: the query, and the managers before each step.

#include "physics/plugins/contact_model_instance.h"

#include <brenmark/plugin/contact_model_2_4.h>

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_4_0
    : public CContactModelOfInstance<IPluginContactModel_2_4, SManagerCalls<IPluginContactModel_2_4>>
{
public:
    using CContactModelOfInstance::CContactModelOfInstance;
};

} // namespace NBrenmark::NApiCm
