// Where an import is put follows from a shift and a turn; the vertices as imported stay.
#include "model/geometry/cad_geometry.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

void CCADGeometry::read(IFileVisitorReader& v) { v.readCADGeometry(*this); }

void CCADGeometry::write(IFileVisitorWriter& v) const { v.writeCADGeometry(*this); }

void CCADGeometry::updateBounds()
{
    updateCadTransform();
    CGeometryGroup::updateBounds();
}

void CCADGeometry::settle()
{
    updateCadTransform();
    if (isStatic && coords.size() != importedCoords.size())
        coords = placedImport();
    CGeometryGroup::settle();
}

void CCADGeometry::updateCadTransform()
{
    cadTransform.setIdentity();
    cadTransform.translate((translationAxisEnd - translationAxisStart).normalised() * translationDistance);
    cadTransform.rotateAboutLine(rotationAxisStart, rotationAxisEnd, rotationAngle);
}

std::vector<C3DPoint> CCADGeometry::placedImport() const
{
    if (cadTransform.isIdentity()) // which would spread a coordinate that is no number
        return importedCoords;
    std::vector<C3DPoint> placed(importedCoords.size());
    std::transform(importedCoords.begin(), importedCoords.end(), placed.begin(),
                   [this](const C3DPoint& point) { return cadTransform * point; });
    return placed;
}

void CCADGeometry::forgetPlacement()
{
    translationDistance = 0.0;
    rotationAngle = 0.0;
    updateCadTransform();
}

void CCADGeometry::rebuildMesh()
{
    updateCadTransform();
    replaceMesh(placedImport(), triangleNodes);
}

void CCADGeometry::importMesh(std::vector<C3DPoint> points, std::vector<TriangleNodes> triangles)
{
    importedCoords = std::move(points);
    triangleNodes = std::move(triangles);
    rebuildMesh();
}

CBoundingBox CCADGeometry::importedBounds() const
{
    if (importedCoords.empty())
        return CBoundingBox();
    C3DPoint least = importedCoords.front();
    C3DPoint greatest = least;
    for (const C3DPoint& point : importedCoords) {
        least = C3DPoint(std::min(least.x, point.x), std::min(least.y, point.y), std::min(least.z, point.z));
        greatest =
            C3DPoint(std::max(greatest.x, point.x), std::max(greatest.y, point.y), std::max(greatest.z, point.z));
    }
    return CBoundingBox(greatest, least);
}

} // namespace NBrenmark
