// Makes the definitions that a model asks for from its table.
#include "physics/required_property.h"

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

} // namespace NBrenmark
