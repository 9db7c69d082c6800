#pragma once
// How plug-ins set custom properties: one value for an element, or for all elements, of all items of an owner.

#include "properties/custom_property_data.h"

#include <string>

namespace NBrenmark::NApiCore {

/// The index of a property by its name, or by itself.
inline unsigned int propertyIndex(const CCustomPropertyData& data, const char* name)
{
    const CCustomPropertyManager* const manager = data.manager();
    return name != nullptr && manager != nullptr ? manager->indexOf(name) : CCustomPropertyManager::notFound;
}
inline unsigned int propertyIndex(const CCustomPropertyData& /*data*/, unsigned int index) { return index; }

/// \param property  name or index
/// \return false, with nothing changed, for a property without values, or an element that it doesn't have
template <class TProperty>
bool fillElement(CCustomPropertyData& data, TProperty property, unsigned int element, double value)
{
    const unsigned int index = propertyIndex(data, property);
    if (index >= data.lists.size() || element >= data.lists[index]->elementsPerItem())
        return false;
    data.lists[index]->fillElement(element, value);
    return true;
}

template <class TProperty>
bool fillAll(CCustomPropertyData& data, TProperty property, double value)
{
    const unsigned int index = propertyIndex(data, property);
    if (index >= data.lists.size())
        return false;
    data.lists[index]->fill(value);
    return true;
}

} // namespace NBrenmark::NApiCore
