// Lengths and directions.
#include "maths/vector.h"

namespace NBrenmark {

bool fuzzyEqual(double a, double b)
{
    constexpr double zeroComponent = 1e-40;
    constexpr double relativeTolerance = 1e-12;
    if (a == b)
        return true;
    if (std::abs(a) <= zeroComponent && std::abs(b) <= zeroComponent)
        return true;
    const double ratio = b != 0.0 ? a / b : b / a; // they differ, so one of the two isn't zero
    return std::abs(ratio - 1.0) < relativeTolerance;
}

void C3DVector::normalise()
{
    const double size = length();
    if (size <= zeroLength)
        return;
    // Divided, not multiplied by 1 / size: the reciprocal of a very small length overflows.
    x /= size;
    y /= size;
    z /= size;
}

C3DVector C3DVector::normalised() const
{
    C3DVector unit = *this;
    unit.normalise();
    return unit;
}

C3DVector C3DVector::cross(const C3DVector& other) const
{
    return C3DVector(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}

C3DVector& C3DVector::operator+=(const C3DVector& other)
{
    x += other.x;
    y += other.y;
    z += other.z;
    return *this;
}

C3DVector& C3DVector::operator-=(const C3DVector& other)
{
    x -= other.x;
    y -= other.y;
    z -= other.z;
    return *this;
}

C3DVector& C3DVector::operator*=(double factor)
{
    x *= factor;
    y *= factor;
    z *= factor;
    return *this;
}

C3DVector operator+(C3DVector a, const C3DVector& b) { return a += b; }

C3DVector operator-(C3DVector a, const C3DVector& b) { return a -= b; }

C3DVector operator-(const C3DVector& a) { return C3DVector(-a.x, -a.y, -a.z); }

C3DVector operator*(C3DVector a, double factor) { return a *= factor; }

C3DVector operator*(double factor, C3DVector a) { return a *= factor; }

C3DPoint operator+(const C3DPoint& p, const C3DVector& v) { return C3DPoint(p.toVector() + v); }

C3DPoint operator-(const C3DPoint& p, const C3DVector& v) { return C3DPoint(p.toVector() - v); }

C3DVector operator-(const C3DPoint& a, const C3DPoint& b) { return a.toVector() - b.toVector(); }

bool operator==(const C3DPoint& a, const C3DPoint& b)
{
    return fuzzyEqual(a.x, b.x) && fuzzyEqual(a.y, b.y) && fuzzyEqual(a.z, b.z);
}

bool operator!=(const C3DPoint& a, const C3DPoint& b) { return !(a == b); }

bool operator==(const C3DVector& a, const C3DVector& b)
{
    return fuzzyEqual(a.x, b.x) && fuzzyEqual(a.y, b.y) && fuzzyEqual(a.z, b.z);
}

bool operator!=(const C3DVector& a, const C3DVector& b) { return !(a == b); }

} // namespace NBrenmark
