// The values of custom properties: a group with a child for each finalized property, in the order of
// the definitions, which are in the settings beside the deck.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "properties/custom_property_data.h"
#include "properties/stored_property_values.h"

#include <algorithm>

namespace NBrenmark {

// ---------------------------------------------------------------- one property

static const char* const valuesName = "data";

void CHdf5Reader::readCustomPropertyData(CCustomPropertyValueList& list)
{
    std::vector<double> values;
    hsize_t columns = list.elementsPerItem();
    // A property without a value has no dataset.
    if (in().has(valuesName))
        in().arrays().read(valuesName, H5::PredType::NATIVE_DOUBLE, CArrayReader::anyColumns,
                           [&](const SArrayShape& shape) {
                               values.resize(shape.elements());
                               columns = shape.columns;
                               return static_cast<void*>(values.data());
                           });
    takeStoredValues(list, values, columns, NLogTitle::hdf5Read);
}

void CHdf5Writer::writeCustomPropertyData(const CCustomPropertyValueList& list)
{
    if (!list.values.empty())
        out().values(valuesName, list.values, list.elementsPerItem());
}

// ---------------------------------------------------------------- all properties of an owner

void CHdf5Reader::readCustomPropertyManager(CCustomPropertyData& data)
{
    in().group("CustomProperties/", [&] {
        data.resize(data.itemCount()); // as many lists as there are finalized properties
        const hsize_t stored = in().childCount();
        const hsize_t known = std::min<hsize_t>(stored, data.lists.size());
        for (hsize_t i = 0; i < known; ++i)
            in().group(std::to_string(i), [&] { data.lists[i]->read(*this); });
        if (stored > known)
            report(eLost, NLogTitle::hdf5Read,
                   std::to_string(stored) + " custom properties are stored where the settings define " +
                       std::to_string(known) + ": the others are skipped.",
                   stored - known);
        else if (options.examine && stored < data.lists.size())
            report(eDefaulted, NLogTitle::hdf5Read,
                   std::to_string(stored) + " custom properties are stored where the settings define " +
                       std::to_string(data.lists.size()) + ": the others have their default values.",
                   data.lists.size() - stored);
    });
}

void CHdf5Writer::writeCustomPropertyManager(const CCustomPropertyData& data)
{
    out().group("CustomProperties/", [&] {
        out().numbered(data.lists, [&](const std::unique_ptr<CCustomPropertyValueList>& list) { list->write(*this); });
    });
}

} // namespace NBrenmark
