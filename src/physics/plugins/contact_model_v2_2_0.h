#pragma once
// Contact models of the interface version 2.2.0, which has the operations of 2.1.0 under its own number.

#include "physics/plugins/contact_model_v2_1_0.h"

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_2_0 : public CPluginContactModelWrapper_V2_1_0
{
public:
    using CPluginContactModelWrapper_V2_1_0::CPluginContactModelWrapper_V2_1_0;
};

} // namespace NBrenmark::NApiCm
