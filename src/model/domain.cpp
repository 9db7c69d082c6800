// Wraps positions at periodic sides.
#include "model/domain.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <cmath>

namespace NBrenmark {

// Not the QObject: it has an identity of its own, and nothing is connected to a copy.
CDomain::CDomain(const CDomain& other)
    : QObject(),
      min(other.min),
      max(other.max),
      periodicX(other.periodicX),
      periodicY(other.periodicY),
      periodicZ(other.periodicZ)
{}

CDomain& CDomain::operator=(const CDomain& other)
{
    min = other.min;
    max = other.max;
    periodicX = other.periodicX;
    periodicY = other.periodicY;
    periodicZ = other.periodicZ;
    return *this;
}

void CDomain::read(IFileVisitorReader& v) { v.readDomain(*this); }

void CDomain::write(IFileVisitorWriter& v) const { v.writeDomain(*this); }

/// A coordinate that is no number is outside of everything.
static bool isInside(double c, double min, double max) { return c >= min && c <= max; }

/// The coordinate moved by whole widths of the domain. The remainder has the sign of c - min, so a
/// point that left below is counted down from the upper side.
static double wrapped(double c, double min, double max)
{
    if (isInside(c, min, max))
        return c;
    const double remainder = std::fmod(c - min, max - min);
    return remainder >= 0.0 ? remainder + min : remainder + max;
}

bool CDomain::wrapIntoDomain(C3DPoint& point) const
{
    if (periodicX)
        point.x = wrapped(point.x, min.x, max.x);
    if (periodicY)
        point.y = wrapped(point.y, min.y, max.y);
    if (periodicZ)
        point.z = wrapped(point.z, min.z, max.z);
    return (periodicX || isInside(point.x, min.x, max.x)) && (periodicY || isInside(point.y, min.y, max.y)) &&
           (periodicZ || isInside(point.z, min.z, max.z));
}

void CCylindricalPeriodicBoundaryConditions::read(IFileVisitorReader& v)
{
    v.readCylindricalPeriodicBoundaryConditions(*this);
}

void CCylindricalPeriodicBoundaryConditions::write(IFileVisitorWriter& v) const
{
    v.writeCylindricalPeriodicBoundaryConditions(*this);
}

} // namespace NBrenmark
