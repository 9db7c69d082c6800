#pragma once
// One motion of a geometry group: from when to when it acts, and along or about which line. What it
// does in that time is in the derived classes.

#include "maths/transform.h"
#include "model/kinematics/axis_line.h"

#include <QString>
#include <memory>

namespace NBrenmark {

class AngVelAndPosList;
class IFileVisitorReader;
class IFileVisitorWriter;

/// What the motions of one step add up to beside the displacement. A sum that isn't wanted is null.
struct SMotionSums
{
    C3DVector* velocity = nullptr;         ///< of the translations, m/s
    AngVelAndPosList* rotations = nullptr; ///< one entry for each rotation that acts
};

class CTimeDepAction
{
public:
    virtual ~CTimeDepAction() = default;

    /// The word that files hold for the kind of motion.
    virtual QString displayName() const = 0;
    virtual std::unique_ptr<CTimeDepAction> clone() const = 0;
    /// Multiplies the displacement of a time span on the right of transform, s. The part of the span in
    /// which the motion doesn't act is cut off; a span that misses it changes nothing.
    virtual void apply(double from, double to, C3DTransform& transform, const SMotionSums& sums) const = 0;
    /// Moves what the motion holds in space along with the body.
    virtual void moveBy(const C3DTransform& matrix) = 0;
    /// Brings what follows from the axis and the magnitudes up to date. Call it after setting those
    /// members one by one, as a reader does.
    virtual void axisChanged() {}
    /// The part that all motions have in common; each kind has its own.
    virtual void read(IFileVisitorReader& visitor);
    virtual void write(IFileVisitorWriter& visitor) const;

    virtual void setAxisStart(const C3DPoint& point);
    void setAxisEnd(const C3DPoint& point);

    double effectiveStart() const { return loopIndex * loopInterval + startTime; }
    /// Never later than the end of the loop.
    double effectiveEnd() const;
    double lastEnd() const { return loop ? loopEndTime : endTime; }

    QString name;
    double startTime = 0.0;      ///< s
    double endTime = 9999.0;     ///< s
    bool loop = false;           ///< starts again every loopInterval until loopEndTime
    double loopInterval = 0.0;   ///< s
    double loopEndTime = 9999.0; ///< s
    double loopIndex = 0.0;      ///< turns of the loop so far; never stored
    qint32 actionId = -1;        ///< never stored
    CAxisLine axis;

protected:
    CTimeDepAction() = default;
    CTimeDepAction(const CTimeDepAction&) = default;
    CTimeDepAction& operator=(const CTimeDepAction&) = default;

    /// Cuts a span to the time in which the motion acts. \return false if they don't meet
    bool clipSpan(double& from, double& to) const;
    /// t1 - t0; 0 for two times that the fuzzy test calls equal.
    static double spanOf(double t0, double t1);
};

} // namespace NBrenmark
