#pragma once
// The process-wide objects of a conversion, built before it and torn down after it.

#include "core/deck/simulation.h"
#include "properties/custom_property_manager.h"

#include <memory>

namespace NBrenmark {

struct SApplicationState
{
    bool initialised = false;
    std::unique_ptr<CSimulation> simulation; ///< the process's open deck
    /// For objects that have no property manager of their own: "Null Manager", of type geometry.
    std::unique_ptr<CCustomPropertyManager> nullPropertyManager;
};

/// Has Qt and HDF5 take what they take once for a process: where memory is short their first use may end it, so it
/// comes before the work. What works with decks does it itself where nothing else has.
void openLibraries();

/// The state of the process.
SApplicationState& applicationState();

/// Builds the null manager and the simulation; does nothing if that was done.
/// \return false, with everything taken down again, if something couldn't be built
bool initialiseApplication(SApplicationState& state);

/// Takes down what initialiseApplication built. Never fails.
void shutdownApplication(SApplicationState& state);

} // namespace NBrenmark
