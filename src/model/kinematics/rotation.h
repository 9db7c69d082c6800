#pragma once
// Motions that turn about a line.

#include "model/kinematics/time_dep_action.h"

namespace NBrenmark {

class CRotation : public CTimeDepAction
{
public:
    /// Angular velocity at a time, rad/s. Zero before the start; after the end that of the end.
    /// \param transform  where the body is: an axis that moves with it is turned likewise
    virtual C3DVector angularVelocityAt(double time, const C3DTransform& transform) const = 0;
    /// The axis of the turn, its length the angle, rad.
    virtual C3DVector angularDisplacementBetween(double t0, double t1) const = 0;

    void apply(double from, double to, C3DTransform& transform, const SMotionSums& sums) const override;
    /// The part that all rotations have in common; each kind has its own.
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    C3DPoint axisStart() const { return axis.startPoint; }
    C3DPoint axisEnd() const { return axis.endPoint; }

    C3DPoint pointOfAction; ///< m
    bool movesWithBody = true;
};

} // namespace NBrenmark
