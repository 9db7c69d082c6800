#pragma once
// What the two file families have in common: finding, reading, appending, cutting and copying
// saved timesteps.

#include "core/save_options.h"
#include "core/timestep_index.h"
#include "core/version.h"

#include <QString>

namespace NBrenmark {

class CSimulation;
class IProgressController;
struct SSimulationFrame;

/// Word of the header of a deck that is written anew.
constexpr quint32 writtenEdition = 1;

/// Result of IFileFormatManager::open.
enum EOpenCode : int
{
    eOpened = 0,
    eOpenNoFile = 1,
    eOpenIndexUnreadable = 3,
    eOpenIndexNotRebuilt = 4,
    eOpenHeaderRefused = 5
};

class IFileFormatManager
{
public:
    /// Takes the option records of the simulation that it serves.
    explicit IFileFormatManager(CSimulation& simulation);
    virtual ~IFileFormatManager() = default;
    IFileFormatManager(const IFileFormatManager&) = delete;
    IFileFormatManager& operator=(const IFileFormatManager&) = delete;

    virtual void flush() = 0;
    /// Closes everything and forgets the deck.
    virtual void reset() = 0;
    /// Names the deck that appendTimestep fills. \return 0 for success
    virtual int setOutputName(const QString& path) = 0;
    /// \param regenerateIndex  rebuild a lost index by scanning, where the family has one
    /// \return an EOpenCode
    virtual int open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex) = 0;
    /// Saves the deck up to the current timestep, re-saved from the frame, as a deck of a new name.
    virtual bool saveCopyUpToCurrent(SSimulationFrame& frame, TimestepIndex& index, const QString& newName,
                                     const QString& tempBase) = 0;
    /// Saves every stride-th timestep of a range as a new deck; last is always included.
    virtual bool saveSubset(const QString& newName, quint32 first, quint32 last, quint32 stride,
                            IProgressController* progress) = 0;
    /// Cuts the deck after the current timestep, or before it with discardCurrent.
    virtual bool truncateAfterCurrent(SSimulationFrame& frame, TimestepIndex& index, bool discardCurrent) = 0;
    virtual bool appendTimestep(SSimulationFrame& frame, TimestepIndex& index, bool creatorChanged, bool isFull) = 0;
    /// Reads the creator block that the frame's pair names.
    virtual bool readCreatorData(SSimulationFrame& frame) = 0;
    /// Reads the timestep that the frame's timestepIndex names, and its creator block if the frame
    /// holds another one.
    virtual bool readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                              IProgressController* progress) = 0;
    /// Creates a deck of one timestep; with switchToNew the manager then holds it.
    virtual bool createSimulation(const QString& path, SSimulationFrame& frame, bool switchToNew,
                                  TimestepIndex& index) = 0;

    quint32 timestepCount = 0;          ///< saved timesteps of the open deck
    SSaveOptions& writeOptions;         ///< the simulation's; not owned
    SSaveOptions& readOptions;          ///< the simulation's; not owned
    quint32 firstVersion;               ///< created the deck
    quint32 lastVersion;                ///< wrote it last
    quint32 edition;                    ///< word of the header; 1
    bool creatorRewritePending = false; ///< the next append writes a creator block even if nothing changed
    QString fileName;                   ///< of the open deck's first file

protected:
    /// Count, versions, edition and name, not the pending flag.
    void resetFileState();

    CSimulation& simulation; ///< the open deck that this manager serves
};

} // namespace NBrenmark
