#include "physics/plugins/host/custom_property_manager_api.h"

#include "core/deck/simulation.h"
#include "core/deck/simulation_settings.h"

#include <algorithm>

namespace NBrenmark::NApiCore {

/// Who owns what an identifier stands for.
static constexpr std::pair<quint32, CCustomPropertyManager * SPropertyManagers::*> managersOfApis[] = {
    {eParticleProperties, &SPropertyManagers::particle},
    {eContactProperties, &SPropertyManagers::contact},
    {eGeometryProperties, &SPropertyManagers::geometry},
    {eSimulationProperties, &SPropertyManagers::simulation},
}; // by ECustomPropertyOwner

quint32 propertiesApiOf(unsigned int ownerType)
{
    return ownerType < std::size(managersOfApis) ? managersOfApis[ownerType].first : 0;
}

bool CCustomPropertyManagerApi_1::init(const CHostContext* hostContext, quint32 asked)
{
    return CHostApi::init(hostContext, asked) && asked >= eContactProperties && asked <= eSimulationProperties;
}

const CCustomPropertyManager* CCustomPropertyManagerApi_1::manager() const
{
    CSimulation* const simulation = context->simulation();
    if (simulation == nullptr)
        return nullptr;
    const SPropertyManagers managers = simulation->settings->propertyManagers();
    for (const auto& [api, member] : managersOfApis)
        if (api == identifier)
            return managers.*member;
    return nullptr;
}

unsigned int CCustomPropertyManagerApi_1::getPropertyCount() const
{
    const CCustomPropertyManager* const properties = manager();
    return properties != nullptr ? properties->propertyCount() : 0;
}

int CCustomPropertyManagerApi_1::getPropertyIndex(const char* name) const
{
    const CCustomPropertyManager* const properties = manager();
    if (name == nullptr || properties == nullptr)
        return -1;
    const unsigned int index = properties->indexOf(name);
    return index == CCustomPropertyManager::notFound ? -1 : static_cast<int>(index);
}

bool CCustomPropertyManagerApi_1::getPropertyDetails(const char* name, SPropertyDetails& details) const
{
    const int index = getPropertyIndex(name);
    return index >= 0 && getPropertyDetails(static_cast<unsigned int>(index), details);
}

bool CCustomPropertyManagerApi_1::getPropertyDetails(unsigned int index, SPropertyDetails& details) const
{
    const CCustomPropertyManager* const properties = manager();
    const CCustomPropertyMetaData* const property = properties != nullptr ? properties->property(index) : nullptr;
    if (property == nullptr)
        return false;
    details = SPropertyDetails();
    property->name.copy(details.name, propertyNameSize - 1);
    details.index = index;
    details.ownerType = properties->managerType;
    details.dataType = property->dataType;
    details.numberOfElements = property->numberOfElements;
    details.unitType = property->unitsType;
    details.finalized = index < properties->finalizedCount();
    return true;
}

} // namespace NBrenmark::NApiCore
