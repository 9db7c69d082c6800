#pragma once
// An oscillation along a line.

#include "model/kinematics/sinusoid.h"
#include "model/kinematics/translation.h"

namespace NBrenmark {

class CSinusoidalTranslation : public CTranslation
{
public:
    static constexpr const char* word = "Sinusoidal Translation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    C3DVector velocityAt(double time) const override;
    C3DVector displacementBetween(double t0, double t1) const override;
    /// The displacement of the sinusoid follows from the axis and the magnitude.
    void axisChanged() override;
    void setDisplacementMagnitude(double magnitude);

    CSinusoid sinusoid;
    double displacementMagnitude = 0.0; ///< m
};

} // namespace NBrenmark
