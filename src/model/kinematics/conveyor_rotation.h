#pragma once
// A curved belt or roller: its surface turns about a line, the mesh stands still.

#include "model/kinematics/linear_rotation.h"

namespace NBrenmark {

/// Stored as a linear rotation; the word beside it tells them apart.
class CConveyorRotation : public CLinearRotation
{
public:
    static constexpr const char* word = "Conveyor Rotation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override { return std::make_unique<CConveyorRotation>(*this); }
    /// Always zero.
    C3DVector angularDisplacementBetween(double, double) const override { return C3DVector(); }
};

} // namespace NBrenmark
