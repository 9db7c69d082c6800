// Runs the writer of a root with a form that only measures, so that what can't be stored is refused before a deck is touched.
#include "io/hdf5/storable.h"

#include "core/log.h"
#include "io/hdf5/hdf5_writer.h"
#include "model/creator_data.h"

namespace NBrenmark {

void checkStorable(CSimulationData& data, const SSaveOptions& options)
{
    const CLogSilence silence; // what isn't carried is reported when it is written
    H5::H5File none;
    SSaveOptions ownOptions = options; // some serve one write
    if (auto* const creator = dynamic_cast<CCreatorData*>(&data)) {
        const bool modified = creator->modified;
        CHdf5CreatorDataWriter writer(none, ownOptions, true);
        creator->write(writer);
        creator->modified = modified; // nothing was stored
    }
    else {
        CHdf5TimestepDataWriter writer(none, ownOptions, true);
        data.write(writer);
    }
}

} // namespace NBrenmark
