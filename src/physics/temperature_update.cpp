// The warming of a particle by the heat that its contacts gave it.
#include "physics/temperature_update.h"

namespace NBrenmark {

bool CHeatConductionExternalForce::calculateForce(SParticleForce& particle)
{
    if (!areResolved())
        return false;
    particle.force = particle.torque = C3DVector();
    const SPropertyItem& properties = particle.properties;
    const double flux =
        properties.value(indexOf(eHeatFluxProperty), 0) + properties.value(indexOf(eHeatFluxProperty), 1);
    const double capacity = parameters.heatCapacities.valueOf(particle.name);
    properties.add(indexOf(eTemperatureProperty), flux / particle.mass / capacity * particle.timeStep);
    return true;
}

} // namespace NBrenmark
