// Geometry in a creator model, and the boxes that models keep.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "model/bounding_box.h"
#include "model/geometry_groups.h"

namespace NBrenmark {

void CHdf5CreatorDataReader::readGeometryGroups(GeometryGroups& groups)
{
    groups.clear();
    in().group("GeometryGroups/", [&] { refuseAny(in().childCount(), "geometry group", "geometry groups"); });
}

void CHdf5CreatorDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    out().group("GeometryGroups/", [&] { refuseAny(groups.count(), "geometry group", "geometry groups"); });
}

void CHdf5CreatorDataReader::readBoundingBox(CBoundingBox& box)
{
    std::array<C3DPoint, 2> corners;
    in().fixedRows("bounding box", corners);
    box.lower = corners[0];
    box.upper = corners[1];
}

void CHdf5CreatorDataWriter::writeBoundingBox(const CBoundingBox& box)
{
    out().fixedRows("bounding box", std::array<C3DPoint, 2>{box.lower, box.upper});
}

} // namespace NBrenmark
