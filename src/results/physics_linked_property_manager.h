#pragma once
// A manager that follows the physics of its deck: what a contact model, an external force or a plug-in factory works
// on is defined while one of them is in its list, and one whose properties clash is kept out.

#include "physics/physics_listener.h"
#include "physics/required_property.h"
#include "properties/custom_property_manager.h"

namespace NBrenmark {

class CPhysicsLinkedCustomPropertyManager : public CCustomPropertyManager,
                                            public IPhysicsModelChangeListener,
                                            public IPluginParticleFactoryListChangeListener
{
public:
    using CCustomPropertyManager::CCustomPropertyManager;

    bool modelAdded(IContactModel& model, quint32 modelType, CPhysicsModels& physics) override;
    void modelPlaced(IContactModel& model, quint32 modelType, CPhysicsModels& physics) override;
    void modelRemoved(IContactModel& model, quint32 modelType, CPhysicsModels& physics) override;
    bool forceAdded(IExternalForce& force, CPhysicsModels& physics) override;
    void forcePlaced(IExternalForce& force, CPhysicsModels& physics) override;
    void forceRemoved(IExternalForce& force, CPhysicsModels& physics) override;
    bool modelAdded(IPluginParticleFactoryWrapper& factory) override;
    void modelPlaced(IPluginParticleFactoryWrapper& factory) override;
    void modelRemoved(IPluginParticleFactoryWrapper& factory) override;

    /// Whether all these properties can be had: the names are valid, and those in use are of the same
    /// type, elements and quantity. If not, the log says which are in the way of the user.
    /// \param user  for a person: contact model (Linear Spring)
    bool accepts(const RequiredProperties& required, const std::string& user) const;
    /// Defines what is missing and counts one reference more on each.
    /// \param listener  hears of changes from now on; not owned
    void take(RequiredProperties required, IPropertyListener* listener);
    /// Counts one reference less on each. No definition goes: stored values may need it.
    void release(const RequiredProperties& required, IPropertyListener* listener);
};

} // namespace NBrenmark
