// Position and rate of an oscillation.
#include "model/kinematics/sinusoid.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <cmath>

namespace NBrenmark {

static constexpr double halfTurn = 3.14159265358979323846; // rad

void CSinusoid::read(IFileVisitorReader& v) { v.readSinusoid(*this); }

void CSinusoid::write(IFileVisitorWriter& v) const { v.writeSinusoid(*this); }

C3DVector CSinusoid::positionAt(double time) const
{
    return displacement * std::sin(2.0 * halfTurn * frequency * time + offset);
}

C3DVector CSinusoid::velocityAt(double time) const
{
    const double angularFrequency = 2.0 * halfTurn * frequency;
    return angularFrequency * displacement * std::sin(0.5 * halfTurn + offset + angularFrequency * time);
}

} // namespace NBrenmark
