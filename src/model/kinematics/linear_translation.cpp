// Velocity and way of a motion that speeds up evenly.
#include "model/kinematics/linear_translation.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

std::unique_ptr<CTimeDepAction> CLinearTranslation::clone() const
{
    return std::make_unique<CLinearTranslation>(*this);
}

void CLinearTranslation::read(IFileVisitorReader& v) { v.readLinearTranslation(*this); }

void CLinearTranslation::write(IFileVisitorWriter& v) const { v.writeLinearTranslation(*this); }

C3DVector CLinearTranslation::velocityAlong(const C3DVector& direction, double time) const
{
    const double start = effectiveStart();
    if (time < start)
        return C3DVector();
    return (initialVelocity + (std::min(time, effectiveEnd()) - start) * acceleration) * direction;
}

C3DVector CLinearTranslation::velocityAt(double time) const { return velocityAlong(axis.direction(), time); }

C3DVector CLinearTranslation::displacementBetween(double t0, double t1) const
{
    const double span = spanOf(t0, t1);
    return span * velocityAt(t0) + (0.5 * acceleration * span * span) * axis.direction();
}

} // namespace NBrenmark
