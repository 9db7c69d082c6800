#pragma once
// Particle factories of the interface version 2.0.0: instances of a class of the library's, without custom properties.

#include "model/factories/plugins/factory_instance.h"

#include <brenmark/plugin/particle_factory_2_0.h>

namespace NBrenmark::NApiFactory {

class CPluginParticleFactoryWrapper_V2_0_0
    : public CFactoryOfInstance<CPluginParticleFactoryWrapper_V2_0_0, IPluginParticleFactory_2_0,
                                SOwnerCalls<IPluginParticleFactory_2_0>>
{
};

} // namespace NBrenmark::NApiFactory
