// Takes the ends of a row apart, and says whether there is anything where they point.
#include "results/pair_rows.h"

#include "model/particle_types.h"

namespace NBrenmark {

bool findParticleEnd(const CParticleTypes& types, quint32 typeIndex, quint32 element, SParticleEnd& end)
{
    if (typeIndex >= types.count())
        return false;
    const CParticleType& type = *types.types[typeIndex];
    const auto spheres = static_cast<quint32>(type.spheres.size());
    if (spheres == 0)
        return false;
    end.slot = element / spheres;
    end.sphere = element % spheres;
    return type.isLive(end.slot);
}

} // namespace NBrenmark
