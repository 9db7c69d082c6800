#pragma once
// External forces of the interface version 2.2.0. Since 2.1.0: the properties of the simulation are handed over before
// each step, and required properties have initial values. Exports and what isn't described here as for 2.1.0.

#include <brenmark/plugin/custom_properties.h>
#include <brenmark/plugin/external_force_2_1.h>

namespace NBrenmark::NApiPbf {

class IPluginExternalForce_2_2
{
public:
    virtual ~IPluginExternalForce_2_2() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    virtual bool usesCustomProperties() = 0;
    /// Not called.
    virtual void reserved4() {}
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult externalForce(double timeStep, const SParticle& particle, SParticleForces& forces) = 0;
    /// Before the particles of a step.
    /// \param simulationData  of the simulation, until the next call; null without an open deck
    virtual void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* simulationData) = 0;
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    /// \param initialValues  NApiCore::mostElements zeros, of which the first numberOfElements count
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType,
                                       double* initialValues) = 0;

    using GetInstance = IPluginExternalForce_2_2* (*)();
    using ReleaseInstance = void (*)(IPluginExternalForce_2_2*);
};

} // namespace NBrenmark::NApiPbf
