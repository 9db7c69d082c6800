#pragma once
// The custom properties that a contact model or an external force works on. A deck holds them for
// as long as it holds the model.

#include "properties/custom_property_meta_data.h"
#include "units/quantity.h"

#include <memory>
#include <vector>

namespace NBrenmark {

/// One row of a model's table: whose property, its name and its shape. All hold real numbers that
/// start at zero.
struct SRequiredProperty
{
    unsigned int owner; ///< ECustomPropertyOwner
    const char* name;
    unsigned int numberOfElements;
    EQuantity quantity;
};

class CCustomPropertyManager;

/// Where the properties of a table are among those of their owners.
class CPropertyIndices
{
public:
    static constexpr unsigned int notFound = 0xFFFFFFFFu;

    /// Takes what a manager holds now. A property without stored values isn't found.
    void resolve(const std::vector<SRequiredProperty>& table, const CCustomPropertyManager& manager);
    unsigned int of(std::size_t row) const { return row < indices.size() ? indices[row] : notFound; }
    bool areResolved() const;

private:
    std::vector<unsigned int> indices;
};

using RequiredProperties = std::vector<std::unique_ptr<CCustomPropertyMetaData>>;

/// New definitions of those rows that belong to an owner, in the order of the table.
RequiredProperties requiredPropertiesOf(const std::vector<SRequiredProperty>& table, unsigned int ownerType);

} // namespace NBrenmark
