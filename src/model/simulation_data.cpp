// The version that a writer stamps on a root.
#include "model/simulation_data.h"

namespace NBrenmark {

void CSimulationData::stampVersion()
{
    fileVersion = currentFileVersion();
    buildRevision = currentBuildRevision;
    buildBranch = currentBuildBranch;
}

} // namespace NBrenmark
