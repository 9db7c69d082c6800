// The motions of geometry groups: their numbers, the lists of old versions, and kinds that no one knows.
#include "io/dem/dem_testing.h"
#include "model/kinematics/kinematics.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(DemMotions, holdTheirNumbersByTheirStart)
{
    const CBytes stored = motionListBytes({deckShake(), deckSwing(), deckSlide(), deckTurn()});
    CKinematics kinematics;
    ASSERT_EQ(consumedBy<CDemCreatorDataReader>(kinematics, stored + CBytes::garbage(64), makeVersion(27, 0, 3)),
              stored.size());
    // Velocities are along the axis, rad/s. Two start at 1 s: their order stays.
    expectText(kinematics,
               "turn/index 0; turn/startTime 0.25; turn/endTime 9999; turn/pointOfAction (0, 0, 0.5); "
               "turn/movesWithBody false; turn/endPoint (0, 0, 4); turn/angularVelocity (0, 0, 3); "
               "turn/angularAcceleration (0, 0, 0.5); slide/index 1; slide/initialVelocity 1.5; "
               "slide/acceleration -0.25; slide/endPoint (2, 0, 0); slide/endTime 4; shake/index 2; "
               "shake/displacement (0, 3, 4); shake/offset 0.125; shake/frequency 50; shake/displacementMagnitude 5; "
               "shake/endPoint (0, 0.6, 0.8); shake/startPoint (0, 0, 0); swing/index 3; "
               "swing/pointOfAction (0.25, 0, 0); swing/movesWithBody true; swing/displacementMagnitude 2; "
               "swing/endPoint (0, 0, -1); swing/frequency 25");
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
    // The body of a motion after its word.
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

TEST(DemMotions, ofUnknownKindAreSkippedAndReported)
{
    const CBytes stored = CBytes().i32(3).text("Brownian").text("Conveyor Translation") + motionBytes(deckSlide());
    const std::string said = namesOf(stored, makeVersion(27, 0, 3));
    EXPECT_EQ(said.find("slide "), 0u);
    EXPECT_NE(said.find("motion of the unknown kind \"Brownian\" skipped"), std::string::npos) << said;
    EXPECT_NE(said.find("\"Conveyor Translation\" skipped"), std::string::npos) << said;
}

TEST(DemMotions, ofConveyorsAreLeftOutAndReported)
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
