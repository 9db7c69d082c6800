// The text of bare values: points, vectors, matrices, quaternions and axes.
#include "io/text/text_writer.h"
#include "maths/axis_angle.h"

namespace NBrenmark {

// Values that have no name of their own are under the path that the caller is at.

void CTextWriter::writeMatrix3(const C3DMatrix& matrix) { out.here(matrix); }
void CTextWriter::writeMatrix4(const C3DTransform& transform) { out.here(transform); }
void CTextWriter::writeVector(const C3DVector& vector) { out.here(vector); }
void CTextWriter::writePoint(const C3DPoint& point) { out.here(point); }
void CTextWriter::writeQuaternion(const CQuaternion& quaternion) { out.here(quaternion); }

void CTextWriter::writeAxisAngle(const CAxisAngle& axisAngle)
{
    out.value("start", axisAngle.start);
    out.value("end", axisAngle.end);
    out.value("angle", axisAngle.angle);
}

} // namespace NBrenmark
