#pragma once
// Reads ahead: fills the back frame while a host shows the current one.

#include "core/worker.h"

#include <QEvent>

namespace NBrenmark {

class CSimulation;

/// The host swaps the frames when successEvent arrives, and must not touch the back frame before.
class CBackgroundSimulationReader : public CWorker
{
public:
    explicit CBackgroundSimulationReader(CSimulation& simulation);
    ~CBackgroundSimulationReader() override;

    /// Begins to fill the frame, after the fill before it.
    void start() { startOrRun(); }

    static QEvent::Type successEvent();
    static QEvent::Type failureEvent();

    QObject* receiver = nullptr; ///< gets one of the two events; not owned
    quint32 timestep = 0;

protected:
    void run() override;

private:
    CSimulation& simulation;
};

} // namespace NBrenmark
