#pragma once
// A box, turned about its centre; each of its six sides can be left open.

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

class CBox : public CGeometryGroup
{
public:
    static constexpr const char* word = "box";

    explicit CBox(CCustomPropertyManager* propertyManager);

    QString typeName() const override { return QString::fromLatin1(word); }
    QString displayName() const override { return QStringLiteral("Box"); }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    void defaultCentreOfMass() override { setCentreOfMass(centre); }

    /// Makes the mesh from the fields below: 8 vertices, two triangles a side.
    void rebuildMesh();

    C3DPoint centre;     ///< m
    C3DVector rotations; ///< angles about x, y and z, see CQuaternion::fromEuler, rad
    double width = 1.0;  ///< along x, m
    double length = 1.0; ///< along z, m
    double height = 1.0; ///< along y, m
    std::array<bool, 6> sidesEnabled{true, true, true, true, true, true};
};

} // namespace NBrenmark
