#pragma once
// Progress on standard error: a bar that is redrawn on a terminal, now and then a plain line
// elsewhere.

#include <chrono>
#include <string>

namespace NBrenmark {

class CProgressDisplay
{
public:
    /// \param quiet  show nothing at all
    explicit CProgressDisplay(bool quiet);
    /// Ends the bar's line, if there is one.
    ~CProgressDisplay();
    CProgressDisplay(const CProgressDisplay&) = delete;
    CProgressDisplay& operator=(const CProgressDisplay&) = delete;

    /// \param work   what is done, for example "converting"
    /// \param bytes  that this will move: what the rate is told of; 0 for no rate
    void start(int timesteps, const std::string& work, double bytes);
    /// So many timesteps are done.
    void update(int done);
    /// Wipes the bar, so that a message can take its line.
    void clear();

private:
    using Clock = std::chrono::steady_clock;
    void drawBar(int done);
    void printLine(int done);
    std::string rateText(int done) const;

    bool quiet;
    bool bar;
    bool drawn = false;
    double bytes = 0.0;
    int total = 0;
    std::string work;
    Clock::time_point begin;
    Clock::time_point lastLine;
};

} // namespace NBrenmark
