#pragma once
// Vertices on a circle, as the round shapes set them.

#include "maths/transform.h"

#include <QtGlobal>

namespace NBrenmark {

/// A unit vector at right angles to an axis: what the angles about it are counted from.
C3DVector radialDirection(const C3DVector& axis);

/// The rotation about an axis by one of so many equal steps of a full turn.
C3DTransform ringStep(const C3DVector& axis, quint32 steps);

} // namespace NBrenmark
