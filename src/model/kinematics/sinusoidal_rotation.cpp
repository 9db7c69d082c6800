// The angle of an oscillation about a line.
#include "model/kinematics/sinusoidal_rotation.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

std::unique_ptr<CTimeDepAction> CSinusoidalRotation::clone() const
{
    return std::make_unique<CSinusoidalRotation>(*this);
}

void CSinusoidalRotation::read(IFileVisitorReader& v) { v.readSinusoidalRotation(*this); }

void CSinusoidalRotation::write(IFileVisitorWriter& v) const { v.writeSinusoidalRotation(*this); }

C3DVector CSinusoidalRotation::angularVelocityAt(double time, const C3DTransform& transform) const
{
    const double start = effectiveStart();
    if (time < start)
        return C3DVector();
    const C3DVector velocity = sinusoid.velocityAt(std::min(time, effectiveEnd()) - start);
    return movesWithBody ? transform * velocity : velocity;
}

C3DVector CSinusoidalRotation::angularDisplacementBetween(double t0, double t1) const
{
    const double start = effectiveStart();
    return sinusoid.positionAt(t1 - start) - sinusoid.positionAt(t0 - start);
}

void CSinusoidalRotation::moveBy(const C3DTransform& matrix)
{
    pointOfAction = matrix * pointOfAction;
    sinusoid.displacement = matrix * sinusoid.displacement;
}

void CSinusoidalRotation::axisChanged() { sinusoid.displacement = axis.direction() * displacementMagnitude; }

void CSinusoidalRotation::setDisplacementMagnitude(double magnitude)
{
    displacementMagnitude = magnitude;
    axisChanged();
}

} // namespace NBrenmark
