// Makes the mesh of a cylinder or cone, with or without its ends.
#include "model/geometry/cylinder.h"

#include "model/geometry/ring.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CCylinder::CCylinder(CCustomPropertyManager* propertyManager) : CGeometryGroup(propertyManager) { closed = true; }

void CCylinder::read(IFileVisitorReader& v) { v.readCylinder(*this); }

void CCylinder::write(IFileVisitorWriter& v) const { v.writeCylinder(*this); }

void CCylinder::applyTransform(const C3DTransform& matrix)
{
    currentStart = matrix * startPoint;
    currentEnd = matrix * endPoint;
    CGeometryGroup::applyTransform(matrix);
}

void CCylinder::settle()
{
    currentStart = startPoint; // a moving one takes them on from here
    currentEnd = endPoint;
    CGeometryGroup::settle();
}

void CCylinder::defaultCentreOfMass() { setCentreOfMass(startPoint + 0.5 * (endPoint - startPoint)); }

void CCylinder::setClosedEnds(bool start, bool end)
{
    closedStart = start;
    closedEnd = end;
    closed = start && end;
}

void CCylinder::rebuildMesh()
{
    setClosedEnds(closedStart, closedEnd);
    const C3DVector span = startPoint - endPoint;
    if (span.length() <= zeroLength || !canHold(quint64(detail) * (2 + closedStart + closedEnd)))
        return;
    const C3DVector axis = span.normalised();
    const C3DVector direction = radialDirection(axis);
    const C3DTransform step = ringStep(axis, detail);
    const quint32 ringVertices = 2 * detail;
    C3DVector r1 = radiusStart * direction;
    C3DVector r2 = radiusEnd * direction;

    std::vector<C3DPoint> vertices;
    std::vector<TriangleNodes> triangles;
    for (quint32 i = 0; i < detail; ++i) {
        r1 = step * r1; // turned first: no vertex of the ring is at the angle zero but the last
        r2 = step * r2;
        vertices.push_back(startPoint + r1);
        vertices.push_back(endPoint + r2);
        const quint32 n = 2 * i + 2;
        triangles.push_back({n - 2, n - 1, n % ringVertices});
        triangles.push_back({n - 1, (n + 1) % ringVertices, n % ringVertices});
    }
    if (closedStart) {
        const auto c = static_cast<quint32>(vertices.size());
        vertices.push_back(startPoint);
        for (quint32 i = 0; i < detail; ++i)
            triangles.push_back({c, 2 * i, (2 * i + 2) % ringVertices});
    }
    if (closedEnd) {
        const auto c = static_cast<quint32>(vertices.size());
        vertices.push_back(endPoint);
        for (quint32 i = 0; i < detail; ++i)
            triangles.push_back({c, (2 * i + 3) % ringVertices, 2 * i + 1});
    }
    currentStart = startPoint; // a moving group takes them on from here
    currentEnd = endPoint;
    replaceMesh(std::move(vertices), std::move(triangles));
}

} // namespace NBrenmark
