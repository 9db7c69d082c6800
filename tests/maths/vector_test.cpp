#include "maths/vector.h"

#include <gtest/gtest.h>
#include <limits>

namespace NBrenmark {

struct SFuzzyCase
{
    double a;
    double b;
    bool equal;
};

const SFuzzyCase fuzzyCases[] = {
    {1.0, 1.0, true},
    {0.0, -0.0, true},
    {1e-40, -1e-40, true},    // both within the zero of components, both borders in
    {1.1e-40, 0.0, false},    // one of them outside of it
    {1.0, 1.0 + 9e-13, true}, // relative difference below 1e-12
    {1.0, 1.0 + 2e-12, false},
    {1e200, 1e200 * (1.0 + 5e-13), true}, // relative, so size doesn't matter
    {1e-30, 1e-30 * (1.0 + 5e-12), false},
    {2.0, -2.0, false},
    {0.0, 5.0, false}, // the divisor is the one that isn't zero
    {5.0, 0.0, false},
    {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(), true},
    {std::numeric_limits<double>::quiet_NaN(), 1.0, false},
};

TEST(FuzzyEqual, holdsForIdenticalTinyAndCloseNumbers)
{
    for (const SFuzzyCase& c : fuzzyCases) {
        EXPECT_EQ(fuzzyEqual(c.a, c.b), c.equal) << c.a << " and " << c.b;
        EXPECT_EQ(C3DPoint(1.0, 2.0, c.a) == C3DPoint(1.0, 2.0, c.b), c.equal) << c.a << " and " << c.b;
        EXPECT_EQ(C3DVector(c.a, 2.0, 3.0) != C3DVector(c.b, 2.0, 3.0), !c.equal) << c.a << " and " << c.b;
    }
}

TEST(Vector, normalisingLeavesWhatHasNoLength)
{
    struct SCase
    {
        C3DVector vector;
        C3DVector unit;
    };
    const SCase cases[] = {
        {{3.0, 0.0, 4.0}, {0.6, 0.0, 0.8}},
        {{0.0, -1e-20, 0.0}, {0.0, -1.0, 0.0}}, // short, yet no zero: only its square would be one
        {{1e-25, 0.0, 0.0}, {1e-25, 0.0, 0.0}},
        {{0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}},
    };
    for (const SCase& c : cases) {
        const C3DVector unit = c.vector.normalised();
        EXPECT_DOUBLE_EQ(unit.x, c.unit.x);
        EXPECT_DOUBLE_EQ(unit.y, c.unit.y);
        EXPECT_DOUBLE_EQ(unit.z, c.unit.z);
    }
}

TEST(Vector, crossIsRightHandedAndPerpendicular)
{
    EXPECT_EQ(C3DVector(1, 0, 0).cross(C3DVector(0, 1, 0)), C3DVector(0, 0, 1));
    const C3DVector a(1.5, -2.0, 0.25);
    const C3DVector b(-0.5, 3.0, 4.0);
    const C3DVector c = a.cross(b);
    EXPECT_NEAR(c.dot(a), 0.0, 1e-14);
    EXPECT_NEAR(c.dot(b), 0.0, 1e-14);
    // |a x b|^2 = |a|^2 |b|^2 - (a.b)^2
    EXPECT_NEAR(c.squaredLength(), a.squaredLength() * b.squaredLength() - a.dot(b) * a.dot(b), 1e-11);
}

TEST(Vector, differenceOfPointsAddsUpAgain)
{
    const C3DPoint p(1.0, 2.0, 3.0);
    const C3DPoint q(-4.0, 0.5, 8.0);
    EXPECT_EQ(q + (p - q), p);
    EXPECT_EQ(p - (p - q), q);
    EXPECT_EQ(-(p - q) * 2.0, 2.0 * (q - p));
}

} // namespace NBrenmark
