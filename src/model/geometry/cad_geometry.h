#pragma once
// A mesh that came from an import, and where it was put: shifted along one line, turned about another.

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

class CCADGeometry : public CGeometryGroup
{
public:
    static constexpr const char* word = "cad_geometry";

    explicit CCADGeometry(CCustomPropertyManager* propertyManager) : CGeometryGroup(propertyManager) {}

    QString typeName() const override { return QString::fromLatin1(word); }
    QString displayName() const override { return QStringLiteral("CAD Geometry"); }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    /// Brings cadTransform up to date as well.
    void updateBounds() override;
    /// Puts the import in its place, where a file holds it as it came only.
    void settle() override;

    /// cadTransform from the fields below: the rotation acts first, then the shift.
    void updateCadTransform();
    /// The imported vertices where cadTransform puts them; the very same ones if that is nowhere else.
    std::vector<C3DPoint> placedImport() const;
    /// Takes the import for one that was made where it is: the fields below move it no more.
    void forgetPlacement();
    /// Takes the imported mesh, and its triangles, to where the fields below put it.
    void rebuildMesh();
    /// Takes a new imported mesh and puts it in its place.
    void importMesh(std::vector<C3DPoint> points, std::vector<TriangleNodes> triangles);
    /// Of the imported mesh; both corners in the origin without a point.
    CBoundingBox importedBounds() const;

    C3DPoint translationAxisStart;        ///< m
    C3DPoint translationAxisEnd;          ///< m
    C3DPoint rotationAxisStart;           ///< m
    C3DPoint rotationAxisEnd;             ///< m
    double translationDistance = 0.0;     ///< m
    double rotationAngle = 0.0;           ///< rad
    C3DTransform cadTransform;            ///< derived, never stored
    std::vector<C3DPoint> importedCoords; ///< m
};

} // namespace NBrenmark
