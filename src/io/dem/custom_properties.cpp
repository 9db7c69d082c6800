// The values of custom properties.
#include "io/dem/custom_properties.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "properties/custom_property_data.h"
#include "properties/stored_property_values.h"

#include <algorithm>

namespace NBrenmark {

static constexpr qint64 leastListBytes = 4 + 4 + 1;

/// The values of one property: width of them for each of rows items.
struct SStoredValues
{
    quint32 rows = 0;
    quint32 width = 0;
    std::vector<double> values;

    quint64 count() const { return quint64(rows) * width; }
};

/// \param mostRows  that are kept
static SStoredValues readValues(CInForm f, quint32 mostRows)
{
    SStoredValues stored;
    bool deflated = false;
    f.i32(stored.rows);
    f.i32(stored.width); // elements of an item
    f.flag8(deflated);
    const quint64 kept = quint64(std::min(stored.rows, mostRows)) * stored.width;
    f.group(deflated, stored.rows, [&](CArrayGroupReader& arrays) {
        constexpr const char* what = "custom property values";
        arrays.elements(what, stored.values, kept);
        arrays.skip(what, stored.count() - kept, sizeof(double));
    });
    return stored;
}

void CDemReader::readCustomPropertyData(CCustomPropertyValueList& list)
{
    SStoredValues stored = readValues(in(), list.itemCount());
    if (const quint64 surplus = stored.count() - stored.values.size(); surplus > 0)
        report(eLost, NLogTitle::customProperties,
               "Too much data in file for property: " + shortened(list.metaData().name) + "\nDiscarding excess.\n" +
                   std::to_string(stored.rows) + " items found, " + std::to_string(list.itemCount()) + " expected.",
               surplus, list.metaData().name);
    takeStoredValues(list, stored.values, stored.width, NLogTitle::legacyRead);
}

void CDemWriter::writeCustomPropertyData(const CCustomPropertyValueList& list)
{
    const quint32 rows = list.itemCount();
    const quint32 width = list.elementsPerItem();
    const bool deflated = compressArrays() && list.values.size() * sizeof(double) > mostRawBytes;
    COutForm f = out();
    f.i32(rows);
    f.i32(width); // elements of an item
    f.flag8(deflated);
    f.group(deflated, rows, [&](CArrayGroupWriter& arrays) {
        arrays.elements("custom property values", list.values, quint64(rows) * width);
    });
}

/// The items have their count and initial values already: those remain where nothing is stored.
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
            excess += readValues(f, 0).count();
    }
    const std::string text =
        counted(count, "list") + " of custom property values in file for " +
        (data.lists.empty() ? std::string("no property: the settings (.ess) are missing or define "
                                          "none, ")
                            : std::to_string(data.lists.size()) + " finalized properties of the settings: ");
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
