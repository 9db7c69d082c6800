// The geometry that a selection keeps in the settings file has the form of a creator block, which is known in this
// folder alone.
#include "core/data_place.h"
#include "core/deck/file_families.h"
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

std::shared_ptr<GeometryGroups> NLegacyFamily::readOwnGeometry(CVersionedStream& stream)
{
    const CUnmovedIds ids;
    CDemDataStream own(stream.device(), withoutProperties());
    own.setFileVersion(stream.fileVersion());
    own.setLimit(stream.limit()); // no count may reach beyond the selection
    SDataPlace place = placeAtWork();
    place.object = "geometry of a selection";
    const CPlaceScope scope(place);
    CDemCreatorDataReader reader(own);
    auto groups = std::make_shared<GeometryGroups>();
    groups->read(reader);
    return groups;
}

void NLegacyFamily::writeOwnGeometry(CVersionedStream& stream, const GeometryGroups& groups)
{
    CDemDataStream own(stream.device(), withoutProperties());
    CDemCreatorDataWriter writer(own);
    groups.write(writer);
    if (own.status() != QDataStream::Ok)
        stream.setStatus(own.status());
}

} // namespace NBrenmark
