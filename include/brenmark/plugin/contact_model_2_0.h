#pragma once
// Contact models of the interface version 2.0.0. A library exports GETCMINTERFACEVERSION, and by these names functions
// of these types that make the model and take it back:
//
//   GETCMINSTANCE      GetInstance
//   RELEASECMINSTANCE  ReleaseInstance
//
// The host makes one instance for each place in a deck that names the library. From setup on its operations may be
// called; the order of the operations is part of the interface.

#include <brenmark/plugin/api.h>
#include <brenmark/plugin/contact.h>
#include <brenmark/plugin/exports.h>

namespace NBrenmark::NApiCm {

class IPluginContactModel_2_0
{
public:
    virtual ~IPluginContactModel_2_0() = default;
    /// The name of a file beside the library; none if nothing is written.
    /// \param name  room for fileNameSize characters, all NUL
    virtual void getPreferenceFileName(char* name) = 0;
    /// Whether several threads may calculate forces at once. Asked once.
    virtual bool isThreadSafe() = 0;
    /// Whether the model has custom properties: without that it isn't asked which. Asked once.
    virtual bool usesCustomProperties() = 0;
    /// \param preferenceFile  path; empty without one
    /// \return false if the model can't be used
    virtual bool setup(const char* preferenceFile) = 0;
    /// Before the first step. \return false if the model isn't ready
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    /// After the last step.
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    /// Adds the model's part to the forces of a contact. \param time  s; timeStep as well
    virtual NApiCore::EResult calculateForce(double time, double timeStep, SContact& contact,
                                             SContactForces& forces) = 0;
    /// Not called.
    virtual void reserved8() {}
    /// How many custom properties of particles the model needs.
    virtual unsigned int getNumberOfRequiredProperties() = 0;
    /// \param index  below the number of properties
    /// \param name   room for propertyNameSize characters, all NUL: letters, blanks, hyphens and round brackets
    /// \return false if there is no such property, which ends the list
    virtual bool getDetailsForProperty(unsigned int index, char* name, unsigned int& dataType,
                                       unsigned int& numberOfElements, unsigned int& unitType) = 0;

    using GetInstance = IPluginContactModel_2_0* (*)();
    using ReleaseInstance = void (*)(IPluginContactModel_2_0*);
};

} // namespace NBrenmark::NApiCm
