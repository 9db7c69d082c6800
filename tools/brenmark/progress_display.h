#pragma once
// Progress on standard error: a bar that is redrawn, now and then a plain line, or an object. It moves within a timestep,
// too: a thread looks at how much the process has read and written.

#include "brenmark/progress_estimate.h"
#include "brenmark/progress_line.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace NBrenmark {

/// --progress.
enum EProgressForm
{
    eProgressAuto, ///< a bar on a terminal, else plain lines
    eProgressBar,
    eProgressPlain,
    eProgressJson,
    eProgressNone
};
void chooseProgress(EProgressForm wanted);

/// Whether there are plain lines where no terminal is and --progress doesn't say.
enum EProgressElsewhere
{
    eNothingElsewhere,
    eLinesElsewhere
};

class CProgressDisplay
{
public:
    /// \param quiet  show nothing at all
    CProgressDisplay(bool quiet, EProgressElsewhere elsewhere);
    /// Ends the bar's line, if there is one.
    ~CProgressDisplay();
    CProgressDisplay(const CProgressDisplay&) = delete;
    CProgressDisplay& operator=(const CProgressDisplay&) = delete;

    /// \param sizes    bytes of each timestep
    /// \param work     what is done, for example "converting"
    /// \param traffic  bytes read and written for one of a timestep, at a guess
    void start(const std::vector<double>& sizes, const std::string& work, double traffic);
    /// So many timesteps are done.
    void update(quint32 done);
    /// So many timesteps were only passed over.
    void pass(quint32 done);
    /// Prints a line of its own, above the bar if there is one.
    void printLine(const std::string& line);
    /// Wipes the bar, so that a message can take its line, and shows nothing until the next start.
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    SProgressMoment now() const;
    SProgressState state(const SProgressMoment& at);
    void show(bool isDone);
    void wipe();
    void stopTicking();
    void tick();

    EProgressForm form;
    std::optional<CProgressEstimate> estimate;
    std::string work;
    bool drawn = false;
    Clock::time_point begin;
    Clock::time_point lastShown;

    std::mutex lock; ///< of all above, once the thread runs
    std::condition_variable wake;
    bool ending = false;
    std::thread ticker;
};

} // namespace NBrenmark
