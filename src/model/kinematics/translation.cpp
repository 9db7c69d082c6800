// What all translations do to a transform.
#include "model/kinematics/translation.h"

namespace NBrenmark {

void CTranslation::apply(double from, double to, C3DTransform& transform, const SMotionSums& sums) const
{
    if (!clipSpan(from, to))
        return;
    if (sums.velocity != nullptr && to < effectiveEnd())
        *sums.velocity += velocityAt(to);
    transform.translate(displacementBetween(from, to));
}

} // namespace NBrenmark
