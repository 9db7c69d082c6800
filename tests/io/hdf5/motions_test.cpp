// Motions in files: what each kind holds in a creator model and in a timestep, and what older files hold instead.
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

#include "hdf5_sample.h"
#include "support/log_capture.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace NBrenmark {

using CreatorReader = CHdf5CreatorDataReader;
using CreatorWriter = CHdf5CreatorDataWriter;
using TimestepReader = CHdf5TimestepDataReader;
using TimestepWriter = CHdf5TimestepDataWriter;
using testing::HasSubstr;

template <class TMotion>
static TMotion& added(CKinematics& kinematics, const QString& name)
{
    auto motion = std::make_unique<TMotion>();
    motion->name = name;
    motion->startTime = 1;
    motion->endTime = 2;
    motion->loop = true;
    motion->loopInterval = 3;
    motion->loopEndTime = 4;
    TMotion& reference = *motion;
    kinematics.add(std::move(motion));
    return reference;
}

/// One motion of each kind.
static void fillEach(CKinematics& kinematics)
{
    added<CLinearTranslation>(kinematics, "lift").initialVelocity = 5;
    added<CSinusoidalTranslation>(kinematics, "shake").sinusoid.frequency = 6;
    added<CLinearRotation>(kinematics, "turn").initialAngularVelocity = 7;
    added<CSinusoidalRotation>(kinematics, "swing").displacementMagnitude = 8;
    added<CConveyorTranslation>(kinematics, "belt");
    added<CConveyorRotation>(kinematics, "roll");
}

TEST(MotionsFromHdf5, turnByAxisAndMagnitudeUntilATimestepSaysOtherwise)
{
    CKinematics kinematics;
    CLinearRotation& turn = added<CLinearRotation>(kinematics, "turn");
    turn.axis = CAxisLine(C3DPoint(0, 0, 1), C3DPoint(0, 0, 3));
    turn.initialAngularVelocity = 2;
    turn.angularVelocity = C3DVector(2, 0, 0); // turned with its body
    CHdf5Sample creator, timestep;
    creator.tree<CreatorWriter>(kinematics);
    timestep.tree<TimestepWriter>(kinematics);
    CKinematics back;
    creator.read<CreatorReader>(back);
    const auto& read = dynamic_cast<const CLinearRotation&>(*back.actions.at(0));
    EXPECT_EQ(read.angularVelocity, C3DVector(0, 0, 2));
    EXPECT_EQ(back.earliestStart, 1);
    EXPECT_EQ(back.latestEnd, 4); // of the loop
    timestep.read<TimestepReader>(back);
    EXPECT_EQ(read.angularVelocity, C3DVector(2, 0, 0));
}

TEST(MotionsFromHdf5, swingAsStoredThoughTheirBodyHasLeftTheAxis)
{
    CKinematics kinematics;
    CSinusoidalTranslation& shake = added<CSinusoidalTranslation>(kinematics, "shake");
    shake.axis = CAxisLine(C3DPoint(1, 0, 0), C3DPoint(3, 0, 0));
    shake.displacementMagnitude = 0.5;
    shake.sinusoid.displacement = C3DVector(0, 0.5, 0);
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(kinematics);
    CKinematics back;
    sample.read<CreatorReader>(back);
    const auto& read = dynamic_cast<const CSinusoidalTranslation&>(*back.actions.at(0));
    EXPECT_EQ(read.axis.startPoint, C3DPoint(1, 0, 0));
    EXPECT_EQ(read.axis.endPoint, C3DPoint(3, 0, 0));
    EXPECT_EQ(read.displacementMagnitude, 0.5);
    EXPECT_EQ(read.sinusoid.displacement, C3DVector(0, 0.5, 0));
}

TEST(MotionsOfOlderHdf5, haveAnIdAndNoLoopBefore30_0_8)
{
    CKinematics kinematics;
    added<CLinearTranslation>(kinematics, "lift");
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(kinematics);
    const std::string motion = "/Kinematics/0";
    sample.change()
        .withoutAttribute(motion, "name")
        .withoutAttribute(motion, "loop")
        .withoutAttribute(motion, "loop interval")
        .withoutAttribute(motion, "loop end time")
        .text(motion, "id", "hoist");
    CKinematics back;
    sample.read<CreatorReader>(back, makeVersion(30, 0, 7));
    EXPECT_EQ(back.actions.at(0)->name, "hoist");
    EXPECT_FALSE(back.actions.at(0)->loop);
    EXPECT_EQ(back.actions.at(0)->loopEndTime, 9999.0);
    EXPECT_THAT(sample.failure<CreatorReader>(back), HasSubstr("attribute \"name\""));
}

TEST(MotionsOfOlderHdf5, swingAlongTheirDisplacementBefore30_0_10)
{
    CKinematics kinematics;
    added<CSinusoidalTranslation>(kinematics, "shake").sinusoid.displacement = C3DVector(0, 3, 4);
    added<CSinusoidalRotation>(kinematics, "swing").sinusoid.displacement = C3DVector(0, 0, -2);
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(kinematics);
    for (const std::string motion : {"/Kinematics/0", "/Kinematics/1"})
        sample.change()
            .without(motion + "/start point")
            .without(motion + "/end point")
            .withoutAttribute(motion, "displacement magnitude");
    CKinematics back;
    sample.read<CreatorReader>(back, makeVersion(30, 0, 9));
    const auto& shake = dynamic_cast<const CSinusoidalTranslation&>(*back.actions.at(0));
    EXPECT_EQ(shake.displacementMagnitude, 5);
    EXPECT_EQ(shake.axis.startPoint, C3DPoint());
    EXPECT_EQ(shake.axis.endPoint, C3DPoint(0, 3, 4));
    const auto& swing = dynamic_cast<const CSinusoidalRotation&>(*back.actions.at(1));
    EXPECT_EQ(swing.displacementMagnitude, 2);
    EXPECT_EQ(swing.sinusoid.displacement, C3DVector(0, 0, -2));
    EXPECT_THAT(sample.failure<CreatorReader>(back), HasSubstr("start point"));
}

TEST(MotionsOfOlderHdf5, keepTheDisplacementOfTheModelBefore30_0_9)
{
    CKinematics kinematics;
    CSinusoidalTranslation& shake = added<CSinusoidalTranslation>(kinematics, "shake");
    CHdf5Sample sample;
    sample.tree<TimestepWriter>(kinematics);
    sample.change().without("/Kinematics/0/displacement");
    shake.sinusoid.displacement = C3DVector(1, 2, 3);
    sample.read<TimestepReader>(kinematics, makeVersion(30, 0, 8));
    EXPECT_EQ(shake.sinusoid.displacement, C3DVector(1, 2, 3));
    EXPECT_THAT(sample.failure<TimestepReader>(kinematics), HasSubstr("displacement"));
}

TEST(DamagedMotionsOfHdf5, areSkippedByThemselves)
{
    CKinematics kinematics;
    fillEach(kinematics);
    CHdf5Sample creator, timestep;
    creator.tree<CreatorWriter>(kinematics);
    timestep.tree<TimestepWriter>(kinematics);
    creator.change().text("/Kinematics/1", "type", "Brownian");
    CKinematics back;
    CLogCapture log;
    creator.read<CreatorReader>(back);
    ASSERT_EQ(back.actions.size(), 5u);
    EXPECT_EQ(back.actions[1]->name, "turn");
    EXPECT_THAT(log.text(), HasSubstr("no motion \"Brownian\" is known"));
    timestep.read<TimestepReader>(back);
    EXPECT_THAT(log.text(), HasSubstr("state of 6 motions is skipped: the model has 5"));
}

TEST(MotionsInHdf5, reportWhatOfABeltIsLost)
{
    CKinematics kinematics;
    added<CConveyorTranslation>(kinematics, "belt").initialVelocity = 5;
    CLogCapture log;
    CHdf5Sample sample;
    sample.tree<CreatorWriter>(kinematics);
    EXPECT_THAT(log.text(), HasSubstr("conveyor \"belt\" are dropped"));

    // Files whose belts have a type and nothing else.
    for (const char* name : {"name", "start time", "end time", "loop", "loop interval", "loop end time"})
        sample.change().withoutAttribute("/Kinematics/0", name);
    CKinematics back;
    sample.read<CreatorReader>(back);
    EXPECT_EQ(back.actions.at(0)->displayName(), "Conveyor Translation");
    EXPECT_EQ(back.actions.at(0)->endTime, 9999.0);
}

} // namespace NBrenmark
