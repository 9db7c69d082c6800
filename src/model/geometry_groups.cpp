#include "model/geometry_groups.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void GeometryGroups::read(IFileVisitorReader& v) { v.readGeometryGroups(*this); }

void GeometryGroups::write(IFileVisitorWriter& v) const { v.writeGeometryGroups(*this); }

} // namespace NBrenmark
