#include "physics/plugins/host/geometry_manager_api.h"

#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "physics/plugins/host/property_filling.h"

namespace NBrenmark::NApiCore {

template <class TProperty>
static bool fillGeometry(const CHostContext& context, const char* geometryName, TProperty property, double value)
{
    const CCreatorData* const creator = context.creator();
    CGeometryGroup* const group = creator != nullptr && geometryName != nullptr
                                      ? creator->geometryGroupByName(QString::fromUtf8(geometryName))
                                      : nullptr;
    return group != nullptr && fillAll(group->customProperties, property, value);
}

bool CGeometryManagerApi_1::setCustomProperty(const char* geometryName, const char* propertyName, double value)
{
    return fillGeometry(*context, geometryName, propertyName, value);
}

bool CGeometryManagerApi_1::setCustomProperty(const char* geometryName, unsigned int propertyIndex, double value)
{
    return fillGeometry(*context, geometryName, propertyIndex, value);
}

} // namespace NBrenmark::NApiCore
