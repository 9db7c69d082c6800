#pragma once
// Custom properties of one owner with values for a few items: what a law needs beside a contact.

#include "physics/contact.h"
#include "properties/custom_property_data.h"

#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

/// By name, the elements of one item.
using PropertyValues = std::map<std::string, std::vector<double>>;

class CPropertySet
{
public:
    explicit CPropertySet(ECustomPropertyOwner owner)
        : manager("Properties", owner), values(&manager), changes(&manager)
    {}

    /// Defines a property with values from here on; one that is there stays.
    /// \param quantity  EQuantity
    void define(const std::string& name, unsigned int elements, unsigned int quantity = 0);
    /// Makes rows for so many items, all 0.
    void makeRows(quint32 items);
    void set(quint32 row, const PropertyValues& wanted);
    /// What was added to a row, and the sum with what was there.
    PropertyValues changed(quint32 row) const { return rowOf(changes, row); }
    PropertyValues sum(quint32 row) const;
    /// EQuantity, 0 for a property that isn't there.
    unsigned int quantityOf(const std::string& name) const;
    /// Adds the changes to the values, and sets them to 0.
    void apply();
    SPropertyItem item(quint32 row) { return {&values, &changes, row}; }

    CCustomPropertyManager manager;

private:
    static PropertyValues rowOf(const CCustomPropertyData& data, quint32 row);

    CCustomPropertyData values;
    CCustomPropertyData changes;
};

} // namespace NBrenmark
