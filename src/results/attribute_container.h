#pragma once
// Columns of attributes that were read once, for owners whose rows change no more after a timestep was loaded.

#include "units/units_converter.h"
#include "visitors/attribute_retrieval.h"

#include <map>
#include <mutex>

namespace NBrenmark {

/// Base of a collection, which keeps the columns that were read of it, in the order of its rows. A column is read anew
/// in another unit, and all are dropped by forgetColumns(): whoever changes rows, or replaces the table of attributes,
/// calls it. Attributes that aren't of the collection's own table are not kept, for they may be gone by the next read.
/// \tparam T  the collection: an IAttributeRetrieval, which reads rows by its readRows(out, attribute, row)
template <class T>
class CAttributeContainer
{
public:
    void forgetColumns()
    {
        const std::lock_guard<std::mutex> guard(columnsLock);
        columns.clear();
    }

protected:
    ~CAttributeContainer() = default;

    /// \return false, with nothing in out, without a value in any row
    bool columnOf(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor& attribute) const
    {
        const T& collection = static_cast<const T&>(*this);
        const bool isOwn = collection.attributes != nullptr &&
                           collection.attributes->attribute(attribute.name, collection.attributeOwner()) == &attribute;
        if (!isOwn)
            return collection.readRows(out, &attribute, T::allRows);
        const int unit = attribute.units().currentIndex;
        const std::lock_guard<std::mutex> guard(columnsLock);
        SColumn& column = columns[&attribute];
        if (column.unit != unit) {
            column.isHeld = collection.readRows(column.values, &attribute, T::allRows);
            column.unit = unit;
        }
        out = column.values;
        return column.isHeld;
    }

private:
    struct SColumn
    {
        int unit = -1; ///< in which the values are; none has this number
        NAttributes::SAttributeValue values;
        bool isHeld = false;
    };

    mutable std::mutex columnsLock;
    mutable std::map<const NAttributes::CAttributeDescriptor*, SColumn> columns;
};

} // namespace NBrenmark
