#include "physics/plugins/host/host.h"

#include "physics/plugins/host/create_api.h"
#include "physics/plugins/host/custom_property_data_api.h"
#include "results/timestep_data.h"

#include <array>

namespace NBrenmark::NApiCore {

std::unique_ptr<IApi> CPluginHost::createApi(quint32 identifier, quint32 major, quint32 minor)
{
    return NApiCore::createApi(&context, identifier, major, minor);
}

std::unique_ptr<ICustomPropertyDataApi_1_0> CPluginHost::simulationProperties()
{
    CTimestepData* const timestep = context.timestep();
    auto data = std::make_unique<CCustomPropertyDataApi_1>();
    const bool isBound = timestep != nullptr && data->bind(&context, &timestep->simulationProperties, 0, nullptr, 0);
    return isBound ? std::move(data) : nullptr;
}

ICustomPropertyDataApi_1_0* CPluginHost::view(EPluginView view, const SPropertyItem& item)
{
    thread_local std::array<CCustomPropertyDataApi_1, ePluginViewCount> views;
    return views[view].bind(&context, item.values, item.row, item.changes, item.row) ? &views[view] : nullptr;
}

} // namespace NBrenmark::NApiCore
