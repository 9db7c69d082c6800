// Interactions: one table, a row for each pair of materials.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "materials/interactions.h"

#include <memory>

namespace NBrenmark {

using HDF5DATATYPES::SInteractionType;

static const char* const interactionsName = "Interactions";

void CHdf5CreatorDataReader::readInteractionMap(InteractionMap& interactions)
{
    for (const SInteractionType::Row& row : in().table<SInteractionType>(interactionsName)) {
        leaveIfStopped();
        if (interactions.entries.contains(row.key))
            report(eLost, NLogTitle::hdf5Read,
                   "Two interactions are keyed \"" + shortened(row.key) + "\": the later one stays.", 1,
                   shortened(row.key));
        interactions.setByKey(row.key, std::make_unique<CInteraction>(row).release());
    }
}

void CHdf5CreatorDataWriter::writeInteractionMap(const InteractionMap& interactions)
{
    std::vector<SInteractionType::Row> rows;
    for (auto entry = interactions.entries.begin(); entry != interactions.entries.end(); ++entry)
        rows.push_back({*entry.value(), entry.key()});
    out().table<SInteractionType>(interactionsName, rows);
}

} // namespace NBrenmark
