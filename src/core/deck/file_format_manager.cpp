// What a manager of either family starts from.
#include "core/deck/file_format_manager.h"

#include "core/deck/simulation.h"

namespace NBrenmark {

IFileFormatManager::IFileFormatManager(CSimulation& simulation)
    : writeOptions(simulation.writeOptions),
      readOptions(simulation.readOptions),
      firstVersion(currentFileVersion()),
      lastVersion(currentFileVersion()),
      edition(writtenEdition),
      simulation(simulation)
{}

void IFileFormatManager::resetFileState()
{
    timestepCount = 0;
    firstVersion = currentFileVersion();
    lastVersion = currentFileVersion();
    edition = writtenEdition;
    fileName.clear();
}

} // namespace NBrenmark
