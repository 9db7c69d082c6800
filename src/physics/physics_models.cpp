// Adds and removes models with all listeners asked first: one of them may refuse.
#include "physics/physics_models.h"

#include "physics/electrostatics.h"
#include "physics/hertz_mindlin_no_slip.h"
#include "physics/phantoms.h"
#include "physics/physics_owner.h"
#include "physics/tribocharging.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

CPhysicsModels::CPhysicsModels(IPhysicsOwner* owner) : owner(owner)
{
    // The owner is still being made: it has nothing yet that could be modified.
    const CLoading quietly(*this);
    resetToDefaults();
}

CPhysicsModels::~CPhysicsModels() { clear(); }

void CPhysicsModels::read(IFileVisitorReader& v) { v.readPhysicsModels(*this); }

void CPhysicsModels::write(IFileVisitorWriter& v) const { v.writePhysicsModels(*this); }

// ---------------------------------------------------------------- making

std::unique_ptr<IContactModel> CPhysicsModels::makeContactModel(const QString& name, quint32 modelType, quint32 source,
                                                                bool allowPhantom) const
{
    std::unique_ptr<IContactModel> model = createContactModel(name, modelType, source);
    if (model == nullptr && allowPhantom)
        model = std::make_unique<CContactModelPhantom>(name, modelType, source);
    return model;
}

std::unique_ptr<IExternalForce> CPhysicsModels::makeExternalForce(const QString& name, quint32 source,
                                                                  bool allowPhantom) const
{
    if (name == QLatin1String("none"))
        return nullptr;
    std::unique_ptr<IExternalForce> force = createExternalForce(name, source, owner);
    if (force == nullptr && allowPhantom)
        force = std::make_unique<CExternalForcePhantom>(name, source);
    return force;
}

// ---------------------------------------------------------------- adding and removing

/// Puts an item at an index of a list; remove is called for one that gives way.
template <class T, class TRemoved>
static void place(CPtrList<T>& list, std::unique_ptr<T> item, int index, const TRemoved& removed)
{
    if (index < 0 || static_cast<std::size_t>(index) >= list.size()) {
        list.push_back(std::move(item));
        return;
    }
    removed(*list[static_cast<std::size_t>(index)]);
    list[static_cast<std::size_t>(index)] = std::move(item);
}

bool CPhysicsModels::addToChain(std::unique_ptr<IContactModel> added, Chain& list, int index, bool inOrder)
{
    IContactModel& model = *added;
    model.deck = owner;
    for (IPhysicsModelChangeListener* listener : listeners)
        if (!listener->modelAdded(model, model.modelType, *this))
            return false;
    place(list, std::move(added), index, [this](IContactModel& old) {
        for (IPhysicsModelChangeListener* listener : listeners)
            listener->modelRemoved(old, old.modelType, *this);
    });
    if (inOrder && index == atEnd)
        std::stable_partition(list.begin(), list.end(), [](const std::unique_ptr<IContactModel>& item) {
            return item->modelName() != QLatin1String(lastInChain);
        });
    for (IPhysicsModelChangeListener* listener : listeners)
        listener->modelPlaced(model, model.modelType, *this);
    setModified();
    return true;
}

bool CPhysicsModels::addContactModel(std::unique_ptr<IContactModel> model, Chain& list, int index)
{
    return addToChain(std::move(model), list, index, true);
}

bool CPhysicsModels::addContactModel(std::unique_ptr<IContactModel> model, int index)
{
    Chain& list = chain(model->modelType);
    return addToChain(std::move(model), list, index, false);
}

bool CPhysicsModels::addExternalForce(std::unique_ptr<IExternalForce> added, int index)
{
    IExternalForce& force = *added;
    for (IPhysicsModelChangeListener* listener : listeners)
        if (!listener->forceAdded(force, *this))
            return false;
    place(externalForces, std::move(added), index, [this](IExternalForce& old) {
        for (IPhysicsModelChangeListener* listener : listeners)
            listener->forceRemoved(old, *this);
    });
    for (IPhysicsModelChangeListener* listener : listeners)
        listener->forcePlaced(force, *this);
    setModified();
    return true;
}

bool CPhysicsModels::addDefaultModel(const QString& name, quint32 modelType, quint32 source, Chain& list)
{
    return addToChain(makeContactModel(name, modelType, source, true), list, atEnd, false);
}

void CPhysicsModels::clear()
{
    for (IPhysicsModelChangeListener* listener : listeners) {
        for (const Chain* list : {&sphereSphereModels, &sphereGeometryModels})
            for (const std::unique_ptr<IContactModel>& model : *list)
                listener->modelRemoved(*model, model->modelType, *this);
        for (const std::unique_ptr<IExternalForce>& force : externalForces)
            listener->forceRemoved(*force, *this);
    }
    sphereSphereModels.clear();
    sphereGeometryModels.clear();
    externalForces.clear();
}

void CPhysicsModels::resetToDefaults()
{
    clear();
    for (const quint32 modelType : {eSphereSphereModel, eSphereGeometryModel})
        addDefaultModel(CHertzMindlinNoSlipContactModel::registeredName, modelType, eBuiltInModel, chain(modelType));
}

void CPhysicsModels::setModified()
{
    if (owner != nullptr && !loading)
        owner->physicsChanged();
}

void CPhysicsModels::addListener(IPhysicsModelChangeListener* listener) { listeners.insert(listener); }

void CPhysicsModels::removeListener(IPhysicsModelChangeListener* listener) { listeners.erase(listener); }

// ---------------------------------------------------------------- looking and renaming

IContactModel* CPhysicsModels::findModel(const Chain& list, const QString& name)
{
    for (const std::unique_ptr<IContactModel>& model : list)
        if (model->modelName() == name)
            return model.get();
    return nullptr;
}

template <class TWanted, class T>
static bool holdsAny(const CPtrList<T>& list)
{
    return std::any_of(list.begin(), list.end(), [](const std::unique_ptr<T>& item) {
        return dynamic_cast<const TWanted*>(item.get()) != nullptr;
    });
}

bool CPhysicsModels::hasElectrostatics() const { return holdsAny<CElectrostaticsExternalForce>(externalForces); }

bool CPhysicsModels::hasTribocharging() const
{
    return holdsAny<CTribochargingContactModel>(sphereSphereModels) ||
           holdsAny<CTribochargingContactModel>(sphereGeometryModels);
}

template <class TOperation>
void CPhysicsModels::forEachModel(const TOperation& operation)
{
    for (Chain* list : {&sphereSphereModels, &sphereGeometryModels})
        for (const std::unique_ptr<IContactModel>& model : *list)
            operation(*model);
}

void CPhysicsModels::materialRenamed(const std::string& oldName, const std::string& newName)
{
    forEachModel([&](IContactModel& model) { model.materialRenamed(oldName, newName); });
}

void CPhysicsModels::particleTypeRenamed(const std::string& oldName, const std::string& newName)
{
    forEachModel([&](IContactModel& model) { model.particleTypeRenamed(oldName, newName); });
    for (const std::unique_ptr<IExternalForce>& force : externalForces)
        force->particleTypeRenamed(oldName, newName);
}

void CPhysicsModels::geometryRenamed(const std::string& oldName, const std::string& newName)
{
    forEachModel([&](IContactModel& model) { model.geometryRenamed(oldName, newName); });
}

} // namespace NBrenmark
