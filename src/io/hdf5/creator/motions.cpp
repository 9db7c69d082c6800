// The motions of a geometry group in a creator model: a group for each by its number.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/geometry.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

namespace NBrenmark {

// ---------------------------------------------------------------- parts of motions

template <class TForm, class TMotion>
static void commonForm(TForm& f, TMotion& motion)
{
    const bool knowsLoops = f.since(30, 0, 8);
    f.attribute(knowsLoops ? "name" : "id", motion.name); // the name's own name changed when loops came
    f.attribute("start time", motion.startTime);          // s
    f.attribute("end time", motion.endTime);              // s
    if (knowsLoops) {
        f.attribute("loop", motion.loop);                  // starts again every interval until the end time of the loop
        f.attribute("loop interval", motion.loopInterval); // s
        f.attribute("loop end time", motion.loopEndTime);  // s
    }
}

void CHdf5CreatorDataReader::readTimeDepAction(CTimeDepAction& motion) { commonForm(in(), motion); }
void CHdf5CreatorDataWriter::writeTimeDepAction(const CTimeDepAction& motion) { commonForm(out(), motion); }

template <class TForm, class TRotation>
static void rotationForm(TForm& f, TRotation& rotation)
{
    f.attribute("moves with body", rotation.movesWithBody); // else the axis stays in space
    f.dataset("point of action", rotation.pointOfAction);   // m
}

void CHdf5CreatorDataReader::readRotation(CRotation& rotation) { rotationForm(in(), rotation); }
void CHdf5CreatorDataWriter::writeRotation(const CRotation& rotation) { rotationForm(out(), rotation); }

template <class TForm, class TSinusoid>
static void sinusoidForm(TForm& f, TSinusoid& sinusoid)
{
    f.attribute("frequency", sinusoid.frequency);     // Hz
    f.attribute("offset", sinusoid.offset);           // rad, the phase
    f.dataset("displacement", sinusoid.displacement); // m or rad; amplitude and direction
}

void CHdf5CreatorDataReader::readSinusoid(CSinusoid& sinusoid) { sinusoidForm(in(), sinusoid); }
void CHdf5CreatorDataWriter::writeSinusoid(const CSinusoid& sinusoid) { sinusoidForm(out(), sinusoid); }

template <class TForm, class TMotion>
static void axisForm(TForm& f, TMotion& motion)
{
    f.dataset("start point", motion.axis.startPoint); // m
    f.dataset("end point", motion.axis.endPoint);     // m
}

/// What both sinusoidal motions hold after their sinusoid.
template <class TForm, class TMotion>
static void swingForm(TForm& f, TMotion& motion)
{
    axisForm(f, motion);
    f.attribute("displacement magnitude", motion.displacementMagnitude); // m or rad
}

/// Before 30.0.10 the displacement alone gave axis and magnitude. The displacement itself stays as stored,
/// in later decks too: it may have moved away from the axis with its body.
template <class TMotion>
static void readSwing(CHdf5FormReader& f, TMotion& motion)
{
    if (f.since(30, 0, 10)) {
        swingForm(f, motion);
        return;
    }
    motion.displacementMagnitude = motion.sinusoid.displacement.length();
    motion.axis.endPoint = motion.axis.startPoint + motion.sinusoid.displacement;
}

// ---------------------------------------------------------------- translations

template <class TForm, class TMotion>
static void linearTranslationForm(TForm& f, TMotion& motion)
{
    f.attribute("initial velocity", motion.initialVelocity); // m/s, along the axis
    f.attribute("acceleration", motion.acceleration);        // m/s^2
    axisForm(f, motion);
}

void CHdf5CreatorDataReader::readLinearTranslation(CLinearTranslation& motion)
{
    readTimeDepAction(motion);
    linearTranslationForm(in(), motion);
}

void CHdf5CreatorDataWriter::writeLinearTranslation(const CLinearTranslation& motion)
{
    writeTimeDepAction(motion);
    linearTranslationForm(out(), motion);
}

void CHdf5CreatorDataReader::readSinusoidalTranslation(CSinusoidalTranslation& motion)
{
    readTimeDepAction(motion);
    motion.sinusoid.read(*this);
    readSwing(in(), motion);
}

void CHdf5CreatorDataWriter::writeSinusoidalTranslation(const CSinusoidalTranslation& motion)
{
    writeTimeDepAction(motion);
    motion.sinusoid.write(*this);
    swingForm(out(), motion);
}

// ---------------------------------------------------------------- rotations

template <class TForm, class TMotion>
static void linearRotationForm(TForm& f, TMotion& motion)
{
    f.attribute("initial angular velocity", motion.initialAngularVelocity);   // rad/s, about the axis
    f.attribute("angular acceleration", motion.angularAccelerationMagnitude); // rad/s^2
    axisForm(f, motion);
}

void CHdf5CreatorDataReader::readLinearRotation(CLinearRotation& motion)
{
    readTimeDepAction(motion);
    readRotation(motion);
    linearRotationForm(in(), motion);
    motion.axisChanged(); // the timestep brings the vectors as they have moved
}

void CHdf5CreatorDataWriter::writeLinearRotation(const CLinearRotation& motion)
{
    writeTimeDepAction(motion);
    writeRotation(motion);
    linearRotationForm(out(), motion);
}

void CHdf5CreatorDataReader::readSinusoidalRotation(CSinusoidalRotation& motion)
{
    readTimeDepAction(motion);
    readRotation(motion);
    motion.sinusoid.read(*this);
    readSwing(in(), motion);
}

void CHdf5CreatorDataWriter::writeSinusoidalRotation(const CSinusoidalRotation& motion)
{
    writeTimeDepAction(motion);
    writeRotation(motion);
    motion.sinusoid.write(*this);
    swingForm(out(), motion);
}

// ---------------------------------------------------------------- all motions

/// A belt has no slot here: of its definition only the common part is stored.
static bool isBelt(const CTimeDepAction& motion)
{
    return dynamic_cast<const CConveyorTranslation*>(&motion) != nullptr;
}

static void reportLostBelt(const CTimeDepAction& motion)
{
    const auto& belt = dynamic_cast<const CConveyorTranslation&>(motion);
    if (belt.initialVelocity != 0.0 || belt.acceleration != 0.0)
        report(eNotCarried, NLogTitle::hdf5Write,
               "Velocity, acceleration and axis of the conveyor \"" + shortened(belt.name) +
                   "\" are dropped: this family has no place for them.",
               1, shortened(belt.name));
}

void CHdf5CreatorDataReader::readKinematics(CKinematics& kinematics)
{
    kinematics.clear();
    in().group(kinematicsName(in()), [&] {
        const hsize_t count = in().childCount();
        for (hsize_t i = 0; i < count; ++i)
            in().group(std::to_string(i), [&] {
                QString type;
                if (!in().attribute("type", type))
                    return;
                std::unique_ptr<CTimeDepAction> motion = createMotion(type);
                if (motion == nullptr) {
                    report(eLost, NLogTitle::hdf5Read,
                           "A motion is skipped: no motion \"" + shortened(type) + "\" is known.");
                    return;
                }
                motion->read(*this);
                if (isBelt(*motion) && in().hasAttribute("start time"))
                    readTimeDepAction(*motion);
                kinematics.add(std::move(motion));
            });
    });
    kinematics.recomputeTimes();
}

void CHdf5CreatorDataWriter::writeKinematics(const CKinematics& kinematics)
{
    out().group(kinematicsName(out()), [&] {
        out().numbered(kinematics.actions, [&](const std::unique_ptr<CTimeDepAction>& motion) {
            out().attribute("type", motion->displayName());
            motion->write(*this);
            if (isBelt(*motion)) {
                writeTimeDepAction(*motion);
                reportLostBelt(*motion);
            }
        });
    });
}

} // namespace NBrenmark
