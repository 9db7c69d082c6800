#pragma once
// A harmonic oscillation of a vector: a displacement, m, or a turn about its direction, rad.

#include "maths/vector.h"

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CSinusoid
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// displacement sin(2 pi frequency t + offset)
    /// \param time  since the start, s
    C3DVector positionAt(double time) const;
    /// Its rate of change, per s.
    C3DVector velocityAt(double time) const;

    C3DVector displacement; ///< amplitude and direction
    double frequency = 0.0; ///< Hz
    double offset = 0.0;    ///< phase, rad
};

} // namespace NBrenmark
