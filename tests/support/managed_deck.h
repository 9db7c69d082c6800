#pragma once
// A simulation with a manager of one family beside those that it drives itself.

#include "core/deck/simulation.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace NBrenmark {

template <class TManager>
class CManaged
{
public:
    /// \param more  what the manager takes after the simulation
    template <class... TMore>
    explicit CManaged(TMore... more)
    {
        if (!simulation.setUp())
            throw std::runtime_error("no simulation");
        manager = std::make_unique<TManager>(simulation, more...);
        index.clear();
    }
    /// Without this the simulation would save the deck's settings on its way out.
    ~CManaged() { simulation.close(false); }
    CManaged(const CManaged&) = delete;
    CManaged& operator=(const CManaged&) = delete;

    SSimulationFrame& frame() { return *simulation.currentFrame; }
    CCreatorData& creator() { return frame().creator; }
    CTimestepData& timestep() { return frame().timestep; }

    int open(const QString& path, bool regenerate = false) { return manager->open(path, frame(), index, regenerate); }
    bool read(quint32 number)
    {
        timestep().timestepIndex = number;
        return manager->readTimestep(frame(), index, false, nullptr);
    }

    CSimulation simulation;
    std::unique_ptr<TManager> manager;
    TimestepIndex index;
};

/// Time and title of each timestep of a deck that is opened anew: "0.1 Kiste, 0.2 Kiste"; "no file" of one without.
template <class TDeck>
std::string storyOf(const QString& path, quint32 particles)
{
    TDeck deck;
    if (const int code = deck.open(path); code != eOpened)
        return "open code " + std::to_string(code);
    QStringList story;
    for (quint32 i = 0; i < deck.index.size(); ++i) {
        if (!deck.hasFile(i)) {
            story += "no file";
            continue;
        }
        if (!deck.read(i))
            return "timestep " + std::to_string(i) + " can't be read";
        const double indexTime = deck.index[i].time;
        const double time = deck.timestep().time;
        story += QString::number(time) + ' ' + deck.creator().title;
        if (indexTime != time)
            story.back() += " (index: " + QString::number(indexTime) + ')';
        if (deck.timestep().particleTypes.particleCount() != particles)
            story.back() += " (not all particles)";
    }
    return story.join(", ").toStdString();
}

} // namespace NBrenmark
