// What changes of motions with time: what moved along with the body.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "io/hdf5/geometry.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/kinematics.h"
#include "model/kinematics/linear_rotation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"

namespace NBrenmark {

// ---------------------------------------------------------------- parts of motions

template <class TForm, class TRotation>
static void rotationForm(TForm& f, TRotation& rotation)
{
    f.dataset("point of action", rotation.pointOfAction); // m
}

void CHdf5TimestepDataReader::readRotation(CRotation& rotation) { rotationForm(in(), rotation); }
void CHdf5TimestepDataWriter::writeRotation(const CRotation& rotation) { rotationForm(out(), rotation); }

template <class TForm, class TSinusoid>
static void sinusoidForm(TForm& f, TSinusoid& sinusoid)
{
    if (f.since(30, 0, 9))
        f.dataset("displacement", sinusoid.displacement); // m or rad; amplitude and direction
}

void CHdf5TimestepDataReader::readSinusoid(CSinusoid& sinusoid) { sinusoidForm(in(), sinusoid); }
void CHdf5TimestepDataWriter::writeSinusoid(const CSinusoid& sinusoid) { sinusoidForm(out(), sinusoid); }

// ---------------------------------------------------------------- motions

template <class TForm, class TMotion>
static void linearRotationForm(TForm& f, TMotion& motion)
{
    rotationForm(f, motion);
    f.dataset("initial velocity", motion.angularVelocity); // rad/s, as the axis is turned by now
    f.dataset("acceleration", motion.angularAcceleration); // rad/s^2, likewise
}

void CHdf5TimestepDataReader::readLinearRotation(CLinearRotation& motion) { linearRotationForm(in(), motion); }
void CHdf5TimestepDataWriter::writeLinearRotation(const CLinearRotation& motion) { linearRotationForm(out(), motion); }

void CHdf5TimestepDataReader::readSinusoidalTranslation(CSinusoidalTranslation& motion) { motion.sinusoid.read(*this); }
void CHdf5TimestepDataWriter::writeSinusoidalTranslation(const CSinusoidalTranslation& motion)
{
    motion.sinusoid.write(*this);
}

void CHdf5TimestepDataReader::readSinusoidalRotation(CSinusoidalRotation& motion)
{
    readRotation(motion);
    motion.sinusoid.read(*this);
}

void CHdf5TimestepDataWriter::writeSinusoidalRotation(const CSinusoidalRotation& motion)
{
    writeRotation(motion);
    motion.sinusoid.write(*this);
}

template <class TForm, class TMotion>
static void conveyorTranslationForm(TForm& f, TMotion& motion)
{
    f.dataset("xform", motion.conveyorTransform); // from where the belt was defined to where it is
}

void CHdf5TimestepDataReader::readConveyorTranslation(CConveyorTranslation& motion)
{
    conveyorTranslationForm(in(), motion);
}

void CHdf5TimestepDataWriter::writeConveyorTranslation(const CConveyorTranslation& motion)
{
    conveyorTranslationForm(out(), motion);
}

// ---------------------------------------------------------------- all motions

void CHdf5TimestepDataReader::readKinematics(CKinematics& kinematics)
{
    in().group(kinematicsName(in()), [&] {
        const hsize_t count = in().childCount();
        if (count > kinematics.actions.size()) {
            // One that the model couldn't take is somewhere among them: which states are whose is lost.
            report(eLost, NLogTitle::hdf5Read,
                   "The state of " + std::to_string(count) + " motions is skipped: the model has " +
                       std::to_string(kinematics.actions.size()) + ".",
                   count);
            return;
        }
        for (hsize_t i = 0; i < count; ++i)
            in().group(std::to_string(i), [&] { kinematics.actions[i]->read(*this); });
    });
}

void CHdf5TimestepDataWriter::writeKinematics(const CKinematics& kinematics)
{
    out().group(kinematicsName(out()), [&] {
        out().numbered(kinematics.actions,
                       [&](const std::unique_ptr<CTimeDepAction>& motion) { motion->write(*this); });
    });
}

} // namespace NBrenmark
