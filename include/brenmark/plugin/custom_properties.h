#pragma once
// Custom properties: their definitions, one list for each owner, and the values of one particle, contact, triangle or
// of the simulation.

#include <brenmark/plugin/api.h>
#include <brenmark/plugin/plugin.h>

namespace NBrenmark::NApiCore {

/// One definition.
struct SPropertyDetails
{
    char name[propertyNameSize]; ///< NUL-terminated
    unsigned int index;          ///< among those of the owner
    unsigned int ownerType;      ///< EOwnerType
    unsigned int dataType;       ///< EDataType
    unsigned int numberOfElements;
    unsigned int unitType; ///< EUnitType
    bool finalized;        ///< whether there are values of it
};

/// The definitions of one owner, by the identifiers 4 to 7.
class ICustomPropertyManagerApi_1_0 : public IApi
{
public:
    virtual unsigned int getPropertyCount() const = 0;
    /// -1 for null and for a name that isn't known.
    virtual int getPropertyIndex(const char* name) const = 0;
    /// \return false, with details untouched, for a name that isn't known
    virtual bool getPropertyDetails(const char* name, SPropertyDetails& details) const = 0;
    /// \return false, with details untouched, for an index out of range
    virtual bool getPropertyDetails(unsigned int index, SPropertyDetails& details) const = 0;
};

/// The values of one item. Pointers stay valid until particles, contacts or properties come or go; each leads to as
/// many doubles as the property has elements. A plug-in writes what is staged, never values of other items.
class ICustomPropertyDataApi_1_0 : public IApi
{
public:
    /// The definitions of the item's owner, to be given back by releaseApi; null for a version that the host doesn't
    /// have.
    virtual ICustomPropertyManagerApi_1_0* getPropertyManager(unsigned int major, unsigned int minor) const = 0;
    /// The current values; null for a property that isn't known or has no values.
    virtual const double* getValue(const char* name) const = 0;
    virtual const double* getValue(unsigned int index) const = 0;
    /// Where to add changes, which the host applies after the step; null if there is no place for them.
    virtual double* getStagedValue(const char* name) const = 0;
    virtual double* getStagedValue(unsigned int index) const = 0;
    /// Whether getStagedValue has a place for the property.
    virtual bool canWriteProperty(const char* name) const = 0;
    virtual bool canWriteProperty(unsigned int index) const = 0;
};

} // namespace NBrenmark::NApiCore
