#include "physics/plugins/host/simulation_manager_api.h"

#include "physics/plugins/host/property_filling.h"
#include "results/timestep_data.h"

namespace NBrenmark::NApiCore {

template <class TProperty>
static bool fillSimulation(const CHostContext& context, TProperty property, unsigned int element, double value)
{
    CTimestepData* const timestep = context.timestep();
    return timestep != nullptr && fillElement(timestep->simulationProperties, property, element, value);
}

template <class TProperty>
static bool fillSimulation(const CHostContext& context, TProperty property, double value)
{
    CTimestepData* const timestep = context.timestep();
    return timestep != nullptr && fillAll(timestep->simulationProperties, property, value);
}

bool CSimulationManagerApi_1::setCustomProperty(const char* name, unsigned int element, double value)
{
    return fillSimulation(*context, name, element, value);
}

bool CSimulationManagerApi_1::setCustomPropertyAll(const char* name, double value)
{
    return fillSimulation(*context, name, value);
}

bool CSimulationManagerApi_1::setCustomProperty(unsigned int index, unsigned int element, double value)
{
    return fillSimulation(*context, index, element, value);
}

bool CSimulationManagerApi_1::setCustomPropertyAll(unsigned int index, double value)
{
    return fillSimulation(*context, index, value);
}

} // namespace NBrenmark::NApiCore
