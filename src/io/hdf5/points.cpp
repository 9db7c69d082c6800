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

using Rotation = HDF5DATATYPES::SAngVelAndPosType;

void CHdf5Reader::readAngVelAndPosList(AngVelAndPosList& list)
{
    std::vector<Rotation::SRecord> records;
    in().table<Rotation>("angvelandposlist", records);
    list.clear();
    for (const Rotation::SRecord& record : records) {
        CAngVelAndPos rotation;
        rotation.angularVelocity = C3DVector(record.angvel[0], record.angvel[1], record.angvel[2]);
        rotation.pointOfAction = C3DPoint(record.poa[0], record.poa[1], record.poa[2]);
        list.push_back(rotation);
    }
}

void CHdf5Writer::writeAngVelAndPosList(const AngVelAndPosList& list)
{
    std::vector<Rotation::SRecord> records;
    for (const CAngVelAndPos& rotation : list) {
        const C3DVector& w = rotation.angularVelocity;
        const C3DPoint& p = rotation.pointOfAction;
        records.push_back({{w.x, w.y, w.z}, {p.x, p.y, p.z}});
    }
    out().table<Rotation>("angvelandposlist", records);
}

} // namespace NBrenmark
