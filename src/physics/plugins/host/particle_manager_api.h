#pragma once
// Interface 9: the particles of the current timestep.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/particles.h>

namespace NBrenmark::NApiCore {

class CParticleManagerApi_1 : public CHostApi<IParticleManagerApi_1_2, 2>
{
public:
    bool isWritable() const override { return true; }
    bool setParticleScale(unsigned int id, double scale) override;
    double getParticleScale(unsigned int id) const override;
    unsigned int getNumberOfParticles() const override;
    bool getSpherePositions(unsigned int id, double* positions) const override;
    bool setCustomProperty(const char* typeName, const char* propertyName, unsigned int element, double value) override;
    bool setCustomPropertyAll(const char* typeName, const char* propertyName, double value) override;
    int getTypeIndex(const char* typeName) const override;
    bool setCustomProperty(const char* typeName, unsigned int propertyIndex, unsigned int element,
                           double value) override;
    bool setCustomPropertyAll(const char* typeName, unsigned int propertyIndex, double value) override;
};

} // namespace NBrenmark::NApiCore
