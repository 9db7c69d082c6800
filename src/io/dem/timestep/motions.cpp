// What changes with time of the motions of geometry groups: where the rotations act, and by what.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/kinematics.h"

namespace NBrenmark {

template <class TForm, class TRotation>
static void rotationForm(TForm&& f, TRotation& rotation)
{
    f.point(rotation.pointOfAction); // m
}
void CDemTimestepDataReader::readRotation(CRotation& rotation) { rotationForm(in(), rotation); }
void CDemTimestepDataWriter::writeRotation(const CRotation& rotation) { rotationForm(out(), rotation); }

template <class TForm, class TRotation>
static void linearRotationForm(TForm&& f, TRotation& rotation)
{
    const SGate gateVectors = from(23, 1, 0);
    rotationForm(f, rotation);
    f.point(rotation.angularVelocity, gateVectors, rotation.angularVelocity); // rad/s, as the axis is turned by now
    f.point(rotation.angularAcceleration, gateVectors, rotation.angularAcceleration); // rad/s^2, likewise
}
void CDemTimestepDataReader::readLinearRotation(CLinearRotation& rotation) { linearRotationForm(in(), rotation); }
void CDemTimestepDataWriter::writeLinearRotation(const CLinearRotation& rotation)
{
    linearRotationForm(out(), rotation);
}

/// Each motion follows in place.
void CDemTimestepDataReader::readKinematics(CKinematics& kinematics)
{
    if (in().stores(gateMotionsInTimestep)) {
        CDemCreatorDataReader wholeList(*stream);
        kinematics.read(wholeList);
        return;
    }
    for (const auto& motion : kinematics.actions)
        motion->read(*this);
}

void CDemTimestepDataWriter::writeKinematics(const CKinematics& kinematics)
{
    for (const auto& motion : kinematics.actions)
        if (dynamic_cast<const CConveyorRotation*>(motion.get()) == nullptr) // the list doesn't hold it either
            motion->write(*this);
}

} // namespace NBrenmark
