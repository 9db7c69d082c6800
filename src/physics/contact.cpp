// Reads and adds to the custom properties of a contact and its two sides.
#include "physics/contact.h"

#include "properties/custom_property_data.h"

namespace NBrenmark {

static double* elementOf(CCustomPropertyData* data, unsigned int property, quint32 row, unsigned int element)
{
    double* const values = data != nullptr ? data->values(property, row) : nullptr;
    return values != nullptr && element < data->lists[property]->elementsPerItem() ? values + element : nullptr;
}

double SPropertyItem::value(unsigned int property, unsigned int element) const
{
    const double* const found = elementOf(values, property, row, element);
    return found != nullptr ? *found : 0.0;
}

void SPropertyItem::add(unsigned int property, double change, unsigned int element) const
{
    if (double* const sum = elementOf(changes, property, row, element))
        *sum += change;
}

} // namespace NBrenmark
