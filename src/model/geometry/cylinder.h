#pragma once
// A cylinder or a cone between two points; each of its ends can be left open.

#include "model/geometry/geometry_group.h"

namespace NBrenmark {

class CCylinder : public CGeometryGroup
{
public:
    static constexpr const char* word = "cylinder";

    explicit CCylinder(CCustomPropertyManager* propertyManager);

    QString typeName() const override { return QString::fromLatin1(word); }
    QString displayName() const override { return QStringLiteral("Cylinder"); }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    /// Moves the two ends too.
    void applyTransform(const C3DTransform& matrix) override;
    void settle() override;
    /// Half way between the ends.
    void defaultCentreOfMass() override;

    /// Sets the caps, and by them whether the group is closed.
    void setClosedEnds(bool start, bool end);
    /// Makes the mesh from the fields below: two rings of detail vertices, and a vertex in the middle of
    /// each closed end. An axis of length zero leaves the mesh as it is.
    void rebuildMesh();

    double radiusStart = 0.2;                   ///< m
    double radiusEnd = 0.5;                     ///< m
    C3DPoint startPoint = C3DPoint(0, 0, -0.5); ///< m
    C3DPoint endPoint = C3DPoint(0, 0, 0.5);    ///< m
    C3DPoint currentStart = startPoint;         ///< where the transform took it, m
    C3DPoint currentEnd = endPoint;             ///< m
    bool closedStart = true;
    bool closedEnd = true;
    quint32 detail = 50; ///< facets
};

} // namespace NBrenmark
