#pragma once
// Contact models of the interface version 2.0.0: instances of a class of the library's, and custom properties of
// particles.

#include "physics/plugins/contact_model_instance.h"

#include <brenmark/plugin/contact_model_2_0.h>

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_0_0
    : public CContactModelOfInstance<IPluginContactModel_2_0, SFirstCalls<IPluginContactModel_2_0>>
{
public:
    using CContactModelOfInstance::CContactModelOfInstance;
};

} // namespace NBrenmark::NApiCm
