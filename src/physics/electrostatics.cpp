// How far charges act.
#include "physics/electrostatics.h"

#include "physics/physics_owner.h"

namespace NBrenmark {

CElectrostaticsExternalForce::CElectrostaticsExternalForce(const IPhysicsOwner* deck) { parameters.deck = deck; }

double CElectrostaticsExternalForce::cutoff() const
{
    double smallest = 0.0;
    double greatest = 0.0;
    if (parameters.deck == nullptr || !parameters.deck->radiusRange(smallest, greatest, true))
        return 0.0;
    return smallest * parameters.screeningDistance;
}

} // namespace NBrenmark
