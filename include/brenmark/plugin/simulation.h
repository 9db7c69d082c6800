#pragma once
// The custom properties of the simulation as a whole. All operations give false for a property or element that isn't
// there.

#include <brenmark/plugin/api.h>

namespace NBrenmark::NApiCore {

class ISimulationManagerApi_1_0 : public IApi
{
public:
    virtual bool setCustomProperty(const char* name, unsigned int element, double value) = 0;
    virtual bool setCustomPropertyAll(const char* name, double value) = 0;
};

class ISimulationManagerApi_1_1 : public ISimulationManagerApi_1_0
{
public:
    using ISimulationManagerApi_1_0::setCustomProperty;
    using ISimulationManagerApi_1_0::setCustomPropertyAll;
    /// The same by the property's index.
    virtual bool setCustomProperty(unsigned int index, unsigned int element, double value) = 0;
    virtual bool setCustomPropertyAll(unsigned int index, double value) = 0;
};

} // namespace NBrenmark::NApiCore
