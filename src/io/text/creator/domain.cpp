// The text of the simulation box.
#include "model/domain.h"
#include "io/text/text_writer.h"
#include "model/bounding_box.h"

namespace NBrenmark {

void CTextWriter::writeDomain(const CDomain& domain)
{
    out.value("min", domain.min); // m
    out.value("max", domain.max); // m
    out.value("periodicX", domain.periodicX);
    out.value("periodicY", domain.periodicY);
    out.value("periodicZ", domain.periodicZ);
}

void CTextWriter::writeCylindricalPeriodicBoundaryConditions(const CCylindricalPeriodicBoundaryConditions& c)
{
    out.value("enabled", c.enabled);
    out.value("geometryName", c.geometryName);
    out.value("kinematicName", c.kinematicName);
    out.value("length", c.length); // m
    out.value("angle", c.angle);   // rad
}

void CTextWriter::writeBoundingBox(const CBoundingBox& box)
{
    out.value("upper", box.upper); // m
    out.value("lower", box.lower); // m
}

} // namespace NBrenmark
