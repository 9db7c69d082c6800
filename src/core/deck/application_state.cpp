// Builds the process-wide objects and tears them down. Their holder outlives everything: a library that ends the
// process must not have an open deck store itself.
#include "core/deck/application_state.h"

#include "config/user_preferences.h"
#include "core/deck/file_families.h"

namespace NBrenmark {

void openLibraries()
{
    openUserStores();
    NHdf5Family::openLibrary();
}

SApplicationState& applicationState()
{
    // Never destroyed: a library that ends the process must not have an open deck store itself beside the source.
    static auto* const state = new SApplicationState;
    return *state;
}

bool initialiseApplication(SApplicationState& state)
{
    if (state.initialised)
        return true;
    state.nullPropertyManager = std::make_unique<CCustomPropertyManager>("Null Manager", eGeometryOwner);
    state.simulation = std::make_unique<CSimulation>();
    if (!state.simulation->setUp()) {
        shutdownApplication(state);
        return false;
    }
    state.initialised = true;
    return true;
}

void shutdownApplication(SApplicationState& state)
{
    state.simulation.reset();
    state.nullPropertyManager.reset();
    state.initialised = false;
}

} // namespace NBrenmark
