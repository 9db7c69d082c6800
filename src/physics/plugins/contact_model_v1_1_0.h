#pragma once
// Contact models of the interface version 1.1.0. Since 1.0.0: custom properties of particles.

#include "physics/plugins/contact_model_v1_0_0.h"
#include "physics/plugins/exported_functions.h"

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V1_1_0 : public CPluginContactModelWrapper_V1_0_0
{
public:
    using CPluginContactModelWrapper_V1_0_0::CPluginContactModelWrapper_V1_0_0;

    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) override
    {
        const bool calculates = CPluginContactModelWrapper_V1_0_0::setupPlugin(std::move(loaded), pluginName);
        const bool hasProperties = properties.resolve(*library(), errors);
        host = properties.host;
        return hasProperties && calculates;
    }
    std::unique_ptr<QLibrary> unloadPlugin() override
    {
        properties.clear();
        host = nullptr;
        return CPluginContactModelWrapper_V1_0_0::unloadPlugin();
    }
    RequiredProperties requiredProperties(unsigned int ownerType) const override
    {
        return properties.requiredProperties(ownerType, errors);
    }
    bool starting(quint32 /*threadCount*/) override
    {
        properties.registerIndices(errors);
        return true;
    }

private:
    mutable CPropertyExports properties; ///< a cache
};

} // namespace NBrenmark::NApiCm
