// Defines what models need when they come, and counts who still needs it when they go.
#include "results/physics_linked_property_manager.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/factories/plugin_factory.h"
#include "physics/contact_model.h"
#include "physics/external_force.h"

namespace NBrenmark {

static std::string labelOf(const IContactModel& model)
{
    return "contact model (" + shortened(model.modelName()) + ")";
}

static std::string labelOf(const IExternalForce& force)
{
    return "external force (" + shortened(force.modelName()) + ")";
}

/// \param isKept  whether the user stays by its name, so that nothing of the deck is lost
static void reportRefusal(const std::string& user, const std::vector<std::string>& names, const std::string& reason,
                          bool isKept)
{
    std::string text = "Error loading " + user + "\n" + user + " cannot be loaded.\nThe following custom properties:\n";
    for (const std::string& name : names)
        text += "    " + shortened(name) + "\n";
    SLogRecord message;
    message.level = eError;
    message.title = NLogTitle::customProperties.text;
    message.text = text + reason + user + "\ncannot be loaded.";
    message.effect = isKept ? eRemark : eLost; // the model is left out, and the read goes on
    message.cause = isKept ? eCauseNone : NLogTitle::customProperties.blame;
    message.place = placeAtWork();
    message.place.object = user;
    reportRecord(message);
}

static bool areAccepted(const CCustomPropertyManager& manager, const RequiredProperties& required,
                        const std::string& user, bool isKept)
{
    std::vector<std::string> invalid;
    std::vector<std::string> clashing;
    for (const std::unique_ptr<CCustomPropertyMetaData>& wanted : required) {
        const CCustomPropertyMetaData* const existing = manager.property(wanted->name);
        if (!CCustomPropertyManager::isValidName(wanted->name))
            invalid.push_back(wanted->name);
        else if (existing != nullptr && !existing->sameShape(*wanted))
            clashing.push_back(wanted->name);
    }
    if (!clashing.empty())
        reportRefusal(user, clashing, "\nWill clash with already existing properties, this\n", isKept);
    if (!invalid.empty())
        reportRefusal(user, invalid, "\nHave invalid names, this ", isKept);
    return clashing.empty() && invalid.empty();
}

bool CPhysicsLinkedCustomPropertyManager::accepts(const RequiredProperties& required, const std::string& user) const
{
    return areAccepted(*this, required, user, false);
}

void CPhysicsLinkedCustomPropertyManager::take(RequiredProperties required, IPropertyListener* listener)
{
    for (std::unique_ptr<CCustomPropertyMetaData>& wanted : required) {
        const std::string name = wanted->name;
        if (property(name) == nullptr)
            addProperty(wanted);
        addReference(name);
    }
    setModified(true);
    addListener(listener);
    if (finalizedCount() > 0)
        listener->managerChanged(*this, 0);
}

void CPhysicsLinkedCustomPropertyManager::release(const RequiredProperties& required, IPropertyListener* listener)
{
    for (const std::unique_ptr<CCustomPropertyMetaData>& wanted : required)
        releaseReference(wanted->name);
    if (!required.empty())
        setModified(true);
    removeListener(listener);
}

bool CPhysicsLinkedCustomPropertyManager::modelAdded(IContactModel& model, quint32, CPhysicsModels&)
{
    return accepts(model.requiredProperties(managerType), labelOf(model));
}

void CPhysicsLinkedCustomPropertyManager::modelPlaced(IContactModel& model, quint32, CPhysicsModels&)
{
    take(model.requiredProperties(managerType), &model);
}

void CPhysicsLinkedCustomPropertyManager::modelRemoved(IContactModel& model, quint32, CPhysicsModels&)
{
    release(model.requiredProperties(managerType), &model);
}

bool CPhysicsLinkedCustomPropertyManager::forceAdded(IExternalForce& force, CPhysicsModels&)
{
    return accepts(force.requiredProperties(managerType), labelOf(force));
}

void CPhysicsLinkedCustomPropertyManager::forcePlaced(IExternalForce& force, CPhysicsModels&)
{
    take(force.requiredProperties(managerType), &force);
}

void CPhysicsLinkedCustomPropertyManager::forceRemoved(IExternalForce& force, CPhysicsModels&)
{
    release(force.requiredProperties(managerType), &force);
}

bool CPhysicsLinkedCustomPropertyManager::modelAdded(IPluginParticleFactoryWrapper& factory)
{
    return areAccepted(*this, factory.requiredProperties(managerType), factory.label(), true); // by both of its names
}

void CPhysicsLinkedCustomPropertyManager::modelPlaced(IPluginParticleFactoryWrapper& factory)
{
    take(factory.requiredProperties(managerType), &factory);
}

void CPhysicsLinkedCustomPropertyManager::modelRemoved(IPluginParticleFactoryWrapper& factory)
{
    release(factory.requiredProperties(managerType), &factory);
}

} // namespace NBrenmark
