// The way of an oscillation along a line.
#include "model/kinematics/sinusoidal_translation.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

std::unique_ptr<CTimeDepAction> CSinusoidalTranslation::clone() const
{
    return std::make_unique<CSinusoidalTranslation>(*this);
}

void CSinusoidalTranslation::read(IFileVisitorReader& v) { v.readSinusoidalTranslation(*this); }

void CSinusoidalTranslation::write(IFileVisitorWriter& v) const { v.writeSinusoidalTranslation(*this); }

C3DVector CSinusoidalTranslation::velocityAt(double time) const
{
    const double start = effectiveStart();
    if (time < start)
        return C3DVector();
    return sinusoid.velocityAt(std::min(time, effectiveEnd()) - start);
}

C3DVector CSinusoidalTranslation::displacementBetween(double t0, double t1) const
{
    const double start = effectiveStart();
    return sinusoid.positionAt(t1 - start) - sinusoid.positionAt(t0 - start);
}

void CSinusoidalTranslation::axisChanged() { sinusoid.displacement = axis.direction() * displacementMagnitude; }

void CSinusoidalTranslation::setDisplacementMagnitude(double magnitude)
{
    displacementMagnitude = magnitude;
    axisChanged();
}

} // namespace NBrenmark
