// Reading ahead for hosts that show a deck, by one event at its end. A conversion doesn't: it would hold two
// timesteps in memory.
#include "core/deck/background_simulation_reader.h"

#include "core/deck/simulation.h"
#include "core/log.h"

#include <QCoreApplication>

namespace NBrenmark {

CBackgroundSimulationReader::CBackgroundSimulationReader(CSimulation& simulation) : simulation(simulation) {}

CBackgroundSimulationReader::~CBackgroundSimulationReader() { wait(); }

// Registered once in the process: numbers of events run out, and each conversion builds a simulation anew.
QEvent::Type CBackgroundSimulationReader::successEvent()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

QEvent::Type CBackgroundSimulationReader::failureEvent()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

void CBackgroundSimulationReader::run()
{
    bool loaded = false;
    try {
        enterThread();
        loaded = simulation.goToTimestep(timestep, eIntoBackFrame);
    }
    catch (const std::exception& error) {
        reportFailure(NLogTitle::serialiser, textOf(error), causeOf(error, eCauseInternal));
    }
    if (receiver)
        QCoreApplication::postEvent(receiver, new QEvent(loaded ? successEvent() : failureEvent()));
}

} // namespace NBrenmark
