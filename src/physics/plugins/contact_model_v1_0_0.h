#pragma once
// Contact models of the interface version 1.0.0: exported functions, and no custom properties.

#include "physics/plugins/contact_model_wrapper.h"
#include "physics/plugins/plugin_host.h"

#include <brenmark/plugin/contact_model_1.h>

namespace NBrenmark::NApiCm {

class CPluginContactModelWrapper_V1_0_0 : public IPluginContactModelWrapper
{
public:
    using IPluginContactModelWrapper::IPluginContactModelWrapper;

    bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) override;
    std::unique_ptr<QLibrary> unloadPlugin() override;
    RequiredProperties requiredProperties(unsigned int /*ownerType*/) const override { return {}; }
    bool calculateForce(NBrenmark::SContact& contact) override;

protected:
    IPluginHost* host = nullptr; ///< gives the views of custom properties; not owned, null for none

private:
    CalculateForce calculate = nullptr;
};

} // namespace NBrenmark::NApiCm
