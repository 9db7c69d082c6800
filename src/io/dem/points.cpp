// Bare values: points, vectors, matrices, quaternions, axes and the rotations of a geometry group.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "maths/axis_angle.h"
#include "maths/quaternion.h"
#include "maths/transform.h"
#include "model/bounding_box.h"
#include "model/kinematics/ang_vel_and_pos.h"

namespace NBrenmark {

void CDemReader::readPoint(C3DPoint& point) { in().point(point); }
void CDemWriter::writePoint(const C3DPoint& point) { out().point(point); }

void CDemReader::readVector(C3DVector& vector) { in().point(vector); }
void CDemWriter::writeVector(const C3DVector& vector) { out().point(vector); }

/// Row by row.
template <class TForm, class TMatrix>
static void matrixForm(TForm&& f, TMatrix& matrix, int size)
{
    for (int row = 0; row < size; ++row)
        for (int column = 0; column < size; ++column)
            f.f64(matrix(row, column));
}
void CDemReader::readMatrix3(C3DMatrix& matrix) { matrixForm(in(), matrix, 3); }
void CDemWriter::writeMatrix3(const C3DMatrix& matrix) { matrixForm(out(), matrix, 3); }
void CDemReader::readMatrix4(C3DTransform& matrix) { matrixForm(in(), matrix, 4); }
void CDemWriter::writeMatrix4(const C3DTransform& matrix) { matrixForm(out(), matrix, 4); }

template <class TForm, class TQuaternion>
static void quaternionForm(TForm&& f, TQuaternion& quaternion)
{
    f.f64(quaternion.w); // the scalar part comes first
    f.f64(quaternion.x);
    f.f64(quaternion.y);
    f.f64(quaternion.z);
}
void CDemReader::readQuaternion(CQuaternion& quaternion) { quaternionForm(in(), quaternion); }
void CDemCreatorDataWriter::writeQuaternion(const CQuaternion& quaternion) { quaternionForm(out(), quaternion); }

template <class TForm, class TAxis>
static void axisAngleForm(TForm&& f, TAxis& axis)
{
    f.point(axis.start);
    f.point(axis.end);
    f.dropF64(from(2, 4, 9).below(2, 4, 17)); // one more number, soon gone again
    f.dropF64(from(2, 4, 9));
    f.f64(axis.angle, from(2, 4, 9), 0.0);
}
void CDemReader::readAxisAngle(CAxisAngle& axis) { axisAngleForm(in(), axis); }
void CDemCreatorDataWriter::writeAxisAngle(const CAxisAngle& axis) { axisAngleForm(out(), axis); }

template <class TForm, class TBox>
static void boundingBoxForm(TForm&& f, TBox& box)
{
    f.point(box.upper); // m; the upper corner comes first
    f.point(box.lower); // m; the upper corner comes first
}
void CDemCreatorDataReader::readBoundingBox(CBoundingBox& box) { boundingBoxForm(in(), box); }
void CDemCreatorDataWriter::writeBoundingBox(const CBoundingBox& box) { boundingBoxForm(out(), box); }

template <class TForm, class TRotation>
static void rotationForm(TForm&& f, TRotation& rotation)
{
    f.point(rotation.angularVelocity); // rad/s
    f.point(rotation.pointOfAction);   // m
}
void CDemReader::readAngVelAndPos(CAngVelAndPos& rotation) { rotationForm(in(), rotation); }
void CDemWriter::writeAngVelAndPos(const CAngVelAndPos& rotation) { rotationForm(out(), rotation); }

template <class TForm, class TRotations>
static void rotationsForm(TForm&& f, TRotations& rotations)
{
    f.length("rotation", 48, rotations);
    for (auto& rotation : rotations)
        rotationForm(f, rotation);
}
void CDemReader::readAngVelAndPosList(AngVelAndPosList& rotations) { rotationsForm(in(), rotations); }
void CDemWriter::writeAngVelAndPosList(const AngVelAndPosList& rotations) { rotationsForm(out(), rotations); }

} // namespace NBrenmark
