#pragma once
// Picks the file family for a path and hands every call on to its manager.

#include "core/deck/file_format_manager.h"

#include <memory>

namespace NBrenmark {

class CIoManager
{
public:
    virtual ~CIoManager();

    /// Makes the managers of both families; the HDF5 one becomes the active one.
    void createManagers(CSimulation& simulation);
    /// Makes the manager of the file's family the active one. \return false, and no change, for a
    /// file of no known family
    bool selectManager(const QString& path);
    quint32 timestepCount() const;
    int open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex);
    bool readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                      IProgressController* progress);
    void reset();

    /// The manager at work.
    IFileFormatManager& active() const { return *activeManager; }

private:
    std::unique_ptr<IFileFormatManager> legacyManager;
    std::unique_ptr<IFileFormatManager> hdf5Manager;
    IFileFormatManager* activeManager = nullptr; // one of the two
};

} // namespace NBrenmark
