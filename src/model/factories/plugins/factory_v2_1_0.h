#pragma once
// Particle factories of the interface version 2.1.0. Since 2.0.0: custom properties, and the largest scale.

#include "model/factories/plugins/factory_instance.h"

#include <brenmark/plugin/particle_factory_2_1.h>

namespace NBrenmark::NApiFactory {

class CPluginParticleFactoryWrapper_V2_1_0
    : public CFactoryOfInstance<CPluginParticleFactoryWrapper_V2_1_0, IPluginParticleFactory_2_1,
                                SOwnerCalls<IPluginParticleFactory_2_1>>
{
public:
    RequiredProperties requiredProperties(unsigned int ownerType) const override
    {
        return instance.requiredProperties(ownerType, errors);
    }
    double largestScale() const override
    {
        return instance.isMade() ? errors.guarded(1.0, [this] { return instance.plugin->largestScale(); }) : 1.0;
    }
};

} // namespace NBrenmark::NApiFactory
