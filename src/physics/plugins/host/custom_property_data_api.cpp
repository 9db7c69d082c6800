#include "physics/plugins/host/custom_property_data_api.h"

#include "physics/plugins/host/create_api.h"
#include "physics/plugins/host/custom_property_manager_api.h"
#include "properties/custom_property_data.h"

namespace NBrenmark::NApiCore {

bool CCustomPropertyDataApi_1::bind(const CHostContext* hostContext, CCustomPropertyData* data, quint32 boundItem,
                                    CCustomPropertyData* stagingStore, quint32 stagingOffset)
{
    context = hostContext;
    values = data;
    item = boundItem;
    staged = stagingStore;
    stagedItem = stagingOffset;
    return context != nullptr && values != nullptr;
}

void CCustomPropertyDataApi_1::getVersion(unsigned int& major, unsigned int& minor) const
{
    major = 1;
    minor = 0;
}

bool CCustomPropertyDataApi_1::isAvailable() const { return context->simulation() != nullptr || staged == nullptr; }

ICustomPropertyManagerApi_1_0* CCustomPropertyDataApi_1::getPropertyManager(unsigned int major,
                                                                            unsigned int minor) const
{
    const CCustomPropertyManager* const manager = values->manager();
    const quint32 identifier = manager != nullptr ? propertiesApiOf(manager->managerType) : 0;
    if (identifier == 0)
        return nullptr;
    return static_cast<ICustomPropertyManagerApi_1_0*>(createApi(context, identifier, major, minor).release());
}

unsigned int CCustomPropertyDataApi_1::indexOf(const char* name) const
{
    const CCustomPropertyManager* const manager = values->manager();
    return name != nullptr && manager != nullptr ? manager->indexOf(name) : CCustomPropertyManager::notFound;
}

const double* CCustomPropertyDataApi_1::getValue(unsigned int index) const { return values->values(index, item); }

double* CCustomPropertyDataApi_1::getStagedValue(unsigned int index) const
{
    return staged != nullptr ? staged->values(index, stagedItem) : nullptr;
}

} // namespace NBrenmark::NApiCore
