#pragma once
// Motions along a line.

#include "model/kinematics/time_dep_action.h"

namespace NBrenmark {

class CTranslation : public CTimeDepAction
{
public:
    /// Velocity that the motion imparts at a time, m/s. Zero before the start; after the end that of the end.
    virtual C3DVector velocityAt(double time) const = 0;
    /// m
    virtual C3DVector displacementBetween(double t0, double t1) const = 0;

    void apply(double from, double to, C3DTransform& transform, const SMotionSums& sums) const override;
    /// A translation holds no place in space.
    void moveBy(const C3DTransform&) override {}
};

} // namespace NBrenmark
