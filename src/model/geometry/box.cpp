// Makes the mesh of a box from its sides.
#include "model/geometry/box.h"

#include "maths/quaternion.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CBox::CBox(CCustomPropertyManager* propertyManager) : CGeometryGroup(propertyManager) { closed = true; }

void CBox::read(IFileVisitorReader& v) { v.readBox(*this); }

void CBox::write(IFileVisitorWriter& v) const { v.writeBox(*this); }

void CBox::rebuildMesh()
{
    static constexpr TriangleNodes sides[6][2] = {
        {{6, 3, 1}, {0, 6, 1}}, // front, +z
        {{7, 5, 6}, {7, 6, 0}}, // left, -x
        {{3, 6, 5}, {4, 3, 5}}, // bottom, -y
        {{4, 5, 7}, {2, 4, 7}}, // back, -z
        {{3, 4, 2}, {1, 3, 2}}, // right, +x
        {{2, 7, 0}, {1, 2, 0}}, // top, +y
    };
    const double w = 0.5 * width;
    const double h = 0.5 * height;
    const double l = 0.5 * length;
    const CQuaternion turn = CQuaternion::fromEuler(rotations);
    const auto corner = [&](double x, double y, double z) { return centre + turn.rotate(C3DVector(x, y, z)); };

    std::vector<C3DPoint> c{corner(-w, h, l), corner(w, h, l), corner(w, h, -l), corner(w, -h, l)};
    // The others by the edges of the box, so that its sides stay flat and parallel whatever the turn.
    const C3DVector alongX = c[0] - c[1];
    c.push_back(c[3] + (c[2] - c[1]));
    c.push_back(c[4] + alongX);
    c.push_back(c[3] + alongX);
    c.push_back(c[2] + alongX);

    std::vector<TriangleNodes> triangles;
    for (std::size_t side = 0; side < sidesEnabled.size(); ++side)
        if (sidesEnabled[side])
            triangles.insert(triangles.end(), {sides[side][0], sides[side][1]});
    replaceMesh(std::move(c), std::move(triangles));
}

} // namespace NBrenmark
