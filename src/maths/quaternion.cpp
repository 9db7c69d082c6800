// Turns between quaternions, matrices and angles.
#include "maths/quaternion.h"

#include <cmath>

namespace NBrenmark {

static constexpr double halfTurn = 3.14159265358979323846; // rad

CQuaternion CQuaternion::fromMatrix(const C3DMatrix& m)
{
    CQuaternion q;
    const double trace = m(0, 0) + m(1, 1) + m(2, 2);
    if (trace + 1.0 > 0.001) {
        const double s = 2.0 * std::sqrt(trace + 1.0); // 4 w
        q = CQuaternion(0.25 * s, (m(2, 1) - m(1, 2)) / s, (m(0, 2) - m(2, 0)) / s, (m(1, 0) - m(0, 1)) / s);
    }
    // Turns near half a turn: w is close to zero, so divide by the greatest of the other three.
    else if (m(0, 0) > m(1, 1) && m(0, 0) > m(2, 2)) {
        const double s = 2.0 * std::sqrt(1.0 + m(0, 0) - m(1, 1) - m(2, 2)); // 4 x
        q = CQuaternion((m(2, 1) - m(1, 2)) / s, 0.25 * s, (m(0, 1) + m(1, 0)) / s, (m(0, 2) + m(2, 0)) / s);
    }
    else if (m(1, 1) > m(2, 2)) {
        const double s = 2.0 * std::sqrt(1.0 + m(1, 1) - m(0, 0) - m(2, 2)); // 4 y
        q = CQuaternion((m(0, 2) - m(2, 0)) / s, (m(0, 1) + m(1, 0)) / s, 0.25 * s, (m(1, 2) + m(2, 1)) / s);
    }
    else {
        const double s = 2.0 * std::sqrt(1.0 + m(2, 2) - m(0, 0) - m(1, 1)); // 4 z
        q = CQuaternion((m(1, 0) - m(0, 1)) / s, (m(0, 2) + m(2, 0)) / s, (m(1, 2) + m(2, 1)) / s, 0.25 * s);
    }
    q.normalise();
    return q;
}

CQuaternion CQuaternion::fromAxisAngle(const C3DVector& axis, double angle)
{
    if (axis.length() <= zeroLength)
        return CQuaternion();
    const C3DVector v = axis.normalised() * std::sin(0.5 * angle);
    return CQuaternion(std::cos(0.5 * angle), v.x, v.y, v.z);
}

CQuaternion CQuaternion::fromEuler(const C3DVector& angles)
{
    const double c1 = std::cos(0.5 * angles.x);
    const double s1 = std::sin(0.5 * angles.x);
    const double c2 = std::cos(0.5 * angles.y);
    const double s2 = std::sin(0.5 * angles.y);
    const double c3 = std::cos(0.5 * angles.z);
    const double s3 = std::sin(0.5 * angles.z);
    return CQuaternion(c2 * c1 * c3 - s2 * s1 * s3, c2 * c1 * s3 + s2 * s1 * c3, s2 * c1 * c3 + c2 * s1 * s3,
                       c2 * s1 * c3 - s2 * c1 * s3);
}

double CQuaternion::norm() const { return std::sqrt(w * w + x * x + y * y + z * z); }

void CQuaternion::normalise()
{
    const double size = norm();
    if (size <= zeroLength)
        return;
    w /= size;
    x /= size;
    y /= size;
    z /= size;
}

CQuaternion CQuaternion::operator*(const CQuaternion& b) const
{
    return CQuaternion(w * b.w - x * b.x - y * b.y - z * b.z, w * b.x + x * b.w + y * b.z - z * b.y,
                       w * b.y - x * b.z + y * b.w + z * b.x, w * b.z + x * b.y - y * b.x + z * b.w);
}

C3DVector CQuaternion::rotate(const C3DVector& v) const
{
    const double squaredNorm = w * w + x * x + y * y + z * z;
    if (squaredNorm <= zeroLength) // no inverse, so no rotation
        return v;
    const CQuaternion turned = *this * CQuaternion(0.0, v.x, v.y, v.z) * conjugated();
    return C3DVector(turned.x, turned.y, turned.z) * (1.0 / squaredNorm);
}

void CQuaternion::toAxisAngle(C3DVector& axis, double& angle) const
{
    const C3DVector v(x, y, z);
    const double sine = v.length();
    if (sine <= zeroLength) {
        axis = C3DVector(1.0, 0.0, 0.0); // any axis does where nothing turns
        angle = 0.0;
        return;
    }
    axis = v.normalised();
    angle = 2.0 * std::atan2(sine, w); // acos(w) would lose half the digits of a small angle
}

C3DVector CQuaternion::toEuler() const
{
    CQuaternion q = *this;
    q.normalise();
    const double test = q.x * q.y + q.z * q.w;
    // Within 0.499 of a pole the outer two turns share an axis: all of it is given to the one about y.
    if (test > 0.499)
        return C3DVector(0.5 * halfTurn, 2.0 * std::atan2(q.x, q.w), 0.0);
    if (test < -0.499)
        return C3DVector(-0.5 * halfTurn, -2.0 * std::atan2(q.x, q.w), 0.0);
    const double xx = q.x * q.x;
    const double yy = q.y * q.y;
    const double zz = q.z * q.z;
    return C3DVector(std::asin(2.0 * test), std::atan2(2.0 * (q.y * q.w - q.x * q.z), 1.0 - 2.0 * (yy + zz)),
                     std::atan2(2.0 * (q.x * q.w - q.y * q.z), 1.0 - 2.0 * (xx + zz)));
}

C3DMatrix CQuaternion::toMatrix() const
{
    CQuaternion q = *this;
    q.normalise();
    C3DMatrix m;
    m(0, 0) = 1.0 - 2.0 * (q.y * q.y + q.z * q.z);
    m(0, 1) = 2.0 * (q.x * q.y - q.w * q.z);
    m(0, 2) = 2.0 * (q.x * q.z + q.w * q.y);
    m(1, 0) = 2.0 * (q.x * q.y + q.w * q.z);
    m(1, 1) = 1.0 - 2.0 * (q.x * q.x + q.z * q.z);
    m(1, 2) = 2.0 * (q.y * q.z - q.w * q.x);
    m(2, 0) = 2.0 * (q.x * q.z - q.w * q.y);
    m(2, 1) = 2.0 * (q.y * q.z + q.w * q.x);
    m(2, 2) = 1.0 - 2.0 * (q.x * q.x + q.y * q.y);
    return m;
}

} // namespace NBrenmark
