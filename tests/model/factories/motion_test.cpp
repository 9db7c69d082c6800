// Velocities, angular velocities and orientations of new particles, worked out by hand from the numbers
// that the random source gives after the seed 1.
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_velocity.h"
#include "platform/random.h"

#include <gtest/gtest.h>

namespace NBrenmark {

constexpr double pi = 3.14159265358979323846;

// ISO C's example generator seeded with 1, as shares of 32767.
constexpr double u1 = 16838 / 32767.0;
constexpr double u2 = 5758 / 32767.0;
constexpr double u3 = 10113 / 32767.0;
constexpr double u4 = 17515 / 32767.0;
constexpr double u5 = 31051 / 32767.0;
constexpr int sixth = 5627;

static void expectNear(const C3DVector& a, const C3DVector& b)
{
    EXPECT_NEAR(a.x, b.x, 1e-13);
    EXPECT_NEAR(a.y, b.y, 1e-13);
    EXPECT_NEAR(a.z, b.z, 1e-13);
}

/// Rodrigues' formula about a unit axis.
static C3DVector turned(const C3DVector& v, const C3DVector& u, double angle)
{
    return v * std::cos(angle) + u.cross(v) * std::sin(angle) + u * (u.dot(v) * (1.0 - std::cos(angle)));
}

struct SLinearCase
{
    C3DVector start, end, expected;
};

/// Of the first draw after the seed 1, and of no other.
template <class TLinear>
static void expectLinear(std::initializer_list<SLinearCase> cases)
{
    for (const SLinearCase& c : cases) {
        TLinear velocity;
        velocity.startVelocity = c.start;
        velocity.endVelocity = c.end;
        seedRandom(1);
        expectNear(velocity.sample(), c.expected);
        EXPECT_EQ(randomNumber(), 5758);
    }
}

TEST(FactoryVelocity, linearLiesBetweenTheEnds)
{
    expectLinear<CLinearFactoryVelocity>({
        {{1, 2, 3}, {3, 2, -1}, {1 + 2 * u1, 2, 3 - 4 * u1}},
        {{1, 2, 3}, {0, 0, 0}, {u1, 2 * u1, 3 * u1}},
        {{0, 0, 0}, {3, 2, -1}, {3 * u1, 2 * u1, -u1}},
        {{1, 2, 3}, {0, 1e-26, 0}, {u1, 2 * u1, 3 * u1}}, // so short that it counts as zero
        {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
    });
}

TEST(FactoryAngVel, linearTurnsAndGrowsByOneShare)
{
    const double quarter = 0.5 * pi * u1;
    expectLinear<CLinearFactoryAngVel>({
        {{1, 2, 3}, {0, 0, 0}, {u1, 2 * u1, 3 * u1}},
        {{0, 0, 0}, {3, 2, -1}, {3 * u1, 2 * u1, -u1}},
        // A right angle from x to z: as long as the start, and turned by the share from the end.
        {{0, 0, 2}, {3, 0, 0}, {2 * u1 * std::cos(quarter), 0, 2 * u1 * std::sin(quarter)}},
        {{0.2, 0.4, 0.6}, {0.1, 0.2, 0.3}, {0.2 * u1, 0.4 * u1, 0.6 * u1}}, // parallel: nothing to turn about
    });
}

template <class TRandom>
static void expectRandomDirection()
{
    TRandom velocity;
    velocity.magnitude.min = 2.0;
    velocity.magnitude.max = 6.0;
    // z, y, x on -1 to 1, then the magnitude.
    const C3DVector drawn(2 * u3 - 1, 2 * u2 - 1, 2 * u1 - 1);
    seedRandom(1);
    expectNear(velocity.sample(),
               drawn * ((2.0 + 4.0 * u4) / std::sqrt(drawn.x * drawn.x + drawn.y * drawn.y + drawn.z * drawn.z)));
    // By symmetry the mean is zero, and every length lies within the limits.
    C3DVector sum;
    constexpr int draws = 50000;
    for (int i = 0; i < draws; ++i) {
        const C3DVector sample = velocity.sample();
        sum += sample;
        ASSERT_GT(sample.length(), 2.0 - 1e-12);
        ASSERT_LT(sample.length(), 6.0 + 1e-12);
    }
    EXPECT_LT(sum.length() / draws, 0.05);
}

TEST(FactoryVelocity, randomPointsAnywhere) { expectRandomDirection<CRandomFactoryVelocity>(); }
TEST(FactoryAngVel, randomPointsAnywhere) { expectRandomDirection<CRandomFactoryAngVel>(); }

template <class TNormal>
static void expectNormalDirection()
{
    TNormal velocity;
    velocity.magnitude.mean = 5.0;
    expectNear(velocity.sample(), C3DVector(5, 0, 0));
    velocity.direction = C3DVector(3, 0, -4);
    expectNear(velocity.sample(), C3DVector(3, 0, -4));
    velocity.direction = C3DVector(0, 1e-13, 0); // its square counts as zero: it stays as it is
    EXPECT_EQ(velocity.sample().y, 5e-13);
    velocity.direction = C3DVector(0, 1e-12, 0);
    expectNear(velocity.sample(), C3DVector(0, 5, 0));
}

TEST(FactoryVelocity, normalKeepsItsDirection) { expectNormalDirection<CNormalFactoryVelocity>(); }
TEST(FactoryAngVel, normalKeepsItsDirection) { expectNormalDirection<CNormalFactoryAngVel>(); }

TEST(FactoryVelocity, sprayStaysWithinItsCone)
{
    CSprayFactoryVelocity velocity;
    velocity.magnitude.mean = 3.0;
    velocity.direction = C3DVector(2, 0, 0);
    velocity.sprayAngle = 0.4;
    // a and b, one more, then the angle on -0.4 to 0.4.
    const C3DVector axis = C3DVector(0, 2 * u1 - 1, 1 - 2 * u2).normalised();
    seedRandom(1);
    expectNear(velocity.sample(), 3.0 * turned(C3DVector(1, 0, 0), axis, 0.8 * u4 - 0.4));
    EXPECT_EQ(randomNumber(), 31051); // four draws

    double widest = 0.0;
    for (int i = 0; i < 20000; ++i) {
        const C3DVector sample = velocity.sample();
        ASSERT_NEAR(sample.length(), 3.0, 1e-12);
        widest = std::max(widest, std::acos(sample.x / 3.0));
    }
    EXPECT_LE(widest, 0.4 + 1e-9);
    EXPECT_GT(widest, 0.39);
}

TEST(FactoryOrientation, randomTurnsAboutAnAxisOfTheFirstOctant)
{
    const CRandomFactoryOrientation orientation;
    seedRandom(1);
    const CQuaternion q = orientation.sample();
    const C3DVector axis = C3DVector(u3, u2, u1).normalised();
    const double half = 0.5 * (2 * pi * u4 - pi);
    EXPECT_NEAR(q.w, std::cos(half), 1e-13);
    expectNear(C3DVector(q.x, q.y, q.z), axis * std::sin(half));
    EXPECT_EQ(randomNumber(), std::lround(u5 * 32767));
    EXPECT_EQ(randomNumber(), sixth);
}

TEST(FactoryOrientation, fixedGivesItsMatrix)
{
    CFixedFactoryOrientation orientation;
    EXPECT_EQ(orientation.sample().w, 1.0);
    // A quarter turn about z takes x to y.
    orientation.orientation(0, 0) = orientation.orientation(1, 1) = 0.0;
    orientation.orientation(0, 1) = -1.0;
    orientation.orientation(1, 0) = 1.0;
    expectNear(orientation.sample().rotate(C3DVector(1, 0, 0)), C3DVector(0, 1, 0));
    const std::unique_ptr<IFactoryOrientation> copy = orientation.clone();
    expectNear(copy->sample().rotate(C3DVector(1, 0, 0)), C3DVector(0, 1, 0));
}

TEST(FactoryVelocity, isEditedAsARecordOfItsKind)
{
    CSprayFactoryVelocity spray;
    const std::unique_ptr<IParamData> data = spray.paramData();
    auto* const record = dynamic_cast<CSprayVelocityParamData*>(data.get());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(spray.paramDataType(), std::type_index(typeid(CSprayVelocityParamData)));
    EXPECT_EQ(record->mean, 1.0);
    EXPECT_EQ(record->deviation, 0.05);
    EXPECT_EQ(record->sprayAngle, 1.047);
    EXPECT_EQ(record->unitsType, 17u); // "Velocity" in the table of quantities
    record->sprayAngle = 0.1;
    record->mean = 4.0;
    EXPECT_TRUE(spray.setParamData(*record));
    EXPECT_EQ(spray.sprayAngle, 0.1);
    EXPECT_EQ(spray.magnitude.mean, 4.0);

    CNormalVelocityParamData other;
    other.mean = 9.0;
    EXPECT_FALSE(spray.setParamData(other));
    EXPECT_EQ(spray.magnitude.mean, 4.0);
    EXPECT_FALSE(record->copyFrom(other));
    CSprayVelocityParamData copy;
    EXPECT_TRUE(copy.copyFrom(*record));
    EXPECT_EQ(copy.sprayAngle, 0.1);

    const std::unique_ptr<IParamData> angular = CRandomFactoryAngVel().paramData();
    const auto* const limits = dynamic_cast<const CRandomParamData*>(angular.get());
    ASSERT_NE(limits, nullptr);
    EXPECT_EQ(limits->min, 0.5);
    EXPECT_EQ(limits->max, 1.0);
    EXPECT_EQ(limits->unitsType, 5u); // "Angular Velocity"
    EXPECT_EQ(CRandomFactoryOrientation().paramData(), nullptr);
}

} // namespace NBrenmark
