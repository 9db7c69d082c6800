// Makes the definitions that a model asks for from its table, and finds them among those of a deck.
#include "physics/required_property.h"

#include "properties/custom_property_manager.h"

#include <algorithm>

namespace NBrenmark {

RequiredProperties requiredPropertiesOf(const std::vector<SRequiredProperty>& table, unsigned int ownerType)
{
    RequiredProperties properties;
    for (const SRequiredProperty& row : table)
        if (row.owner == ownerType)
            properties.push_back(std::make_unique<CCustomPropertyMetaData>(row.name, eDoubleProperty,
                                                                           row.numberOfElements, row.quantity));
    return properties;
}

void CPropertyIndices::resolve(const std::vector<SRequiredProperty>& table, const CCustomPropertyManager& manager)
{
    indices.resize(table.size(), notFound);
    for (std::size_t row = 0; row < table.size(); ++row)
        if (table[row].owner == manager.managerType) {
            const unsigned int index = manager.indexOf(table[row].name);
            indices[row] = index < manager.finalizedCount() ? index : notFound;
        }
}

bool CPropertyIndices::areResolved() const
{
    return !indices.empty() && std::find(indices.begin(), indices.end(), notFound) == indices.end();
}

} // namespace NBrenmark
