#pragma once
// One buffer for a loaded timestep: the model and the state at one time, side by side.

#include "model/creator_data.h"
#include "results/timestep_data.h"

namespace NBrenmark {

struct SSimulationFrame
{
    explicit SSimulationFrame(const SPropertyManagers& managers) : creator(managers), timestep(managers, creator) {}

    CCreatorData creator;
    CTimestepData timestep;
};

} // namespace NBrenmark
