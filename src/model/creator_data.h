#pragma once
// The complete definition of a simulation: all that a deck holds apart from its saved timesteps
// and the settings beside it.

#include "materials/interactions.h"
#include "materials/materials.h"
#include "model/domain.h"
#include "model/factories/plugin_factory_list.h"
#include "model/geometry_groups.h"
#include "model/material_block.h"
#include "model/particle_types.h"
#include "model/simulation_data.h"
#include "model/size_distributions.h"
#include "physics/physics_models.h"
#include "physics/physics_owner.h"

#include <functional>
#include <map>

namespace NBrenmark {

class CCreatorData : public CSimulationData, public IPhysicsOwner
{
    Q_OBJECT
public:
    static constexpr quint32 noStorageIndex = 0xFFFFFFFFu;
    static constexpr quint64 noStorageOffset = ~quint64(0);

    /// \param managers  of the deck's custom properties; not owned
    explicit CCreatorData(const SPropertyManagers& managers);

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) override;

    /// Empties the lists and the stored place, and marks the model as modified. Title, damping,
    /// gravity, the domain and the cylindrical conditions stay.
    void clear() override;

    void physicsChanged() override { modified = true; }
    bool radiusRange(double& min, double& max, bool physical) const override
    {
        return particleTypes.radiusRange(min, max, physical);
    }

    std::vector<std::string> materialNames() const override;

    /// Null if no group has the name.
    CGeometryGroup* geometryGroupByName(const QString& name) const;

    /// Brings a model in order that was read, or whose geometry was: ties the factories of all groups to the particle
    /// types that are there now, and reports those that name another.
    void settle(const SLogTitle& title);

    /// The user-facing setter: marks the model as modified too.
    void changeTitle(const QString& text);

    quint32 storageIndex() const { return index; }
    quint64 storageOffset() const { return offset; }
    quint32 previousStorageIndex() const { return previousIndex; }
    quint64 previousStorageOffset() const { return previousOffset; }
    /// Each setter moves the old value into its previous companion first.
    void setStorageIndex(quint32 value);
    void setStorageOffset(quint64 value);

    QString title;
    QString description;
    double damping = 0.0; ///< global factor
    C3DPoint gravity;     ///< m/s^2
    CDomain domain;
    CParticleTypes particleTypes;
    MaterialMap materials;
    InteractionMap interactions;
    CMaterialBlockMap materialBlocks;
    CParticleSizeDistributionMap sizeDistributions;
    CPluginParticleFactoryList pluginFactories;
    GeometryGroups geometryGroups;
    bool modified = false; ///< must be stored again
    qint32 velocityRestricted = 0;
    qint32 angularVelocityRestricted = 0;
    double velocityLimit = 0.0;        ///< m/s
    double angularVelocityLimit = 0.0; ///< rad/s
    CPhysicsModels physicsModels;
    CCylindricalPeriodicBoundaryConditions cylindricalPeriodicBoundaryConditions;
    bool legacyStreamFlag = false; ///< of a legacy creator block; handed on to the legacy stream
    bool upgradesPending = false;  ///< of a legacy creator block, until its geometry comes with a timestep
    bool geometryReplaced = false; ///< by a timestep that holds its geometry whole
    /// By the names of particle types, the materials that they had before an upgrade gave them another; null for a type
    /// that it made.
    std::map<QString, QString> materialsBefore;

private:
    quint32 index = noStorageIndex;   ///< HDF5: number of the stored group; legacy: segment
    quint64 offset = noStorageOffset; ///< legacy: position in the segment
    quint32 previousIndex = noStorageIndex;
    quint64 previousOffset = noStorageOffset;
};

/// The material rule for definitions stored before 30.0.4, by which a material is used either by
/// particle types (bulk) or by geometry (equipment): a bulk material that no particle type uses
/// becomes equipment, and geometry of one that they use moves to an equipment copy. Each change is reported.
/// \param namesMaterials  whether the table by pair of a model goes by materials; those get the entries of the copy
void applyMaterialRule(CCreatorData& creator, const std::function<bool(const IContactModel&)>& namesMaterials);

} // namespace NBrenmark
