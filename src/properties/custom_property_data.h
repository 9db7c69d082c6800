#pragma once
// The values of custom properties: one list per finalized property, one item per particle slot,
// contact row, triangle, or the simulation.

#include "properties/custom_property_manager.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// The values of one property, item-major: elementsPerItem values for each item. Flags are 0.0 and 1.0.
class CCustomPropertyValueList
{
public:
    /// \param metaData  not owned; must outlive the list
    CCustomPropertyValueList(const CCustomPropertyMetaData& metaData, bool usesZeroDefault);

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// New items get the initial values, or zero with usesZeroDefault.
    void resize(unsigned int items);
    void reserve(unsigned int items) { values.reserve(std::size_t(items) * elementsPerItem()); }
    /// Brings values that a file held to the expected number of items. More than expected are
    /// discarded from the back, missing ones get the initial values; both are reported as
    /// warnings with the property's name and the counts.
    void fitTo(unsigned int items);
    /// Whether a file held values of the property, since the list was last emptied.
    bool heldByFile() const { return fromFile; }
    /// The values of one item, or null for an item out of range.
    double* item(unsigned int index);
    const double* item(unsigned int index) const;
    void resetToInitial(unsigned int index);
    void copyItem(unsigned int source, unsigned int target);
    /// One value for all elements of all items, or for one element of all items.
    void fill(double value);
    void fillElement(unsigned int element, double value);

    const CCustomPropertyMetaData& metaData() const { return *definition; }
    unsigned int itemCount() const { return items; }
    unsigned int elementsPerItem() const { return definition->numberOfElements; }

    std::vector<double> values;

private:
    void fillFrom(std::size_t first);

    const CCustomPropertyMetaData* definition;
    unsigned int items = 0;
    bool usesZeroDefault;
    bool fromFile = false;
};

class CCustomPropertyData : public IPropertyListener
{
public:
    /// \param manager  not owned, must outlive the data; null stands for no properties
    explicit CCustomPropertyData(CCustomPropertyManager* manager, bool usesZeroDefault = false);
    ~CCustomPropertyData() override;
    CCustomPropertyData(const CCustomPropertyData&) = delete;
    CCustomPropertyData& operator=(const CCustomPropertyData&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Every list takes the new count, and the lists follow the manager's finalized properties.
    void resize(unsigned int itemCount);
    /// Makes room in the lists that there are.
    void reserve(unsigned int itemCount);
    void copyItem(unsigned int source, unsigned int target);
    /// The list of a property, or null. fileNames is asked first, then the manager.
    CCustomPropertyValueList* list(const std::string& name);
    /// The values of one property of one item, elementsPerItem of them; null for either out of range.
    double* values(unsigned int property, unsigned int item);
    /// \return false for a property, item or element out of range
    bool setValue(unsigned int property, unsigned int item, unsigned int element, double value);
    /// Deals values out over the properties of an item in their order. Where they run out the rest gets
    /// its initial values; more than elementsTotal are ignored.
    /// \return false for an item out of range
    bool setItem(unsigned int item, const std::vector<double>& dealt);
    /// Elements of one item over all properties.
    unsigned int elementsTotal() const;
    void resetToInitial(unsigned int item);
    /// No items and every list emptied.
    void resetAll();
    /// Brings all lists to the item count and fills them with initial values: what stands for
    /// values that a version doesn't store.
    void resetToInitialValues(unsigned int itemCount);

    /// Exchanges the values with those of another owner of the same manager.
    void swapValues(CCustomPropertyData& other);

    unsigned int itemCount() const { return items; }
    CCustomPropertyManager* manager() const { return definitions; }

    void managerChanged(CCustomPropertyManager& manager, int value) override;
    void propertyAdded(CCustomPropertyManager& manager) override;

    std::vector<std::unique_ptr<CCustomPropertyValueList>> lists;
    /// Position in lists of a property whose definition the manager doesn't hold under that name any more;
    /// goes with its list.
    std::map<std::string, unsigned int> fileNames;

private:
    CCustomPropertyManager* definitions;
    unsigned int items = 0;
    bool usesZeroDefault;
};

} // namespace NBrenmark
