// Quaternions, matrices and transforms against the closed formulas of rotations, and against each other.
#include "maths/quaternion.h"
#include "maths/transform.h"

#include <gtest/gtest.h>

namespace NBrenmark {

constexpr double pi = 3.14159265358979323846;

static void expectNear(const C3DVector& a, const C3DVector& b, double tolerance = 1e-14)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

static void expectNear(const CQuaternion& a, const CQuaternion& b)
{
    const double sign = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z < 0.0 ? -1.0 : 1.0; // q and -q turn alike
    EXPECT_NEAR(a.w, sign * b.w, 1e-14);
    EXPECT_NEAR(a.x, sign * b.x, 1e-14);
    EXPECT_NEAR(a.y, sign * b.y, 1e-14);
    EXPECT_NEAR(a.z, sign * b.z, 1e-14);
}

/// v turned about a unit axis: v cos a + (u x v) sin a + u (u.v)(1 - cos a), Rodrigues' formula for vectors.
static C3DVector turned(const C3DVector& v, const C3DVector& axis, double angle)
{
    const C3DVector u = axis.normalised();
    return v * std::cos(angle) + u.cross(v) * std::sin(angle) + u * (u.dot(v) * (1.0 - std::cos(angle)));
}

struct SRotation
{
    C3DVector axis;
    double angle;
};

// Each branch of fromMatrix, small angles, and half turns about each axis and between two of them.
const SRotation rotations[] = {
    {{0, 0, 1}, pi / 2}, {{1, 0, 0}, pi},   {{0, 1, 0}, pi},      {{0, 0, 1}, pi},         {{1, 1, 0}, pi},
    {{1, 2, -3}, 0.7},   {{-2, 1, 5}, 3.1}, {{5, 1, -1}, 3.1415}, {{0.1, 9, 0.2}, 3.1415}, {{1, -1, 1}, 1e-9},
};

TEST(Rotations, quaternionMatrixAndTransformTurnAVectorAlike)
{
    const C3DVector v(0.3, -1.2, 2.5);
    for (const SRotation& r : rotations) {
        SCOPED_TRACE(testing::Message() << "axis " << r.axis.x << " " << r.axis.y << " " << r.axis.z);
        const C3DVector expected = turned(v, r.axis, r.angle);
        const CQuaternion q = CQuaternion::fromAxisAngle(r.axis, r.angle);
        EXPECT_NEAR(q.norm(), 1.0, 1e-15);
        expectNear(q.rotate(v), expected);
        expectNear(q.toMatrix() * v, expected);
        expectNear(q.toMatrix().transposed() * expected, v);
        C3DTransform t;
        t.rotate(r.axis, r.angle);
        expectNear(t * v, expected);
    }
}

TEST(Rotations, survivesTheWayThroughMatrixAxisAndProduct)
{
    for (const SRotation& r : rotations) {
        const CQuaternion q = CQuaternion::fromAxisAngle(r.axis, r.angle);
        expectNear(CQuaternion::fromMatrix(q.toMatrix()), q);
        C3DVector axis;
        double angle = 0.0;
        q.toAxisAngle(axis, angle);
        EXPECT_NEAR(angle, r.angle, 1e-15); // not 1e-8, which an arc cosine would leave of the last rotation
        expectNear(axis, r.axis.normalised());
        const CQuaternion half = CQuaternion::fromAxisAngle(r.axis, r.angle / 2);
        expectNear(half * half, q);
        expectNear(q * q.conjugated(), CQuaternion());
    }
}

TEST(Quaternion, rotatesByItsInverseWhateverItsNorm)
{
    const CQuaternion q = CQuaternion::fromAxisAngle(C3DVector(1, 2, 3), 1.1);
    const CQuaternion longer(3 * q.w, 3 * q.x, 3 * q.y, 3 * q.z);
    const C3DVector v(1, -2, 0.5);
    expectNear(longer.rotate(v), q.rotate(v));
    expectNear(CQuaternion(0, 0, 0, 0).rotate(v), v, 0.0);
}

TEST(Quaternion, productFollowsHamilton)
{
    const CQuaternion i(0, 1, 0, 0);
    const CQuaternion j(0, 0, 1, 0);
    const CQuaternion k(0, 0, 0, 1);
    expectNear(i * j, k);
    expectNear(j * k, i);
    expectNear(k * i, j);
    EXPECT_EQ((i * i).w, -1.0);
    EXPECT_EQ((j * i).z, -1.0);
}

TEST(Quaternion, nothingTurnsWithoutAxisOrAngle)
{
    expectNear(CQuaternion::fromAxisAngle(C3DVector(1e-26, 0, 0), 2.0), CQuaternion());
    C3DVector axis;
    double angle = 5.0;
    CQuaternion().toAxisAngle(axis, angle);
    EXPECT_EQ(angle, 0.0);
    EXPECT_EQ(axis.length(), 1.0);
    CQuaternion zero(0, 0, 0, 0);
    zero.normalise();
    EXPECT_EQ(zero.norm(), 0.0);
}

// Turning about x by angles.z, then about z by angles.x, then about y by angles.y.
TEST(Euler, isTheProductOfThreeTurns)
{
    for (const C3DVector& angles : {C3DVector(0.3, -0.8, 1.9), C3DVector(-1.2, 2.5, 0.1), C3DVector(0, 0, 0)}) {
        const CQuaternion product = CQuaternion::fromAxisAngle(C3DVector(0, 1, 0), angles.y) *
                                    CQuaternion::fromAxisAngle(C3DVector(0, 0, 1), angles.x) *
                                    CQuaternion::fromAxisAngle(C3DVector(1, 0, 0), angles.z);
        const CQuaternion q = CQuaternion::fromEuler(angles);
        expectNear(q, product);
        expectNear(q.toEuler(), angles);
        expectNear(CQuaternion(2 * q.w, 2 * q.x, 2 * q.y, 2 * q.z).toEuler(), angles);
    }
}

TEST(Euler, polesBeginWhereTheTestValuePassesItsLimit)
{
    // The test value is sin(angles.x) / 2: 0.499 is reached at 86.4 degrees.
    const double limit = std::asin(2 * 0.499);
    for (const double sign : {1.0, -1.0}) {
        expectNear(CQuaternion::fromEuler(C3DVector(sign * (limit - 1e-6), 0.4, 0.2)).toEuler(),
                   C3DVector(sign * (limit - 1e-6), 0.4, 0.2), 1e-12);
        const C3DVector beyond = CQuaternion::fromEuler(C3DVector(sign * (limit + 1e-6), 0.4, 0.2)).toEuler();
        EXPECT_DOUBLE_EQ(beyond.x, sign * pi / 2);
        EXPECT_EQ(beyond.z, 0.0);
        // At the pole itself only y + z (or y - z) can be told, and y takes it.
        const CQuaternion pole = CQuaternion::fromEuler(C3DVector(sign * pi / 2, 0.4, 0.2));
        expectNear(CQuaternion::fromEuler(pole.toEuler()), pole);
        EXPECT_NEAR(pole.toEuler().y, 0.4 + sign * 0.2, 1e-12);
    }
}

TEST(Matrix, orthonormalIsTestedToOneRoundingStep)
{
    EXPECT_TRUE(C3DMatrix().isOrthonormal());
    C3DMatrix quarterTurn;
    quarterTurn(0, 0) = quarterTurn(1, 1) = 0.0;
    quarterTurn(0, 1) = -1.0;
    quarterTurn(1, 0) = 1.0;
    EXPECT_TRUE(quarterTurn.isOrthonormal());
    C3DMatrix m;
    m(0, 0) = 1.0 + 2.220446049250313e-16; // its square is 4.4e-16 from 1
    EXPECT_FALSE(m.isOrthonormal());
    m(0, 0) = std::nan("");
    EXPECT_FALSE(m.isOrthonormal());
}

TEST(Matrix, multipliesRowsByColumns)
{
    C3DMatrix a;
    C3DMatrix b;
    for (int i = 0; i < 9; ++i) {
        a.data()[i] = i + 1;
        b.data()[i] = 9 - i;
    }
    const double product[] = {30, 24, 18, 84, 69, 54, 138, 114, 90}; // by hand
    const C3DMatrix c = a * b;
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(c.data()[i], product[i]);
    EXPECT_EQ(a * C3DVector(1, 0, -1), C3DVector(-2, -2, -2));
}

TEST(Transform, stepsMultiplyOnTheRight)
{
    C3DTransform t;
    t.translate(C3DVector(10, 0, 0));
    t.rotate(C3DVector(0, 0, 2), pi / 2); // the axis' length doesn't matter
    t.translate(C3DVector(1, 0, 0));
    // The last step moves the point first: (1, 0, 0), turned (0, 1, 0), moved (10, 1, 0).
    expectNear((t * C3DPoint()).toVector(), C3DVector(10, 1, 0));
    expectNear(t * C3DVector(1, 0, 0), C3DVector(0, 1, 0)); // a vector isn't moved
    EXPECT_DOUBLE_EQ(t(0, 3), 10.0);
    EXPECT_DOUBLE_EQ(t(1, 3), 1.0);
}

TEST(Transform, turnsAboutALineThatStays)
{
    C3DTransform t;
    const C3DPoint start(1, 2, 0);
    const C3DPoint end(1, 2, 4);
    t.rotateAboutLine(start, end, pi / 2);
    expectNear((t * start).toVector(), start.toVector());
    expectNear((t * end).toVector(), end.toVector());
    expectNear((t * C3DPoint(2, 2, 1)).toVector(), C3DVector(1, 3, 1));
}

TEST(Transform, doesNotTurnWithoutAxisOrAngle)
{
    C3DTransform t;
    t.rotate(C3DVector(1e-25, 0, 0), 1.0);
    t.rotate(C3DVector(1, 0, 0), -1e-25);
    t.rotateAboutLine(C3DPoint(1, 1, 1), C3DPoint(1, 1, 1), 1.0);
    EXPECT_TRUE(t.isIdentity());
    t.rotate(C3DVector(1, 0, 0), 1e-24);
    EXPECT_FALSE(t.isIdentity());
}

TEST(Transform, invertsByTheAdjugate)
{
    // An arbitrary matrix with a projective row; its determinant, -109, expanded by hand along the first row.
    const double values[] = {2, 0, 1, 3, -1, 4, 2, 0, 5, 1, -3, 2, 0, 1, 0, 2};
    C3DTransform t;
    std::copy(values, values + 16, t.data());
    EXPECT_NEAR(t.determinant(), -109.0, 1e-12);
    const C3DTransform product = t * t.inverse();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(product(row, column), row == column ? 1.0 : 0.0, 1e-14);

    C3DTransform singular;
    singular.translate(C3DVector(1, 2, 3));
    singular(1, 1) = 0.0;
    EXPECT_EQ(singular.determinant(), 0.0);
    EXPECT_TRUE(singular.inverse().isIdentity());
}

TEST(Transform, textHasFourRowsOfSixDigits)
{
    C3DTransform t;
    t.translate(C3DVector(0.5, -1234567.0, 1.0 / 3.0));
    EXPECT_EQ(t.toText().toStdString(), "[1 0 0 0.5]\n[0 1 0 -1.23457e+06]\n[0 0 1 0.333333]\n[0 0 0 1]");
    t.setIdentity();
    EXPECT_TRUE(t.isIdentity());
}

} // namespace NBrenmark
