// Checks a mesh that was read against what comes with it.
#include "io/hdf5/geometry.h"

#include "core/log.h"
#include "core/shortened.h"

namespace NBrenmark {

void checkForces(const CGeometryGroup& g, bool examine)
{
    if (!g.triangleForces.empty() && g.triangleForces.size() != g.triangleNodes.size())
        report(examine ? eRepaired : eRemark, NLogTitle::hdf5Read,
               "Geometry group \"" + shortened(g.name) + "\" has " + std::to_string(g.triangleNodes.size()) +
                   " triangles and forces for " + std::to_string(g.triangleForces.size()) + ".",
               1, shortened(g.name));
}

} // namespace NBrenmark
