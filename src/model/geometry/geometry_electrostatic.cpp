// Hands the charge to the visitors.
#include "model/geometry/geometry_electrostatic.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CGeometryGroupElectrostatic::read(IFileVisitorReader& v) { v.readGeometryGroupElectrostatic(*this); }

void CGeometryGroupElectrostatic::write(IFileVisitorWriter& v) const { v.writeGeometryGroupElectrostatic(*this); }

} // namespace NBrenmark
