#include "analysis/attributes/attribute_table.h"

#include "analysis/attributes/coordination_number.h"
#include "analysis/attributes/derived_attributes.h"
#include "analysis/attributes/primary_attributes.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"

#include <algorithm>
#include <mutex>

namespace NBrenmark::NAttributes {

const CAttribute* CAttributeTable::attribute(const QString& name, EAttributeOwner owner) const
{
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& attribute) {
        return attribute->name == name && (attribute->owners & owner) != 0;
    });
    return found == all.end() ? nullptr : found->get();
}

void addAttribute(CAttributeTable& table, std::unique_ptr<CAttribute> attribute, bool derive)
{
    const CAttribute& primary = *attribute;
    table.all.push_back(std::move(attribute));
    if (!derive)
        return;
    if (primary.valueKind == eVectorValue) {
        for (quint32 component = 0; component < 3; ++component)
            table.all.push_back(std::make_unique<CAttributeVectorComponent>(primary, component));
        if (dynamic_cast<const CAttributeSurfaceNormal*>(&primary) == nullptr)
            table.all.push_back(std::make_unique<CAttributeMagnitude>(primary));
        table.all.push_back(std::make_unique<CAttributeVectorAll>(primary));
    }
    if (primary.valueKind == eQuaternionValue)
        table.all.push_back(std::make_unique<CAttributeQuaternionAll>(primary));
    if (primary.elementCount > 1) {
        for (quint32 element = 0; element < primary.elementCount; ++element)
            table.all.push_back(std::make_unique<CAttributeCustomPropertyComponent>(primary, element));
        table.all.push_back(std::make_unique<CAttributeCustomPropertyMagnitude>(primary));
    }
}

static void addProperties(CAttributeTable& table, const CCustomPropertyManager* manager, EAttributeOwner owner)
{
    for (unsigned int i = 0; manager != nullptr && i < manager->propertyCount(); ++i)
        addAttribute(table, std::make_unique<CAttributeCustomProperty>(*manager->property(i), owner), true);
}

CAttributeTable buildAttributeTable(const CTimestepData& timestep)
{
    CAttributeTable table;
#define ATTRIBUTE(type, ...) addAttribute(table, std::make_unique<type>(timestep), true);
#include "analysis/attributes/primary_attributes.def"
    addAttribute(table, std::make_unique<CAttributeCoordinationNum>(timestep), true);
    addProperties(table, timestep.particleTypes.properties(), eParticleAttribute);
    addProperties(table, timestep.contacts.surfaceSurface.customProperties.manager(), eContactAttribute);
    addProperties(table, timestep.creatorData.geometryGroups.managers.geometry, eGeometryAttribute);
    addProperties(table, timestep.simulationProperties.manager(), eSimulationAttribute);
    std::stable_sort(table.all.begin(), table.all.end(),
                     [](const auto& a, const auto& b) { return a->name < b->name; });
    return table;
}

namespace {

class CAttributesWhenAsked : public IAttributeTable
{
public:
    explicit CAttributesWhenAsked(const CTimestepData& timestep) : timestep(timestep) {}

    const CAttributeDescriptor* attribute(const QString& name, EAttributeOwner owner) const override
    {
        std::call_once(built, [this] { table = buildAttributeTable(timestep); });
        return table.attribute(name, owner);
    }

private:
    const CTimestepData& timestep;
    mutable std::once_flag built;
    mutable CAttributeTable table;
};

} // namespace

std::unique_ptr<IAttributeTable> attributesWhenAsked(const CTimestepData& timestep)
{
    return std::make_unique<CAttributesWhenAsked>(timestep);
}

} // namespace NBrenmark::NAttributes
