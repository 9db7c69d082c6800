// Samples of geometry, its motions, factories and their parameters.
#include "support/sample_values.h"
#include "support/samples.h"

namespace NBrenmark {

// ---------------------------------------------------------------- laws

void fill(CFixedDistribution& law) { fill(law.value); }

void fill(CRandomDistribution& law) { fillAll(law.min, law.max); }

void fill(CNormalDistribution& law)
{
    fillAll(law.mean, law.deviation, law.lowerCap, law.upperCap);
    law.capped = !law.capped;
}

void fill(CLogNormalDistribution& law)
{
    fill(static_cast<CNormalDistribution&>(law));
    law.logMean = !law.logMean;
}

void fill(CUserDefinedDistribution& law) { law.bands = {{0.25, 30.0}, {0.5, 60.0}, {1.0 / 3.0, 100.0}}; }

void fill(ISizeDistribution& law) { law.radiusScaling = !law.radiusScaling; }

template <class TLaw, class TSizeLaw>
static void fillSizeLaw(TSizeLaw& law)
{
    fill(static_cast<TLaw&>(law));
    fill(static_cast<ISizeDistribution&>(law));
}

void fill(CFixedSizeDistribution& law) { fillSizeLaw<CFixedDistribution>(law); }
void fill(CRandomSizeDistribution& law) { fillSizeLaw<CRandomDistribution>(law); }
void fill(CNormalSizeDistribution& law) { fillSizeLaw<CNormalDistribution>(law); }
void fill(CLogNormalSizeDistribution& law) { fillSizeLaw<CLogNormalDistribution>(law); }
void fill(CUserDefinedSizeDistribution& law) { fillSizeLaw<CUserDefinedDistribution>(law); }

template <class TLaw>
static void addLaw(CParticleSizeDistributionMap& map)
{
    auto law = std::make_unique<TLaw>();
    fill(*law);
    const std::string particleType = "Kies \xc3\xb8 3, " + law->kindWord().toStdString();
    std::unique_ptr<ISizeDistribution> given = std::move(law);
    map.add(particleType, nextNumber(), given);
}

void fill(CParticleSizeDistributionMap& map)
{
    addLaw<CFixedSizeDistribution>(map);
    addLaw<CRandomSizeDistribution>(map);
    addLaw<CNormalSizeDistribution>(map);
    addLaw<CLogNormalSizeDistribution>(map);
    addLaw<CUserDefinedSizeDistribution>(map);
}

// ---------------------------------------------------------------- parameters of factories

void fill(CFixedFactoryVelocity& p) { fill(p.value); }
void fill(CFixedFactoryAngVel& p) { fill(p.value); }

template <class TParam>
static void fillLinear(TParam& p)
{
    fillAll(p.startVelocity, p.endVelocity);
}
void fill(CLinearFactoryVelocity& p) { fillLinear(p); }
void fill(CLinearFactoryAngVel& p) { fillLinear(p); }

void fill(CRandomFactoryVelocity& p) { fill(p.magnitude); }
void fill(CRandomFactoryAngVel& p) { fill(p.magnitude); }

/// Of these laws only mean and spread are stored.
static void fillSpread(CNormalDistribution& law) { fillAll(law.mean, law.deviation); }

template <class TParam>
static void fillNormal(TParam& p)
{
    fillSpread(p.magnitude);
    fill(p.direction);
}
void fill(CNormalFactoryVelocity& p)
{
    fillNormal(p);
    p.direction = C3DVector(0, 0, -1); // of length 1: one family brings it to that
}
void fill(CNormalFactoryAngVel& p) { fillNormal(p); }

void fill(CSprayFactoryVelocity& p)
{
    fillNormal(p);
    fill(p.sprayAngle);
}

void fill(CFixedFactoryOrientation& p) { p.setQuaternion(CQuaternion(0.1, -0.7, 0.5, 0.3)); }

void fill(CFixedFactoryType& p) { p.names = {"Ball"}; }

void fill(CBinaryFactoryType& p)
{
    p.names = {"Ball", "Rod"};
    p.next = static_cast<qint32>(nextCount());
}

void fill(CRandomFactoryPosition& p)
{
    p.style = CRandomFactoryPosition::eRandomWalk;
    fillAll(p.multiFactor, p.maxAngle, p.separation, p.seedPosition, p.seedVector);
}

void fill(C3DLattice& lattice)
{
    fillAll(lattice.axisA, lattice.axisB, lattice.axisC, lattice.rotation, lattice.start, lattice.cursor0,
            lattice.cursor1, lattice.cursor2, lattice.cursor3);
}
void fill(CCubicFactoryPosition& p) { fill(static_cast<C3DLattice&>(p)); }
void fill(CBCCFactoryPosition& p) { fill(static_cast<C3DLattice&>(p)); }
void fill(CFCCFactoryPosition& p) { fill(static_cast<C3DLattice&>(p)); }

void fill(CFixedFactorySize& p) { fill(p.sizeDistribution.value); } // what it scales isn't stored in one family
void fill(CRandomFactorySize& p) { fill(p.sizeDistribution); }
void fill(CNormalFactorySize& p) { fill(p.sizeDistribution); }
void fill(CLogNormalFactorySize& p) { fill(p.sizeDistribution); }
void fill(CUserDefinedFactorySize& p)
{
    fill(p.sizeDistribution);
    for (const auto& [size, share] : p.sizeDistribution.bands)
        fill(p.bandAccounting[size]);
}

void fill(CFixedValueCustomPropertyFactoryParam& p) { fillRows(p.property() ? p.values.size() : 3, p.values); }
void fill(CRandomValueCustomPropertyFactoryParam& p) { fill(p.distribution); }
void fill(CNormalDistCustomPropertyFactoryParam& p) { fillSpread(p.distribution); }

// ---------------------------------------------------------------- factories

void fill(CFactoryAccounting& account)
{
    fillAll(account.massCreated, account.massRemainder, account.massSinceRateChange);
}

template <class TKind>
static std::unique_ptr<TKind> filled()
{
    auto object = std::make_unique<TKind>();
    fill(*object);
    return object;
}

void fill(CParticleFactory& factory)
{
    factory.creationCount = nextCount();
    factory.maxAttempts = nextCount();
    fillAll(factory.accounting, factory.counters);
    factory.setVelocity(filled<CSprayFactoryVelocity>());
    factory.setSize("Ball", filled<CUserDefinedFactorySize>());
    factory.setSize("Rod", filled<CLogNormalFactorySize>());
    factory.setOrientation(filled<CFixedFactoryOrientation>());
    factory.setAngVel(filled<CNormalFactoryAngVel>());
    factory.setType(filled<CBinaryFactoryType>());
    factory.setPosition(filled<CBCCFactoryPosition>());
    if (factory.customProperties == nullptr)
        return;
    const CCustomPropertyMetaData* const first = factory.customProperties->property(0u);
    factory.setCustomPropertyKind(first, CNormalDistCustomPropertyFactoryParam::word);
    fill(dynamic_cast<CNormalDistCustomPropertyFactoryParam&>(*factory.customParams.at(first->id)));
    const CCustomPropertyMetaData* const second = factory.customProperties->property(1u);
    factory.setCustomPropertyKind(second, CRandomValueCustomPropertyFactoryParam::word);
    fill(dynamic_cast<CRandomValueCustomPropertyFactoryParam&>(*factory.customParams.at(second->id)));
    const CCustomPropertyMetaData* const last = factory.customProperties->property(2u);
    fill(dynamic_cast<CFixedValueCustomPropertyFactoryParam&>(*factory.customParams.at(last->id)));
}

void fill(CDynamicParticleFactory& factory)
{
    fill(static_cast<CParticleFactory&>(factory));
    factory.unlimited = factory.massCreation = factory.massGeneration = true;
    fillAll(factory.creationRate, factory.creationTime, factory.rateChangeTime);
    factory.createdSinceRateChange = nextCount();
    factory.numToCreate = nextCount();
    fill(factory.massToCreate);
    for (const char* typeName : {"Ball", "Rod"})
        fill(factory.typeAccounting[typeName]);
}

void fill(CStaticParticleFactory& factory)
{
    fill(static_cast<CParticleFactory&>(factory));
    factory.completed = factory.massCreation = true;
    factory.fillShape = false;
    fill(factory.creationTime);
    factory.numToCreate = nextCount();
    fill(factory.massToCreate);
}

/// \param properties  of the particles; may be null
static void fillList(CParticleFactoryList& list, CCustomPropertyManager* properties)
{
    const auto add = [&](auto factory, const char* name) {
        factory->name = name;
        factory->connectCustomProperties(properties);
        fill(*factory);
        list.add(std::move(factory));
    };
    // Not in the order of their names.
    add(std::make_unique<CStaticParticleFactory>(), "Pile (once)");
    add(std::make_unique<CDynamicParticleFactory>(), "F\xc3\xb6rderer");
}

void fill(CParticleFactoryList& list) { fillList(list, nullptr); }

// ---------------------------------------------------------------- motions

void fill(CTimeDepAction& motion)
{
    motion.name = "Sch\xc3\xbctteln";
    fillAll(motion.startTime, motion.endTime);
    motion.loop = true;
    fillAll(motion.loopInterval, motion.loopEndTime);
}

void fill(CRotation& rotation)
{
    fill(rotation.pointOfAction);
    rotation.movesWithBody = false;
}

void fill(CSinusoid& sinusoid) { fillAll(sinusoid.displacement, sinusoid.frequency, sinusoid.offset); }

/// As readers of old decks leave it, so that every family can hold it: the axis is that of the displacement.
template <class TMotion>
static void fillSwing(TMotion& motion)
{
    fill(motion.sinusoid);
    motion.axis.startPoint = C3DPoint();
    motion.axis.endPoint = C3DPoint(motion.sinusoid.displacement.normalised());
    motion.displacementMagnitude = motion.sinusoid.displacement.length();
}

static void fillAxis(CTimeDepAction& motion) { fillAll(motion.axis.startPoint, motion.axis.endPoint); }

void fill(CLinearTranslation& motion)
{
    fill(static_cast<CTimeDepAction&>(motion));
    fillAxis(motion);
    fillAll(motion.initialVelocity, motion.acceleration);
}

void fill(CConveyorTranslation& motion)
{
    fill(static_cast<CLinearTranslation&>(motion));
    fill(motion.conveyorTransform);
}

void fill(CSinusoidalTranslation& motion)
{
    fill(static_cast<CTimeDepAction&>(motion));
    fillSwing(motion);
}

void fill(CLinearRotation& motion)
{
    fill(static_cast<CTimeDepAction&>(motion));
    fill(static_cast<CRotation&>(motion));
    fillAxis(motion);
    fillAll(motion.initialAngularVelocity, motion.angularAccelerationMagnitude);
    motion.axisChanged();
}

void fill(CSinusoidalRotation& motion)
{
    fill(static_cast<CTimeDepAction&>(motion));
    fill(static_cast<CRotation&>(motion));
    fillSwing(motion);
}

void fill(CKinematics& kinematics)
{
    const auto add = [&](auto motion, const char* name, double startTime) {
        fill(*motion);
        motion->name = name;
        motion->startTime = startTime;
        kinematics.add(std::move(motion));
    };
    add(std::make_unique<CLinearTranslation>(), "Lift", 0.5);
    add(std::make_unique<CSinusoidalTranslation>(), "Shake", 1.5);
    add(std::make_unique<CLinearRotation>(), "Turn", 2.5);
    add(std::make_unique<CSinusoidalRotation>(), "Turn", 3.5); // of one name
    kinematics.recomputeTimes();
}

// ---------------------------------------------------------------- geometry

void fill(CMomentOfInertia& moment) { fill(moment.values); }

void fill(CGeometryGroupElectrostatic& electrostatic)
{
    electrostatic.exempt = true;
    fill(electrostatic.startCharge);
}

void fill(CBlockLink& link) { link.blockName = "Bed"; }

static void fillProperties(CCustomPropertyData& data)
{
    for (const std::unique_ptr<CCustomPropertyValueList>& list : data.lists)
        fill(*list);
}

/// What all shapes have in common, of a group that moves. The mesh is a tetrahedron of any numbers.
static void fillGroup(CGeometryGroup& g, CCustomPropertyManager* particleProperties)
{
    constexpr std::size_t corners = 4;
    g.setName("Wand \xe2\x80\x9enord\xe2\x80\x9c");
    g.uniqueId = nextCount();
    fillRows(corners, g.originalCoords);
    g.coords = g.originalCoords;
    g.triangleNodes = {{0, 1, 2}, {0, 1, 3}, {0, 2, 3}, {1, 2, 3}};
    for (std::vector<quint32>* ids : {&g.vertexIds, &g.triangleIds})
        for (std::size_t i = 0; i < corners; ++i)
            ids->push_back(nextCount());
    g.closed = !g.closed;
    g.materialName = "Steel";
    g.geometryType = eVirtualGeometry;
    g.dataMask = eTriangleIds | eTriangleNodes | eTriangleForces;
    fillAll(g.momentOfInertia, g.electrostatic, g.desiredForce, g.gain);

    fill(g.transform);
    for (int column = 0; column < 3; ++column)
        g.transform(3, column) = 0.0;
    g.transform(3, 3) = 1.0;
    g.moveTo(C3DTransform(g.transform));
    fillAll(g.translation, g.velocity);
    g.resetVelocities = false;
    fillAll(g.time, g.centreOfMass, g.originalCentreOfMass, g.pointOfAction, g.originalPointOfAction, g.motionHistory);
    fillRows(g.triangleNodes.size(), g.triangleForces);
    fillAll(g.bounds, g.surfaceMagnitude);
    g.enclosedMagnitude = g.closed ? nextNumber() : 0.0; // an open group has none in one family
    fillProperties(g.customProperties);
    fill(g.kinematics);
    fillList(*g.factories, particleProperties);
}

void fill(CGeometryGroup& g) { fillGroup(g, nullptr); }

void fill(CBox& box)
{
    fillGroup(box, nullptr);
    fillAll(box.centre, box.rotations, box.width, box.length, box.height);
    box.sidesEnabled = {false, false, false, false, false, false};
}

void fill(CCylinder& cylinder)
{
    fillGroup(cylinder, nullptr);
    fillAll(cylinder.startPoint, cylinder.endPoint, cylinder.radiusStart, cylinder.radiusEnd);
    cylinder.closedStart = cylinder.closedEnd = false;
    cylinder.detail = nextCount();
}

void fill(CPolygon& polygon)
{
    fillGroup(polygon, nullptr);
    fillAll(polygon.normal, polygon.centre, polygon.radius, polygon.rotation);
    polygon.edges = static_cast<qint32>(nextCount());
    fillAll(polygon.rotations, polygon.lengthSide1, polygon.lengthSide2);
}

void fill(CCADGeometry& cad)
{
    fillGroup(cad, nullptr);
    fillAll(cad.translationDistance, cad.rotationAngle, cad.translationAxisStart, cad.translationAxisEnd,
            cad.rotationAxisStart, cad.rotationAxisEnd);
    fillRows(cad.coords.size(), cad.importedCoords);
}

void fill(GeometryGroups& groups)
{
    quint32 index = 0;
    const auto add = [&](auto group, const char* name) {
        fill(*group);
        group->factories->clear();
        fillList(*group->factories, groups.managers.particle);
        group->setName(name);
        group->index = index;
        index += 2; // a gap after each
        groups.add(group.release(), false);
    };
    add(std::make_unique<CBox>(groups.managers.geometry), "Box");
    add(std::make_unique<CCylinder>(groups.managers.geometry), "Drum");
    add(std::make_unique<CPolygon>(groups.managers.geometry), "Wall");
    add(std::make_unique<CCADGeometry>(groups.managers.geometry), "Wall"); // of one name
    groups.at(0)->materialBlockRef = std::make_unique<CBlockLink>(&groups.at(0)->bounds);
    fill(*groups.at(0)->materialBlockRef);
    groups.rebuildElementIds();
}

void fill(CParticleTemplate& particle)
{
    particle.name = "Schotter";
    particle.materialName = "Basalt";
    fillAll(particle.scale, particle.domain, particle.orientation);
    auto part = std::make_unique<CGeometryGroup>(nullptr);
    part->index = 2;
    part->uniqueId = 2;
    part->setMesh({{0, 0, 0}, {1.5, 0, 0}, {0, 2.5, 0}, {0, 0, 3.5}}, {{0, 1, 2}, {0, 1, 3}, {0, 2, 3}, {1, 2, 3}});
    fill(part->momentOfInertia);
    particle.geometry.add(part.release(), true);
}

void fill(TemplateMap& templates)
{
    for (const char* name : {"Schotter", "Splitt"}) {
        auto particle = std::make_unique<CParticleTemplate>();
        fill(*particle);
        particle->name = name;
        templates[name] = std::move(particle);
    }
}

} // namespace NBrenmark
