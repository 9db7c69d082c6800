// The simulation box, its joined sides, and boxes by two corners.
#include "core/versioned_stream.h"
#include "model/bounding_box.h"
#include "model/domain.h"

#include <QBuffer>
#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace NBrenmark {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

static CDomain domainOf(const C3DPoint& min, const C3DPoint& max, bool x, bool y, bool z)
{
    CDomain domain;
    domain.min = min;
    domain.max = max;
    domain.periodicX = x;
    domain.periodicY = y;
    domain.periodicZ = z;
    return domain;
}

TEST(Domain, pointsThatLeaveAPeriodicSideComeInAtTheOpposite)
{
    // On the axis from -1 to 3: 4 wide, so a shift by whole widths, worked out by hand.
    struct SCase
    {
        double from;
        double to;
    };
    const SCase cases[] = {
        {0.5, 0.5},  {3.0, 3.0},     {-1.0, -1.0}, // inside, the sides included
        {-2.0, 2.0},                               // a quarter of the width below min: a quarter below max
        {3.5, -0.5}, {4.0, 0.0},     {7.5, -0.5},  // above, by less and by more than a width
        {-5.5, 2.5}, {-41.25, 2.75},               // below, by more than a width and by ten
        {7.0, -1.0},                               // a whole width above the upper side: the lower one
    };
    const CDomain domain = domainOf(C3DPoint(-1, -1, -1), C3DPoint(3, 3, 3), true, true, true);
    for (const SCase& c : cases) {
        C3DPoint point(c.from, c.from, c.from);
        EXPECT_TRUE(domain.wrapIntoDomain(point)) << c.from;
        EXPECT_EQ(point.x, c.to) << c.from;
        EXPECT_EQ(point.y, c.to) << c.from;
        EXPECT_EQ(point.z, c.to) << c.from;
    }
}

TEST(Domain, whatLeftIsMovedByWholeWidthsAndEndsInside)
{
    // The property on numbers that don't divide: the distance moved is n widths, up to rounding.
    const CDomain domain = domainOf(C3DPoint(0.1, -0.3, 0.7), C3DPoint(0.83, 0.41, 1.9), true, true, true);
    for (int step = -500; step <= 500; ++step) {
        const C3DPoint start(0.173 * step, 0.0719 * step, 0.331 * step);
        C3DPoint point = start;
        ASSERT_TRUE(domain.wrapIntoDomain(point));
        const double coordinates[3][4] = {{start.x, point.x, domain.min.x, domain.max.x},
                                          {start.y, point.y, domain.min.y, domain.max.y},
                                          {start.z, point.z, domain.min.z, domain.max.z}};
        for (const auto& [before, after, min, max] : coordinates) {
            ASSERT_GE(after, min);
            ASSERT_LE(after, max);
            const double widths = (after - before) / (max - min);
            ASSERT_NEAR(widths, std::round(widths), 1e-9) << before;
        }
    }
}

TEST(Domain, aPointOutsideOnAnAxisThatIsNotPeriodicIsReported)
{
    struct SCase
    {
        C3DPoint from;
        C3DPoint to;
        bool inside;
    };
    const SCase cases[] = {
        {C3DPoint(0.5, 0.5, 0.5), C3DPoint(0.5, 0.5, 0.5), true},
        {C3DPoint(1.25, 1.0, 0.0), C3DPoint(0.25, 1.0, 0.0), true},
        {C3DPoint(1.25, 1.5, 0.5), C3DPoint(0.25, 1.5, 0.5), false}, // x is wrapped though y is outside
        {C3DPoint(0.5, 0.5, -0.1), C3DPoint(0.5, 0.5, -0.1), false},
        {C3DPoint(0.5, infinite, 0.5), C3DPoint(0.5, infinite, 0.5), false},
    };
    const CDomain domain = domainOf(C3DPoint(0, 0, 0), C3DPoint(1, 1, 1), true, false, false);
    for (const SCase& c : cases) {
        C3DPoint point = c.from;
        EXPECT_EQ(domain.wrapIntoDomain(point), c.inside);
        EXPECT_EQ(point.x, c.to.x);
        EXPECT_EQ(point.y, c.to.y);
        EXPECT_EQ(point.z, c.to.z);
    }
    C3DPoint noNumber(0.5, notANumber, 0.5);
    EXPECT_FALSE(domain.wrapIntoDomain(noNumber));
}

TEST(Domain, aCopyTakesTheFiveValues)
{
    const CDomain original = domainOf(C3DPoint(1, 2, 3), C3DPoint(4, 5, 6), true, false, true);
    CDomain assigned;
    assigned = original;
    for (const CDomain* copy : {static_cast<const CDomain*>(&assigned), &original}) {
        const CDomain second(*copy);
        EXPECT_EQ(second.min, C3DPoint(1, 2, 3));
        EXPECT_EQ(second.max, C3DPoint(4, 5, 6));
        EXPECT_TRUE(second.periodicX && !second.periodicY && second.periodicZ);
    }
    ASSERT_TRUE(QMetaObject::invokeMethod(&assigned, "setMin", Q_ARG(CPoint, CPoint(7, 8, 9))));
    EXPECT_EQ(assigned.min, C3DPoint(7, 8, 9));
    EXPECT_EQ(assigned.max, C3DPoint(4, 5, 6));
}

TEST(BoundingBox, mergeGrowsTheBox)
{
    struct SCase
    {
        CBoundingBox box;
        CBoundingBox with;
        CBoundingBox result;
    };
    const C3DPoint zero;
    const SCase cases[] = {
        // two zero points change nothing, on a box that holds the origin and on one that doesn't
        {{C3DPoint(1, 1, 1), C3DPoint(-1, -1, -1)}, {zero, zero}, {C3DPoint(1, 1, 1), C3DPoint(-1, -1, -1)}},
        {{C3DPoint(3, 3, 3), C3DPoint(2, 2, 2)}, {zero, zero}, {C3DPoint(3, 3, 3), C3DPoint(2, 2, 2)}},
        // a box that is still zero takes the points as they are, and doesn't keep the origin
        {{zero, zero}, {C3DPoint(3, 3, 3), C3DPoint(2, 2, 2)}, {C3DPoint(3, 3, 3), C3DPoint(2, 2, 2)}},
        {{zero, zero}, {C3DPoint(2, 2, 2), C3DPoint(3, 3, 3)}, {C3DPoint(2, 2, 2), C3DPoint(3, 3, 3)}},
        // each coordinate by itself
        {{C3DPoint(1, 5, 1), C3DPoint(0, -5, 0)},
         {C3DPoint(2, 2, 0.5), C3DPoint(0.5, -6, -1)},
         {C3DPoint(2, 5, 1), C3DPoint(0, -6, -1)}},
        // one zero point is a point like any other
        {{C3DPoint(3, 3, 3), C3DPoint(2, 2, 2)}, {C3DPoint(4, 4, 4), zero}, {C3DPoint(4, 4, 4), zero}},
    };
    for (const SCase& c : cases) {
        CBoundingBox box = c.box;
        box.merge(c.with.upper, c.with.lower);
        EXPECT_EQ(box.upper, c.result.upper);
        EXPECT_EQ(box.lower, c.result.lower);
    }
    CBoundingBox box(C3DPoint(1, 1, 1), C3DPoint(0, 0, 0));
    box.merge(C3DPoint(notANumber, 2, 2), C3DPoint(notANumber, -1, -1));
    EXPECT_EQ(box.upper.x, 1.0); // no number is greater than nothing, but it is not "greater or equal" either
    EXPECT_TRUE(std::isnan(box.lower.x));
}

TEST(BoundingBox, streamsTheUpperCornerFirst)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    CVersionedStream stream(&buffer);
    CBoundingBox box(C3DPoint(1, 2, -2), C3DPoint(0.5, -1, 0));
    IReadWrite& stored = box;
    ASSERT_TRUE(stored.write(stream, nullptr));
    EXPECT_EQ(buffer.data().toHex().toStdString(), "3ff0000000000000" // 1
                                                   "4000000000000000" // 2
                                                   "c000000000000000" // -2
                                                   "3fe0000000000000" // 0.5
                                                   "bff0000000000000" // -1
                                                   "0000000000000000");
    buffer.seek(0);
    CBoundingBox back;
    IReadWrite& read = back;
    ASSERT_TRUE(read.read(stream, nullptr));
    EXPECT_EQ(back.upper, box.upper);
    EXPECT_EQ(back.lower, box.lower);
    EXPECT_FALSE(read.read(stream, nullptr)); // the stream has ended
}

} // namespace NBrenmark
