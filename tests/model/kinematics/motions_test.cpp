// What motions do in a span of time, against the formulas of mechanics; spans cut into pieces must add up.
#include "model/kinematics/ang_vel_and_pos.h"
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

#include <gtest/gtest.h>

namespace NBrenmark {

constexpr double pi = 3.14159265358979323846;

static void expectNear(const C3DVector& found, const C3DVector& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

static void expectNear(const C3DPoint& found, const C3DPoint& expected, double tolerance = 1e-12)
{
    expectNear(found.toVector(), expected.toVector(), tolerance);
}

static void expectSameTransform(const C3DTransform& found, const C3DTransform& expected)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(found.data()[i], expected.data()[i], 1e-12) << "element " << i;
}

/// From 2 s to 6 s along (3, 0, 4) / 5, from 10 m/s with 2 m/s^2.
template <class TTranslation>
static TTranslation linear()
{
    TTranslation motion;
    motion.startTime = 2.0;
    motion.endTime = 6.0;
    motion.axis = CAxisLine(C3DPoint(1, 1, 1), C3DPoint(7, 1, 9));
    motion.initialVelocity = 10.0;
    motion.acceleration = 2.0;
    return motion;
}

/// From 1 s to 5 s about the line through (1, 0, 0) along z, from 0.5 rad/s with 0.25 rad/s^2.
template <class TRotation>
static TRotation turning()
{
    TRotation motion;
    motion.startTime = 1.0;
    motion.endTime = 5.0;
    motion.setAxisStart(C3DPoint(1, 0, 0));
    motion.setAxisEnd(C3DPoint(1, 0, 8));
    motion.setInitialAngularVelocity(0.5);
    motion.setAngularAcceleration(0.25);
    motion.pointOfAction = C3DPoint(1, 0, 0);
    return motion;
}

// ---------------------------------------------------------------- translations

TEST(Translations, aLinearOneKeepsTheVelocityOfItsEnd)
{
    const CLinearTranslation motion = linear<CLinearTranslation>();
    const C3DVector unit(0.6, 0.0, 0.8);
    const struct
    {
        double time, speed;
    } cases[] = {{0.0, 0}, {1.999, 0}, {2.0, 10}, {3.5, 13}, {6.0, 18}, {100.0, 18}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.time);
        expectNear(motion.velocityAt(c.time), c.speed * unit);
    }
}

TEST(Translations, aSpanCutIntoPiecesMovesAsFarAsTheWholeOne)
{
    const CLinearTranslation motion = linear<CLinearTranslation>();
    const C3DVector unit(0.6, 0.0, 0.8);
    for (const int pieces : {1, 2, 7, 40}) { // of 0 s to 8 s: the edges of most pieces don't meet start and end
        SCOPED_TRACE(pieces);
        C3DTransform transform;
        for (int piece = 0; piece < pieces; ++piece)
            motion.apply(8.0 * piece / pieces, 8.0 * (piece + 1) / pieces, transform, {});
        const double way = 10.0 * 4.0 + 0.5 * 2.0 * 4.0 * 4.0;
        expectNear(transform * C3DPoint(1, 2, 3), C3DPoint(1, 2, 3) + way * unit, 1e-11);
    }
}

TEST(Translations, aSpanOutsideOfTheMotionDoesNothing)
{
    const CLinearTranslation motion = linear<CLinearTranslation>();
    C3DVector velocity;
    C3DTransform transform;
    motion.apply(0.0, 1.5, transform, {&velocity, nullptr});
    motion.apply(6.5, 9.0, transform, {&velocity, nullptr});
    EXPECT_TRUE(transform.isIdentity());
    expectNear(velocity, C3DVector());
}

TEST(Translations, theSumOfVelocitiesIsTakenBeforeTheEndOnly)
{
    const CLinearTranslation motion = linear<CLinearTranslation>();
    C3DTransform transform;
    C3DVector velocity(1, 1, 1); // of another motion
    motion.apply(2.0, 3.0, transform, {&velocity, nullptr});
    expectNear(velocity, C3DVector(1, 1, 1) + 12.0 * C3DVector(0.6, 0.0, 0.8));
    C3DVector atTheEnd;
    motion.apply(5.0, 7.0, transform, {&atTheEnd, nullptr});
    expectNear(atTheEnd, C3DVector());
}

TEST(Translations, twoTimesThatAreEqualButForRoundingMoveNothing)
{
    const CLinearTranslation motion = linear<CLinearTranslation>();
    expectNear(motion.displacementBetween(4.0, 4.0), C3DVector(), 0.0);
    expectNear(motion.displacementBetween(4.0, 4.0 + 1e-13), C3DVector(), 0.0);
    EXPECT_GT(motion.displacementBetween(4.0, 4.0 + 1e-10).length(), 0.0);
}

TEST(Translations, withoutADirectionNothingMoves)
{
    CLinearTranslation motion = linear<CLinearTranslation>();
    motion.setAxisEnd(motion.axis.startPoint);
    expectNear(motion.velocityAt(3.0), C3DVector(), 0.0);
    expectNear(motion.displacementBetween(2.0, 5.0), C3DVector(), 0.0);
}

TEST(Translations, aConveyorRunsWithoutMovingTheMeshAndTurnsWithIt)
{
    CConveyorTranslation belt = linear<CConveyorTranslation>();
    C3DTransform transform;
    C3DVector velocity;
    belt.apply(0.0, 5.0, transform, {&velocity, nullptr});
    EXPECT_TRUE(transform.isIdentity());
    expectNear(velocity, 16.0 * C3DVector(0.6, 0.0, 0.8));

    C3DTransform quarter; // about y: z goes to x, x to -z
    quarter.rotate(C3DVector(0, 1, 0), pi / 2);
    belt.moveBy(quarter);
    expectNear(belt.velocityAt(2.0), 10.0 * C3DVector(0.8, 0.0, -0.6));
    belt.moveBy(quarter);
    expectNear(belt.velocityAt(2.0), 10.0 * C3DVector(-0.6, 0.0, -0.8));
}

TEST(Translations, aSinusoidalOneSwingsAboutItsStart)
{
    CSinusoidalTranslation motion; // 0.3 m at 2 Hz along -y, from 1 s on, a quarter turn ahead
    motion.startTime = 1.0;
    motion.endTime = 3.0;
    motion.setAxisStart(C3DPoint(0, 5, 0));
    motion.setAxisEnd(C3DPoint(0, -5, 0));
    motion.setDisplacementMagnitude(0.3);
    motion.sinusoid.frequency = 2.0;
    motion.sinusoid.offset = pi / 2;

    const auto place = [](double since) { return -0.3 * std::cos(4.0 * pi * since); };
    const auto speed = [](double since) { return 0.3 * 4.0 * pi * std::sin(4.0 * pi * since); };
    expectNear(motion.sinusoid.displacement, C3DVector(0, -0.3, 0));
    expectNear(motion.velocityAt(0.5), C3DVector());
    for (const double time : {1.0, 1.1, 1.77, 3.0})
        expectNear(motion.velocityAt(time), C3DVector(0, speed(time - 1.0), 0));
    expectNear(motion.velocityAt(50.0), C3DVector(0, speed(2.0), 0));
    expectNear(motion.displacementBetween(1.2, 1.55), C3DVector(0, place(0.55) - place(0.2), 0));

    C3DTransform whole;
    C3DTransform pieces;
    motion.apply(0.0, 2.6, whole, {});
    for (int piece = 0; piece < 13; ++piece)
        motion.apply(0.2 * piece, 0.2 * (piece + 1), pieces, {});
    expectNear(whole * C3DPoint(), C3DPoint(0, place(1.6) - place(0.0), 0));
    expectSameTransform(pieces, whole);
}

TEST(Translations, aLoopEndsWithTheLoop)
{
    CLinearTranslation motion = linear<CLinearTranslation>();
    motion.loop = true;
    motion.loopInterval = 10.0;
    motion.loopEndTime = 14.5;
    motion.loopIndex = 1.0;
    EXPECT_EQ(motion.effectiveStart(), 12.0);
    EXPECT_EQ(motion.effectiveEnd(), 14.5);
    EXPECT_EQ(motion.lastEnd(), 14.5);
    expectNear(motion.velocityAt(20.0), 15.0 * C3DVector(0.6, 0.0, 0.8)); // 2.5 s of 2 m/s^2
    motion.loop = false;
    EXPECT_EQ(motion.effectiveEnd(), 16.0);
    EXPECT_EQ(motion.lastEnd(), 6.0);
}

// ---------------------------------------------------------------- rotations

TEST(Rotations, aSpanCutIntoPiecesTurnsAsFarAsTheWholeOne)
{
    const CLinearRotation motion = turning<CLinearRotation>();
    const double angle = 0.5 * 4.0 + 0.5 * 0.25 * 4.0 * 4.0; // 4 s
    for (const int pieces : {1, 3, 50}) {
        SCOPED_TRACE(pieces);
        C3DTransform transform;
        for (int piece = 0; piece < pieces; ++piece)
            motion.apply(10.0 * piece / pieces, 10.0 * (piece + 1) / pieces, transform, {});
        expectNear(transform * C3DPoint(3, 0, 2), C3DPoint(1 + 2 * std::cos(angle), 2 * std::sin(angle), 2));
        expectNear(transform * C3DPoint(1, 0, -7), C3DPoint(1, 0, -7)); // on the axis
    }
}

TEST(Rotations, theListGivesVelocityAndPlaceOfWhatActs)
{
    CLinearRotation motion = turning<CLinearRotation>();
    C3DTransform there; // z to x, then 10 m up
    there.translate(C3DVector(0, 0, 10));
    there.rotate(C3DVector(0, 1, 0), pi / 2);

    for (const bool movesWithBody : {true, false}) {
        SCOPED_TRACE(movesWithBody);
        motion.movesWithBody = movesWithBody;
        AngVelAndPosList list;
        C3DTransform transform = there;
        motion.apply(2.0, 3.0, transform, {nullptr, &list});
        motion.apply(4.0, 6.0, transform, {nullptr, &list}); // reaches the end: not told
        ASSERT_EQ(list.size(), 1u);
        expectNear(list[0].angularVelocity, movesWithBody ? C3DVector(1, 0, 0) : C3DVector(0, 0, 1));
        expectNear(list[0].pointOfAction, movesWithBody ? C3DPoint(0, 0, 9) : C3DPoint(1, 0, 0));
    }
}

TEST(Rotations, anAxisMovesWithTheBodyOrStays)
{
    C3DTransform matrix;
    matrix.translate(C3DVector(0, 0, 10));
    matrix.rotate(C3DVector(0, 1, 0), pi / 2);
    CLinearRotation motion = turning<CLinearRotation>();
    motion.movesWithBody = false;
    motion.moveBy(matrix);
    expectNear(motion.pointOfAction, C3DPoint(1, 0, 0));
    motion.movesWithBody = true;
    motion.moveBy(matrix);
    expectNear(motion.pointOfAction, C3DPoint(0, 0, 9));
    expectNear(motion.angularVelocity, C3DVector(0.5, 0, 0));
    expectNear(motion.angularAcceleration, C3DVector(0.25, 0, 0));
}

TEST(Rotations, vectorsOfAnOldDeckStandUntilANewStart)
{
    CLinearRotation motion = turning<CLinearRotation>();
    motion.legacyVectorsSet = true;
    motion.angularVelocity = C3DVector(7, 7, 7);
    motion.setAxisEnd(C3DPoint(9, 9, 9));
    expectNear(motion.angularVelocity, C3DVector(7, 7, 7));
    motion.setAxisStart(C3DPoint(9, 9, 7)); // a new axis: along z again
    EXPECT_FALSE(motion.legacyVectorsSet);
    expectNear(motion.angularVelocity, C3DVector(0, 0, 0.5));
}

TEST(Rotations, aConveyorTurnsWithoutMovingTheMesh)
{
    const CConveyorRotation roller = turning<CConveyorRotation>();
    AngVelAndPosList list;
    C3DTransform transform;
    transform.translate(C3DVector(0.1, 0.2, 0.3));
    const C3DTransform before = transform;
    roller.apply(0.0, 3.0, transform, {nullptr, &list});
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(transform.data()[i], before.data()[i]); // not even by rounding
    ASSERT_EQ(list.size(), 1u);
    expectNear(list[0].angularVelocity, C3DVector(0, 0, 1));
}

TEST(Rotations, aSinusoidalOneSwingsAboutItsAxis)
{
    CSinusoidalRotation motion; // 0.4 rad at 0.5 Hz about y through (2, 0, 0)
    motion.endTime = 10.0;
    motion.setAxisStart(C3DPoint(2, 0, 0));
    motion.setAxisEnd(C3DPoint(2, 3, 0));
    motion.setDisplacementMagnitude(0.4);
    motion.sinusoid.frequency = 0.5;
    motion.pointOfAction = C3DPoint(2, 0, 0);

    expectNear(motion.angularVelocityAt(0.25, C3DTransform()), C3DVector(0, 0.4 * pi * std::cos(pi * 0.25), 0));
    C3DTransform transform;
    for (int step = 0; step < 5; ++step)
        motion.apply(0.1 * step, 0.1 * (step + 1), transform, {}); // to 0.5 s, the greatest angle
    expectNear(transform * C3DPoint(3, 1, 0), C3DPoint(2 + std::cos(0.4), 1, -std::sin(0.4)));

    C3DTransform matrix; // y to z
    matrix.rotate(C3DVector(1, 0, 0), pi / 2);
    expectNear(motion.angularVelocityAt(0.0, matrix), C3DVector(0, 0, 0.4 * pi));
    motion.moveBy(matrix);
    expectNear(motion.sinusoid.displacement, C3DVector(0, 0, 0.4));
}

// ---------------------------------------------------------------- lists and words

TEST(Kinematics, everyKindIsMadeByTheWordThatItShows)
{
    for (const char* word : {"Linear Translation", "Sinusoidal Translation", "Conveyor Translation", "Linear Rotation",
                             "Sinusoidal Rotation", "Conveyor Rotation"}) {
        const std::unique_ptr<CTimeDepAction> motion = createMotion(word);
        ASSERT_NE(motion, nullptr) << word;
        motion->name = "m";
        motion->axis.useStart = motion->axis.useEnd = true;
        const std::unique_ptr<CTimeDepAction> copy = motion->clone();
        EXPECT_EQ(copy->displayName(), word);
        EXPECT_EQ(copy->name, "m");
        EXPECT_FALSE(copy->axis.useStart) << word;
        EXPECT_TRUE(copy->axis.useEnd) << word;
    }
    for (const char* word : {"", "linear translation", "Linear Translation ", "Spiral"})
        EXPECT_EQ(createMotion(word), nullptr) << word;
}

static std::unique_ptr<CTimeDepAction> named(const char* name, double start, double end)
{
    auto motion = std::make_unique<CLinearTranslation>();
    motion->name = name;
    motion->startTime = start;
    motion->endTime = end;
    return motion;
}

static std::string namesOf(const CKinematics& kinematics)
{
    std::string names;
    for (const auto& action : kinematics.actions)
        names += action->name.toStdString();
    return names;
}

TEST(Kinematics, theListKnowsFromWhenToWhenSomethingMoves)
{
    constexpr double greatest = 1.7976931348623157e308;
    constexpr double leastNormal = 2.2250738585072014e-308;
    CKinematics kinematics;
    kinematics.recomputeTimes();
    EXPECT_EQ(kinematics.earliestStart, greatest);
    EXPECT_EQ(kinematics.latestEnd, leastNormal);

    kinematics.add(nullptr);
    kinematics.add(named("a", 3.0, 5.0));
    kinematics.add(named("b", 1.0, 4.0));
    EXPECT_EQ(kinematics.earliestStart, 1.0);
    EXPECT_EQ(kinematics.latestEnd, 5.0);

    auto loop = named("c", 2.0, 3.0);
    loop->loop = true;
    loop->loopEndTime = 70.0;
    kinematics.add(std::move(loop));
    EXPECT_EQ(kinematics.latestEnd, greatest);
    kinematics.recomputeTimes();
    EXPECT_EQ(kinematics.latestEnd, 70.0);

    kinematics.remove("nobody");
    kinematics.remove("b");
    EXPECT_EQ(namesOf(kinematics), "ac");
    EXPECT_EQ(kinematics.earliestStart, 2.0);
    EXPECT_EQ(kinematics.find("b"), nullptr);
    EXPECT_EQ(kinematics.find("c")->startTime, 2.0);
    kinematics.clear();
    EXPECT_EQ(kinematics.latestEnd, leastNormal);
}

TEST(Kinematics, sortingKeepsTheOrderOfEqualStartsAndSurvivesNoNumbers)
{
    CKinematics kinematics;
    const double noNumber = std::nan("");
    for (int round = 0; round < 20; ++round) { // more than sorting does by insertion
        kinematics.add(named("x", noNumber, 1.0));
        kinematics.add(named("c", 2.0, 9.0));
        kinematics.add(named("a", -1.0, 9.0));
    }
    kinematics.add(named("d", 2.0, 9.0));
    kinematics.sortByStartTime();
    EXPECT_EQ(namesOf(kinematics), std::string(20, 'a') + std::string(20, 'c') + "d" + std::string(20, 'x'));
}

} // namespace NBrenmark
