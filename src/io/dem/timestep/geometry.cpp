// What changes with time of the geometry. The list itself stands in the creator block: each of its
// groups follows in place, and as none can be held, nothing does.
#include "model/geometry_groups.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static void refuseGroups(const GeometryGroups& groups)
{
    if (groups.count() > 0)
        throw not_carried_error(counted(groups.count(), "geometry group"));
}
void CDemTimestepDataReader::readGeometryGroups(GeometryGroups& groups) { refuseGroups(groups); }
void CDemTimestepDataWriter::writeGeometryGroups(const GeometryGroups& groups) { refuseGroups(groups); }

} // namespace NBrenmark
