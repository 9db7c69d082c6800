#include "analysis/attributes/coordination_number.h"

#include "analysis/attributes/column_filling.h"
#include "core/save_options.h"
#include "results/timestep_data.h"

#include <algorithm>

namespace NBrenmark::NAttributes {

CAttributeCoordinationNum::CAttributeCoordinationNum(const CTimestepData& timestep)
    : CPrimaryAttribute("Coordination Number", eIntegerValue, eNoQuantity, eParticleAttribute,
                        {eIds, eContactEnds | eContactNormalOverlap}, timestep)
{}

void CAttributeCoordinationNum::count() const
{
    const CParticleTypes& types = timestep.particleTypes;
    for (const auto& type : types.types)
        counts.emplace_back(type->slotCount(), 0u);
    const auto add = [&](quint32 type, quint32 element) {
        SParticleEnd end;
        if (findParticleEnd(types, type, element, end))
            ++counts[type][end.slot];
    };
    const CContactsBase& pairs = timestep.contacts.surfaceSurface;
    for (const quint32 row : liveRows(pairs)) {
        add(pairs.rows[row][0], pairs.rows[row][1]);
        add(pairs.rows[row][2], pairs.rows[row][3]);
    }
    const CContactsBase& walls = timestep.contacts.surfaceGeometry;
    for (const quint32 row : liveRows(walls))
        add(walls.rows[row][0], walls.rows[row][1]);
}

bool CAttributeCoordinationNum::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    constexpr quint32 contactRows = eSurfaceSurfaceContacts | eSurfaceGeometryContacts;
    if ((timestep.timestepMask & contactRows) != contactRows)
        return false; // some were not saved
    if (counts.empty())
        count();
    const auto& types = timestep.particleTypes.types;
    const auto found =
        std::find_if(types.begin(), types.end(), [&type](const auto& one) { return one.get() == &type; });
    return found != types.end() && filledFrom(counts[static_cast<std::size_t>(found - types.begin())], rows, out);
}

} // namespace NBrenmark::NAttributes
