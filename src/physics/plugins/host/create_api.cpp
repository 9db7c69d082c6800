// The table of interfaces that can be asked for by their identifiers.
#include "physics/plugins/host/create_api.h"

#include "physics/plugins/host/api_manager.h"
#include "physics/plugins/host/custom_property_manager_api.h"
#include "physics/plugins/host/field_manager_api.h"
#include "physics/plugins/host/geometry_manager_api.h"
#include "physics/plugins/host/particle_manager_api.h"
#include "physics/plugins/host/simulation_manager_api.h"

namespace NBrenmark::NApiCore {

namespace {

struct SApiRow
{
    quint32 identifier;
    quint32 major;
    quint32 minor; ///< the latest; earlier ones are the same object
    std::unique_ptr<IApi> (*make)(const CHostContext* context, quint32 identifier);
};

template <class THostApi>
SApiRow row(EApi identifier)
{
    return {identifier, THostApi::major, THostApi::minor,
            [](const CHostContext* context, quint32 asked) -> std::unique_ptr<IApi> {
                auto api = std::make_unique<THostApi>();
                return api->init(context, asked) ? std::move(api) : nullptr;
            }};
}

} // namespace

std::unique_ptr<IApi> createApi(const CHostContext* context, quint32 identifier, quint32 major, quint32 minor)
{
    static const SApiRow rows[] = {
        row<CApiManager_1>(eApiManager),
        row<CFieldManagerApi_1>(eFieldManager),
        row<CCustomPropertyManagerApi_1>(eContactProperties),
        row<CCustomPropertyManagerApi_1>(eGeometryProperties),
        row<CCustomPropertyManagerApi_1>(eParticleProperties),
        row<CCustomPropertyManagerApi_1>(eSimulationProperties),
        row<CParticleManagerApi_1>(eParticleManager),
        row<CGeometryManagerApi_1>(eGeometryManager),
        row<CSimulationManagerApi_1>(eSimulationManager),
    };
    for (const SApiRow& row : rows)
        if (row.identifier == identifier)
            return row.major == major && minor <= row.minor ? row.make(context, identifier) : nullptr;
    return nullptr;
}

} // namespace NBrenmark::NApiCore
