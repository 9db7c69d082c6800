// Sums up under a lock: timesteps are written by worker threads.
#include "core/left_behind.h"

#include "core/log.h"

#include <map>
#include <mutex>

namespace NBrenmark {

static std::mutex mutex;
static std::map<std::string, quint64> amounts;

void noteLeftBehind(const std::string& what, quint64 amount)
{
    if (amount == 0)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    amounts[what] += amount;
}

void reportLeftBehind(const SLogTitle& title)
{
    std::map<std::string, quint64> noted;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        noted.swap(amounts);
    }
    for (const auto& [what, amount] : noted)
        report(eNotCarried, title,
               "Not carried over, for the format has no place for them: " + std::to_string(amount) + ' ' + what + '.',
               amount);
}

} // namespace NBrenmark
