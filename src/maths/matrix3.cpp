// Products of matrices, written out: the order of the sums is part of the results.
#include "maths/matrix3.h"

namespace NBrenmark {

C3DMatrix::C3DMatrix() : elements{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0} {}

C3DMatrix C3DMatrix::transposed() const
{
    C3DMatrix result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            result(row, column) = (*this)(column, row);
    return result;
}

C3DVector C3DMatrix::operator*(const C3DVector& v) const
{
    const C3DMatrix& m = *this;
    return C3DVector(m(0, 0) * v.x + m(0, 1) * v.y + m(0, 2) * v.z, m(1, 0) * v.x + m(1, 1) * v.y + m(1, 2) * v.z,
                     m(2, 0) * v.x + m(2, 1) * v.y + m(2, 2) * v.z);
}

C3DMatrix C3DMatrix::operator*(const C3DMatrix& other) const
{
    C3DMatrix result;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            result(row, column) = (*this)(row, 0) * other(0, column) + (*this)(row, 1) * other(1, column) +
                                  (*this)(row, 2) * other(2, column);
    return result;
}

bool C3DMatrix::isOrthonormal() const
{
    constexpr double tolerance = 2.220446049250313e-16;
    const C3DMatrix product = *this * transposed();
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const double difference = std::abs(product(row, column) - (row == column ? 1.0 : 0.0));
            if (!(difference <= tolerance)) // so that a matrix with a NaN isn't orthonormal
                return false;
        }
    }
    return true;
}

} // namespace NBrenmark
