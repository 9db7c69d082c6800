#pragma once
// The open deck of the process: its settings, its configuration, the list of its saved timesteps
// and two frames into which timesteps are loaded.

#include "core/deck/background_simulation_reader.h"
#include "core/deck/io_manager.h"
#include "core/deck/simulation_frame.h"
#include "core/xml_io_options.h"

#include <array>
#include <memory>

namespace NBrenmark {

class CSimulationSettingsAndData;
namespace NConfig {
class CConfigManager;
}

/// Result of CSimulation::load beyond the open codes of the managers.
enum ELoadCode : int
{
    eLoaded = 0,
    eLoadSettingsFailed = 1,
    eLoadConfigurationFailed = 7
};

/// Which frame CSimulation::goToTimestep fills; every value but eIntoBackFrame fills currentFrame.
enum EGoToMode : int
{
    eIntoCurrentFrame = 2,
    eIntoBackFrame = 3
};

class CSimulation
{
public:
    CSimulation();
    virtual ~CSimulation();
    CSimulation(const CSimulation&) = delete;
    CSimulation& operator=(const CSimulation&) = delete;

    /// Builds settings, frames and managers. \return false if something couldn't be allocated
    bool setUp();
    /// Brings a deck in, after closing the present one without saving.
    /// \return 0, an EOpenCode of the manager, or an ELoadCode; each failure is reported
    int load(const QString& path, IProgressController* progress = nullptr);
    /// Lets the deck go, storing settings and configuration first if asked to.
    void close(bool saveFirst);
    /// Fills a frame with a saved timestep. \return false if there is no such timestep or it
    /// couldn't be read
    bool goToTimestep(quint32 number, int mode, IProgressController* progress = nullptr);
    /// Writes base + ".ess"; a null base means the open deck's, an empty one nothing.
    bool writeSettings(bool force, const QString& base);
    /// Writes base + ".dfg" likewise.
    bool writeConfiguration(const QString& base);

    CIoManager ioManager;
    std::unique_ptr<CSimulationSettingsAndData> settings;
    std::unique_ptr<NConfig::CConfigManager> configuration;
    QString baseName; ///< path without the deck's extension: companions are baseName + extension
    QString filePath; ///< the path that was loaded
    TimestepIndex index;
    SSimulationFrame* currentFrame = nullptr; ///< what the host reads
    SSimulationFrame* backFrame = nullptr;    ///< the other one, for reading ahead
    std::array<std::unique_ptr<SSimulationFrame>, 2> frames;
    /// What is there of .ess, .ppf and .dfg and can't be read is left out and reported as lost. Without this it fails
    /// the load, all but an .ess that can't be opened, which counts as lost either way.
    bool ignoreUnreadableCompanions = false;
    CXmlIoOptions xmlOptions;  ///< of documents that are written and read
    SSaveOptions writeOptions; ///< what a writer is to store
    SSaveOptions readOptions;  ///< what a reader found or is to fetch
    CBackgroundSimulationReader backgroundReader{*this};

private:
    void clearSimulation();
    /// Brings an open or half-open deck back to closed: an index of one empty entry, default settings.
    void resetSimulation();
    int loadCompanions(IProgressController* progress);
    template <class TRead>
    bool companionRead(TRead&& read) const;
};

} // namespace NBrenmark
