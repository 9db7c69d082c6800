#pragma once
// 3 x 3 matrices of doubles, row-major.

#include "maths/vector.h"

#include <array>

namespace NBrenmark {

class C3DMatrix
{
public:
    /// The identity.
    C3DMatrix();

    double& operator()(int row, int column) { return elements[3 * row + column]; }
    double operator()(int row, int column) const { return elements[3 * row + column]; }
    double* data() { return elements.data(); }
    const double* data() const { return elements.data(); }

    C3DMatrix transposed() const;
    C3DVector operator*(const C3DVector& v) const;
    C3DMatrix operator*(const C3DMatrix& other) const;
    /// True when M M^T is the identity, per element within 2.220446049250313e-16.
    bool isOrthonormal() const;

private:
    std::array<double, 9> elements;
};

} // namespace NBrenmark
