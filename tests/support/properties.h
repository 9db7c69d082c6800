#pragma once
// Custom properties for tests: definitions as a deck's settings would bring them.

#include "properties/custom_property_manager.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace NBrenmark {

/// Defines a property, with an element for each initial value, and makes it one that has stored values.
inline void finalizeProperty(CCustomPropertyManager& manager, const char* name,
                             const std::vector<double>& initialValues)
{
    auto property = std::make_unique<CCustomPropertyMetaData>(
        name, eDoubleProperty, static_cast<unsigned int>(initialValues.size()), 0u, initialValues);
    if (!manager.addProperty(property))
        throw std::runtime_error(std::string("property refused: ") + name);
    manager.lastFinalisedPropertyIndex = static_cast<int>(manager.propertyCount()) - 1;
    manager.notifyChanged(0);
}

} // namespace NBrenmark
