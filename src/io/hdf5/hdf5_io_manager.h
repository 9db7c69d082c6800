#pragma once
// The manager of the current file family. A deck is a small main file with the header, and a folder with
// an HDF5 file for each saved timestep; which timesteps exist is what the folder says.
//
// Between two operations no file is open for writing: what an operation wrote has arrived on disk, or
// the operation failed.

#include "core/deck/file_format_manager.h"
#include "io/hdf5/soundness.h"

#include <H5Cpp.h>

#include <memory>

namespace NBrenmark {

class CPooledTask;
class CSimulationData;

class CHdf5IoManager : public IFileFormatManager
{
public:
    explicit CHdf5IoManager(CSimulation& simulation);
    ~CHdf5IoManager() override;

    void flush() override;
    void reset() override;
    int setOutputName(const QString& path) override;
    int open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex) override;
    bool saveCopyUpToCurrent(SSimulationFrame& frame, TimestepIndex& index, const QString& newName,
                             const QString& tempFolder) override;
    bool saveSubset(const QString& newName, quint32 first, quint32 last, quint32 stride,
                    IProgressController* progress) override;
    bool truncateAfterCurrent(SSimulationFrame& frame, TimestepIndex& index, bool discardCurrent) override;
    bool appendTimestep(SSimulationFrame& frame, TimestepIndex& index, bool creatorChanged, bool isFull) override;
    bool readCreatorData(SSimulationFrame& frame) override;
    bool readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                      IProgressController* progress) override;
    bool createSimulation(const QString& path, SSimulationFrame& frame, bool switchToNew,
                          TimestepIndex& index) override;

private:
    using File = std::unique_ptr<H5::H5File>;

    enum EAccess
    {
        eReadOnly,
        eReadWrite
    };

    struct SHeader
    {
        quint32 firstVersion;
        quint32 lastVersion;
        quint32 timesteps;
        quint32 edition;
    };

    /// A new deck that is made of timesteps of this one.
    struct SSubset
    {
        QString name;
        quint32 timesteps = 0;     ///< copied whole so far
        quint32 files = 0;         ///< begun so far
        qint64 sourceCreator = -1; ///< creator model last met, by its number in this deck; -1: none
        quint32 targetCreator = 0; ///< its number in the new one
    };

    // hdf5_files.cpp: opening, closing and the header. They throw; what an operation's caller gets is
    // up to the operation.
    File createFile(const QString& path) const;
    /// Makes the folder first if it is missing.
    File createInDataFolder(const QString& path) const;
    /// \param structureCheck  of the file, if it has begun already; checkStructure is called otherwise
    File openFile(const QString& path, EAccess access, CPooledTask* structureCheck = nullptr) const;
    File openNumberedFile(const QString& path, quint32 number, EAccess access) const;
    void openMainFile();
    void closeFiles();
    static void writeHeader(H5::H5File& mainFile, const SHeader& header);
    /// Writes the header of the open deck into its main file.
    void updateHeader();
    bool readHeader();
    /// Makes a numbered file the open one. \return false, with a report, if it can't be opened
    /// \param structureCheck  as above
    bool switchToFile(qint64 number, CPooledTask* structureCheck = nullptr);

    // hdf5_scan.cpp
    bool scanDataFolder(TimestepIndex& index);
    bool readIndexEntry(quint32 number, STimestepIndexEntry& entry);

    // hdf5_io_manager.cpp: the model's way between file and memory, on a worker thread.
    bool runReader(H5::H5File& file, CSimulationData& object, IProgressController* progress);
    bool writeCreator(H5::H5File& file, SSimulationFrame& frame);
    bool runWriter(H5::H5File& file, CSimulationData& object);

    // hdf5_write.cpp
    bool writeTimestepFile(quint32 number, SSimulationFrame& frame, bool withCreator);

    // hdf5_copy.cpp
    void copyTimestep(SSubset& subset, quint32 source);

    const CWithoutFilterPlugins withoutPlugins;
    File mainFile;                  ///< null when no deck is open, or its header was written last
    File timestepFile;              ///< the numbered file now open, or null
    qint64 currentFileNumber = -1;  ///< of timestepFile; -1: none
    H5::FileAccPropList fileAccess; ///< of every open
};

} // namespace NBrenmark
