#pragma once
// Particle factories of the interface version 1.0.0: exported functions, and no custom properties.

#include "model/factories/plugins/factory_wrapper.h"

#include <brenmark/plugin/particle_factory_1.h>

namespace NBrenmark::NApiFactory {

class CPluginParticleFactoryWrapper_V1_0_0 : public CPluginParticleFactoryWrapper
{
public:
    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const QString& factoryName,
                     CPluginParticleFactoryList* list) override;
    void unloadPlugin() override;
    std::unique_ptr<CParticleFactory> clone() const override;
    bool starting() override { return true; }
    void stopping() override {}
    bool createParticle(double time, const CParticleTypes& types, SNewParticle& particle, bool& created) override;

private:
    CreateParticle create = nullptr;
};

} // namespace NBrenmark::NApiFactory
