// What changes of the geometry with time: it lies on the groups of the creator model.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "model/geometry_groups.h"

namespace NBrenmark {

void CHdf5TimestepDataReader::readGeometryGroups(GeometryGroups&)
{
    in().group("GeometryGroups/", [&] { refuseAny(in().childCount(), "geometry group", "geometry groups"); });
}

void CHdf5TimestepDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    out().group("GeometryGroups/", [&] { refuseAny(groups.count(), "geometry group", "geometry groups"); });
}

} // namespace NBrenmark
