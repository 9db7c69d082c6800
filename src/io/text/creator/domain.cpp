// The text of the simulation box.
#include "model/domain.h"
#include "io/text/text_writer.h"
#include "model/bounding_box.h"

namespace NBrenmark {

void CTextWriter::writeDomain(const CDomain& domain)
{
    out.value("min", domain.min);
    out.value("max", domain.max);
    out.value("periodicX", domain.periodicX);
    out.value("periodicY", domain.periodicY);
    out.value("periodicZ", domain.periodicZ);
}

void CTextWriter::writeCylindricalPeriodicBoundaryConditions(const CCylindricalPeriodicBoundaryConditions& c)
{
    out.value("enabled", c.enabled);
    out.value("geometryName", c.geometryName);
    out.value("kinematicName", c.kinematicName);
    out.value("length", c.length);
    out.value("angle", c.angle);
}

void CTextWriter::writeBoundingBox(const CBoundingBox& box)
{
    out.value("upper", box.upper);
    out.value("lower", box.lower);
}

} // namespace NBrenmark
