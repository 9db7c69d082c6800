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

void tellLeftBehind(const char* title)
{
    std::map<std::string, quint64> told;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        told.swap(amounts);
    }
    if (told.empty())
        return;
    std::string list;
    for (const auto& [what, amount] : told)
        list += (list.empty() ? "" : ", ") + std::to_string(amount) + ' ' + what;
    logMessage(eWarning, title, "Not carried over, for the format has no place for them: " + list + ".");
}

} // namespace NBrenmark
