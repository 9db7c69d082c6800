#pragma once
// Decks on disk for the tests of the legacy manager.

#include "core/deck/simulation.h"
#include "io/dem/dem_io_manager.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark {

/// A simulation with a manager of its own beside those that it drives itself.
class CManagedDeck
{
public:
    explicit CManagedDeck(qint64 segmentLimit = CDemIoManager::fullSegment)
    {
        if (!simulation.setUp())
            throw std::runtime_error("no simulation");
        manager = std::make_unique<CDemIoManager>(simulation, segmentLimit);
        index.clear();
    }

    /// Without this the simulation would save the deck's settings on its way out.
    ~CManagedDeck() { simulation.close(false); }
    CManagedDeck(const CManagedDeck&) = delete;
    CManagedDeck& operator=(const CManagedDeck&) = delete;

    SSimulationFrame& frame() { return *simulation.currentFrame; }
    int open(const QString& path, bool regenerate = false) { return manager->open(path, frame(), index, regenerate); }
    bool read(quint32 timestep)
    {
        frame().timestep.timestepIndex = timestep;
        return manager->readTimestep(frame(), index, false, nullptr);
    }
    /// Adds the frame's timestep, with another time, behind the others.
    bool append(double time, bool creatorChanged = false)
    {
        frame().timestep.time = time;
        frame().timestep.timestepIndex = static_cast<quint32>(index.size());
        index.emplace_back();
        index.back().time = time;
        return manager->appendTimestep(frame(), index, creatorChanged, true);
    }

    CSimulation simulation;
    std::unique_ptr<CDemIoManager> manager;
    TimestepIndex index;
};

/// Time and title of each timestep of a deck that is opened anew: "0.1 Kiste, 0.2 Kiste".
inline std::string storyOf(const QString& path)
{
    CManagedDeck deck;
    if (const int code = deck.open(path); code != eOpened)
        return "open code " + std::to_string(code);
    QStringList story;
    for (quint32 i = 0; i < deck.index.size(); ++i) {
        if (!deck.read(i))
            return "timestep " + std::to_string(i) + " can't be read";
        const double indexTime = deck.index[i].time;
        const double time = deck.frame().timestep.time;
        story += QString::number(time) + ' ' + deck.frame().creator.title;
        if (indexTime != time)
            story.back() += " (index: " + QString::number(indexTime) + ')';
        if (deck.frame().timestep.particleTypes.particleCount() != 72)
            story.back() += " (not all particles)";
    }
    return story.join(", ").toStdString();
}

/// Five timesteps in three segments: two of one model, two of the next, and one that has both a
/// segment and a model of its own.
inline CLegacyDeck segmentedDeck(quint32 version = makeVersion(27, 0, 3))
{
    SDeckCreator model = sampleCreator();
    CLegacyDeck deck(version);
    model.title = "A";
    deck.creator(model).timestep(sampleTimestep(0.1)).timestep(sampleTimestep(0.2));
    model.title = "B";
    deck.nextSegment().creator(model).timestep(sampleTimestep(0.3)).timestep(sampleTimestep(0.4));
    model.title = "C";
    deck.nextSegment().creator(model).timestep(sampleTimestep(0.5));
    return deck;
}

} // namespace NBrenmark
