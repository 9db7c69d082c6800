#pragma once
// The geometry of the simulation, by the names of its groups.

#include <brenmark/plugin/api.h>

namespace NBrenmark::NApiCore {

class IGeometryManagerApi_1_0 : public IApi
{
public:
    /// Sets all elements of a custom property for all triangles of a group. \return false for a name that isn't known
    virtual bool setCustomProperty(const char* geometryName, const char* propertyName, double value) = 0;
};

class IGeometryManagerApi_1_1 : public IGeometryManagerApi_1_0
{
public:
    using IGeometryManagerApi_1_0::setCustomProperty;
    /// The same by the property's index.
    virtual bool setCustomProperty(const char* geometryName, unsigned int propertyIndex, double value) = 0;
};

} // namespace NBrenmark::NApiCore
