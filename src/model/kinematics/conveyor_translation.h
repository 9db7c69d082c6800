#pragma once
// A belt: its surface runs along a line, the mesh stands still.

#include "model/kinematics/linear_translation.h"

namespace NBrenmark {

class CConveyorTranslation : public CLinearTranslation
{
public:
    static constexpr const char* word = "Conveyor Translation";

    QString displayName() const override { return QString::fromLatin1(word); }
    std::unique_ptr<CTimeDepAction> clone() const override;
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    /// Along the axis as the belt is turned now.
    C3DVector velocityAt(double time) const override;
    /// Always zero.
    C3DVector displacementBetween(double t0, double t1) const override;
    void moveBy(const C3DTransform& matrix) override { conveyorTransform = matrix * conveyorTransform; }

    C3DTransform conveyorTransform; ///< from where the belt was defined to where it is
};

} // namespace NBrenmark
