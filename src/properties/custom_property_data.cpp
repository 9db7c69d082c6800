// Keeps one list of values for each finalized property, in step with the definitions as they come and go.
#include "properties/custom_property_data.h"

#include "core/log.h"
#include "core/shortened.h"
#include "platform/loop_threads.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <QString>
#include <algorithm>
#include <iterator>

namespace NBrenmark {

// ---------------------------------------------------------------- the values of one property

CCustomPropertyValueList::CCustomPropertyValueList(const CCustomPropertyMetaData& metaData, bool usesZeroDefault)
    : definition(&metaData), usesZeroDefault(usesZeroDefault)
{}

void CCustomPropertyValueList::read(IFileVisitorReader& v) { v.readCustomPropertyData(*this); }

void CCustomPropertyValueList::write(IFileVisitorWriter& v) const { v.writeCustomPropertyData(*this); }

void CCustomPropertyValueList::resize(unsigned int itemCount)
{
    const unsigned int kept = std::min(items, itemCount);
    fromFile = fromFile && itemCount > 0;
    items = itemCount;
    values.resize(std::size_t(items) * elementsPerItem());
    fillFrom(std::size_t(kept) * elementsPerItem());
}

void CCustomPropertyValueList::fitTo(unsigned int itemCount)
{
    const std::size_t wanted = std::size_t(itemCount) * elementsPerItem();
    const std::size_t found = values.size();
    const char* text = nullptr;
    if (found > wanted)
        text = "Too much data in file for property: %1\nDiscarding excess.";
    else if (found < wanted)
        text = "Not enough data in file for property: %1\nUsing default values for remainder.";
    if (text != nullptr)
        report(found > wanted ? eLost : eDefaulted, NLogTitle::customProperties,
               QString(text).arg(QString::fromStdString(shortened(definition->name))).toStdString() + "\n" +
                   std::to_string(found) + " values found, " + std::to_string(wanted) + " expected.",
               std::max(found, wanted) - std::min(found, wanted), definition->name);
    items = itemCount;
    fromFile = found > 0;
    values.resize(wanted);
    fillFrom(found);
}

/// Initial values from a position of the array on.
void CCustomPropertyValueList::fillFrom(std::size_t first)
{
    const std::size_t end = values.size();
    if (usesZeroDefault) {
#pragma omp parallel for schedule(static) num_threads(loopThreads())
        for (std::size_t position = first; position < end; ++position)
            values[position] = 0.0;
        return;
    }
    for (std::size_t position = first; position < end; ++position)
        values[position] = definition->initialValue(static_cast<unsigned int>(position % elementsPerItem()));
}

void CCustomPropertyValueList::fill(double value)
{
    const unsigned int elements = elementsPerItem();
    if (items == 0)
        return;
#pragma omp parallel for schedule(dynamic, 1) num_threads(loopThreads())
    for (unsigned int index = 0; index < items; ++index)
        std::fill_n(values.begin() + std::ptrdiff_t(std::size_t(index) * elements), elements, value);
}

void CCustomPropertyValueList::fillElement(unsigned int element, double value)
{
    const unsigned int elements = elementsPerItem();
    if (items == 0 || element >= elements)
        return;
#pragma omp parallel for schedule(dynamic, 1) num_threads(loopThreads())
    for (unsigned int index = 0; index < items; ++index)
        values[std::size_t(index) * elements + element] = value;
}

double* CCustomPropertyValueList::item(unsigned int index)
{
    return index < items ? values.data() + std::size_t(index) * elementsPerItem() : nullptr;
}

const double* CCustomPropertyValueList::item(unsigned int index) const
{
    return index < items ? values.data() + std::size_t(index) * elementsPerItem() : nullptr;
}

void CCustomPropertyValueList::resetToInitial(unsigned int index)
{
    double* const itemValues = item(index);
    if (itemValues == nullptr)
        return;
    for (unsigned int element = 0; element < elementsPerItem(); ++element)
        itemValues[element] = usesZeroDefault ? 0.0 : definition->initialValue(element);
}

void CCustomPropertyValueList::copyItem(unsigned int source, unsigned int target)
{
    const double* const from = item(source);
    double* const to = item(target);
    if (from != nullptr && to != nullptr)
        std::copy_n(from, elementsPerItem(), to);
}

// ---------------------------------------------------------------- the values of one owner

CCustomPropertyData::CCustomPropertyData(CCustomPropertyManager* manager, bool usesZeroDefault)
    : definitions(manager), usesZeroDefault(usesZeroDefault)
{
    if (definitions == nullptr)
        return;
    definitions->addListener(this);
    resize(0);
}

CCustomPropertyData::~CCustomPropertyData()
{
    if (definitions == nullptr)
        return;
    items = 0; // the farewell below asks for lists of as many items
    lists.clear();
    definitions->removeListener(this);
}

void CCustomPropertyData::read(IFileVisitorReader& v) { v.readCustomPropertyManager(*this); }

void CCustomPropertyData::write(IFileVisitorWriter& v) const { v.writeCustomPropertyManager(*this); }

void CCustomPropertyData::resize(unsigned int itemCount)
{
    items = itemCount;
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        list->resize(items);
    const unsigned int wanted = definitions != nullptr ? definitions->finalizedCount() : 0;
    if (lists.size() > wanted) {
        lists.resize(wanted);
        for (auto known = fileNames.begin(); known != fileNames.end();) // no name for what comes in their place
            known = known->second >= wanted ? fileNames.erase(known) : std::next(known);
    }
    while (lists.size() < wanted) {
        const CCustomPropertyMetaData& definition = *definitions->property(static_cast<unsigned int>(lists.size()));
        lists.push_back(std::make_unique<CCustomPropertyValueList>(definition, usesZeroDefault));
        lists.back()->resize(items);
    }
}

void CCustomPropertyData::reserve(unsigned int itemCount)
{
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        list->reserve(itemCount);
}

void CCustomPropertyData::copyItem(unsigned int source, unsigned int target)
{
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        list->copyItem(source, target);
}

CCustomPropertyValueList* CCustomPropertyData::list(const std::string& name)
{
    unsigned int index = CCustomPropertyManager::notFound;
    if (const auto known = fileNames.find(name); known != fileNames.end())
        index = known->second;
    else if (definitions != nullptr)
        index = definitions->indexOf(name);
    return index < lists.size() ? lists[index].get() : nullptr;
}

double* CCustomPropertyData::values(unsigned int property, unsigned int item)
{
    return property < lists.size() ? lists[property]->item(item) : nullptr;
}

bool CCustomPropertyData::setValue(unsigned int property, unsigned int item, unsigned int element, double value)
{
    double* const itemValues = values(property, item);
    if (itemValues == nullptr || element >= lists[property]->elementsPerItem())
        return false;
    itemValues[element] = value;
    return true;
}

bool CCustomPropertyData::setItem(unsigned int item, const std::vector<double>& dealt)
{
    if (item >= items)
        return false;
    resetToInitial(item);
    std::size_t next = 0;
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists) {
        const std::size_t count = std::min<std::size_t>(list->elementsPerItem(), dealt.size() - next);
        if (double* const itemValues = list->item(item))
            std::copy_n(dealt.begin() + std::ptrdiff_t(next), count, itemValues);
        next += count;
    }
    return true;
}

unsigned int CCustomPropertyData::elementsTotal() const
{
    unsigned int total = 0;
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        total += list->elementsPerItem();
    return total;
}

void CCustomPropertyData::resetToInitial(unsigned int item)
{
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        list->resetToInitial(item);
}

void CCustomPropertyData::resetAll()
{
    items = 0;
    for (const std::unique_ptr<CCustomPropertyValueList>& list : lists)
        list->resize(0);
}

void CCustomPropertyData::resetToInitialValues(unsigned int itemCount)
{
    resetAll();
    resize(itemCount);
}

void CCustomPropertyData::swapValues(CCustomPropertyData& other)
{
    std::swap(lists, other.lists);
    std::swap(fileNames, other.fileNames);
    std::swap(items, other.items);
}

void CCustomPropertyData::managerChanged(CCustomPropertyManager&, int) { resize(items); }

// A new property is tentative: it has no values until it is finalized.
void CCustomPropertyData::propertyAdded(CCustomPropertyManager&) {}

} // namespace NBrenmark
