#include "physics/plugins/host/particle_manager_api.h"

#include "physics/plugins/host/property_filling.h"
#include "results/timestep_data.h"

namespace NBrenmark::NApiCore {

static CParticleTypes* particlesOf(const CHostContext& context)
{
    CTimestepData* const timestep = context.timestep();
    return timestep != nullptr ? &timestep->particleTypes : nullptr;
}

static CCustomPropertyData* propertiesOfType(const CHostContext& context, const char* typeName)
{
    const CParticleTypes* const particles = particlesOf(context);
    CParticleType* const type =
        particles != nullptr && typeName != nullptr ? particles->find(QString::fromUtf8(typeName)) : nullptr;
    return type != nullptr ? &type->customProperties : nullptr;
}

bool CParticleManagerApi_1::setParticleScale(unsigned int id, double scale)
{
    CParticleTypes* const particles = particlesOf(*context);
    return particles != nullptr && particles->setScaleOf(id, scale);
}

double CParticleManagerApi_1::getParticleScale(unsigned int id) const
{
    const CParticleTypes* const particles = particlesOf(*context);
    return particles != nullptr ? particles->scaleOf(id) : 0.0;
}

unsigned int CParticleManagerApi_1::getNumberOfParticles() const
{
    const CParticleTypes* const particles = particlesOf(*context);
    return particles != nullptr ? particles->particleCount() : 0;
}

bool CParticleManagerApi_1::getSpherePositions(unsigned int id, double* positions) const
{
    const CParticleTypes* const particles = particlesOf(*context);
    quint32 typeIndex = 0, slot = 0;
    if (particles == nullptr || positions == nullptr || !particles->locate(id, typeIndex, slot))
        return false;
    const CParticleType& type = *particles->types[typeIndex];
    const std::size_t spheres = type.spheres.size();
    // Those of single spheres aren't kept apart: they are where the particle is.
    const bool areKept = !type.spherePositions.empty();
    if (areKept ? (slot + 1) * spheres > type.spherePositions.size() : slot >= type.position.size())
        return false;
    for (std::size_t sphere = 0; sphere < spheres; ++sphere) {
        const C3DPoint& centre = areKept ? type.spherePositions[slot * spheres + sphere] : type.position[slot];
        positions[3 * sphere] = centre.x;
        positions[3 * sphere + 1] = centre.y;
        positions[3 * sphere + 2] = centre.z;
    }
    return true;
}

bool CParticleManagerApi_1::setCustomProperty(const char* typeName, const char* propertyName, unsigned int element,
                                              double value)
{
    CCustomPropertyData* const data = propertiesOfType(*context, typeName);
    return data != nullptr && fillElement(*data, propertyName, element, value);
}

bool CParticleManagerApi_1::setCustomPropertyAll(const char* typeName, const char* propertyName, double value)
{
    CCustomPropertyData* const data = propertiesOfType(*context, typeName);
    return data != nullptr && fillAll(*data, propertyName, value);
}

int CParticleManagerApi_1::getTypeIndex(const char* typeName) const
{
    const CParticleTypes* const particles = particlesOf(*context);
    quint32 index = 0;
    const bool isThere =
        particles != nullptr && typeName != nullptr && particles->findIndex(QString::fromUtf8(typeName), index);
    return isThere ? static_cast<int>(index) : -1;
}

bool CParticleManagerApi_1::setCustomProperty(const char* typeName, unsigned int propertyIndex, unsigned int element,
                                              double value)
{
    CCustomPropertyData* const data = propertiesOfType(*context, typeName);
    return data != nullptr && fillElement(*data, propertyIndex, element, value);
}

bool CParticleManagerApi_1::setCustomPropertyAll(const char* typeName, unsigned int propertyIndex, double value)
{
    CCustomPropertyData* const data = propertiesOfType(*context, typeName);
    return data != nullptr && fillAll(*data, propertyIndex, value);
}

} // namespace NBrenmark::NApiCore
