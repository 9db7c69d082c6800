// Which share of the particles of a mix gets which size law.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "io/hdf5/counted.h"
#include "model/size_distributions.h"

namespace NBrenmark {

void CHdf5CreatorDataReader::readParticleSizeDistributionMap(CParticleSizeDistributionMap& map)
{
    map.clear();
    in().group("SizeDistributions/", [&] { refuseAny(in().childCount(), "size distribution", "size distributions"); });
}

void CHdf5CreatorDataWriter::writeParticleSizeDistributionMap(const CParticleSizeDistributionMap& map)
{
    out().group("SizeDistributions/",
                [&] { refuseAny(map.entries.size(), "size distribution", "size distributions"); });
}

} // namespace NBrenmark
