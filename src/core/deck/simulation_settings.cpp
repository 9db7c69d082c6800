// The table of the settings file's blocks for a deck.
#include "core/deck/simulation_settings.h"

namespace NBrenmark {

CSimulationSettingsAndData::CSimulationSettingsAndData()
    : particle("Particle Properties", eParticleOwner),
      geometry("Geometry Properties", eGeometryOwner),
      contact("Contact Properties", eContactOwner),
      simulation("Simulation Properties", eSimulationOwner)
{
    setEntries({
        {1, "selections", &selections, false},
        {4, "particle properties", &particle, true},
        {3, "contact properties", &contact, true},
        {5, "geometry properties", &geometry, true},
        {6, "simulation properties", &simulation, true},
        {2, "fields", &fields, false},
        {NSelection::CCarriedSelections::identifier, "selections carried unread", &selections.carried(), false},
    });
}

SPropertyManagers CSimulationSettingsAndData::propertyManagers()
{
    return {&particle, &contact, &geometry, &simulation};
}

} // namespace NBrenmark
