// What all rotations do to a transform: a turn about a line through the point of action.
#include "model/kinematics/rotation.h"

#include "model/kinematics/ang_vel_and_pos.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CRotation::read(IFileVisitorReader& v) { v.readRotation(*this); }

void CRotation::write(IFileVisitorWriter& v) const { v.writeRotation(*this); }

void CRotation::apply(double from, double to, C3DTransform& transform, const SMotionSums& sums) const
{
    if (!clipSpan(from, to))
        return;
    if (sums.rotations != nullptr && to < effectiveEnd()) {
        CAngVelAndPos entry;
        entry.angularVelocity = angularVelocityAt(to, transform);
        entry.pointOfAction = movesWithBody ? transform * pointOfAction : pointOfAction;
        sums.rotations->push_back(entry);
    }
    const C3DVector turn = angularDisplacementBetween(from, to);
    const double angle = turn.length();
    if (angle <= zeroLength) // there and back again would leave rounding in the translation
        return;
    transform.translate(pointOfAction.toVector());
    transform.rotate(turn, angle);
    transform.translate(-pointOfAction.toVector());
}

} // namespace NBrenmark
