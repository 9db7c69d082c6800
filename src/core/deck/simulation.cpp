// Opens a deck with all that belongs to it, and moves its timesteps into frames.
#include "core/deck/simulation.h"

#include "analysis/attributes/attribute_table.h"
#include "config/config_file.h"
#include "config/config_manager.h"
#include "core/deck/deck_files.h"
#include "core/deck/simulation_settings.h"
#include "core/failures_as_losses.h"
#include "core/log.h"
#include "core/plain_file.h"
#include "core/progress.h"

#include <new>

namespace NBrenmark {

// A missing property file is no failure: the bit of that answer.
static constexpr int noPropertyFile = 2;

CSimulation::CSimulation() : configuration(std::make_unique<NConfig::CConfigManager>()) {}

CSimulation::~CSimulation()
{
    if (settings)
        close(true);
}

bool CSimulation::setUp()
{
    // Frames hold on to the property managers of the settings: they go first.
    const auto letGo = [this] {
        for (auto& frame : frames)
            frame.reset();
        settings.reset();
    };
    letGo();
    try {
        settings = std::make_unique<CSimulationSettingsAndData>();
        for (auto& frame : frames) {
            frame = std::make_unique<SSimulationFrame>(settings->propertyManagers());
            frame->timestep.attributeMaker = NAttributes::attributesWhenAsked;
            settings->follow(frame->creator.physicsModels, frame->creator.pluginFactories);
        }
        ioManager.createManagers(*this);
        resetSimulation();
    }
    catch (const std::bad_alloc&) {
        letGo();
        return false;
    }
    return true;
}

void CSimulation::clearSimulation()
{
    clearLogOnceMemory();
    index.clear();
    currentFrame = frames[0].get();
    backFrame = frames[1].get();
    for (auto& frame : frames) {
        frame->creator.clear();
        frame->timestep.clear();
        frame->timestep.timestepIndex = CTimestepData::noTimestep;
    }
    filePath.clear();
    baseName.clear();
    ioManager.reset();
    settings->clearSettings(true);
    configuration->resetAll(true);
}

void CSimulation::resetSimulation()
{
    clearSimulation();
    index.resize(1);
    currentFrame->timestep.timestepIndex = 0;
    configuration->resetAll(false);
}

int CSimulation::load(const QString& path, IProgressController* progress)
{
    clearSimulation();
    ioManager.selectManager(path); // an unknown file goes to the active manager, whose open refuses it
    const int opened = ioManager.open(path, *currentFrame, index, false);
    if (opened != eOpened) {
        resetSimulation();
        return opened;
    }
    filePath = path;
    baseName = stripDeckSuffix(path);
    const int code = loadCompanions(progress);
    if (code != eLoaded)
        resetSimulation();
    return code;
}

/// Runs the read of a companion.
/// \return whether the load goes on
template <class TRead>
bool CSimulation::companionRead(TRead&& read) const
{
    if (!ignoreUnreadableCompanions)
        return read();
    const CFailuresAsLosses losses;
    return read() || losses.lastWasLoss;
}

int CSimulation::loadCompanions(IProgressController* progress)
{
    const auto readSettings = [&] { return settings->loadSettings(baseName + NDeckFile::settingsSuffix, progress); };
    if (!companionRead(readSettings))
        return eLoadSettingsFailed;

    auto& legacyProperties = settings->particleProperties();
    legacyProperties.setPropertyFilePath(QString(baseName + NDeckFile::legacyPropertySuffix).toStdString());
    const auto readProperties = [&] {
        if ((legacyProperties.readPropertyFile() & ~noPropertyFile) == 0)
            return true;
        // What was read of it before the damage took the place of what the settings define.
        if (ignoreUnreadableCompanions)
            readSettings();
        return false;
    };
    if (!companionRead(readProperties))
        return eLoadSettingsFailed;

    const QString configurationFile = baseName + NDeckFile::configurationSuffix;
    if (hasEntry(configurationFile) && !companionRead([&] {
            const auto root = configuration->rootHandle();
            return NConfig::readConfigurationFile(configurationFile.toStdString(), *root, {}) == NConfig::eConfigDone;
        }))
        return eLoadConfigurationFailed;
    configuration->loadAll();
    return eLoaded;
}

void CSimulation::close(bool saveFirst)
{
    if (saveFirst && !baseName.isEmpty()) {
        settings->saveSettings(baseName + NDeckFile::settingsSuffix, nullptr, false, true);
        writeConfiguration(baseName);
    }
    resetSimulation();
}

bool CSimulation::goToTimestep(quint32 number, int mode, IProgressController* progress)
{
    SSimulationFrame& target = mode == eIntoBackFrame ? *backFrame : *currentFrame;
    SSimulationFrame& second = mode == eIntoBackFrame ? *currentFrame : *backFrame;
    if (number >= ioManager.timestepCount())
        return false;
    if (progress)
        progress->startStep(10, "Loading timestep", true);
    target.timestep.timestepIndex = number;
    if (ioManager.timestepCount() != index.size() && !index.empty())
        index.pop_back(); // an entry that was pending and has no timestep
    if (second.timestep.timestepIndex >= index.size())
        second.timestep.timestepIndex = CTimestepData::noTimestep;
    return number < index.size() && ioManager.readTimestep(target, index, false, progress);
}

bool CSimulation::writeSettings(bool force, const QString& base)
{
    const QString& target = base.isNull() ? baseName : base;
    if (target.isEmpty())
        return true;
    return settings->saveSettings(target + NDeckFile::settingsSuffix, nullptr, force, true);
}

bool CSimulation::writeConfiguration(const QString& base)
{
    const QString& target = base.isNull() ? baseName : base;
    if (target.isEmpty())
        return true;
    const QString file = target + NDeckFile::configurationSuffix;
    return NConfig::writeConfigurationFile(file.toStdString(), *configuration->rootHandle()) == NConfig::eConfigDone;
}

} // namespace NBrenmark
