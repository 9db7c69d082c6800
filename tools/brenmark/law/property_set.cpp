// Values of custom properties outside of a deck.
#include "brenmark/law/property_set.h"

#include <algorithm>

namespace NBrenmark {

void CPropertySet::define(const std::string& name, unsigned int elements, unsigned int quantity)
{
    auto property = std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, elements, quantity);
    if (manager.addProperty(property))
        manager.lastFinalisedPropertyIndex = static_cast<int>(manager.propertyCount()) - 1;
}

void CPropertySet::makeRows(quint32 items)
{
    for (CCustomPropertyData* const data : {&values, &changes})
        data->resize(items);
}

void CPropertySet::set(quint32 row, const PropertyValues& wanted)
{
    for (const auto& [name, elements] : wanted) {
        const unsigned int index = manager.indexOf(name);
        for (unsigned int i = 0; index != CCustomPropertyManager::notFound && i < elements.size(); ++i)
            values.setValue(index, row, i, elements[i]);
    }
}

PropertyValues CPropertySet::rowOf(const CCustomPropertyData& data, quint32 row)
{
    PropertyValues found;
    for (const auto& list : data.lists) {
        const double* const first = list->item(row);
        found[list->metaData().name].assign(first, first + list->elementsPerItem());
    }
    return found;
}

PropertyValues CPropertySet::sum(quint32 row) const
{
    PropertyValues all = rowOf(values, row);
    for (const auto& [name, elements] : rowOf(changes, row))
        for (std::size_t i = 0; i < elements.size(); ++i)
            all[name][i] += elements[i];
    return all;
}

unsigned int CPropertySet::quantityOf(const std::string& name) const
{
    for (const auto& list : values.lists)
        if (list->metaData().name == name)
            return list->metaData().unitsType;
    return 0;
}

void CPropertySet::apply()
{
    for (std::size_t i = 0; i < values.lists.size(); ++i) {
        std::vector<double>& added = changes.lists[i]->values;
        std::transform(added.begin(), added.end(), values.lists[i]->values.begin(), values.lists[i]->values.begin(),
                       std::plus<>());
        std::fill(added.begin(), added.end(), 0.0);
    }
}

} // namespace NBrenmark
