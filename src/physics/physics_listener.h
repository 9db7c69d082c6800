#pragma once
// Who wants to know what enters and leaves the physics of a deck.

#include <QtGlobal>

namespace NBrenmark {

class CPhysicsModels;
class IContactModel;
class IExternalForce;
class IPluginParticleFactoryWrapper;

class IPhysicsModelChangeListener
{
public:
    virtual ~IPhysicsModelChangeListener() = default;
    /// Asked before a model enters a chain. \return false to refuse it
    virtual bool modelAdded(IContactModel& model, quint32 modelType, CPhysicsModels& physics) = 0;
    /// Called once it is there.
    virtual void modelPlaced(IContactModel& model, quint32 modelType, CPhysicsModels& physics) = 0;
    /// Told before it is deleted.
    virtual void modelRemoved(IContactModel& model, quint32 modelType, CPhysicsModels& physics) = 0;
    virtual bool forceAdded(IExternalForce& force, CPhysicsModels& physics) = 0;
    virtual void forcePlaced(IExternalForce& force, CPhysicsModels& physics) = 0;
    virtual void forceRemoved(IExternalForce& force, CPhysicsModels& physics) = 0;
};

/// The same of the particle factories that come from plug-ins.
class IPluginParticleFactoryListChangeListener
{
public:
    virtual ~IPluginParticleFactoryListChangeListener() = default;
    virtual bool modelAdded(IPluginParticleFactoryWrapper& factory) = 0;
    virtual void modelPlaced(IPluginParticleFactoryWrapper& factory) = 0;
    virtual void modelRemoved(IPluginParticleFactoryWrapper& factory) = 0;
};

} // namespace NBrenmark
