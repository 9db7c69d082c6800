// How far charges act.
#include "physics/electrostatics.h"

#include "physics/physics_owner.h"

namespace NBrenmark {

CElectrostaticsExternalForce::CElectrostaticsExternalForce(const IPhysicsOwner* deck) { parameters.deck = deck; }

bool CElectrostaticsExternalForce::starting()
{
    double smallest = 0.0;
    double greatest = 0.0;
    if (parameters.deck != nullptr && parameters.deck->radiusRange(smallest, greatest, true))
        cutoff = smallest * parameters.screeningDistance;
    return true;
}

} // namespace NBrenmark
