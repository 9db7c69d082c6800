#pragma once
// Particle factories of the interface version 2.0.0. A library exports GETFACTINTERFACEVERSION, and by these names
// functions of these types that make the factory and take it back:
//
//   GETFACTORYINSTANCE      GetInstance
//   RELEASEFACTORYINSTANCE  ReleaseInstance
//
// The order of the operations is part of the interface.

#include <brenmark/plugin/api.h>
#include <brenmark/plugin/exports.h>
#include <brenmark/plugin/new_particle.h>

namespace NBrenmark::NApiFactory {

class IPluginParticleFactory_2_0
{
public:
    virtual ~IPluginParticleFactory_2_0() = default;
    /// The name of a file beside the library; none if nothing is written.
    /// \param name  room for fileNameSize characters, all NUL
    virtual void getPreferenceFileName(char* name) = 0;
    /// Whether several threads may create particles at once. Asked once.
    virtual bool isThreadSafe() = 0;
    /// Not called.
    virtual void reserved3() {}
    /// \param apiManager      valid until the factory is released
    /// \param preferenceFile  path; empty without one
    /// \param errorText       room for errorTextSize characters, all NUL: why setup fails, for the user
    /// \return false if the factory can't be used
    virtual bool setup(NApiCore::IApiManager_1_0* apiManager, const char* preferenceFile, char* errorText) = 0;
    /// Before the first step. \return false if the factory isn't ready
    virtual bool starting(NApiCore::IApiManager_1_0* apiManager) = 0;
    /// After the last step.
    virtual void stopping(NApiCore::IApiManager_1_0* apiManager) = 0;
    /// Says whether a particle is to be created now, and which. \param time  s
    virtual NApiCore::EResult createParticle(double time, SNewParticle& particle, bool& created) = 0;

    using GetInstance = IPluginParticleFactory_2_0* (*)();
    using ReleaseInstance = void (*)(IPluginParticleFactory_2_0*);
};

} // namespace NBrenmark::NApiFactory
