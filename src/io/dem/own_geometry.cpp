// The geometry that a selection keeps in the settings file has the form of a creator block, which is known in this
// folder alone.
#include "analysis/own_geometry.h"

#include "core/data_place.h"
#include "core/versioned_stream.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/unmoved_ids.h"
#include "model/geometry_groups.h"

namespace NBrenmark {

/// The options under which groups have no property manager.
static SSaveOptions withoutProperties()
{
    SSaveOptions options;
    options.useNullPropertyManager = true;
    return options;
}

std::shared_ptr<GeometryGroups> readOwnGeometry(QDataStream& stream)
{
    const CUnmovedIds ids;
    CDemDataStream own(stream.device(), withoutProperties());
    own.setFileVersion(fileVersionOf(stream));
    own.setLimit(blockEndOf(stream));
    SDataPlace place = placeAtWork();
    place.object = "geometry of a selection";
    const CPlaceScope scope(place);
    CDemCreatorDataReader reader(own);
    auto groups = std::make_shared<GeometryGroups>();
    groups->read(reader);
    return groups;
}

void writeOwnGeometry(QDataStream& stream, const GeometryGroups& groups)
{
    CDemDataStream own(stream.device(), withoutProperties());
    CDemCreatorDataWriter writer(own);
    groups.write(writer);
    if (own.status() != QDataStream::Ok)
        stream.setStatus(own.status());
}

} // namespace NBrenmark
