#include "brenmark/values/value_sources.h"

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

using namespace NAttributes;

const std::array<SOwnerWord, 6> ownerWords{{{"particle", eParticleAttribute},
                                            {"contact", eContactAttribute},
                                            {"bond", eBondAttribute},
                                            {"collision", eCollisionAttribute},
                                            {"geometry", eGeometryAttribute},
                                            {"simulation", eSimulationAttribute}}};

namespace {

struct SIdOfRow
{
    quint32 row;

    qint64 operator()(const CParticleType* type) const { return type->ids[row]; }
    qint64 operator()(const CCollisionsBase* collisions) const { return collisions->ids[row]; }
    qint64 operator()(const CGeometryGroup* group) const
    {
        return row < group->triangleIds.size() ? qint64(group->triangleIds[row]) : qint64(row);
    }
    qint64 operator()(const CContactsBase*) const { return row; }
    qint64 operator()(const CBondsBase*) const { return row; }
    qint64 operator()(const CTimestepData*) const { return 0; }
};

} // namespace

qint64 SValueSource::idOf(quint32 row) const { return std::visit(SIdOfRow{row}, owner); }

bool SValueSource::column(const CAttribute& attribute, const SAttributeRows& wanted, const SUnit* unit,
                          double* out) const
{
    return std::visit([&](const auto* one) { return attribute.column(*one, wanted, unit, out); }, owner);
}

void compactPairs(CTimestepData& timestep)
{
    timestep.contacts.surfaceSurface.compact();
    timestep.contacts.surfaceGeometry.compact();
    timestep.bonds.surfaceSurface.compact();
    timestep.bonds.surfaceGeometry.compact();
}

template <class TOwner>
static void addSource(std::vector<SValueSource>& sources, const std::string& name, const TOwner& owner)
{
    sources.push_back({name, &owner, liveRows(owner)});
}

std::vector<SValueSource> valueSources(const SSimulationFrame& frame, EAttributeOwner owner)
{
    const CTimestepData& timestep = frame.timestep;
    const CContacts& contacts = timestep.contacts;
    std::vector<SValueSource> sources;
    switch (owner) {
    case eParticleAttribute:
        for (const auto& type : timestep.particleTypes.types)
            addSource(sources, type->name, *type);
        break;
    case eGeometryAttribute:
        for (const CGeometryGroup* const group : frame.creator.geometryGroups.groups())
            if (group != nullptr)
                addSource(sources, group->name, *group);
        break;
    case eContactAttribute:
        addSource<CContactsBase>(sources, "surface-surface", contacts.surfaceSurface);
        addSource<CContactsBase>(sources, "surface-geometry", contacts.surfaceGeometry);
        break;
    case eBondAttribute:
        addSource<CBondsBase>(sources, "surface-surface", timestep.bonds.surfaceSurface);
        addSource<CBondsBase>(sources, "surface-geometry", timestep.bonds.surfaceGeometry);
        break;
    case eCollisionAttribute:
        addSource<CCollisionsBase>(sources, "surface-surface", timestep.collisions.surfaceSurface);
        addSource<CCollisionsBase>(sources, "surface-geometry", timestep.collisions.surfaceGeometry);
        addSource(sources, "active surface-surface", contacts.surfaceSurface.activeCollisions);
        addSource(sources, "active surface-geometry", contacts.surfaceGeometry.activeCollisions);
        break;
    case eSimulationAttribute: addSource(sources, "simulation", timestep); break;
    }
    return sources;
}

} // namespace NBrenmark
