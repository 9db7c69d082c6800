#include "brenmark/progress_display.h"

#include "brenmark/terminal.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace NBrenmark {

static constexpr std::chrono::milliseconds betweenBars(200);
static constexpr std::chrono::milliseconds betweenLines(1000);

static EProgressForm formWanted = eProgressAuto;

/// Bytes that this process has read and written, as Linux counts them; 0 where nothing does.
static double processTraffic()
{
    const int file = ::open("/proc/self/io", O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0.0;
    char text[512] = {};
    const ssize_t size = ::read(file, text, sizeof text - 1);
    ::close(file);
    unsigned long long read = 0, written = 0;
    const bool isKnown = size > 0 && std::sscanf(text, "rchar: %llu wchar: %llu", &read, &written) == 2;
    return isKnown ? static_cast<double>(read) + static_cast<double>(written) : 0.0;
}

static EProgressForm formFor(bool quiet, EProgressElsewhere elsewhere)
{
    if (quiet)
        return eProgressNone;
    if (formWanted != eProgressAuto)
        return formWanted;
    return errorIsTerminal() ? eProgressBar : elsewhere == eLinesElsewhere ? eProgressPlain : eProgressNone;
}

void chooseProgress(EProgressForm wanted) { formWanted = wanted; }

CProgressDisplay::CProgressDisplay(bool quiet, EProgressElsewhere elsewhere) : form(formFor(quiet, elsewhere)) {}

CProgressDisplay::~CProgressDisplay() { clear(); }

SProgressMoment CProgressDisplay::now() const
{
    return {std::chrono::duration<double>(Clock::now() - begin).count(), processTraffic()};
}

void CProgressDisplay::start(const std::vector<double>& sizes, const std::string& text, double traffic)
{
    stopTicking();
    if (form == eProgressNone || sizes.empty())
        return;
    begin = lastShown = Clock::now();
    work = text;
    estimate.emplace(sizes, traffic, now());
    if (form == eProgressBar)
        show(false);
    ending = false;
    try {
        ticker = std::thread([this] { tick(); });
    }
    catch (const std::system_error&) { // without one the display moves with the timesteps
    }
}

void CProgressDisplay::stopTicking()
{
    if (!ticker.joinable())
        return;
    {
        const std::lock_guard<std::mutex> guard(lock);
        ending = true;
    }
    wake.notify_all();
    ticker.join();
}

void CProgressDisplay::tick()
{
    std::unique_lock<std::mutex> guard(lock);
    const auto interval = form == eProgressBar ? betweenBars : betweenLines;
    try {
        while (!wake.wait_for(guard, interval, [this] { return ending; }))
            if (Clock::now() - lastShown >= interval)
                show(false);
    }
    catch (const std::exception&) { // where memory is short the display is the first to go
    }
}

void CProgressDisplay::update(quint32 done)
{
    const std::lock_guard<std::mutex> guard(lock);
    if (!estimate)
        return;
    estimate->finish(done, now());
    if (form == eProgressBar || done == 1 || done == estimate->timesteps() || Clock::now() - lastShown >= betweenLines)
        show(true);
}

void CProgressDisplay::pass(quint32 done)
{
    const std::lock_guard<std::mutex> guard(lock);
    if (!estimate)
        return;
    estimate->pass(done, now());
    if (form == eProgressBar || Clock::now() - lastShown >= betweenLines)
        show(true);
}

void CProgressDisplay::printLine(const std::string& line)
{
    const std::lock_guard<std::mutex> guard(lock);
    wipe();
    printError(line + '\n');
}

void CProgressDisplay::clear()
{
    stopTicking();
    wipe();
    estimate.reset();
}

void CProgressDisplay::wipe()
{
    if (drawn)
        printSequences("\r\x1b[K");
    drawn = false;
}

SProgressState CProgressDisplay::state(const SProgressMoment& at)
{
    return {work,
            static_cast<quint32>(estimate->finished()),
            static_cast<quint32>(estimate->timesteps()),
            estimate->bytesDone(at),
            estimate->bytesTotal(),
            estimate->bytesPerSecond(at),
            estimate->secondsLeft(at)};
}

void CProgressDisplay::show(bool isDone)
{
    lastShown = Clock::now();
    const SProgressState current = state(now());
    if (form == eProgressBar) {
        // The last column would wrap on some terminals.
        printSequences('\r' + progressBar(current, errorColumns() - 1, errorHasColour()) + "\x1b[K");
        drawn = true;
    }
    else {
        printError((form == eProgressJson ? progressObject(current) : progressLine(current, isDone)) + '\n');
    }
}

} // namespace NBrenmark
