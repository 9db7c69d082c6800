#pragma once
// Contact models of the interface versions 2.1.0 and 2.2.0. Since 2.0.0: setup gets the API manager and can say what is
// wrong, and custom properties may be those of all four owners. Exports and what isn't described here as for 2.0.0.

#include <brenmark/plugin/contact_model_2_0.h>

namespace NBrenmark::NApiCm {

class IPluginContactModel_2_1
{
public:
    virtual ~IPluginContactModel_2_1() = default;
    virtual void getPreferenceFileName(char* name) = 0;
    virtual bool isThreadSafe() = 0;
    virtual bool usesCustomProperties() = 0;
    /// \param apiManager      valid until the model is released
    /// \param preferenceFile  path; empty without one
    /// \param errorText       room for errorTextSize characters, all NUL: why setup fails, for the user
    /// \return false if the model can't be used
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    virtual NApiCore::EResult calculateForce(double time, double timeStep, SContact& contact,
                                             SContactForces& forces) = 0;
    /// \param ownerType  NApiCore::EOwnerType
    virtual unsigned int getNumberOfRequiredProperties(unsigned int ownerType) = 0;
    virtual bool getDetailsForProperty(unsigned int index, unsigned int ownerType, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType) = 0;

    using GetInstance = IPluginContactModel_2_1* (*)();
    using ReleaseInstance = void (*)(IPluginContactModel_2_1*);
};

} // namespace NBrenmark::NApiCm
