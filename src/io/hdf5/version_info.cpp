// The version record, the first thing of every root.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "model/simulation_data.h"

namespace NBrenmark {

void CHdf5Reader::readFileVersionInfo(CSimulationData& data)
{
    in().attribute("file version", fileVersion); // what every gate of this root goes by
    data.fileVersion = fileVersion;
    qint32 revision = 0;
    in().attribute("svn version", revision); // of whoever wrote; nothing goes by it
    data.buildRevision = static_cast<quint32>(revision);
    in().attribute("svn path", data.buildBranch);
}

void CHdf5Writer::writeFileVersionInfo(CSimulationData& data)
{
    data.stampVersion();
    out().attribute("file version", currentFileVersion());                   // what every gate of this root goes by
    out().attribute("svn version", static_cast<qint32>(data.buildRevision)); // of whoever wrote; nothing goes by it
    out().attribute("svn path", data.buildBranch);
}

} // namespace NBrenmark
