#pragma once
// 4 x 4 transforms of doubles, row-major, for column vectors: the translation is column 3.

#include "maths/vector.h"

#include <QString>
#include <array>

namespace NBrenmark {

class C3DTransform
{
public:
    /// The identity.
    C3DTransform();

    double& operator()(int row, int column) { return elements[4 * row + column]; }
    double operator()(int row, int column) const { return elements[4 * row + column]; }
    double* data() { return elements.data(); }
    const double* data() const { return elements.data(); }

    void setIdentity();
    bool isIdentity() const;
    /// Multiplies other on the right.
    C3DTransform operator*(const C3DTransform& other) const;
    C3DPoint operator*(const C3DPoint& p) const;
    /// Rotates without translating.
    C3DVector operator*(const C3DVector& v) const;

    /// Multiplies by a translation on the right: it is the first to move a point.
    void translate(const C3DVector& by);
    /// Multiplies by a rotation on the right.
    /// Rodrigues' formula, angle in rad; no change when the axis' length or the angle lies within +-1e-25.
    void rotate(const C3DVector& axis, double angle);
    /// Multiplies by a rotation about the line through two points on the right, rad.
    void rotateAboutLine(const C3DPoint& start, const C3DPoint& end, double angle);
    /// By cofactors.
    double determinant() const;
    /// Adjugate over determinant; the identity for a matrix whose determinant is exactly 0.
    C3DTransform inverse() const;
    /// Four rows of four numbers in square brackets, precision 6: "[1 0 0 0.5]" is a row.
    QString toText() const;

private:
    std::array<double, 16> elements;
};

} // namespace NBrenmark
