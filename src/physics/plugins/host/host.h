#pragma once
// The host that wrappers of plug-ins work with: interface objects on the open deck.

#include "physics/plugins/host/host_context.h"
#include "physics/plugins/plugin_host.h"

namespace NBrenmark::NApiCore {

class CPluginHost : public IPluginHost
{
public:
    /// \param source  gives the simulation whenever it is needed, or null
    explicit CPluginHost(CHostContext::Source source) : context(std::move(source)) {}

    std::unique_ptr<IApi> createApi(quint32 identifier, quint32 major, quint32 minor) override;
    std::unique_ptr<ICustomPropertyDataApi_1_0> simulationProperties() override;
    ICustomPropertyDataApi_1_0* view(EPluginView view, const SPropertyItem& item) override;

private:
    const CHostContext context;
};

} // namespace NBrenmark::NApiCore
