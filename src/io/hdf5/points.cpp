// Values without a name of their own, under the visitor's pending name, and the table of rotations.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "model/kinematics/ang_vel_and_pos.h"

namespace NBrenmark {

void CHdf5Reader::readVector(C3DVector& vector) { in().attribute(pendingName, vector); }
void CHdf5Writer::writeVector(const C3DVector& vector) { out().attribute(pendingName, vector); }

void CHdf5Reader::readPoint(C3DPoint& point) { in().attribute(pendingName, point); }
void CHdf5Writer::writePoint(const C3DPoint& point) { out().attribute(pendingName, point); }

void CHdf5Reader::readMatrix3(C3DMatrix& matrix) { in().attribute(pendingName, matrix); }
void CHdf5Writer::writeMatrix3(const C3DMatrix& matrix) { out().attribute(pendingName, matrix); }

void CHdf5Reader::readMatrix4(C3DTransform& transform) { in().attribute(pendingName, transform); }
void CHdf5Writer::writeMatrix4(const C3DTransform& transform) { out().attribute(pendingName, transform); }

// ---------------------------------------------------------------- rotations

using HDF5DATATYPES::SAngVelAndPosType;

void CHdf5Reader::readAngVelAndPosList(AngVelAndPosList& list)
{
    list.clear();
    for (const CAngVelAndPos& rotation : in().table<SAngVelAndPosType>("angvelandposlist"))
        list.push_back(rotation);
}

void CHdf5Writer::writeAngVelAndPosList(const AngVelAndPosList& list)
{
    out().table<SAngVelAndPosType>("angvelandposlist", list);
}

} // namespace NBrenmark
