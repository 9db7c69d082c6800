#pragma once
// What every external force is to a deck: a name, a parameter record, and custom properties that it
// works on.

#include "core/parameter_support.h"
#include "physics/model_kinds.h"
#include "physics/required_property.h"
#include "properties/custom_property_manager.h"

#include <QString>

#include <string>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class IExternalForce : public IParameterSupport, public IPropertyListener
{
public:
    explicit IExternalForce(quint32 source) : source(source) {}

    /// The registered name.
    virtual QString modelName() const = 0;
    /// For the solver.
    virtual bool capabilityFlag() const = 0;
    /// New definitions for an owner, an ECustomPropertyOwner.
    virtual RequiredProperties requiredProperties(unsigned int ownerType) const = 0;
    /// The parameter record.
    virtual void write(IFileVisitorWriter& visitor) const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void particleTypeRenamed(const std::string& /*oldName*/, const std::string& /*newName*/) {}

    // Nothing that a force keeps depends on the definitions.
    void managerChanged(CCustomPropertyManager& /*manager*/, int /*value*/) override {}
    void propertyAdded(CCustomPropertyManager& /*manager*/) override {}

    quint32 source; ///< EModelSource
};

} // namespace NBrenmark
