#pragma once
// Whether numbers that old decks store beside an object live on as one of its custom properties.

#include "properties/custom_property_data.h"

#include <cstring>
#include <string>
#include <vector>

namespace NBrenmark {

/// Whether a list of custom properties holds just these numbers, so that no other line has to show them.
template <class T>
bool heldByProperty(const CCustomPropertyData& properties, const char* property, const std::vector<T>& rows)
{
    for (const auto& list : properties.lists) {
        if (list->metaData().name != property)
            continue;
        const size_t bytes = rows.size() * sizeof(T);
        return list->values.size() * sizeof(double) == bytes &&
               (bytes == 0 || std::memcmp(list->values.data(), rows.data(), bytes) == 0);
    }
    return false;
}

} // namespace NBrenmark
