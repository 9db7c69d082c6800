// The version record at the head of both roots.
#include "core/not_carried.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/simulation_data.h"

namespace NBrenmark {

/// Older decks hold particle prototypes, or forms of them that aren't known here yet.
static constexpr quint32 oldestCarriedVersion = makeVersion(20, 0, 16);

void CDemReader::readFileVersionInfo(CSimulationData& data)
{
    CInForm f = in();
    quint32 stored = 0;
    f.i32(stored);
    stream->setFileVersion(stored);
    data.fileVersion = stream->fileVersion();
    if (data.fileVersion < oldestCarriedVersion)
        throw not_carried_error("data of file version " + versionText(stored).toStdString());
    qint32 hasMore = 0;
    f.i32(hasMore, from(2, 4, 51), 0);
    if (hasMore != 0)
        f.dropI32(0, below(21, 0, 3));
    f.i32(data.buildRevision, from(20, 0, 18), 0u);
    if (f.since(20, 0, 18))
        f.text(data.buildBranch);
    else
        data.buildBranch.clear();
}

void CDemWriter::writeFileVersionInfo(CSimulationData& data)
{
    data.stampVersion();
    COutForm f = out();
    f.i32(data.fileVersion);
    f.dropI32();
    f.i32(data.buildRevision);
    f.text(data.buildBranch);
}

} // namespace NBrenmark
