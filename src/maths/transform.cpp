// Products, inverses and turns about lines.
#include "maths/transform.h"

namespace NBrenmark {

static constexpr std::array<double, 16> identity{1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
                                                 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};

/// The determinant of the 3 x 3 matrix that is left when a row and a column are taken out.
static double minorOf(const C3DTransform& t, int row, int column)
{
    int rows[3];
    int columns[3];
    for (int i = 0; i < 3; ++i) {
        rows[i] = i < row ? i : i + 1;
        columns[i] = i < column ? i : i + 1;
    }
    const auto at = [&](int i, int j) { return t(rows[i], columns[j]); };
    return at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1)) -
           at(0, 1) * (at(1, 0) * at(2, 2) - at(1, 2) * at(2, 0)) +
           at(0, 2) * (at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0));
}

static double cofactor(const C3DTransform& t, int row, int column)
{
    const double value = minorOf(t, row, column);
    return (row + column) % 2 == 0 ? value : -value;
}

C3DTransform::C3DTransform() : elements(identity) {}

void C3DTransform::setIdentity() { elements = identity; }

bool C3DTransform::isIdentity() const { return elements == identity; }

C3DTransform C3DTransform::operator*(const C3DTransform& other) const
{
    C3DTransform result;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += (*this)(row, k) * other(k, column);
            result(row, column) = sum;
        }
    }
    return result;
}

C3DPoint C3DTransform::operator*(const C3DPoint& p) const
{
    const C3DTransform& t = *this;
    const C3DVector turned = t * p.toVector();
    return C3DPoint(turned.x + t(0, 3), turned.y + t(1, 3), turned.z + t(2, 3));
}

C3DVector C3DTransform::operator*(const C3DVector& v) const
{
    const C3DTransform& t = *this;
    return C3DVector(t(0, 0) * v.x + t(0, 1) * v.y + t(0, 2) * v.z, t(1, 0) * v.x + t(1, 1) * v.y + t(1, 2) * v.z,
                     t(2, 0) * v.x + t(2, 1) * v.y + t(2, 2) * v.z);
}

void C3DTransform::translate(const C3DVector& by)
{
    C3DTransform step;
    step(0, 3) = by.x;
    step(1, 3) = by.y;
    step(2, 3) = by.z;
    *this = *this * step;
}

void C3DTransform::rotate(const C3DVector& axis, double angle)
{
    if (axis.length() <= zeroLength || std::abs(angle) <= zeroLength)
        return;
    const C3DVector u = axis.normalised();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double v = 1.0 - c;

    C3DTransform step;
    step(0, 0) = c + u.x * u.x * v;
    step(0, 1) = u.x * u.y * v - u.z * s;
    step(0, 2) = u.x * u.z * v + u.y * s;
    step(1, 0) = u.y * u.x * v + u.z * s;
    step(1, 1) = c + u.y * u.y * v;
    step(1, 2) = u.y * u.z * v - u.x * s;
    step(2, 0) = u.z * u.x * v - u.y * s;
    step(2, 1) = u.z * u.y * v + u.x * s;
    step(2, 2) = c + u.z * u.z * v;
    *this = *this * step;
}

void C3DTransform::rotateAboutLine(const C3DPoint& start, const C3DPoint& end, double angle)
{
    translate(start.toVector());
    rotate(end - start, angle);
    translate(-start.toVector());
}

double C3DTransform::determinant() const
{
    double sum = 0.0;
    for (int column = 0; column < 4; ++column)
        sum += (*this)(0, column) * cofactor(*this, 0, column);
    return sum;
}

C3DTransform C3DTransform::inverse() const
{
    C3DTransform result;
    const double divisor = determinant();
    if (divisor == 0.0)
        return result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result(row, column) = cofactor(*this, column, row) / divisor;
    return result;
}

QString C3DTransform::toText() const
{
    QString text;
    for (int row = 0; row < 4; ++row) {
        if (row > 0)
            text += QLatin1Char('\n');
        for (int column = 0; column < 4; ++column)
            text += QLatin1String(column == 0 ? "[" : " ") + QString::number((*this)(row, column), 'g', 6);
        text += QLatin1Char(']');
    }
    return text;
}

} // namespace NBrenmark
