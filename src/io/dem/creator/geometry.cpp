// The list of geometry groups in a creator block.
#include "model/geometry_groups.h"

#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"

namespace NBrenmark {

static constexpr qint64 leastGroupBytes = 8;

void CDemCreatorDataReader::readGeometryGroups(GeometryGroups& groups)
{
    groups.clear();
    CInForm f = in();
    if (const quint32 count = f.count("geometry group", leastGroupBytes); count > 0)
        throw not_carried_error(counted(count, "geometry group"));
}

void CDemCreatorDataWriter::writeGeometryGroups(const GeometryGroups& groups) { out().i32(groups.count()); }

} // namespace NBrenmark
