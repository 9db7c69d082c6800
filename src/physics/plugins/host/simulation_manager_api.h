#pragma once
// Interface 11: the custom properties of the simulation as a whole.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/simulation.h>

namespace NBrenmark::NApiCore {

class CSimulationManagerApi_1 : public CHostApi<ISimulationManagerApi_1_1, 1>
{
public:
    bool setCustomProperty(const char* name, unsigned int element, double value) override;
    bool setCustomPropertyAll(const char* name, double value) override;
    bool setCustomProperty(unsigned int index, unsigned int element, double value) override;
    bool setCustomPropertyAll(unsigned int index, double value) override;
};

} // namespace NBrenmark::NApiCore
