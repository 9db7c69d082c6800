#pragma once
// Particles of the current timestep. A particle has an id from 1 on; a type has a name and an index.

#include <brenmark/plugin/api.h>

namespace NBrenmark::NApiCore {

class IParticleManagerApi_1_0 : public IApi
{
public:
    /// Whether the particles of a type can be written to: always true.
    virtual bool isWritable() const = 0;
    /// \return false for an id that no particle has
    virtual bool setParticleScale(unsigned int id, double scale) = 0;
    /// 0 for an id that no particle has.
    virtual double getParticleScale(unsigned int id) const = 0;
    /// Of all types.
    virtual unsigned int getNumberOfParticles() const = 0;
};

class IParticleManagerApi_1_1 : public IParticleManagerApi_1_0
{
public:
    /// The centres of a particle's spheres, m.
    /// \param positions  room for three doubles a sphere
    /// \return false, with nothing written, for an id that no particle has
    virtual bool getSpherePositions(unsigned int id, double* positions) const = 0;
};

class IParticleManagerApi_1_2 : public IParticleManagerApi_1_1
{
public:
    // Each sets one element of a custom property, or all of them, for all particles of a type. They give false for a
    // type, property or element that isn't there.

    virtual bool setCustomProperty(const char* typeName, const char* propertyName, unsigned int element,
                                   double value) = 0;
    virtual bool setCustomPropertyAll(const char* typeName, const char* propertyName, double value) = 0;
    /// -1 for a name that no type has.
    virtual int getTypeIndex(const char* typeName) const = 0;
    virtual bool setCustomProperty(const char* typeName, unsigned int propertyIndex, unsigned int element,
                                   double value) = 0;
    virtual bool setCustomPropertyAll(const char* typeName, unsigned int propertyIndex, double value) = 0;
};

} // namespace NBrenmark::NApiCore
