#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <algorithm>

namespace NBrenmark {

namespace {

constexpr int widestBar = 40; // cells; a wider one tells no more
constexpr std::chrono::seconds lineInterval(1);

double secondsSince(std::chrono::steady_clock::time_point begin)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

CProgressDisplay::CProgressDisplay(bool quiet)
    : quiet(quiet), bar(!quiet && errorIsTerminal()), begin(Clock::now()), lastLine(begin)
{}

CProgressDisplay::~CProgressDisplay() { clear(); }

void CProgressDisplay::start(int timesteps, const std::string& text, double size)
{
    bytes = size;
    total = std::max(timesteps, 1);
    work = text;
    begin = lastLine = Clock::now();
    if (bar)
        drawBar(0);
}

void CProgressDisplay::update(int done)
{
    if (quiet || total == 0)
        return;
    if (bar)
        drawBar(done);
    else if (done == total || done == 1 || Clock::now() - lastLine >= lineInterval)
        printLine(done);
}

void CProgressDisplay::clear()
{
    if (drawn)
        printError("\r\x1b[K");
    drawn = false;
}

std::string CProgressDisplay::rateText(int done) const
{
    const double seconds = secondsSince(begin);
    if (done == 0 || seconds <= 0.0)
        return std::string();
    std::string text;
    if (bytes > 0.0)
        text += ", " + sizeText(bytes * done / total / seconds) + "/s";
    if (done < total)
        text += ", " + durationText(seconds * (total - done) / done) + " left";
    return text;
}

void CProgressDisplay::drawBar(int done)
{
    const std::string text = ' ' + work + " timestep " + std::to_string(std::min(done + 1, total)) + " of " +
                             std::to_string(total) + rateText(done);
    const int columns = errorColumns() - 1; // the last one would wrap on some terminals
    const int cells = std::min(widestBar, columns - 2 - static_cast<int>(text.size()));
    std::string line;
    if (cells >= 4) {
        const int filled = static_cast<int>(static_cast<long long>(cells) * done / total);
        const bool colour = errorHasColour();
        line = '[' + std::string(colour ? "\x1b[32m" : "") + std::string(static_cast<size_t>(filled), '#') +
               (colour ? "\x1b[0m" : "") + std::string(static_cast<size_t>(cells - filled), '.') + ']' + text;
    }
    else {
        line = text.substr(1, static_cast<size_t>(std::max(columns, 1)));
    }
    printError('\r' + line + "\x1b[K");
    drawn = true;
}

void CProgressDisplay::printLine(int done)
{
    lastLine = Clock::now();
    printError(work + " timestep " + std::to_string(done) + " of " + std::to_string(total) + " done" + rateText(done) +
               '\n');
}

} // namespace NBrenmark
