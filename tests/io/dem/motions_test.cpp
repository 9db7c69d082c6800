// The motions of geometry groups: their numbers, the lists of old versions, and kinds that nobody knows.
#include "io/dem/dem_testing.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/linear_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

template <class TMotion>
static TMotion& motionOf(CKinematics& kinematics, std::size_t number)
{
    return dynamic_cast<TMotion&>(*kinematics.actions.at(number));
}

template <class TTriple>
static void expectTriple(const TTriple& found, double x, double y, double z)
{
    EXPECT_EQ(found.x, x);
    EXPECT_EQ(found.y, y);
    EXPECT_EQ(found.z, z);
}

TEST(DemMotions, holdTheirNumbersByTheirStart)
{
    const CBytes stored = motionListBytes({deckShake(), deckSwing(), deckSlide(), deckTurn()});
    CKinematics kinematics;
    ASSERT_EQ(consumedBy<CDemCreatorDataReader>(kinematics, stored + CBytes::garbage(64), makeVersion(27, 0, 3)),
              stored.size());
    const auto& turn = motionOf<CLinearRotation>(kinematics, 0);
    EXPECT_EQ(turn.name, "turn");
    EXPECT_EQ(turn.startTime, 0.25);
    EXPECT_EQ(turn.endTime, 9999.0);
    EXPECT_EQ(turn.pointOfAction.z, 0.5);
    EXPECT_FALSE(turn.movesWithBody);
    EXPECT_EQ(turn.axis.endPoint.z, 4.0);
    expectTriple(turn.angularVelocity, 0, 0, 3); // along the axis, rad/s
    expectTriple(turn.angularAcceleration, 0, 0, 0.5);
    const auto& slide = motionOf<CLinearTranslation>(kinematics, 1);
    EXPECT_EQ(slide.initialVelocity, 1.5);
    EXPECT_EQ(slide.acceleration, -0.25);
    EXPECT_EQ(slide.axis.endPoint.x, 2.0);
    EXPECT_EQ(slide.endTime, 4.0);
    const auto& shake = motionOf<CSinusoidalTranslation>(kinematics, 2); // both start at 1 s: their order stays
    expectTriple(shake.sinusoid.displacement, 0, 3, 4);
    EXPECT_EQ(shake.sinusoid.offset, 0.125);
    EXPECT_EQ(shake.sinusoid.frequency, 50.0);
    EXPECT_EQ(shake.displacementMagnitude, 5.0);
    expectTriple(shake.axis.endPoint, 0, 0.6, 0.8);
    expectTriple(shake.axis.startPoint, 0, 0, 0);
    const auto& swing = motionOf<CSinusoidalRotation>(kinematics, 3);
    EXPECT_EQ(swing.pointOfAction.x, 0.25);
    EXPECT_TRUE(swing.movesWithBody);
    EXPECT_EQ(swing.displacementMagnitude, 2.0);
    EXPECT_EQ(swing.axis.endPoint.z, -1.0);
    EXPECT_EQ(swing.sinusoid.frequency, 25.0);
    EXPECT_EQ(kinematics.earliestStart, 0.25);
}

/// A list at a version. \return its names, and what was said
static std::string namesOf(const CBytes& bytes, quint32 version)
{
    const CLogCapture log;
    CKinematics kinematics;
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(kinematics, bytes + CBytes::garbage(64), version), bytes.size());
    std::string names;
    for (const auto& motion : kinematics.actions)
        names += motion->name.toStdString() + ' ';
    return names + log.text();
}

TEST(DemMotions, stoodInThreeListsOnce)
{
    // The body of a motion behind its word.
    const auto body = [](const SDeckMotion& motion) { return motionBytes(motion).from(4 + 2 * motion.kind.size()); };
    const CBytes list = motionListBytes({deckSlide()});
    EXPECT_EQ(namesOf(CBytes().i32(0).i32(0) + list, makeVersion(13, 0, 9)), "slide ");
    EXPECT_EQ(namesOf(CBytes().i32(1) + motionBytes(deckSwing()) + CBytes().i32(1) + motionBytes(deckShake()) + list,
                      makeVersion(2, 4, 40)),
              "slide swing shake ");
    EXPECT_EQ(namesOf(CBytes().i32(1) + body(deckSwing()) + CBytes().i32(1) + body(deckShake()) + list,
                      makeVersion(2, 4, 39)),
              "slide swing shake ");
    EXPECT_EQ(namesOf(list, makeVersion(20, 0, 0)), "slide ");
}

TEST(DemMotions, ofUnknownKindAreSkippedAndTold)
{
    const CBytes stored = CBytes().i32(3).text("Brownian").text("Conveyor Translation") + motionBytes(deckSlide());
    const std::string said = namesOf(stored, makeVersion(27, 0, 3));
    EXPECT_EQ(said.find("slide "), 0u);
    EXPECT_NE(said.find("motion of the unknown kind \"Brownian\" skipped"), std::string::npos) << said;
    EXPECT_NE(said.find("\"Conveyor Translation\" skipped"), std::string::npos) << said;
}

TEST(DemMotions, ofConveyorsAreLeftOutAndTold)
{
    CKinematics kinematics;
    for (const char* word : {"Conveyor Rotation", "Conveyor Translation", "Sinusoidal Rotation"}) {
        kinematics.add(createMotion(word));
        kinematics.actions.back()->name = word;
    }
    const CLogCapture log;
    SDeckMotion expected = deckSwing();
    expected.name = "Sinusoidal Rotation";
    expected.start = 0.0;
    expected.pointOfAction = {};
    expected.numbers = {0, 0, 0, 0, 0};
    EXPECT_EQ(firstDifference(motionListBytes({expected}), writtenBy<CDemCreatorDataWriter>(kinematics)), "");
    EXPECT_EQ(log.count(), 2u);
    EXPECT_EQ(writtenBy<CDemTimestepDataWriter>(kinematics).size(), 0); // nor have they a state
}

} // namespace NBrenmark
