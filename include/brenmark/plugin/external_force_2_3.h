#pragma once
// External forces of the interface versions 2.3.0 and 2.4.0. Since 2.2.0: a query of the solver, and managers of
// particles and geometry are handed over before each step. Exports and what isn't described here as for 2.2.0.

#include <brenmark/plugin/external_force_2_2.h>
#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>

namespace NBrenmark::NApiPbf {

class IPluginExternalForce_2_3
{
public:
    virtual ~IPluginExternalForce_2_3() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    virtual bool usesCustomProperties() = 0;
    /// What the solver asks every force beside its law; false for a force that knows no more than this.
    virtual bool query() { return false; }
    /// Not called.
    virtual void reserved5() {}
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult externalForce(double timeStep, const SParticle& particle, SParticleForces& forces) = 0;
    /// Before the particles of a step; all of it until the next call.
    /// \param simulationData  null without an open deck
    virtual void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* simulationData,
                                       NApiCore::IParticleManagerApi_1_0* particles,
                                       NApiCore::IGeometryManagerApi_1_0* geometry) = 0;
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType,
                                       double* initialValues) = 0;

    using GetInstance = IPluginExternalForce_2_3* (*)();
    using ReleaseInstance = void (*)(IPluginExternalForce_2_3*);
};

} // namespace NBrenmark::NApiPbf
