#pragma once
// Particle factories of the interface version 2.1.0. Since 2.0.0: custom properties, and the largest scale. Exports and
// what isn't described here as for 2.0.0.

#include <brenmark/plugin/particle_factory_2_0.h>

namespace NBrenmark::NApiFactory {

class IPluginParticleFactory_2_1
{
public:
    virtual ~IPluginParticleFactory_2_1() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    /// Whether the factory has custom properties: without that it isn't asked which. Asked once.
    virtual bool usesCustomProperties() = 0;
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult createParticle(double time, SNewParticle& particle, bool& created) = 0;
    /// \param ownerType  NApiCore::EOwnerType
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    /// \param index  below the number of properties
    /// \param name   room for propertyNameSize characters, all NUL: letters, blanks, hyphens and round brackets
    /// \return false if there is no such property, which ends the list
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType) = 0;
    /// The largest scale of a particle that the factory creates; the solver's grid has room for it.
    virtual double largestScale() { return 1.0; }

    using GetInstance = IPluginParticleFactory_2_1* (*)();
    using ReleaseInstance = void (*)(IPluginParticleFactory_2_1*);
};

} // namespace NBrenmark::NApiFactory
