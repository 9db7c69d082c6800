#include "physics/plugins/host/host_context.h"

#include "core/deck/simulation.h"

namespace NBrenmark::NApiCore {

CSimulation* CHostContext::simulation() const
{
    CSimulation* const found = source();
    const bool hasData = found != nullptr && found->settings != nullptr && found->currentFrame != nullptr &&
                         !found->filePath.isEmpty() &&
                         found->currentFrame->timestep.timestepIndex != CTimestepData::noTimestep;
    return hasData ? found : nullptr;
}

CTimestepData* CHostContext::timestep() const
{
    CSimulation* const found = simulation();
    return found != nullptr ? &found->currentFrame->timestep : nullptr;
}

CCreatorData* CHostContext::creator() const
{
    CSimulation* const found = simulation();
    return found != nullptr ? &found->currentFrame->creator : nullptr;
}

} // namespace NBrenmark::NApiCore
