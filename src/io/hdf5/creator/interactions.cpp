// Interactions: one table, a row for each pair of materials.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/hdf5/fixed_texts.h"
#include "model/interactions.h"

#include <memory>

namespace NBrenmark {

using HDF5DATATYPES::SInteractionType;

void CHdf5CreatorDataReader::readInteractionMap(InteractionMap& interactions)
{
    std::vector<SInteractionType::SRecord> records;
    in().table<SInteractionType>("Interactions", records);
    for (const SInteractionType::SRecord& record : records) {
        leaveIfStopped();
        const QString key = textOf(record.key);
        if (interactions.entries.contains(key))
            report(eLost, NLogTitle::hdf5Read,
                   "Two interactions are keyed \"" + shortened(key) + "\": the later one stays.", 1, shortened(key));
        auto interaction = std::make_unique<CInteraction>();
        interaction->restitution = record.restitution;
        interaction->staticFriction = record.staticFriction;
        interaction->rollingFriction = record.rollingFriction;
        interactions.setByKey(key, interaction.release());
    }
}

std::vector<SInteractionType::SRecord> interactionRecords(const InteractionMap& interactions)
{
    std::vector<SInteractionType::SRecord> records;
    for (auto entry = interactions.entries.begin(); entry != interactions.entries.end(); ++entry) {
        SInteractionType::SRecord record = {};
        setText(record.key, entry.key());
        record.restitution = entry.value()->restitution;
        record.staticFriction = entry.value()->staticFriction;
        record.rollingFriction = entry.value()->rollingFriction;
        records.push_back(record);
    }
    return records;
}

void CHdf5CreatorDataWriter::writeInteractionMap(const InteractionMap& interactions)
{
    out().table<SInteractionType>("Interactions", interactionRecords(interactions));
}

} // namespace NBrenmark
