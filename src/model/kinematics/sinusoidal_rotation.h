#pragma once
// An oscillation about a line.

#include "model/kinematics/rotation.h"
#include "model/kinematics/sinusoid.h"

namespace NBrenmark {

class CSinusoidalRotation : public CRotation
{
public:
    static constexpr const char* word = "Sinusoidal Rotation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    C3DVector angularVelocityAt(double time, const C3DTransform& transform) const override;
    C3DVector angularDisplacementBetween(double t0, double t1) const override;
    void moveBy(const C3DTransform& matrix) override;
    /// The displacement of the sinusoid follows from the axis and the magnitude.
    void axisChanged() override;
    void setDisplacementMagnitude(double magnitude);

    CSinusoid sinusoid;
    double displacementMagnitude = 0.0; ///< rad
};

} // namespace NBrenmark
