#pragma once
// A rotation by two points of its axis and an angle.

#include "maths/vector.h"

namespace NBrenmark {

class CAxisAngle
{
public:
    C3DPoint start;     ///< m
    C3DPoint end;       ///< m
    double angle = 0.0; ///< rad
};

} // namespace NBrenmark
