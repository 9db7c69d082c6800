#pragma once
// A flat face: a rectangle of two side lengths, or a regular polygon of another number of edges.

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

class CPolygon : public CGeometryGroup
{
public:
    static constexpr const char* word = "polygon";

    explicit CPolygon(CCustomPropertyManager* propertyManager) : CGeometryGroup(propertyManager) {}

    QString typeName() const override { return QString::fromLatin1(word); }
    QString displayName() const override { return QStringLiteral("Polygon"); }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    void defaultCentreOfMass() override { setCentreOfMass(centre); }

    /// Makes corners and mesh from the fields below; a rectangle gets its normal too. From five edges on
    /// the centre is a vertex, the first. Fewer than three edges, or no normal to turn the corners about,
    /// leave the mesh as it is.
    void rebuildMesh();

    C3DPoint centre;                       ///< m
    C3DVector normal = C3DVector(0, 0, 1); ///< of length 1, but that of a rectangle is as long as its area
    double radius = 0.5;                   ///< of the corners of a regular polygon, m
    double rotation = 0.0;                 ///< of a regular polygon about its normal, rad
    qint32 edges = 4;
    C3DVector rotations;            ///< of a rectangle about x, y and z, rad
    double lengthSide1 = 1.0;       ///< of a rectangle, along x, m
    double lengthSide2 = 1.0;       ///< of a rectangle, along y, m
    std::vector<C3DPoint> vertices; ///< the corners, m; derived, never stored

private:
    std::vector<C3DPoint> rectangleCorners() const;
    std::vector<C3DPoint> regularCorners();
};

} // namespace NBrenmark
