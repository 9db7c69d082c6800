#pragma once
// The physics of a simulation: a chain of contact models between spheres, a second one between
// spheres and geometry, and the external forces. Listeners hear of every change, so that the custom
// properties that a model works on exist as long as it does.

#include "physics/model_registry.h"
#include "physics/physics_listener.h"

#include <memory>
#include <set>
#include <vector>

namespace NBrenmark {

/// A list that owns its items.
template <class T>
using CPtrList = std::vector<std::unique_ptr<T>>;

class CPhysicsModels
{
public:
    using Chain = CPtrList<IContactModel>;
    using ForceList = CPtrList<IExternalForce>;
    static constexpr int atEnd = -1;

    /// Holds the default model in each chain and no force.
    /// \param owner  may be null; not owned
    explicit CPhysicsModels(IPhysicsOwner* owner = nullptr);
    /// Notifies the listeners as clear does, so they must outlive the models or be removed before.
    ~CPhysicsModels();
    CPhysicsModels(const CPhysicsModels&) = delete;
    CPhysicsModels& operator=(const CPhysicsModels&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Null for a name that isn't known, unless a phantom may stand for it.
    std::unique_ptr<IContactModel> makeContactModel(const QString& name, quint32 modelType, quint32 source,
                                                    bool allowPhantom) const;
    /// The same. "none" gives null in any case.
    std::unique_ptr<IExternalForce> makeExternalForce(const QString& name, quint32 source, bool allowPhantom) const;

    /// Puts a model at an index of a chain, in place of one that is there. At the end, the chain
    /// is then brought in order: "Relative Wear" after every other model.
    /// \return false, the chain unchanged and the model gone, if a listener refuses it
    bool addContactModel(std::unique_ptr<IContactModel> model, Chain& list, int index);
    /// The same in the chain of its model type, never brought in order: what a file holds stays in the
    /// order of the file.
    bool addContactModel(std::unique_ptr<IContactModel> model, int index);
    bool addExternalForce(std::unique_ptr<IExternalForce> force, int index);
    /// Makes the model, or the phantom that stands for it, and puts it at the end of a list.
    bool addDefaultModel(const QString& name, quint32 modelType, quint32 source, Chain& list);

    void clear();
    void resetToDefaults();

    Chain& chain(quint32 modelType)
    {
        return modelType == eSphereGeometryModel ? sphereGeometryModels : sphereSphereModels;
    }
    /// The first model of that name, or null.
    static IContactModel* findModel(const Chain& list, const QString& name);
    quint32 externalForceCount() const { return static_cast<quint32>(externalForces.size()); }
    bool hasElectrostatics() const;
    bool hasTribocharging() const;

    // A new name of something that parameter tables may refer to.
    void materialRenamed(const std::string& oldName, const std::string& newName);
    void particleTypeRenamed(const std::string& oldName, const std::string& newName);
    void geometryRenamed(const std::string& oldName, const std::string& newName);

    /// Hears of what changes from now on. Not owned.
    void addListener(IPhysicsModelChangeListener* listener);
    void removeListener(IPhysicsModelChangeListener* listener);

    /// While one lives, changes don't mark the deck as modified.
    class CLoading
    {
    public:
        explicit CLoading(CPhysicsModels& physics) : physics(physics), before(physics.loading)
        {
            physics.loading = true;
        }
        ~CLoading() { physics.loading = before; }
        CLoading(const CLoading&) = delete;
        CLoading& operator=(const CLoading&) = delete;

    private:
        CPhysicsModels& physics;
        bool before;
    };

    Chain sphereSphereModels;
    Chain sphereGeometryModels;
    ForceList externalForces;
    bool loading = false;

private:
    bool addToChain(std::unique_ptr<IContactModel> added, Chain& list, int index, bool inOrder);
    template <class TOperation>
    void forEachModel(const TOperation& operation);
    void setModified();

    IPhysicsOwner* owner;
    std::set<IPhysicsModelChangeListener*> listeners;
};

} // namespace NBrenmark
