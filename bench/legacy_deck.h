#pragma once
// Decks of the legacy family that benchmarks convert and read.

#include "bench/measuring.h"

#include "core/deck/application_state.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"

#include <functional>

namespace NBench {

/// Writes a deck.
/// \param fillModel     gets the frame before its model is written
/// \param fillTimestep  gets it before each timestep is written, with the number of that
/// \return whether it is there, and is one that needs converting
inline bool makeLegacyDeck(const QString& path, quint32 timesteps,
                           const std::function<void(SSimulationFrame&)>& fillModel,
                           const std::function<void(SSimulationFrame&, quint32)>& fillTimestep)
{
    SApplicationState& state = applicationState();
    if (!initialiseApplication(state))
        return false;
    CSimulation& simulation = *state.simulation;
    SSimulationFrame& frame = *simulation.currentFrame;
    fillModel(frame);
    frame.timestep.timestepIndex = 0;
    fillTimestep(frame, 0);
    const auto manager = NLegacyFamily::makeManager(simulation);
    TimestepIndex index(1);
    bool made = manager->createSimulation(path, frame, true, index);
    for (quint32 number = 1; made && number < timesteps; ++number) {
        frame.timestep.timestepIndex = number;
        fillTimestep(frame, number);
        index.emplace_back();
        index.back().time = frame.timestep.time;
        made = manager->appendTimestep(frame, index, false, true);
    }
    manager->reset();
    simulation.close(false);
    return made && markAsLegacy(path);
}

} // namespace NBench
