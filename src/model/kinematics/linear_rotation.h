#pragma once
// A rotation with constant angular acceleration.

#include "model/kinematics/rotation.h"

namespace NBrenmark {

class CLinearRotation : public CRotation
{
public:
    static constexpr const char* word = "Linear Rotation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    C3DVector angularVelocityAt(double time, const C3DTransform& transform) const override;
    C3DVector angularDisplacementBetween(double t0, double t1) const override;
    void moveBy(const C3DTransform& matrix) override;
    /// The two vectors follow from axis and magnitudes, unless legacyVectorsSet.
    void axisChanged() override;
    /// A new start is a new axis: it ends legacyVectorsSet.
    void setAxisStart(const C3DPoint& point) override;
    void setInitialAngularVelocity(double magnitude);
    void setAngularAcceleration(double magnitude);

    double initialAngularVelocity = 0.0;       ///< about the axis, rad/s
    double angularAccelerationMagnitude = 0.0; ///< about the axis, rad/s^2
    C3DVector angularVelocity;                 ///< at the start, rad/s; moves with the body
    C3DVector angularAcceleration;             ///< rad/s^2; moves with the body
    bool legacyVectorsSet = false;             ///< the vectors are those of an old deck, which stored no axis
};

} // namespace NBrenmark
