#pragma once
// What every contact model is to a deck: a name, a place in a chain, a parameter record, and custom
// properties that it works on. The names in its tables are names of the deck, so a rename goes
// through every model. To a solver it is a force law.

#include "core/parameter_support.h"
#include "physics/model_kinds.h"
#include "physics/required_property.h"
#include "properties/custom_property_manager.h"

#include <QString>

#include <string>

namespace NBrenmark {

class CCustomPropertyData;
class IFileVisitorReader;
class IFileVisitorWriter;
class IPhysicsOwner;
struct SContact;

class IContactModel : public IParameterSupport, public IPropertyListener
{
public:
    IContactModel(quint32 modelType, quint32 source) : modelType(modelType), source(source) {}

    /// The registered name.
    virtual QString modelName() const = 0;
    /// Plain numbers for the solver, which checks the order of a chain by them.
    virtual quint32 chainRole() const = 0;
    virtual quint32 chainPosition() const = 0;
    virtual bool capabilityFlag() const = 0;
    /// New definitions for an owner, an ECustomPropertyOwner.
    virtual RequiredProperties requiredProperties(unsigned int ownerType) const = 0;
    virtual bool pluginQuery() const { return false; }
    /// Empties the parameter tables; single numbers stay.
    virtual void reset() {}
    virtual void materialRenamed(const std::string& /*oldName*/, const std::string& /*newName*/) {}
    virtual void particleTypeRenamed(const std::string& /*oldName*/, const std::string& /*newName*/) {}
    virtual void geometryRenamed(const std::string& /*oldName*/, const std::string& /*newName*/) {}
    // What a solver calls: starting, then for each step beginStep and the contacts, and stopping.

    /// Called before the contacts of a step. \param particles  the current values of each particle type; not owned
    virtual void beginStep(const std::vector<CCustomPropertyData*>& /*particles*/) {}
    /// Makes what each thread needs to itself. \return false if the model isn't ready
    virtual bool starting(quint32 /*threadCount*/) { return true; }
    virtual void stopping() {}
    /// The law: reads a contact and adds its results to it. Contacts may be dealt with by several threads at once, each
    /// with a threadIndex of its own; nothing is allocated.
    /// \return false if a custom property that the law needs isn't there
    virtual bool calculateForce(SContact& contact) = 0;

    /// The parameter record.
    virtual void write(IFileVisitorWriter& visitor) const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;

    void managerChanged(CCustomPropertyManager& /*manager*/, int /*value*/) override {}
    void propertyAdded(CCustomPropertyManager& /*manager*/) override {}

    quint32 modelType;                   ///< EContactModelType
    quint32 source;                      ///< EModelSource
    const IPhysicsOwner* deck = nullptr; ///< whose chain it is in; not owned
};

} // namespace NBrenmark
