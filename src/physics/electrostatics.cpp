#include "physics/electrostatics.h"

#include "model/creator_data.h"

namespace NBrenmark {

CElectrostaticsExternalForce::CElectrostaticsExternalForce(const CCreatorData* creatorData)
{
    parameters.particleTypes = creatorData == nullptr ? nullptr : &creatorData->particleTypes;
}

double CElectrostaticsExternalForce::cutoff() const
{
    double smallest = 0.0;
    double greatest = 0.0;
    if (parameters.particleTypes == nullptr || !parameters.particleTypes->radiusRange(smallest, greatest, true))
        return 0.0;
    return smallest * parameters.screeningDistance;
}

} // namespace NBrenmark
