// Random directions, evenly over the sphere.
#include "model/factories/factory_vectors.h"

namespace NBrenmark {

C3DVector unitUnlessZero(const C3DVector& v) { return v.squaredLength() <= zeroLength ? v : v.normalised(); }

C3DVector randomDirection()
{
    // Each in a statement of its own: the order of the draws is part of the sequence.
    const CRandomDistribution component(-1.0, 1.0);
    C3DVector direction;
    direction.z = component.sample();
    direction.y = component.sample();
    direction.x = component.sample();
    return unitUnlessZero(direction);
}

} // namespace NBrenmark
