// Angular velocity and angle of a rotation that speeds up evenly.
#include "model/kinematics/linear_rotation.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

std::unique_ptr<CTimeDepAction> CLinearRotation::clone() const { return std::make_unique<CLinearRotation>(*this); }

void CLinearRotation::read(IFileVisitorReader& v) { v.readLinearRotation(*this); }

void CLinearRotation::write(IFileVisitorWriter& v) const { v.writeLinearRotation(*this); }

C3DVector CLinearRotation::angularVelocityAt(double time, const C3DTransform& transform) const
{
    const double start = effectiveStart();
    if (time < start)
        return C3DVector();
    const double span = std::min(time, effectiveEnd()) - start;
    const C3DVector velocity = angularAcceleration * span + angularVelocity;
    return movesWithBody ? transform * velocity : velocity; // rad/s
}

C3DVector CLinearRotation::angularDisplacementBetween(double t0, double t1) const
{
    const double span = spanOf(t0, t1);
    return (angularVelocityAt(t0, C3DTransform()) + 0.5 * span * angularAcceleration) * span; // rad
}

void CLinearRotation::moveBy(const C3DTransform& matrix)
{
    if (!movesWithBody)
        return;
    pointOfAction = matrix * pointOfAction;
    angularVelocity = matrix * angularVelocity;
    angularAcceleration = matrix * angularAcceleration;
}

void CLinearRotation::axisChanged()
{
    if (legacyVectorsSet) // an old deck stored the vectors, and no axis
        return;
    const C3DVector unit = axis.direction();
    angularVelocity = unit * initialAngularVelocity;
    angularAcceleration = unit * angularAccelerationMagnitude;
}

void CLinearRotation::setAxisStart(const C3DPoint& point)
{
    legacyVectorsSet = false;
    CRotation::setAxisStart(point);
}

void CLinearRotation::setInitialAngularVelocity(double magnitude)
{
    initialAngularVelocity = magnitude;
    axisChanged();
}

void CLinearRotation::setAngularAcceleration(double magnitude)
{
    angularAccelerationMagnitude = magnitude;
    axisChanged();
}

} // namespace NBrenmark
