#include "brenmark/interrupt.h"

#include "brenmark/exit_codes.h"
#include "brenmark/terminal.h"

#include "core/stop_flag.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <unistd.h>

namespace NBrenmark {

namespace {

constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP};

// A handler may touch lock-free atomics and what doesn't change any more, and nothing much else.
CStopWish wish;
std::atomic<int> came{0}; ///< the first signal
std::atomic<int> phase{eBeforeTimesteps};
std::atomic<quint32> current{0};
std::atomic<quint32> count{0};
std::atomic<quint32> finished{0};
std::atomic<bool> leavesFolder{false};
std::atomic<bool> onTerminal{false};
std::array<char, 4200> folderName{}; // written before leavesFolder is set
static_assert(std::atomic<quint32>::is_always_lock_free, "what a signal handler touches must not lock");

/// A line put together without memory, for a handler must take none.
class CLine
{
public:
    CLine& text(const char* part)
    {
        while (*part != '\0' && size < buffer.size())
            buffer[size++] = *part++;
        return *this;
    }
    CLine& number(quint32 value)
    {
        std::array<char, 11> digits{};
        size_t at = digits.size() - 1;
        do {
            digits[--at] = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
        return text(&digits[at]);
    }
    void write() const
    {
        if (::write(STDERR_FILENO, buffer.data(), size) < 0) {
            // Where it can't be said the stop counts anyway.
        }
    }

private:
    std::array<char, 4600> buffer{};
    size_t size = 0;
};

void acknowledge()
{
    CLine line;
    line.text(onTerminal ? "\r\x1b[K" : "").text("brenmark: ");
    switch (phase.load()) {
    case eBeforeTimesteps: line.text("stopping"); break;
    case eInTimesteps: line.text("finishing timestep ").number(current).text(" of ").number(count); break;
    case eInComparison: line.text("finishing the comparison"); break;
    default: line.text("the new deck is taking its place, which is finished first"); break;
    }
    line.text("; press Ctrl-C again to stop now\n").write();
}

void stopNow()
{
    CLine line;
    line.text(onTerminal ? "\r\x1b[K" : "").text("brenmark: stopped at once");
    if (leavesFolder)
        line.text("; ")
            .text(folderName.data())
            .text(" holds ")
            .number(finished)
            .text(" of ")
            .number(count)
            .text(" timesteps; --resume continues there");
    line.text("\n").write();
    _exit(eExitInterrupted);
}

void handle(int number)
{
    const int error = errno;
    int none = 0;
    if (!came.compare_exchange_strong(none, number))
        stopNow();
    wish.raise();
    acknowledge();
    errno = error;
}

} // namespace

void catchInterrupts()
{
    onTerminal = errorIsTerminal();
    for (const int number : endingSignals) {
        struct sigaction before = {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN)
            continue; // nohup, or a job in the background: whoever started the program wants it so
        struct sigaction action = {};
        action.sa_handler = handle;
        action.sa_flags = SA_RESTART; // no read or write under way may fail for it
        sigemptyset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
}

void letInterruptsEndTheProgram()
{
    for (const int number : endingSignals) {
        struct sigaction before = {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == handle)
            std::signal(number, SIG_DFL);
    }
    if (interrupted())
        std::raise(came);
}

bool interrupted() { return wish.isRaised(); }

CStopWish& interruptWish() { return wish; }

void setInterruptPhase(EInterruptPhase now) { phase = now; }

void setInterruptTimestep(quint32 now, quint32 all)
{
    current = now;
    count = all;
    phase = eInTimesteps;
}

void setInterruptLeftover(quint32 number, quint32 all, const std::string& folder)
{
    count = all;
    if (!leavesFolder) {
        const std::string shown = oneLine(folder);
        std::memcpy(folderName.data(), shown.data(), std::min(shown.size(), folderName.size() - 1));
        leavesFolder = true;
    }
    finished = number;
}

} // namespace NBrenmark
