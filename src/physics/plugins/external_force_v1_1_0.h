#pragma once
// External forces of the interface version 1.1.0. Since 1.0.0: custom properties of particles.

#include "physics/plugins/exported_functions.h"
#include "physics/plugins/external_force_v1_0_0.h"

namespace NBrenmark::NApiPbf {

class CPluginExternalForceWrapper_V1_1_0 : public CPluginExternalForceWrapper_V1_0_0
{
public:
    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) override
    {
        const bool calculates = CPluginExternalForceWrapper_V1_0_0::setupPlugin(std::move(loaded), pluginName);
        const bool hasProperties = properties.resolve(*library(), errors);
        host = properties.host;
        return hasProperties && calculates;
    }
    std::unique_ptr<QLibrary> unloadPlugin() override
    {
        properties.clear();
        host = nullptr;
        return CPluginExternalForceWrapper_V1_0_0::unloadPlugin();
    }
    RequiredProperties requiredProperties(unsigned int ownerType) const override
    {
        return properties.requiredProperties(ownerType, errors);
    }
    bool starting() override
    {
        properties.registerIndices(errors);
        return true;
    }

private:
    mutable CPropertyExports properties; ///< a cache
};

} // namespace NBrenmark::NApiPbf
