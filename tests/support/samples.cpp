#include "support/samples.h"
#include "support/sample_values.h"

#include "maths/axis_angle.h"
#include "maths/transform.h"

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

// ---------------------------------------------------------------- maths

void fill(C3DVector& vector) { vector = C3DVector(nextNumber(), nextNumber(), nextNumber()); }
void fill(C3DPoint& point) { point = C3DPoint(nextNumber(), nextNumber(), nextNumber()); }
void fill(CQuaternion& turn) { turn = CQuaternion(nextNumber(), nextNumber(), nextNumber(), nextNumber()); }

void fill(CAxisAngle& axis)
{
    fillAll(axis.start, axis.end);
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

void fill(CBoundingBox& box) { fillAll(box.upper, box.lower); }

// ---------------------------------------------------------------- the model

void fill(CMaterial& material)
{
    material.name = "Gr\xc3\xa4wacke (dry)";
    fillAll(material.poissonsRatio, material.shearModulus, material.density, material.workFunction);
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
    fillAll(interaction.restitution, interaction.staticFriction, interaction.rollingFriction);
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
    fillAll(domain.min, domain.max);
    domain.periodicX = domain.periodicY = domain.periodicZ = true;
}

void fill(CCylindricalPeriodicBoundaryConditions& conditions)
{
    conditions.enabled = true;
    conditions.geometryName = "Drum";
    conditions.kinematicName = "Turn";
    fillAll(conditions.length, conditions.angle);
}

// ---------------------------------------------------------------- parameters of contact models and forces

static void fill(CPairTable<double>& table)
{
    for (const char* partner : {"Steel", "Gr\xc3\xa4wacke", "a <> b"})
        table.set("Steel", partner, nextNumber());
}

static void fill(CNameTable& table)
{
    for (const char* name : {"Ball", "Gr\xc3\xa4wacke", ""})
        table.set(name, nextNumber());
}

static void turn(CRollingFrictionParamData& data) { data.enableRollingFriction = !data.enableRollingFriction; }

void fill(CHertzMindlinNoSlipContactModelParamData& data) { turn(data); }

void fill(CLinearSpringContactModelParamData& data)
{
    fill(data.characteristicVelocity);
    turn(data);
}

void fill(CJkrContactModelParamData& data)
{
    fill(data.surfaceEnergy);
    turn(data);
}

void fill(CCohesionContactModelParamData& data) { fill(data.energyDensity); }

void fill(CHystereticContactModelParamData& data)
{
    data.interactions.set("Steel", "Ball", {nextNumber(), nextNumber()});
    data.interactions.set("Steel", "Steel", {nextNumber(), nextNumber()});
    fill(data.yields);
    turn(data);
}

void fill(CEdinburghCohesionContactModelParamData& data)
{
    for (const char* partner : {"Steel", "Ball"})
        data.pairs.set("Steel", partner,
                       {nextNumber(), nextNumber(), nextNumber(), nextNumber(), nextNumber(), nextNumber()});
    turn(data);
}

void fill(CLeedsAdhesionContactModelParamData& data)
{
    for (const char* partner : {"Steel", "Ball"})
        data.pairs.set("Steel", partner,
                       {nextNumber(), nextNumber(), nextNumber(), nextNumber(), nextNumber(), nextNumber()});
    turn(data);
}

void fill(CHeatConductionModelParamData& data) { fill(data.conductivities); }

void fill(CArchardContactModelParamData& data)
{
    fill(data.wearConstants);
    turn(data);
}

void fill(CTribochargingContactModelParamData& data) { fill(data.alpha); }

void fill(CBondParameters& bond)
{
    for (double* number :
         {&bond.normalStiffness, &bond.shearStiffness, &bond.normalStrength, &bond.shearStrength, &bond.bondRadius})
        fill(*number);
}

void fill(CBondParametersMap& bonds)
{
    for (const char* partner : {"Steel", "Ball"}) {
        CBondParameters bond;
        fill(bond);
        bonds.set(CBondParametersMap::pairKey("Steel", partner), bond);
    }
}

void fill(CParallelBondContactModelParamData& data)
{
    fillAll(data.formationStartTime, data.formationEndTime, data.bondParameters);
    data.state = eBondsForming;
    data.torqueFeedback = !data.torqueFeedback;
    turn(data);
}

void fill(CMovingPlaneContactModelParamData& data)
{
    for (const qint32 id : {12, 3, -1}) {
        SMovingPlane& plane = data.planes[id];
        fillAll(plane.startPoint, plane.endPoint);
        plane.display = id != 3;
        plane.motions.resize(id == 12 ? 2 : 0);
        for (SMovingPlaneMotion& motion : plane.motions)
            motion = {nextNumber(), nextNumber(), nextNumber(), nextNumber()};
    }
}

void fill(CElectrostaticsExtForceParamData& data) { fill(data.screeningDistance); }

void fill(CHeatConductionExtForceParamData& data) { fill(data.heatCapacities); }

/// The parameters of a model, if it is one of class TModel.
template <class TModel, class TItem>
static void fillIfIts(TItem& item)
{
    if (auto* const model = dynamic_cast<TModel*>(&item))
        fill(model->parameters);
}

template <class... TModels, class TItem>
static void fillAnyOf(TItem& item)
{
    (fillIfIts<TModels>(item), ...);
}

void fill(IContactModel& model)
{
    fillAnyOf<CHertzMindlinNoSlipContactModel, CLinearSpringContactModel, CJkrContactModel, CCohesionContactModel,
              CHystereticContactModel, CEdinburghCohesionContactModel, CLeedsAdhesionContactModel, CHeatConductionModel,
              CArchardContactModel, CTribochargingContactModel, CParallelBondContactModel, CMovingPlaneContactModel>(
        model);
}

void fill(IExternalForce& force) { fillAnyOf<CElectrostaticsExternalForce, CHeatConductionExternalForce>(force); }

/// Every built-in model stands in each chain once, and every force.
void fill(CPhysicsModels& physics)
{
    physics.clear();
    for (const quint32 modelType : {eSphereSphereModel, eSphereGeometryModel})
        for (const SContactModelKind& kind : contactModelKinds()) {
            std::unique_ptr<IContactModel> model = kind.make(modelType);
            fill(*model);
            physics.addContactModel(std::move(model), CPhysicsModels::atEnd);
        }
    for (const SExternalForceKind& kind : externalForceKinds()) {
        std::unique_ptr<IExternalForce> force = kind.make(nullptr);
        fill(*force);
        physics.addExternalForce(std::move(force), CPhysicsModels::atEnd);
    }
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
    fillAll(type.rawMass, type.rawVolume, type.rawInertia);
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
    fillRows(count, type.scale, type.velocity, type.position, type.orientation, type.angularVelocity, type.forceTorque,
             type.unscaledForceTorque, type.externalForceTorque, type.creationTime);
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
    fillRows(count, particles.scale, particles.velocity, particles.position, particles.orientation,
             particles.angularVelocity);
    particles.sphereCount = 3;
    particles.customProperties = {blockProperty("Heat", count), blockProperty("Age", count)};
}

void fill(CMaterialBlockContactData& contacts)
{
    constexpr unsigned int count = 3;
    fillRows(count, contacts.contacts);
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
void fill(CPluginParticleFactoryList& factories) { factories.keepUnbound("Belt", "Conveyor"); }

// ---------------------------------------------------------------- results

void fill(CCustomPropertyValueList& list)
{
    for (double& value : list.values)
        value = list.metaData().dataType == eBooleanProperty ? 1.0 : nextNumber();
}

void fill(CCustomPropertyData& data) { fillValues(data); }

void fill(CAngVelAndPos& rotation) { fillAll(rotation.angularVelocity, rotation.pointOfAction); }

void fill(AngVelAndPosList& rotations)
{
    rotations.resize(2);
    for (CAngVelAndPos& rotation : rotations)
        fill(rotation);
}

static void fill(SCollisionEnd& end, std::size_t count)
{
    end.ids = {11, 12, 13};
    fillRows(count, end.velocity, end.position, end.radius, end.angularVelocity, end.orientation);
}

void fill(CCollisionsBase& c)
{
    constexpr std::size_t count = 3;
    c.ids = {7, 8, 9};
    fillRows(count, c.startTime, c.position, c.unitCpVector, c.relativeVelocity);
    fill(c.first, count);
    fill(c.second, count);
    fillRows(count, c.maxNormalForce, c.maxTangentialForce);
    c.iterations = {21, 22, 23};
    fillRows(count, c.normalEnergy, c.shearEnergy, c.totalNormalForce, c.totalTangentialForce, c.endTime);
    c.dropForeignArrays();
}

void fill(CCollisions& collisions) { fillAll(collisions.surfaceSurface, collisions.surfaceGeometry); }

/// Between spheres of the two sample types, which have two each and particles in the slots 0 and 2.
static const std::vector<PairRow> samplePairs = {{0, 1, 1, 4}, {0, 4, 1, 0}, {0, 0, 0, 5}};

void fill(CBondsBase& bonds)
{
    const std::size_t count = samplePairs.size();
    bonds.rows = samplePairs;
    fillRows(count, bonds.normalForce, bonds.tangentialForce, bonds.normalTorque, bonds.tangentialTorque);
    bonds.state = {eIntactBond, eBrokenBond, eIntactBond};
    fillRows(count, bonds.breakTime);
    bonds.resizeRows(count);
}

void fill(CBonds& bonds) { fillAll(bonds.surfaceSurface, bonds.surfaceGeometry); }

void fill(CContactRecordList& list)
{
    for (const quint32 kind : {eScalarRecord, eVectorRecord}) {
        SContactRecord record;
        record.kind = kind;
        record.type = 5 + kind;
        record.name = kind == eScalarRecord ? "Heat \xce\x94" : "Drag";
        fillAll(record.scale, record.defaultValue);
        record.makeValues();
        record.withValues([](auto& values) { fillRows(samplePairs.size(), values); });
        list.records.push_back(record);
    }
}

void fill(CContactsBase& family)
{
    const std::size_t count = samplePairs.size();
    family.collisionsActive = true;
    fill(family.contactRecords);
    family.resizeRows(count);
    family.rows = samplePairs;
    fillRows(count, family.position, family.contactVector1, family.contactVector2);
    family.normalOverlap = {1e-6, 2e-6, 0.0};
    fillRows(count, family.tangentialOverlap, family.normalForce, family.tangentialForce);
    fill(family.activeCollisions);
    fillValues(family.customProperties);
}

void fill(CContacts& contacts) { fillAll(contacts.surfaceSurface, contacts.surfaceGeometry); }

void fill(CTimestepEnergy& energy)
{
    fillAll(energy.kinetic, energy.potential, energy.createdParticles, energy.destroyedParticles, energy.external,
            energy.lostThroughContacts, energy.lostThroughCapping);
}

void fill(CSystemEnergy& energy) { fillAll(energy.cumulative, energy.total, energy.potential, energy.kinetic); }

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
    fillAll(creator.damping, creator.gravity, creator.domain, creator.particleTypes, creator.materials,
            creator.interactions, creator.materialBlocks, creator.sizeDistributions, creator.pluginFactories,
            creator.geometryGroups);
    creator.velocityRestricted = 2;
    creator.angularVelocityRestricted = 3;
    fillAll(creator.velocityLimit, creator.angularVelocityLimit, creator.physicsModels);
    fill(creator.cylindricalPeriodicBoundaryConditions);
}

void fill(CTimestepData& timestep)
{
    fill(static_cast<CSimulationData&>(timestep));
    fillAll(timestep.time, timestep.elapsedTime);
    timestep.runNumber = 4;
    timestep.date = "24/11/25";
    fillAll(timestep.particleTypes, timestep.contacts);
    timestep.contacts.surfaceGeometry.resizeRows(0); // there are no triangles
    fillAll(timestep.collisions, timestep.bonds, timestep.systemEnergy);
    timestep.removedParticles["Ball"] = 7;
    timestep.removedParticles["a type that is gone"] = 8;
    fill(timestep.simulationProperties);
}

} // namespace NBrenmark
