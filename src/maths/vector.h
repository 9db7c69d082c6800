#pragma once
// Points and vectors: three doubles x, y, z. Two types, because a configuration tells them apart;
// arrays of either are contiguous rows of three doubles.

#include <cmath>

namespace NBrenmark {

/// Lengths and squared lengths within this count as zero.
constexpr double zeroLength = 1e-25;

/// The fuzzy test of two numbers: identical, or both within 1e-40 of zero, or their ratio within
/// 1e-12 of 1 (the divisor being the one that isn't zero).
bool fuzzyEqual(double a, double b);

class C3DVector
{
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    C3DVector() = default;
    constexpr C3DVector(double x, double y, double z) : x(x), y(y), z(z) {}

    double squaredLength() const { return x * x + y * y + z * z; }
    double length() const { return std::sqrt(squaredLength()); }
    /// A vector of length zero stays as it is.
    void normalise();
    C3DVector normalised() const;
    double dot(const C3DVector& other) const { return x * other.x + y * other.y + z * other.z; }
    C3DVector cross(const C3DVector& other) const;

    C3DVector& operator+=(const C3DVector& other);
    C3DVector& operator-=(const C3DVector& other);
    C3DVector& operator*=(double factor);
};

class C3DPoint
{
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    C3DPoint() = default;
    constexpr C3DPoint(double x, double y, double z) : x(x), y(y), z(z) {}
    explicit constexpr C3DPoint(const C3DVector& v) : x(v.x), y(v.y), z(v.z) {}

    /// The vector from the origin.
    C3DVector toVector() const { return C3DVector(x, y, z); }
};

static_assert(sizeof(C3DVector) == 24 && sizeof(C3DPoint) == 24, "arrays of points are rows of three doubles");

C3DVector operator+(C3DVector a, const C3DVector& b);
C3DVector operator-(C3DVector a, const C3DVector& b);
C3DVector operator-(const C3DVector& a);
C3DVector operator*(C3DVector a, double factor);
C3DVector operator*(double factor, C3DVector a);
C3DPoint operator+(const C3DPoint& p, const C3DVector& v);
C3DPoint operator-(const C3DPoint& p, const C3DVector& v);
C3DVector operator-(const C3DPoint& a, const C3DPoint& b);

/// Equal when fuzzyEqual holds for each component.
bool operator==(const C3DPoint& a, const C3DPoint& b);
bool operator!=(const C3DPoint& a, const C3DPoint& b);
bool operator==(const C3DVector& a, const C3DVector& b);
bool operator!=(const C3DVector& a, const C3DVector& b);

} // namespace NBrenmark
