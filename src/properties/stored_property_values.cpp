// Fits stored values to the elements that a property has, with a message for what doesn't fit.
#include "properties/stored_property_values.h"

#include "core/log.h"
#include "properties/custom_property_data.h"

#include <algorithm>

namespace NBrenmark {

void takeStoredValues(CCustomPropertyValueList& list, std::vector<double>& stored, quint64 width,
                      const SLogTitle& title)
{
    const CCustomPropertyMetaData& definition = list.metaData();
    const quint64 wanted = list.elementsPerItem();
    const quint64 items = list.itemCount();
    // Items without a value have nothing in the file that vouches for their number.
    const quint64 rows = width > 0 ? stored.size() / width : 0;
    if (width != wanted && rows > 0) {
        report(width > wanted ? eLost : eDefaulted, title,
               std::to_string(width) + " values an item in file for property: " + definition.name + ", " +
                   std::to_string(wanted) + " expected.",
               (std::max(width, wanted) - std::min(width, wanted)) * rows, definition.name);
        if (rows > items)
            report(eLost, title,
                   std::to_string(rows) + " items in file for property: " + definition.name + ", " +
                       std::to_string(items) + " expected.",
                   rows - items, definition.name);
        std::vector<double> changed(std::min(rows, items) * wanted);
        for (std::size_t i = 0; i < changed.size(); ++i) {
            const std::size_t element = i % wanted;
            changed[i] = element < width ? stored[i / wanted * width + element]
                                         : definition.initialValue(static_cast<unsigned int>(element));
        }
        stored.swap(changed);
    }
    list.values.swap(stored);
    list.fitTo(static_cast<unsigned int>(items));
}

} // namespace NBrenmark
