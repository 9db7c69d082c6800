// What a mesh that was read needs before others may look at it.
#include "io/hdf5/geometry.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/geometry/cad_geometry.h"

namespace NBrenmark {

void placeMesh(CGeometryGroup& g)
{
    const double enclosed = g.enclosedMagnitude;
    const double surface = g.surfaceMagnitude;
    if (!g.isStatic) {
        g.coords = g.originalCoords;
        g.applyTransform(g.transform);
    }
    else if (auto* const cad = dynamic_cast<CCADGeometry*>(&g)) {
        cad->updateCadTransform();
        cad->coords = cad->placedImport();
    }
    g.recomputeDerivedData();
    g.enclosedMagnitude = enclosed;
    g.surfaceMagnitude = surface;
}

void checkForces(const CGeometryGroup& g)
{
    if (!g.triangleForces.empty() && g.triangleForces.size() != g.triangleNodes.size())
        report(eRemark, NLogTitle::hdf5Read,
               "Geometry group \"" + shortened(g.name) + "\" has " + std::to_string(g.triangleNodes.size()) +
                   " triangles and forces for " + std::to_string(g.triangleForces.size()) + ".",
               1, shortened(g.name));
}

} // namespace NBrenmark
