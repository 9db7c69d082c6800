#pragma once
// What every external force is to a deck: a name, a parameter record, and custom properties that it
// works on. To a solver it acts on each particle.

#include "core/parameter_support.h"
#include "physics/contact.h"
#include "physics/model_kinds.h"
#include "physics/required_property.h"
#include "properties/custom_property_manager.h"

#include <QString>

#include <string>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// One particle as a solver hands it to an external force, and what acts on it.
struct SParticleForce
{
    std::string name;      ///< of the particle type
    double mass = 0.0;     ///< kg
    double timeStep = 0.0; ///< s
    bool multiThreaded = false;
    SPropertyItem properties;
    C3DVector force;  ///< N
    C3DVector torque; ///< N m
};

class IExternalForce : public IParameterSupport, public IPropertyListener
{
public:
    explicit IExternalForce(quint32 source) : source(source) {}

    /// The registered name.
    virtual QString modelName() const = 0;
    /// For the solver.
    virtual bool capabilityFlag() const = 0;
    virtual bool pluginQuery() const { return false; }
    /// Called by a solver before the particles of a step.
    virtual void beginStep() {}
    /// New definitions for an owner, an ECustomPropertyOwner.
    virtual RequiredProperties requiredProperties(unsigned int ownerType) const = 0;
    /// Called by a solver before the first step. \return false if the force isn't ready
    virtual bool starting() { return true; }
    virtual void stopping() {}
    /// What acts on one particle in a step. \return false if a custom property that it needs isn't there
    virtual bool calculateForce(SParticleForce& particle) = 0;

    /// The parameter record.
    virtual void write(IFileVisitorWriter& visitor) const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void particleTypeRenamed(const std::string& /*oldName*/, const std::string& /*newName*/) {}

    void managerChanged(CCustomPropertyManager& /*manager*/, int /*value*/) override {}
    void propertyAdded(CCustomPropertyManager& /*manager*/) override {}

    quint32 source; ///< EModelSource
};

} // namespace NBrenmark
