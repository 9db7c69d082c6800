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
    /// Rotations about x, y and z, rad; the inverse of toEuler away from its singular poles.
    static CQuaternion fromEuler(const C3DVector& angles);

    double norm() const;
    void normalise();
    CQuaternion conjugated() const { return CQuaternion(w, -x, -y, -z); }
    /// Hamilton product.
    CQuaternion operator*(const CQuaternion& other) const;
    /// q v q^-1, with q^-1 computed with 1/|q|^2.
    C3DVector rotate(const C3DVector& v) const;
    void toAxisAngle(C3DVector& axis, double& angle) const;
    /// rad; singular poles are taken where the test value passes +-0.499.
    C3DVector toEuler() const;
    C3DMatrix toMatrix() const;
};

static_assert(sizeof(CQuaternion) == 32, "arrays of quaternions are rows of four doubles");

} // namespace NBrenmark
