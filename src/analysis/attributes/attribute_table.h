#pragma once
// All attributes of a timestep.

#include "analysis/attributes/attribute.h"

#include <memory>

namespace NBrenmark::NAttributes {

class CAttributeTable : public IAttributeTable
{
public:
    const CAttribute* attribute(const QString& name, EAttributeOwner owner) const override;

    std::vector<std::unique_ptr<CAttribute>> all; ///< in the order of their names
};

/// Appends an attribute, and with derive what derives from it: components, magnitude and all of a vector, all of a
/// quaternion, the elements and the magnitude of a custom property of several. A surface normal, of length 1, has no
/// magnitude.
void addAttribute(CAttributeTable& table, std::unique_ptr<CAttribute> attribute, bool derive);

/// The attributes of a timestep, those of its custom properties among them. Some look at the timestep, which must
/// outlive the table; after another read into it the table is built anew.
CAttributeTable buildAttributeTable(const CTimestepData& timestep);

/// The attributes of a timestep, for CTimestepData::attributeMaker. They are built when the first name is looked up:
/// a conversion asks for none.
std::unique_ptr<IAttributeTable> attributesWhenAsked(const CTimestepData& timestep);

} // namespace NBrenmark::NAttributes
