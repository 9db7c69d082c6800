#pragma once
// External forces of the interface version 1.0.0: exported functions, and no custom properties.

#include "physics/plugins/external_force_wrapper.h"

#include <brenmark/plugin/external_force_1.h>

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V1_0_0 : public IPluginExternalForceWrapper
{
public:
    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) override;
    std::unique_ptr<QLibrary> unloadPlugin() override;
    RequiredProperties requiredProperties(unsigned int /*ownerType*/) const override { return {}; }
    bool calculateForce(SParticleForce& particle) override;

protected:
    IPluginHost* host = nullptr; ///< gives the views of custom properties; not owned, null for none

private:
    ExternalForce externalForce = nullptr;
};

} // namespace NBrenmark::NApiPbf
