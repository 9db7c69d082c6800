// The text of motions.
#include "io/text/text_writer.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

namespace NBrenmark {

// Vectors and points that move along with the body are state.

void CTextWriter::writeKinematics(const CKinematics& kinematics)
{
    CListSegments segments;
    qint32 index = 0;
    for (const auto& motion : kinematics.actions) {
        out.group(segments.next(motion->name), [&] {
            if (covers(ETextPart::eDefinition)) {
                out.value("index", index);
                out.value("kind", motion->displayName());
            }
            motion->write(*this);
        });
        ++index;
    }
}

void CTextWriter::writeTimeDepAction(const CTimeDepAction& motion)
{
    if (!covers(ETextPart::eDefinition))
        return;
    out.value("name", motion.name);
    out.value("startTime", motion.startTime); // s
    out.value("endTime", motion.endTime);     // s
    out.value("loop", motion.loop);
    out.value("loopInterval", motion.loopInterval); // s
    out.value("loopEndTime", motion.loopEndTime);   // s
}

void CTextWriter::writeRotation(const CRotation& rotation)
{
    if (covers(ETextPart::eDefinition))
        out.value("movesWithBody", rotation.movesWithBody);
    if (covers(ETextPart::eState))
        out.value("pointOfAction", rotation.pointOfAction); // m
}

void CTextWriter::writeSinusoid(const CSinusoid& sinusoid)
{
    if (covers(ETextPart::eDefinition)) {
        out.value("frequency", sinusoid.frequency); // Hz
        out.value("offset", sinusoid.offset);       // rad, the phase
    }
    if (covers(ETextPart::eState))
        out.value("displacement", sinusoid.displacement); // m or rad; amplitude and direction
}

static void axis(CTextOutput& out, const CTimeDepAction& motion)
{
    out.value("startPoint", motion.axis.startPoint); // m
    out.value("endPoint", motion.axis.endPoint);     // m
}

void CTextWriter::writeLinearTranslation(const CLinearTranslation& motion)
{
    writeTimeDepAction(motion);
    if (!covers(ETextPart::eDefinition))
        return;
    out.value("initialVelocity", motion.initialVelocity); // m/s, along the axis
    out.value("acceleration", motion.acceleration);       // m/s^2
    axis(out, motion);
}

void CTextWriter::writeConveyorTranslation(const CConveyorTranslation& motion)
{
    writeLinearTranslation(motion);
    if (covers(ETextPart::eState))
        out.value("conveyorTransform", motion.conveyorTransform);
}

void CTextWriter::writeSinusoidalTranslation(const CSinusoidalTranslation& motion)
{
    writeTimeDepAction(motion);
    motion.sinusoid.write(*this);
    if (!covers(ETextPart::eDefinition))
        return;
    axis(out, motion);
    out.value("displacementMagnitude", motion.displacementMagnitude); // m or rad
}

void CTextWriter::writeLinearRotation(const CLinearRotation& motion)
{
    writeTimeDepAction(motion);
    writeRotation(motion);
    if (covers(ETextPart::eDefinition)) {
        out.value("initialAngularVelocity", motion.initialAngularVelocity);             // rad/s, about the axis
        out.value("angularAccelerationMagnitude", motion.angularAccelerationMagnitude); // rad/s^2
        axis(out, motion);
    }
    if (covers(ETextPart::eState)) {
        out.value("angularVelocity", motion.angularVelocity);         // rad/s, as the axis is turned by now
        out.value("angularAcceleration", motion.angularAcceleration); // rad/s^2, likewise
    }
}

void CTextWriter::writeSinusoidalRotation(const CSinusoidalRotation& motion)
{
    writeTimeDepAction(motion);
    writeRotation(motion);
    motion.sinusoid.write(*this);
    if (!covers(ETextPart::eDefinition))
        return;
    axis(out, motion);
    out.value("displacementMagnitude", motion.displacementMagnitude); // m or rad
}

} // namespace NBrenmark
