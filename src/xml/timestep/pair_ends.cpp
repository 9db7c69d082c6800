// Finds ids by places and places by ids.
#include "xml/timestep/pair_ends.h"

#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"

#include <algorithm>

namespace NBrenmark {

static bool findParticleId(const CParticleTypes& types, quint32 typeIndex, quint32 element, quint32& id,
                           quint32& sphere)
{
    SParticleEnd end;
    if (!findParticleEnd(types, typeIndex, element, end))
        return false;
    id = static_cast<quint32>(std::max(types.types[typeIndex]->ids[end.slot], 0));
    sphere = end.sphere;
    return true;
}

bool findIds(const CTimestepData& timestep, const PairRow& row, bool isGeometry, SPairIds& ids)
{
    const CParticleTypes& types = timestep.particleTypes;
    if (!findParticleId(types, row[0], row[1], ids.particle1, ids.surface1))
        return false;
    if (!isGeometry)
        return findParticleId(types, row[2], row[3], ids.particle2, ids.surface2);
    const CGeometryGroup* const group = timestep.creatorData.geometryGroups.at(row[2]);
    if (group == nullptr || row[3] >= group->triangleIds.size())
        return false;
    ids.triangle = group->triangleIds[row[3]];
    return true;
}

static bool findParticle(const CParticleTypes& types, quint32 id, quint32 sphere, quint32& typeIndex, quint32& element)
{
    quint32 slot = 0;
    if (!types.locate(id, typeIndex, slot))
        return false;
    const std::size_t spheres = types.types[typeIndex]->spheres.size();
    element = static_cast<quint32>(slot * spheres + sphere);
    return sphere < spheres;
}

bool findRow(const CTimestepData& timestep, const SPairIds& ids, bool isGeometry, PairRow& row)
{
    const CParticleTypes& types = timestep.particleTypes;
    if (!findParticle(types, ids.particle1, ids.surface1, row[0], row[1]))
        return false;
    return isGeometry ? timestep.creatorData.geometryGroups.triangleIds.locate(ids.triangle, row[2], row[3])
                      : findParticle(types, ids.particle2, ids.surface2, row[2], row[3]);
}

} // namespace NBrenmark
