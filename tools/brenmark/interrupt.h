#pragma once
// Ctrl-C, kill and hang-up. The first one ends a conversion after the current timestep and is acknowledged at once; the
// second one ends the program there and then, which the journal allows at any moment.

#include <QtGlobal>

#include <string>

namespace NBrenmark {

class CStopWish;

/// From here on SIGINT, SIGTERM and SIGHUP are noted instead of ending the program; one that is ignored stays ignored.
/// The first thing that the program does, so that none that comes early ends it by the signal.
void catchInterrupts();
/// They end the program again, at once if one of them came already.
void letInterruptsEndTheProgram();

/// Whether one of them came.
bool interrupted();
/// The same for a conversion: it ends after the current timestep once one came.
CStopWish& interruptWish();

/// What an interrupt waits for, as it is acknowledged.
enum EInterruptPhase : int
{
    eBeforeTimesteps,
    eInTimesteps,
    eInComparison,
    eInPlacing
};
void setInterruptPhase(EInterruptPhase phase);
/// The timestep at work, from 1 on, and the number of all.
void setInterruptTimestep(quint32 current, quint32 count);
/// How many of them stay if the program ends there and then, and the folder that holds them.
void setInterruptLeftover(quint32 finished, quint32 count, const std::string& folder);

} // namespace NBrenmark
