#pragma once
// Contact models of the interface versions 2.4.0 and 2.5.0. Since 2.3.0: a query of the solver, and managers of
// particles and geometry are handed over before each step. Exports and what isn't described here as for 2.3.0.

#include <brenmark/plugin/contact_model_2_3.h>
#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>

namespace NBrenmark::NApiCm {

class IPluginContactModel_2_4
{
public:
    virtual ~IPluginContactModel_2_4() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    virtual bool usesCustomProperties() = 0;
    /// What the solver asks every model beside its force law; false for a model that knows no more than this.
    virtual bool query() { return false; }
    /// Not called.
    virtual void reserved5() {}
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager, unsigned int threadCount) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult calculateForce(double time, double timeStep, SContact& contact,
                                             SContactForces& forces) = 0;
    /// Before the contacts of a step; all of it until the next call.
    /// \param simulationData  null without an open deck
    virtual void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* simulationData,
                                       NApiCore::IParticleManagerApi_1_0* particles,
                                       NApiCore::IGeometryManagerApi_1_0* geometry) = 0;
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType,
                                       double* initialValues) = 0;

    using GetInstance = IPluginContactModel_2_4* (*)();
    using ReleaseInstance = void (*)(IPluginContactModel_2_4*);
};

} // namespace NBrenmark::NApiCm
