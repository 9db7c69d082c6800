#pragma once
// A motion along a line with constant acceleration.

#include "model/kinematics/translation.h"

namespace NBrenmark {

class CLinearTranslation : public CTranslation
{
public:
    static constexpr const char* word = "Linear Translation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    C3DVector velocityAt(double time) const override;
    C3DVector displacementBetween(double t0, double t1) const override;

    double initialVelocity = 0.0; ///< along the axis, m/s
    double acceleration = 0.0;    ///< along the axis, m/s^2

    // Of the solver that moves the mesh; carried and copied, never stored.
    C3DVector currentVelocity;    ///< m/s
    C3DVector currentOffset;      ///< m
    double distanceCovered = 0.0; ///< m

protected:
    /// The velocity along another direction than that of the axis.
    C3DVector velocityAlong(const C3DVector& direction, double time) const;
};

} // namespace NBrenmark
