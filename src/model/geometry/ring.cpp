// The direction and the step from one vertex to the next on a circle about any axis.
#include "model/geometry/ring.h"

namespace NBrenmark {

static constexpr double fullTurn = 6.28318530717958647692; // rad

C3DVector radialDirection(const C3DVector& axis)
{
    // Of the two the longer one: the other may vanish.
    if (axis.x * axis.x > axis.y * axis.y)
        return C3DVector(axis.z, 0.0, -axis.x).normalised();
    return C3DVector(0.0, -axis.z, axis.y).normalised();
}

C3DTransform ringStep(const C3DVector& axis, quint32 steps)
{
    C3DTransform step;
    if (steps > 0)
        step.rotate(axis, fullTurn / steps);
    return step;
}

} // namespace NBrenmark
