// The motions of a geometry group: an element for each under "dynamics", named by its kind.

#include "xml/motions.h"
#include "core/log.h"
#include "model/geometry/geometry_group.h"
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

#include <array>

namespace NBrenmark {

// ---------------------------------------------------------------- parts of motions

template <class TForm, class TMotion>
static void motionForm(TForm& f, TMotion& motion)
{
    f.attribute("name", motion.name);
    f.attribute("t_start", motion.startTime); // s
    f.attribute("t_end", motion.endTime);     // s
    f.flag("loop", motion.loop);
    f.attribute("loop_interval", motion.loopInterval); // s
    f.attribute("loop_until", motion.loopEndTime);     // s
}

template <class TForm, class TRotation>
static void rotationForm(TForm& f, TRotation& rotation)
{
    motionForm(f, rotation);
    f.xyz("origin_", rotation.pointOfAction); // m
    f.flag("moves_with_body", rotation.movesWithBody);
}

template <class TForm, class TMotion>
static void axisForm(TForm& f, TMotion& motion)
{
    f.xyz("start_", motion.axis.startPoint); // m
    f.xyz("end_", motion.axis.endPoint);     // m
}

/// What both sinusoidal motions hold beside the common part.
template <class TForm, class TMotion>
static void swingForm(TForm& f, TMotion& motion)
{
    f.attribute("displacement_magnitude", motion.displacementMagnitude); // m or rad
    axisForm(f, motion);
    f.xyz("displacement_", motion.sinusoid.displacement);
    f.attribute("frequency", motion.sinusoid.frequency); // Hz
    f.attribute("offset", motion.sinusoid.offset);       // rad
}

/// Old documents hold vectors alone: the first that isn't zero is the axis.
template <class TMotion>
static void axisFromVectors(TMotion& motion, const C3DVector& velocity, const C3DVector& acceleration)
{
    const C3DVector& along = velocity.length() > zeroLength ? velocity : acceleration;
    motion.axis.endPoint = motion.axis.startPoint + along;
}

// ---------------------------------------------------------------- translations

template <class TForm, class TMotion>
static void speedForm(TForm& f, TMotion& motion)
{
    f.attribute("acceleration", motion.acceleration);        // m/s^2
    f.attribute("initial_velocity", motion.initialVelocity); // m/s
    axisForm(f, motion);
}

void CXmlReader::readLinearTranslation(CLinearTranslation& motion)
{
    motionForm(in(), motion);
    speedForm(in(), motion);
    attributes.know("start_vel_");
    attributes.know("accn_");
    if (attributes.has("initial_velocity") || attributes.has("acceleration"))
        return;
    C3DVector velocity, acceleration;
    in().xyz("start_vel_", velocity);
    in().xyz("accn_", acceleration);
    axisFromVectors(motion, velocity, acceleration);
    motion.initialVelocity = velocity.length();
    motion.acceleration = acceleration.dot(motion.axis.direction());
}

void CXmlWriter::writeLinearTranslation(const CLinearTranslation& motion)
{
    motionForm(out(), motion);
    out().xyz("start_vel_", motion.axis.direction() * motion.initialVelocity); // m/s
    out().xyz("accn_", motion.axis.direction() * motion.acceleration);         // m/s^2
    speedForm(out(), motion);
}

template <class TForm, class TMotion>
static void beltForm(TForm& f, TMotion& motion)
{
    motionForm(f, motion);
    speedForm(f, motion);
}

void CXmlReader::readConveyorTranslation(CConveyorTranslation& motion) { beltForm(in(), motion); }
void CXmlWriter::writeConveyorTranslation(const CConveyorTranslation& motion) { beltForm(out(), motion); }

template <class TForm, class TMotion>
static void swingingForm(TForm& f, TMotion& motion)
{
    motionForm(f, motion);
    swingForm(f, motion);
}

void CXmlReader::readSinusoidalTranslation(CSinusoidalTranslation& motion) { swingingForm(in(), motion); }
void CXmlWriter::writeSinusoidalTranslation(const CSinusoidalTranslation& motion) { swingingForm(out(), motion); }

// ---------------------------------------------------------------- rotations

template <class TForm, class TMotion>
static void turningForm(TForm& f, TMotion& motion)
{
    f.attribute("start_angvel", motion.initialAngularVelocity);   // rad/s
    f.attribute("ang_accn", motion.angularAccelerationMagnitude); // rad/s^2
    axisForm(f, motion);
}

template <class TForm, class TMotion>
static void turningVectorsForm(TForm& f, TMotion& motion)
{
    f.xyz("start_angvel_", motion.angularVelocity); // rad/s
    f.xyz("ang_accn_", motion.angularAcceleration); // rad/s^2
}

/// The vectors are where the body has taken them; without them they follow from the axis, and the axis from them.
void CXmlReader::readLinearRotation(CLinearRotation& motion)
{
    rotationForm(in(), motion);
    turningForm(in(), motion);
    motion.axisChanged();
    if (!attributes.has("start_angvel_x"))
        return;
    turningVectorsForm(in(), motion);
    if (attributes.has("start_angvel") || attributes.has("ang_accn"))
        return;
    axisFromVectors(motion, motion.angularVelocity, motion.angularAcceleration);
    motion.initialAngularVelocity = motion.angularVelocity.length();
    motion.angularAccelerationMagnitude = motion.angularAcceleration.dot(motion.axis.direction());
}

void CXmlWriter::writeLinearRotation(const CLinearRotation& motion)
{
    rotationForm(out(), motion);
    if (dynamic_cast<const CConveyorRotation*>(&motion) == nullptr)
        turningVectorsForm(out(), motion);
    turningForm(out(), motion);
}

template <class TForm, class TMotion>
static void swingingRotationForm(TForm& f, TMotion& motion)
{
    rotationForm(f, motion);
    swingForm(f, motion);
}

void CXmlReader::readSinusoidalRotation(CSinusoidalRotation& motion) { swingingRotationForm(in(), motion); }
void CXmlWriter::writeSinusoidalRotation(const CSinusoidalRotation& motion) { swingingRotationForm(out(), motion); }

// ---------------------------------------------------------------- all motions

namespace {

struct SMotionTag
{
    const char* tag;
    QLatin1String kind;
};

/// Of each kind the first tag is the one that is written; the others are those of old documents.
const std::array<SMotionTag, 8> motionTags = {{
    {"linear_translation", QLatin1String(CLinearTranslation::word)},
    {"translation", QLatin1String(CLinearTranslation::word)},
    {"sinusoidal_translation", QLatin1String(CSinusoidalTranslation::word)},
    {"conveyor_translation", QLatin1String(CConveyorTranslation::word)},
    {"linear_rotation", QLatin1String(CLinearRotation::word)},
    {"rotation", QLatin1String(CLinearRotation::word)},
    {"sinusoidal_rotation", QLatin1String(CSinusoidalRotation::word)},
    {"conveyor_rotation", QLatin1String(CConveyorRotation::word)},
}};

} // namespace

void CXmlWriter::writeKinematics(const CKinematics& kinematics)
{
    out().element("dynamics", [&] {
        for (const std::unique_ptr<CTimeDepAction>& motion : kinematics.actions)
            for (const SMotionTag& row : motionTags)
                if (motion->displayName() == row.kind) {
                    out().element(row.tag, [&] { motion->write(*this); });
                    break;
                }
    });
}

static const QLatin1String servoName("translation_for_servo_control");

bool hasServoControl(const CGeometryGroup& group) { return std::abs(group.gain) > zeroLength; }

void addServoMotion(CGeometryGroup& group)
{
    auto motion = std::make_unique<CLinearTranslation>();
    motion->name = servoName;
    group.kinematics.add(std::move(motion));
}

bool readMotion(CGeometryGroup& group, const CXmlAttributes& attributes, const CXmlIoOptions& options,
                bool& hasMotionOfGain)
{
    for (const SMotionTag& row : motionTags) {
        if (!attributes.is(row.tag))
            continue;
        std::unique_ptr<CTimeDepAction> motion = createMotion(row.kind);
        CXmlReader reader(attributes, options);
        motion->read(reader);
        const bool isServo = motion->name == servoName && row.kind == QLatin1String(CLinearTranslation::word);
        if (isServo && !hasServoControl(group)) {
            report(eNotCarried, NLogTitle::xmlImport,
                   "A motion for servo control is left out: its geometry group has no gain.");
            return true;
        }
        if (isServo && hasMotionOfGain) { // which gives way to the one that the document holds
            group.kinematics.remove(servoName);
            hasMotionOfGain = false;
        }
        group.kinematics.add(std::move(motion));
        return true;
    }
    return false;
}

} // namespace NBrenmark
