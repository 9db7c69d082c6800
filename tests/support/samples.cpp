#include "support/samples.h"
#include "support/sample_values.h"

#include "maths/axis_angle.h"
#include "maths/transform.h"
#include "physics/hertz_mindlin_no_slip.h"

namespace NBrenmark {

static void addProperty(CCustomPropertyManager& manager, const char* name, unsigned int type, unsigned int elements)
{
    auto metaData = std::make_unique<CCustomPropertyMetaData>(name, type, elements, 7u);
    manager.addProperty(metaData);
}

SModel::SModel()
{
    for (CCustomPropertyManager* manager : {&particle, &contact, &geometry, &simulation}) {
        addProperty(*manager, "Heat Flux", eDoubleProperty, 2);
        addProperty(*manager, "Wet", eBooleanProperty, 1);
        addProperty(*manager, "Tentative", eDoubleProperty, 3);
        manager->lastFinalisedPropertyIndex = 1;
        manager->notifyChanged(0);
    }
}

// ---------------------------------------------------------------- new objects

constexpr unsigned int propertyItems = 3;

template <>
std::shared_ptr<CCreatorData> blank(SModel& model)
{
    return partOf(model.creator);
}
template <>
std::shared_ptr<CTimestepData> blank(SModel& model)
{
    return partOf(model.timestep);
}
template <>
std::shared_ptr<CSimulationData> blank(SModel& model)
{
    return partOf<CSimulationData>(model.creator);
}
template <>
std::shared_ptr<CParticleType> blank(SModel& model)
{
    return std::make_shared<CParticleType>(&model.particle);
}
template <>
std::shared_ptr<CParticleTypes> blank(SModel& model)
{
    return partOf(model.timestep.particleTypes);
}
template <>
std::shared_ptr<CCustomPropertyValueList> blank(SModel& model)
{
    auto list = std::make_shared<CCustomPropertyValueList>(*model.particle.property(0u), false);
    list->resize(propertyItems);
    return list;
}
template <>
std::shared_ptr<CCustomPropertyData> blank(SModel& model)
{
    auto data = std::make_shared<CCustomPropertyData>(&model.particle);
    data->resize(propertyItems);
    return data;
}
template <>
std::shared_ptr<CContacts> blank(SModel& model)
{
    return partOf(model.timestep.contacts);
}
template <>
std::shared_ptr<CContactsBase> blank(SModel& model)
{
    return partOf<CContactsBase>(model.timestep.contacts.surfaceSurface);
}
template <>
std::shared_ptr<CCollisionsBase> blank(SModel& model)
{
    return partOf<CCollisionsBase>(model.timestep.collisions.surfaceSurface);
}
template <>
std::shared_ptr<CBondsBase> blank(SModel& model)
{
    return partOf<CBondsBase>(model.timestep.bonds.surfaceSurface);
}
template <>
std::shared_ptr<CHertzMindlinNoSlipContactModelParamData> blank(SModel&)
{
    return std::make_shared<CHertzMindlinNoSlipContactModelParamData>(eSphereSphereModel);
}

// ---------------------------------------------------------------- maths

void fill(C3DVector& vector) { vector = C3DVector(nextNumber(), nextNumber(), nextNumber()); }
void fill(C3DPoint& point) { point = C3DPoint(nextNumber(), nextNumber(), nextNumber()); }
void fill(CQuaternion& turn) { turn = CQuaternion(nextNumber(), nextNumber(), nextNumber(), nextNumber()); }

void fill(CAxisAngle& axis)
{
    fill(axis.start);
    fill(axis.end);
    axis.angle = nextNumber();
}

void fill(C3DMatrix& matrix)
{
    for (int element = 0; element < 9; ++element)
        matrix.data()[element] = nextNumber();
}

void fill(C3DTransform& transform)
{
    for (int element = 0; element < 16; ++element)
        transform.data()[element] = nextNumber();
}

void fill(CBoundingBox& box)
{
    fill(box.upper);
    fill(box.lower);
}

// ---------------------------------------------------------------- the model

void fill(CMaterial& material)
{
    material.name = "Gr\xc3\xa4wacke (dry)";
    fill(material.poissonsRatio);
    fill(material.shearModulus);
    fill(material.density);
    fill(material.workFunction);
    material.type = eEquipmentMaterial;
}

void fill(MaterialMap& materials)
{
    for (const char* name : {"Steel", "Gr\xc3\xa4wacke"}) {
        auto* material = new CMaterial;
        fill(*material);
        material->name = name;
        materials.set(name, material);
    }
}

void fill(CInteraction& interaction)
{
    fill(interaction.restitution);
    fill(interaction.staticFriction);
    fill(interaction.rollingFriction);
}

void fill(InteractionMap& interactions)
{
    for (const char* partner : {"Steel", "Gr\xc3\xa4wacke"}) {
        auto* interaction = new CInteraction;
        fill(*interaction);
        interactions.set("Steel", partner, interaction);
    }
}

void fill(CDomain& domain)
{
    fill(domain.min);
    fill(domain.max);
    domain.periodicX = domain.periodicY = domain.periodicZ = true;
}

void fill(CCylindricalPeriodicBoundaryConditions& conditions)
{
    conditions.enabled = true;
    conditions.geometryName = "Drum";
    conditions.kinematicName = "Turn";
    fill(conditions.length);
    fill(conditions.angle);
}

void fill(CHertzMindlinNoSlipContactModelParamData& parameters)
{
    parameters.enableRollingFriction = !parameters.enableRollingFriction;
}

void fill(CPhysicsModels& physics)
{
    for (CPhysicsModels::Chain* chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
        fill(dynamic_cast<CHertzMindlinNoSlipContactModel&>(*chain->front()).parameters);
}

static void fillValues(CCustomPropertyData& data)
{
    for (const std::unique_ptr<CCustomPropertyValueList>& list : data.lists)
        fill(*list);
}

/// \param firstId  of three slots, of which the middle one is free
static void fillType(CParticleType& type, const QString& name, qint32 firstId)
{
    type.setName(name);
    type.materialName = "Steel";
    type.surfaceBased = 0;
    type.autoCenterParticle = false;
    type.templateName = "Template of " + name;
    type.autoProperties = true;
    fill(type.rawMass);
    fill(type.rawVolume);
    fill(type.rawInertia);
    type.calculateProperties = false;
    for (const char* sphereName : {"head", "tail"}) {
        CSphere sphere;
        sphere.name = sphereName;
        fill(sphere.position);
        sphere.setRadii(nextNumber(), nextNumber());
        type.spheres.push_back(sphere);
    }
    constexpr std::size_t count = 3;
    type.ids = {firstId, -1, firstId + 1};
    fillRows(type.scale, count);
    fillRows(type.velocity, count);
    fillRows(type.position, count);
    fillRows(type.orientation, count);
    fillRows(type.angularVelocity, count);
    fillRows(type.forceTorque, count);
    fillRows(type.unscaledForceTorque, count);
    fillRows(type.externalForceTorque, count);
    fillRows(type.creationTime, count);
    type.dataMask = allParticleFields;
    type.resizeSlots(count);
    type.rebuildFreeList();
    fillValues(type.customProperties);
}

void fill(CParticleType& type) { fillType(type, "Ball", 4); }

void fill(CParticleTypes& types)
{
    fillType(types.append(), "Ball", 40);
    fillType(types.append(), "Rod", 20);
    types.maxId = 77; // ids of particles that are gone may be greater than all that are left
    types.rebuildIdLookup();
}

static SBlockProperty blockProperty(const char* name, unsigned int items)
{
    SBlockProperty property;
    property.metaData = std::make_shared<CCustomPropertyMetaData>(name, eDoubleProperty, 2u, 5u);
    property.values = std::make_shared<CCustomPropertyValueList>(*property.metaData, false);
    property.values->resize(items);
    fill(*property.values);
    return property;
}

void fill(CMaterialBlockParticleData& particles)
{
    constexpr unsigned int count = 2;
    particles.name = "Ball";
    particles.ids = {5, 9};
    fillRows(particles.scale, count);
    fillRows(particles.velocity, count);
    fillRows(particles.position, count);
    fillRows(particles.orientation, count);
    fillRows(particles.angularVelocity, count);
    particles.sphereCount = 3;
    particles.customProperties = {blockProperty("Heat", count), blockProperty("Age", count)};
}

void fill(CMaterialBlockContactData& contacts)
{
    constexpr unsigned int count = 3;
    fillRows(contacts.contacts, count);
    contacts.customProperties = {blockProperty("Wear", count)};
}

void fill(CMaterialBlock& block)
{
    block.name = "Bed";
    block.materialName = "Steel";
    fill(block.boundingBox);
    block.particleData = {std::make_shared<CMaterialBlockParticleData>()};
    fill(*block.particleData[0]);
    fill(*block.surfaceSurfaceContacts);
    fill(*block.surfaceGeometryContacts);
}

void fill(CMaterialBlockMap& blocks)
{
    for (const char* name : {"Bed", "Layer"}) {
        auto block = std::make_shared<CMaterialBlock>();
        fill(*block);
        block->name = name;
        blocks[name] = block;
    }
}

// What can't hold anything yet.
void fill(CPluginParticleFactoryList&) {}
void fill(CContactRecordList&) {}
void fill(CCollisionsBase&) {}
void fill(CCollisions&) {}
void fill(CBondsBase&) {}
void fill(CBonds&) {}

// ---------------------------------------------------------------- results

void fill(CCustomPropertyValueList& list)
{
    for (double& value : list.values)
        value = list.metaData().dataType == eBooleanProperty ? 1.0 : nextNumber();
}

void fill(CCustomPropertyData& data) { fillValues(data); }

void fill(CAngVelAndPos& rotation)
{
    fill(rotation.angularVelocity);
    fill(rotation.pointOfAction);
}

void fill(AngVelAndPosList& rotations)
{
    rotations.resize(2);
    for (CAngVelAndPos& rotation : rotations)
        fill(rotation);
}

void fill(CContactsBase& family) { family.collisionsActive = true; }

void fill(CContacts& contacts)
{
    fill(contacts.surfaceSurface);
    fill(contacts.surfaceGeometry);
}

void fill(CTimestepEnergy& energy)
{
    fill(energy.kinetic);
    fill(energy.potential);
    fill(energy.createdParticles);
    fill(energy.destroyedParticles);
    fill(energy.external);
    fill(energy.lostThroughContacts);
    fill(energy.lostThroughCapping);
}

void fill(CSystemEnergy& energy)
{
    fill(energy.cumulative);
    fill(energy.total);
    fill(energy.potential);
    fill(energy.kinetic);
}

// ---------------------------------------------------------------- the roots

// A writer stamps its own version, so none of another is given here.
void fill(CSimulationData& data)
{
    data.buildRevision = 1;
    data.buildBranch = "elsewhere";
}

void fill(CCreatorData& creator)
{
    fill(static_cast<CSimulationData&>(creator));
    creator.title = "Silo \xe2\x88\x85 3 m";
    creator.description = "first line\nsecond line";
    fill(creator.damping);
    fill(creator.gravity);
    fill(creator.domain);
    fill(creator.particleTypes);
    fill(creator.materials);
    fill(creator.interactions);
    fill(creator.materialBlocks);
    fill(creator.sizeDistributions);
    fill(creator.pluginFactories);
    fill(creator.geometryGroups);
    creator.velocityRestricted = 2;
    creator.angularVelocityRestricted = 3;
    fill(creator.velocityLimit);
    fill(creator.angularVelocityLimit);
    fill(creator.physicsModels);
    fill(creator.cylindricalPeriodicBoundaryConditions);
}

void fill(CTimestepData& timestep)
{
    fill(static_cast<CSimulationData&>(timestep));
    fill(timestep.time);
    fill(timestep.elapsedTime);
    timestep.runNumber = 4;
    timestep.date = "24/11/25";
    fill(timestep.particleTypes);
    fill(timestep.contacts);
    fill(timestep.systemEnergy);
    timestep.removedParticles["Ball"] = 7;
    timestep.removedParticles["a type that is gone"] = 8;
    fill(timestep.simulationProperties);
}

} // namespace NBrenmark
