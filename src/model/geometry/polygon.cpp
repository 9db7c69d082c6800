// Makes the mesh of a flat face.
#include "model/geometry/polygon.h"

#include "maths/quaternion.h"
#include "model/geometry/ring.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CPolygon::read(IFileVisitorReader& v) { v.readPolygon(*this); }

void CPolygon::write(IFileVisitorWriter& v) const { v.writePolygon(*this); }

std::vector<C3DPoint> CPolygon::rectangleCorners() const
{
    const CQuaternion turn = CQuaternion::fromAxisAngle(C3DVector(1, 0, 0), rotations.x) *
                             CQuaternion::fromAxisAngle(C3DVector(0, 1, 0), rotations.y) *
                             CQuaternion::fromAxisAngle(C3DVector(0, 0, 1), rotations.z);
    const auto corner = [&](double side1, double side2) {
        return centre + turn.rotate(C3DVector(0.5 * side1, 0.5 * side2, 0.0));
    };
    return {corner(-lengthSide1, -lengthSide2), corner(-lengthSide1, lengthSide2), corner(lengthSide1, lengthSide2),
            corner(lengthSide1, -lengthSide2)};
}

std::vector<C3DPoint> CPolygon::regularCorners()
{
    normal.normalise();
    C3DTransform turn;
    turn.rotate(normal, rotation);
    const C3DTransform step = ringStep(normal, static_cast<quint32>(edges));
    C3DVector arm = radius * (turn * radialDirection(normal));
    std::vector<C3DPoint> corners;
    corners.reserve(static_cast<std::size_t>(edges));
    for (qint32 i = 0; i < edges; ++i) {
        corners.push_back(centre + arm);
        arm = step * arm;
    }
    return corners;
}

/// Triangles around a vertex 0, the corners being the vertices from 1 on.
static std::vector<TriangleNodes> fan(quint32 corners)
{
    std::vector<TriangleNodes> triangles;
    triangles.reserve(corners);
    for (quint32 i = 1; i < corners; ++i)
        triangles.push_back({0, i, i + 1});
    triangles.push_back({0, corners, 1});
    return triangles;
}

void CPolygon::rebuildMesh()
{
    const bool isRectangle = edges == 4;
    if (edges < 3 || (!isRectangle && normal.length() <= zeroLength) || !canHold(static_cast<quint64>(edges)))
        return;
    vertices = isRectangle ? rectangleCorners() : regularCorners();
    if (isRectangle)
        normal = (vertices[0] - vertices[2]).cross(vertices[1] - vertices[2]);

    if (edges == 3)
        replaceMesh(vertices, {{0, 1, 2}});
    else if (isRectangle)
        replaceMesh(vertices, {{0, 1, 2}, {0, 2, 3}});
    else {
        std::vector<C3DPoint> mesh{centre};
        mesh.insert(mesh.end(), vertices.begin(), vertices.end());
        replaceMesh(std::move(mesh), fan(static_cast<quint32>(edges)));
    }
}

} // namespace NBrenmark
