#pragma once
// External forces of the interface version 2.4.0, which has the operations of 2.3.0 under its own number.

#include "physics/plugins/external_force_v2_3_0.h"

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V2_4_0 : public CPluginExternalForceWrapper_V2_3_0
{
};

} // namespace NBrenmark::NApiPbf
