// The version record at the head of both roots.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/version_stamp.h"
#include "model/simulation_data.h"

namespace NBrenmark {

void readStamp(CInForm& f, SDemStamp& stamp)
{
    quint32 version = 0;
    qint32 hasMore = 0;
    f.i32(version);
    f.stream.setFileVersion(version);  // all gates go by it from here on; major number 3 counts as 20
    f.i32(hasMore, from(2, 4, 51), 0); // from 21.0.3 on without meaning
    if (hasMore != 0)
        f.dropI32(0, below(21, 0, 3));
    f.i32(stamp.buildRevision, from(20, 0, 18), 0u);       // of the program that wrote the deck
    f.text(stamp.buildBranch, from(20, 0, 18), QString()); // of the program that wrote the deck
}

void CDemReader::readFileVersionInfo(CSimulationData& data)
{
    CInForm f = in();
    SDemStamp stamp;
    readStamp(f, stamp);
    data.fileVersion = stream->fileVersion();
    data.buildRevision = stamp.buildRevision;
    data.buildBranch = stamp.buildBranch;
}

void CDemWriter::writeFileVersionInfo(CSimulationData& data)
{
    data.stampVersion();
    COutForm f = out();
    f.i32(data.fileVersion);
    f.dropI32(); // nothing more follows
    f.i32(data.buildRevision);
    f.text(data.buildBranch);
}

} // namespace NBrenmark
