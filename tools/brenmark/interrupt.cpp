#include "brenmark/interrupt.h"

#include "core/deck/conversion.h"

#include <atomic>
#include <csignal>

namespace NBrenmark {

namespace {

// A handler may touch lock-free atomics and nothing much else.
std::atomic<CConversion*> running{nullptr};
std::atomic<bool> came{false};
static_assert(std::atomic<CConversion*>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "what a signal handler touches must not lock");

struct sigaction previousInterrupt;
struct sigaction previousTerminate;

void handle(int)
{
    came = true;
    if (CConversion* const conversion = running.load())
        conversion->cancel();
}

} // namespace

CInterruptHandler::CInterruptHandler(CConversion& conversion) : conversion(conversion)
{
    came = false;
    running = &conversion;
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART; // no read or write in hand may fail for it
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &previousInterrupt);
    sigaction(SIGTERM, &action, &previousTerminate);
}

CInterruptHandler::~CInterruptHandler()
{
    sigaction(SIGINT, &previousInterrupt, nullptr);
    sigaction(SIGTERM, &previousTerminate, nullptr);
    running = nullptr;
}

bool CInterruptHandler::interrupted() { return came; }

void CInterruptHandler::repeat()
{
    if (came)
        conversion.cancel();
}

} // namespace NBrenmark
