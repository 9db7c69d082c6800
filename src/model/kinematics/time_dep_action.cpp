// From when to when a motion acts, loops included.
#include "model/kinematics/time_dep_action.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

void CTimeDepAction::read(IFileVisitorReader& v) { v.readTimeDepAction(*this); }

void CTimeDepAction::write(IFileVisitorWriter& v) const { v.writeTimeDepAction(*this); }

void CTimeDepAction::setAxisStart(const C3DPoint& point)
{
    axis.startPoint = point;
    axisChanged();
}

void CTimeDepAction::setAxisEnd(const C3DPoint& point)
{
    axis.endPoint = point;
    axisChanged();
}

double CTimeDepAction::effectiveEnd() const
{
    const double end = loopIndex * loopInterval + endTime;
    return loop ? std::min(end, loopEndTime) : end; // the last turn of a loop may be cut short
}

bool CTimeDepAction::clipSpan(double& from, double& to) const
{
    const double start = effectiveStart();
    const double end = effectiveEnd();
    if (!(to > start) && !fuzzyEqual(to, start))
        return false;
    if (!(from < end) && !fuzzyEqual(from, end))
        return false;
    if (from < start || fuzzyEqual(from, start))
        from = start;
    if (to < start || fuzzyEqual(to, start))
        to = start;
    if (to > end || fuzzyEqual(to, end))
        to = end;
    return true;
}

double CTimeDepAction::spanOf(double t0, double t1) { return fuzzyEqual(t0, t1) ? 0.0 : t1 - t0; }

} // namespace NBrenmark
