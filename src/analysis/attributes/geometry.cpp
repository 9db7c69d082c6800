// The formulas for geometry. A row is a triangle; what belongs to a whole group is the same for all of its triangles.
#include "analysis/attributes/column_filling.h"
#include "analysis/attributes/primary_attributes.h"

#include "maths/matrix3.h"
#include "model/geometry/geometry_group.h"

#include <limits>

namespace NBrenmark::NAttributes {

/// Files of timesteps without forces of geometry have zeros in their place.
static bool holdsForces(const CGeometryGroup& group)
{
    return (group.dataMask & eTriangleForces) != 0 && group.triangleForces.size() >= group.triangleNodes.size();
}

// ---------------------------------------------------------------- the mesh

/// The centre of the triangle, m.
bool CAttributePosition::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return filledFrom(group.triangleCentres, rows, out);
}

/// The first corner, m; no number for a corner that isn't there.
bool CAttributeNode::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&group](quint32 triangle) {
        const quint32 corner = group.triangleNodes[triangle][0];
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        return corner < group.coords.size() ? group.coords[corner] : C3DPoint(none, none, none);
    });
}

bool CAttributeSurfaceNormal::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return filledFrom(group.triangleNormals, rows, out);
}

bool CAttributeId::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return filledFrom(group.triangleIds, rows, out);
}

// ---------------------------------------------------------------- the group

bool CAttributeCentreOfMass::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&group](quint32) { return group.centreOfMass; });
}

/// Of the group's transform, from the mesh as it was made.
bool CAttributeOrientation::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    C3DMatrix rotation;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            rotation(row, column) = group.transform(row, column);
    const CQuaternion orientation = CQuaternion::fromMatrix(rotation);
    return filled(rows, out, [&orientation](quint32) { return orientation; });
}

/// The sum of the rotations that act on the group, rad/s.
bool CAttributeAngularVelocity::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    C3DVector total;
    for (const CAngVelAndPos& rotation : group.motionHistory)
        total += rotation.angularVelocity;
    return filled(rows, out, [&total](quint32) { return total; });
}

/// At the centre of the triangle, m/s: v + sum of w x (centre - p) over the rotations, w about p, of a rigid body.
/// Source: Goldstein, Classical Mechanics, 2nd edition, section 4-9.
bool CAttributeVelocity::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return group.triangleCentres.size() >= group.triangleNodes.size() && filled(rows, out, [&group](quint32 triangle) {
               C3DVector velocity = group.velocity;
               for (const CAngVelAndPos& rotation : group.motionHistory)
                   velocity += rotation.angularVelocity.cross(group.triangleCentres[triangle] - rotation.pointOfAction);
               return velocity;
           });
}

// ---------------------------------------------------------------- forces

bool CAttributeTotalForce::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return holdsForces(group) && filled(rows, out, [&group](quint32 triangle) {
               const TriangleForce& record = group.triangleForces[triangle];
               return C3DVector(record[0], record[1], record[2]);
           });
}

bool CAttributeTorque::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return holdsForces(group) && filled(rows, out, [&group](quint32 triangle) {
               const TriangleForce& record = group.triangleForces[triangle];
               return C3DVector(record[3], record[4], record[5]);
           });
}

bool CAttributeCompressiveForce::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return holdsForces(group) &&
           filled(rows, out, [&group](quint32 triangle) { return group.triangleForces[triangle][6]; });
}

/// Compressive force by area, Pa; no number for a triangle without force and area.
bool CAttributePressure::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return holdsForces(group) && group.triangleAreas.size() >= group.triangleNodes.size() &&
           filled(rows, out, [&group](quint32 triangle) {
               return group.triangleForces[triangle][6] / group.triangleAreas[triangle];
           });
}

/// Total force by area, Pa: the traction, which sums up over a selection as a vector.
bool CAttributePressureSelection::read(const CGeometryGroup& group, const SAttributeRows& rows, double* out) const
{
    return holdsForces(group) && group.triangleAreas.size() >= group.triangleNodes.size() &&
           filled(rows, out, [&group](quint32 triangle) {
               const TriangleForce& record = group.triangleForces[triangle];
               const double area = group.triangleAreas[triangle];
               return C3DVector(record[0] / area, record[1] / area, record[2] / area);
           });
}

} // namespace NBrenmark::NAttributes
