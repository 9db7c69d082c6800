#pragma once
// The physics of a simulation: a chain of contact models between spheres, a second one between
// spheres and geometry, and the external forces.

#include "physics/contact_model.h"

#include <memory>
#include <vector>

namespace NBrenmark {

/// Makes a contact model by its name, or gives null for a name that isn't known.
std::unique_ptr<IContactModel> createContactModel(const QString& name, quint32 modelType, quint32 source);

class CPhysicsModels
{
public:
    using Chain = std::vector<std::unique_ptr<IContactModel>>;

    /// Holds the default model in each chain and no force.
    CPhysicsModels();
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    void clear();
    void resetToDefaults();
    /// The first model of that name, or null.
    static IContactModel* findModel(const Chain& chain, const QString& name);
    /// No external force can be held yet.
    quint32 externalForceCount() const { return 0; }

    Chain sphereSphereModels;
    Chain sphereGeometryModels;
};

} // namespace NBrenmark
