#pragma once
// Quaternions in the order w, x, y, z; the identity is (1, 0, 0, 0).

#include "maths/matrix3.h"

namespace NBrenmark {

class CQuaternion
{
public:
    double w = 1.0;
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    CQuaternion() = default;
    constexpr CQuaternion(double w, double x, double y, double z) : w(w), x(x), y(y), z(z) {}

    /// From a rotation matrix: the trace branch when trace + 1 > 0.001, else by the largest
    /// diagonal element, normalised.
    static CQuaternion fromMatrix(const C3DMatrix& matrix);
    /// \param angle  rad
    static CQuaternion fromAxisAngle(const C3DVector& axis, double angle);
    /// The turns of a box's mesh, rad: about x by angles.z, then about z by angles.x, then about y by
    /// angles.y, each axis fixed in space.
    static CQuaternion fromEuler(const C3DVector& angles);

    double norm() const;
    void normalise();
    CQuaternion conjugated() const { return CQuaternion(w, -x, -y, -z); }
    /// Hamilton product.
    CQuaternion operator*(const CQuaternion& other) const;
    /// q v q^-1, with q^-1 computed with 1/|q|^2. A quaternion of zero turns nothing.
    C3DVector rotate(const C3DVector& v) const;
    /// Angle in rad, 0 to 2 pi, about a unit axis; angle 0 about x where nothing turns.
    void toAxisAngle(C3DVector& axis, double& angle) const;
    /// The inverse of fromEuler, rad. Where x y + z w passes +-0.499, a pole: x is +-pi/2, z is 0 and y
    /// takes the rest.
    C3DVector toEuler() const;
    /// The rotation matrix of the normalised quaternion.
    C3DMatrix toMatrix() const;
};

static_assert(sizeof(CQuaternion) == 32, "arrays of quaternions are rows of four doubles");

} // namespace NBrenmark
