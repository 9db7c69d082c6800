#pragma once
// Contact models of the interface version 2.5.0, which has the operations of 2.4.0 under its own number.

#include "physics/plugins/contact_model_v2_4_0.h"

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V2_5_0 : public CPluginContactModelWrapper_V2_4_0
{
public:
    using CPluginContactModelWrapper_V2_4_0::CPluginContactModelWrapper_V2_4_0;
};

} // namespace NBrenmark::NApiCm
