// Looks through a definition for what has no form in XML and isn't as a new object has it.
#include "xml/without_form.h"

#include "core/counted.h"
#include "model/creator_data.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/geometry_group.h"
#include "model/kinematics/conveyor_translation.h"
#include "physics/parameter_records.h"
#include "xml/losses.h"
#include "xml/motions.h"

#include <QSet>

#include <algorithm>

namespace NBrenmark {

template <class TRange>
static bool holdsAnything(const TRange& rows)
{
    return std::any_of(rows.begin(), rows.end(), [](const auto& row) {
        return std::any_of(row.begin(), row.end(), [](double value) { return value != 0.0; });
    });
}

static bool isRounded(double coordinate) { return QString::number(coordinate, 'g', 6).toDouble() != coordinate; }

// ---------------------------------------------------------------- factories

/// Whether the axes are as the rotation and their lengths give them.
static bool followsRotation(const C3DLattice& lattice)
{
    const auto data = lattice.paramData();
    const std::unique_ptr<IFactoryPosition> other = lattice.clone();
    other->setParamData(*data);
    const auto& own = dynamic_cast<const C3DLattice&>(*other);
    return own.axisA == lattice.axisA && own.axisB == lattice.axisB && own.axisC == lattice.axisC;
}

static void addPosition(CXmlLosses& losses, const CParticleFactory& factory)
{
    const CRandomFactoryPosition fresh;
    if (const auto* random = dynamic_cast<const CRandomFactoryPosition*>(factory.position.get()))
        losses.addIf(random->separation != 0.0 || random->seedPosition.x == random->seedPosition.x ||
                         random->seedVector != fresh.seedVector,
                     "how far its random walk is");
    if (const auto* lattice = dynamic_cast<const C3DLattice*>(factory.position.get())) {
        losses.addIf(!followsRotation(*lattice), "lattice axes that don't follow from the rotation");
        losses.addIf(lattice->cursor0.x == lattice->cursor0.x || lattice->cursor1 != C3DVector(),
                     "how far it is in its lattice");
    }
}

static void addSizes(CXmlLosses& losses, const CParticleFactory& factory)
{
    for (const auto& entry : factory.sizes) {
        losses.addIf(entry.second == nullptr, "a particle type without a size");
        const auto* banded = dynamic_cast<const CUserDefinedFactorySize*>(entry.second.get());
        if (banded == nullptr)
            continue;
        losses.addIf(!banded->bandAccounting.empty(), "the accounts of size bands");
        losses.addIf(banded->sizeDistribution.radiusScaling,
                     "size bands by radius, which are written as their cubes by volume");
        const auto& bands = banded->sizeDistribution.bands;
        losses.addIf(std::any_of(bands.begin(), bands.end(),
                                 [](const auto& band) { return isRounded(band.first) || isRounded(band.second); }),
                     "size bands with more than six significant digits");
    }
}

static bool givesProperties(const CParticleFactory& factory)
{
    return std::any_of(factory.customParams.begin(), factory.customParams.end(), [](const auto& entry) {
        if (entry.second == nullptr || entry.second->property() == nullptr)
            return false;
        const auto* fixed = dynamic_cast<const CFixedValueCustomPropertyFactoryParam*>(entry.second.get());
        if (fixed == nullptr)
            return true;
        for (std::size_t element = 0; element < fixed->values.size(); ++element)
            if (fixed->values[element] != fixed->property()->initialValue(static_cast<unsigned int>(element)))
                return true;
        return false;
    });
}

static bool hasGoalWithoutEffect(const CParticleFactory& factory)
{
    if (const auto* dynamic = dynamic_cast<const CDynamicParticleFactory*>(&factory))
        return dynamic->unlimited &&
               (dynamic->massCreation || dynamic->numToCreate != CDynamicParticleFactory().numToCreate);
    const auto* filling = dynamic_cast<const CStaticParticleFactory*>(&factory);
    return filling != nullptr && filling->fillShape && filling->numToCreate != CStaticParticleFactory().numToCreate;
}

static void reportFactory(const CParticleFactory& factory)
{
    CXmlLosses losses;
    losses.addIf(std::any_of(factory.counters.begin(), factory.counters.end(), [](quint32 n) { return n != 0; }),
                 "counters of the solver");
    losses.addIf(!factory.typeAccounting.empty(), "the accounts of particle types");
    losses.addIf(givesProperties(factory), "what it gives to custom properties");
    const auto* binary = dynamic_cast<const CBinaryFactoryType*>(factory.type.get());
    losses.addIf(binary != nullptr && binary->next != 0, "which particle type comes next");
    addPosition(losses, factory);
    addSizes(losses, factory);
    losses.addIf(hasGoalWithoutEffect(factory), "a goal that has no effect");
    losses.report("particle factory", factory.name.toStdString());
}

// ---------------------------------------------------------------- geometry

/// \param isNamesake  a group before it has its name
static void reportGroup(const CGeometryGroup& g, quint32 ordinal, bool isNamesake)
{
    CXmlLosses losses;
    losses.addIf(isNamesake, "all of it, for another group has its name");
    const std::vector<C3DPoint>& vertices = g.isStatic ? g.coords : g.originalCoords;
    losses.addIf(std::any_of(vertices.begin(), vertices.end(),
                             [](const C3DPoint& p) { return isRounded(p.x) || isRounded(p.y) || isRounded(p.z); }),
                 "vertices with more than six significant digits");
    losses.addIf(g.uniqueId != ordinal, "its unique id");
    losses.addIf(g.geometryType != eRealGeometry && !g.materialName.isEmpty(), "the material of what isn't real");
    losses.addIf(g.geometryType < 0 || g.geometryType > 3, "its type");
    losses.addIf(!hasServoControl(g) && g.desiredForce != C3DVector(), "a desired force without a gain");
    losses.addIf(std::any_of(g.momentOfInertia.values.begin(), g.momentOfInertia.values.end(),
                             [](double value) { return value != 0.0; }),
                 "its moment of inertia");
    losses.addIf(holdsAnything(g.triangleForces), "forces on triangles");
    losses.addIf(!g.customProperties.lists.empty(), "values of custom properties");
    losses.addIf(!g.isStatic, "where it has moved to");
    losses.addIf(g.velocity != C3DVector() || !g.motionHistory.empty(), "its velocity");
    losses.addIf(g.originalPointOfAction != g.originalCentreOfMass || g.pointOfAction != g.centreOfMass,
                 "its point of action");
    losses.addIf(!g.resetVelocities, "that its velocities aren't reset");
    losses.addIf(g.electrostatic.exempt || g.electrostatic.startCharge != 0.0, "how it takes part in charging");
    if (const auto* cad = dynamic_cast<const CCADGeometry*>(&g))
        losses.addIf(cad->translationDistance != 0.0 || cad->rotationAngle != 0.0 ||
                         cad->rotationAxisStart != cad->rotationAxisEnd ||
                         cad->translationAxisStart != cad->translationAxisEnd,
                     "how its import was placed");
    losses.addIf(std::any_of(g.kinematics.actions.begin(), g.kinematics.actions.end(),
                             [](const auto& motion) {
                                 const auto* belt = dynamic_cast<const CConveyorTranslation*>(motion.get());
                                 return belt != nullptr && !belt->conveyorTransform.isIdentity();
                             }),
                 "where a conveyor has turned to");
    losses.report("geometry group", g.name);
    for (const std::unique_ptr<CParticleFactory>& factory : g.factories->factories)
        reportFactory(*factory);
}

// ---------------------------------------------------------------- physics

/// Models whose parameters are a table without a form.
static bool hasTableWithoutForm(const IContactModel& model)
{
    return dynamic_cast<const CEdinburghCohesionContactModel*>(&model) != nullptr ||
           dynamic_cast<const CLeedsAdhesionContactModel*>(&model) != nullptr;
}

static const CRollingFrictionParamData* rollingFrictionOf(const IParamData& data)
{
    return dynamic_cast<const CRollingFrictionParamData*>(&data);
}

static void reportModel(const IContactModel& model)
{
    CXmlLosses losses;
    const auto* edinburgh = dynamic_cast<const CEdinburghCohesionContactModel*>(&model);
    const auto* leeds = dynamic_cast<const CLeedsAdhesionContactModel*>(&model);
    losses.addIf((edinburgh != nullptr && !edinburgh->parameters.pairs.entries.empty()) ||
                     (leeds != nullptr && !leeds->parameters.pairs.entries.empty()),
                 "its table of pairs");
    if (const auto* bonds = dynamic_cast<const CParallelBondContactModel*>(&model))
        losses.addIf(!bonds->parameters.torqueFeedback, "that it gives no torque back");
    const std::unique_ptr<IParamData> data = model.paramData();
    const CRollingFrictionParamData* const rolling = data ? rollingFrictionOf(*data) : nullptr;
    losses.addIf(rolling != nullptr && rolling->hasRollingFrictionOption() &&
                     rolling->enableRollingFriction != (model.modelType == eSphereSphereModel),
                 "its option of rolling friction");
    losses.report("contact model", model.modelName().toStdString());
}

void reportWithoutForm(const CCreatorData& creator)
{
    CXmlLosses losses;
    losses.addIf(creator.velocityRestricted != 0 || creator.velocityLimit != 0.0, "the limit of velocities");
    losses.addIf(creator.angularVelocityRestricted != 0 || creator.angularVelocityLimit != 0.0,
                 "the limit of angular velocities");
    losses.addIf(creator.cylindricalPeriodicBoundaryConditions.enabled ||
                     !creator.cylindricalPeriodicBoundaryConditions.geometryName.isEmpty(),
                 "its cylindrical periodic boundary conditions");
    losses.addIf(!creator.materialBlocks.isEmpty(), "its material blocks");
    losses.addIf(!creator.pluginFactories.entries().empty(), "its plug-in factories");
    losses.addIf(creator.particleTypes.maxId != 0, "the greatest id of a particle so far");
    losses.report("the definition", "");
    for (const std::unique_ptr<CParticleType>& type : creator.particleTypes.types) {
        CXmlLosses ofType;
        const CParticleType fresh(nullptr);
        ofType.addIf(type->surfaceBased != fresh.surfaceBased || type->autoCenterParticle != fresh.autoCenterParticle ||
                         type->autoProperties != fresh.autoProperties || !type->templateName.isEmpty(),
                     "how its template was made");
        ofType.report("particle type", type->name);
    }
    quint32 ordinal = 0;
    QSet<QString> names;
    for (const CGeometryGroup* group : creator.geometryGroups.groups()) {
        if (group == nullptr)
            continue;
        reportGroup(*group, ordinal++, names.contains(group->displayedName));
        names.insert(group->displayedName);
    }
    for (const CPhysicsModels::Chain* chain :
         {&creator.physicsModels.sphereSphereModels, &creator.physicsModels.sphereGeometryModels})
        for (const std::unique_ptr<IContactModel>& model : *chain)
            reportModel(*model);
}

void reportNotHeld(const CCreatorData& creator)
{
    quint64 vertices = 0, groups = 0;
    for (const CGeometryGroup* group : creator.geometryGroups.groups()) {
        vertices += group == nullptr ? 0 : group->coords.size();
        groups += group != nullptr;
    }
    report(eRemark, NLogTitle::xmlImport,
           std::to_string(vertices) +
               " vertices of geometry: documents hold six significant digits of each coordinate.",
           vertices);
    report(eRemark, NLogTitle::xmlImport,
           counted(static_cast<qint64>(groups), "geometry group") +
               ": the centre of mass is that of the mesh, for documents hold none.",
           groups);
    for (const CPhysicsModels::Chain* chain :
         {&creator.physicsModels.sphereSphereModels, &creator.physicsModels.sphereGeometryModels})
        for (const std::unique_ptr<IContactModel>& model : *chain)
            if (hasTableWithoutForm(*model))
                report(eNotCarried, NLogTitle::xmlImport,
                       "The contact model \"" + shortened(model->modelName()) +
                           "\" has no parameters: documents hold none of it.",
                       1, shortened(model->modelName()));
}

} // namespace NBrenmark
