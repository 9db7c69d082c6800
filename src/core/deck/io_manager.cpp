// Picks the manager of a deck by the first bytes of its file.
#include "core/deck/io_manager.h"

#include "core/deck/deck_files.h"
#include "core/deck/file_families.h"
#include "core/log.h"

namespace NBrenmark {

CIoManager::~CIoManager() = default;

void CIoManager::createManagers(CSimulation& simulation)
{
    legacyManager = NLegacyFamily::makeManager(simulation);
    hdf5Manager = NHdf5Family::makeManager(simulation);
    activeManager = hdf5Manager.get();
}

bool CIoManager::selectManager(const QString& path)
{
    std::string cause;
    const EDeckFormat format = detectFormat(path, &cause);
    if (!cause.empty()) // else it would be called a file of no known format
        reportFailure(NLogTitle::legacyRead, path.toStdString() + ": " + cause, eCauseSource);
    switch (format) {
    case eFormatLegacy: activeManager = legacyManager.get(); return true;
    case eFormatHdf5: activeManager = hdf5Manager.get(); return true;
    case eFormatUnknown: break;
    }
    return false;
}

quint32 CIoManager::timestepCount() const { return activeManager->timestepCount; }

int CIoManager::open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex)
{
    return activeManager->open(path, frame, index, regenerateIndex);
}

bool CIoManager::readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                              IProgressController* progress)
{
    return activeManager->readTimestep(frame, index, restorePosition, progress);
}

void CIoManager::reset() { activeManager->reset(); }

} // namespace NBrenmark
