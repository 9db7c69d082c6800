// Empties a timestep, and brings contacts and bonds in order after a read.
#include "results/timestep_data.h"

#include "core/counted.h"
#include "core/log.h"
#include "model/creator_data.h"
#include "model/factories/plugins/particle_factories.h"
#include "model/geometry/geometry_group.h"
#include "physics/parallel_bond.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <initializer_list>

namespace NBrenmark {

CTimestepData::CTimestepData(const SPropertyManagers& managers, CCreatorData& creator)
    : particleTypes(managers.particle),
      contacts(managers.contact),
      creatorData(creator),
      simulationProperties(managers.simulation)
{
    particleTypes.domain = &creator.domain;
    simulationProperties.resize(1);
}

void CTimestepData::read(IFileVisitorReader& v)
{
    creatorData.geometryGroups.restoreState();
    v.readTimestepData(*this);
}

void CTimestepData::write(IFileVisitorWriter& v)
{
    v.writeTimestepData(*this);
    rebuildAttributes();
}

void CTimestepData::clear()
{
    systemEnergy.reset();
    removedParticles.clear();
    particleTypes.clear();
    contacts.clear();
    bonds.clear();
    collisions.clear();
}

/// A surface-geometry row finds its triangle by these.
static TriangleCounts triangleCounts(const GeometryGroups& geometry)
{
    TriangleCounts counts;
    counts.reserve(geometry.groups().size());
    for (const CGeometryGroup* group : geometry.groups()) {
        const bool isThere = group != nullptr && group->index != GeometryGroups::notFound;
        counts.push_back(isThere ? static_cast<quint32>(group->triangleNodes.size()) : 0);
    }
    return counts;
}

quint32 CTimestepData::removeDanglingContacts()
{
    const quint32 before = contacts.liveCount();
    contacts.removeDanglingRows(particleTypes, triangleCounts(creatorData.geometryGroups));
    return before - contacts.liveCount();
}

/// Empty without a model that bonds.
static BondParametersOf bondParametersOf(const CPhysicsModels& physics)
{
    const auto* model = dynamic_cast<const CParallelBondContactModel*>(
        CPhysicsModels::findModel(physics.sphereSphereModels, QStringLiteral("Hertz-Mindlin with bonding")));
    if (model == nullptr)
        return BondParametersOf();
    const CBondParametersMap& map = model->parameters.bondParameters;
    return [&map](const CParticleType& a, const CParticleType& b) {
        return map.find(CBondParametersMap::pairKey(a.materialName.toStdString(), b.materialName.toStdString()));
    };
}

SUnmatchedBonds CTimestepData::matchBondParameters()
{
    const BondParametersOf parametersOf = bondParametersOf(creatorData.physicsModels);
    return parametersOf ? bonds.matchParameters(particleTypes, time, parametersOf) : SUnmatchedBonds();
}

void CTimestepData::settleParticles()
{
    for (const std::unique_ptr<CParticleType>& type : particleTypes.types)
        type->gravity = creatorData.gravity;
}

void CTimestepData::settle(const SLogTitle& title)
{
    settleParticles();
    NApiFactory::connectCustomProperties(creatorData.pluginFactories, particleTypes.properties());
    if (const quint32 lost = removeDanglingContacts(); lost > 0)
        report(eLost, title, counted(lost, "contact") + " released: a particle or triangle is missing.", lost);
    if (const SUnmatchedBonds unmatched = matchBondParameters(); unmatched.any())
        report(eRepaired, title, unmatched.text() + ".", unmatched.total());
    rebuildAttributes();
}

// ---------------------------------------------------------------- values by the names of attributes

void CTimestepData::rebuildAttributes()
{
    std::unique_ptr<NAttributes::IAttributeTable> table = attributeMaker ? attributeMaker(*this) : nullptr;
    attributes = table.get();
    for (const std::unique_ptr<CParticleType>& type : particleTypes.types)
        type->attributes = attributes;
    for (CGeometryGroup* const group : creatorData.geometryGroups.groups())
        if (group != nullptr)
            group->attributes = attributes;
    contacts.surfaceSurface.attributes = contacts.surfaceGeometry.attributes = attributes;
    bonds.surfaceSurface.attributes = bonds.surfaceGeometry.attributes = attributes;
    for (CCollisionsBase* const family : std::initializer_list<CCollisionsBase*>{
             &collisions.surfaceSurface, &collisions.surfaceGeometry, &contacts.surfaceSurface.activeCollisions,
             &contacts.surfaceGeometry.activeCollisions}) {
        family->attributes = attributes;
        family->forgetColumns(); // they are of the earlier table
    }
    attributeTable = std::move(table); // the earlier one lives until its last user lets it go
}

bool CTimestepData::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                             quint32 row) const
{
    return valueOfRows(
        out, row, 1, attribute, [](quint32) { return true; },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForSimulation(one, *this, i); });
}

} // namespace NBrenmark
