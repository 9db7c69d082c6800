// The values of custom properties.
#include "io/dem/custom_properties.h"

#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "results/custom_property_data.h"

#include <algorithm>

namespace NBrenmark {

static constexpr qint64 leastListBytes = 4 + 4 + 1;

/// The values of one property: width of them for each of rows items.
struct SStoredValues
{
    quint32 rows = 0;
    quint32 width = 0;
    std::vector<double> values;
};

static SStoredValues readValues(CInForm f)
{
    SStoredValues stored;
    bool deflated = false;
    f.i32(stored.rows);
    f.i32(stored.width);
    f.flag8(deflated);
    f.group(deflated, stored.rows, [&](CArrayGroupReader& arrays) {
        arrays.elements("custom property values", stored.values, quint64(stored.rows) * stored.width);
    });
    return stored;
}

/// Takes the front of each item where the definition wants another number of elements than the
/// file has: a value never moves to another item.
static void changeWidth(SStoredValues& stored, quint32 width, const CCustomPropertyMetaData& definition)
{
    std::vector<double> changed(std::size_t(stored.rows) * width);
    for (std::size_t row = 0; row < stored.rows; ++row)
        for (quint32 element = 0; element < width; ++element)
            changed[row * width + element] =
                element < stored.width ? stored.values[row * stored.width + element] : definition.initialValue(element);
    stored.values.swap(changed);
    stored.width = width;
}

void CDemReader::readCustomPropertyData(CCustomPropertyValueList& list)
{
    SStoredValues stored = readValues(in());
    if (stored.width != list.elementsPerItem()) {
        const quint32 width = list.elementsPerItem();
        const quint64 difference = std::max(width, stored.width) - std::min(width, stored.width);
        report(stored.width > width ? eLost : eDefaulted, NLogTitle::legacyRead,
               std::to_string(stored.width) + " values an item in file for property: " + list.metaData().name + ", " +
                   std::to_string(width) + " expected.",
               difference * stored.rows, list.metaData().name);
        changeWidth(stored, list.elementsPerItem(), list.metaData());
    }
    const unsigned int expected = list.itemCount();
    list.values.swap(stored.values);
    list.fitTo(expected);
}

void CDemWriter::writeCustomPropertyData(const CCustomPropertyValueList& list)
{
    const quint32 rows = list.itemCount();
    const quint32 width = list.elementsPerItem();
    const bool deflated = compressArrays() && list.values.size() * sizeof(double) > mostRawBytes;
    COutForm f = out();
    f.i32(rows);
    f.i32(width);
    f.flag8(deflated);
    f.group(deflated, rows, [&](CArrayGroupWriter& arrays) {
        arrays.elements("custom property values", list.values, quint64(rows) * width);
    });
}

/// The items have their count and initial values already: those stand where nothing is stored.
void CDemReader::readCustomPropertyManager(CCustomPropertyData& data)
{
    CInForm f = in();
    const quint32 count = f.count("custom property list", 0);
    qint32 items = 0;
    f.i32(items);
    if (count == 0 || items == 0)
        return;
    stream->require(count * leastListBytes, counted(count, "custom property list"));
    quint64 excess = 0;
    for (quint32 i = 0; i < count; ++i) {
        if (i < data.lists.size())
            data.lists[i]->read(*this);
        else
            excess += readValues(f).values.size();
    }
    const std::string text = counted(count, "list") + " of custom property values in file for " +
                             std::to_string(data.lists.size()) + " finalized properties of the settings: ";
    if (count > data.lists.size())
        report(eLost, NLogTitle::legacyRead, text + "discarding excess.", excess);
    // What was saved before a property was defined has no values of it.
    else if (count < data.lists.size())
        reportOnce(eRemark, NLogTitle::legacyRead, text + "using default values for remainder.",
                   data.lists.size() - count);
}

void CDemWriter::writeCustomPropertyManager(const CCustomPropertyData& data)
{
    COutForm f = out();
    if (data.lists.empty() || data.itemCount() == 0) {
        writeNoCustomProperties(f);
        return;
    }
    f.length("custom property list", leastListBytes, data.lists);
    f.i32(data.itemCount());
    for (const auto& list : data.lists)
        list->write(*this);
}

void writeNoCustomProperties(COutForm& f)
{
    f.i32(0); // lists
    f.i32(0); // items
}

} // namespace NBrenmark
