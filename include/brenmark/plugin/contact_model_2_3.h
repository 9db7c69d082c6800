#pragma once
// Contact models of the interface version 2.3.0. Since 2.1.0: starting gets the number of threads, the properties of
// the simulation are handed over before each step, and required properties have initial values. Exports and what isn't
// described here as for 2.1.0.

#include <brenmark/plugin/contact_model_2_1.h>
#include <brenmark/plugin/custom_properties.h>

namespace NBrenmark::NApiCm {

class IPluginContactModel_2_3
{
public:
    virtual ~IPluginContactModel_2_3() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    virtual bool usesCustomProperties() = 0;
    /// Not called.
    virtual void reserved4() {}
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    /// \param threadCount  threads that will calculate forces
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager, unsigned int threadCount) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult calculateForce(double time, double timeStep, SContact& contact,
                                             SContactForces& forces) = 0;
    /// Before the contacts of a step.
    /// \param simulationData  of the simulation, until the next call; null without an open deck
    virtual void setCustomPropertyData(NApiCore::ICustomPropertyDataApi_1_0* simulationData) = 0;
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    /// \param initialValues  NApiCore::mostElements zeros, of which the first numberOfElements count
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType,
                                       double* initialValues) = 0;

    using GetInstance = IPluginContactModel_2_3* (*)();
    using ReleaseInstance = void (*)(IPluginContactModel_2_3*);
};

} // namespace NBrenmark::NApiCm
