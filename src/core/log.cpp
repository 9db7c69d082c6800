// Hands each message to the modules, one at a time: workers, teams of threads and the waiting thread may log at
// once.
#include "core/log.h"

#include "core/failures_as_losses.h"
#include "core/shortened.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <set>

namespace NBrenmark {

static std::vector<ILogModule*>& logModules()
{
    static std::vector<ILogModule*> modules;
    return modules;
}

static std::set<std::string>& onceMemory()
{
    static std::set<std::string> keys;
    return keys;
}

static std::mutex onceLock; ///< of the keys

/// Held while modules are called: a worker, a team of threads and the waiting thread may log and
/// flush at the same time, and a module takes no lock of its own. Recursive, for a module may log.
static std::recursive_mutex& moduleLock()
{
    static std::recursive_mutex mutex;
    return mutex;
}

const std::string& logLevelName(ELogLevel level)
{
    static const std::array<std::string, 6> names{"DEBUG", "TRACE", "PERF", "INFO", "WARNING", "ERROR"};
    return names[std::min<std::size_t>(level, names.size() - 1)];
}

CPersistentLogger::CPersistentLogger(ELogLevel threshold) : threshold(threshold) {}

void CPersistentLogger::log(ELogLevel level, const std::string& title, const std::string& text, unsigned char, quint32)
{
    SLogRecord message;
    message.level = level;
    message.title = title;
    message.text = text;
    record(message);
}

void CPersistentLogger::record(const SLogRecord& message)
{
    constexpr std::size_t mostKept = 20000;
    if (message.level < threshold)
        return;
    if (kept.size() < mostKept || message.level >= eError) {
        kept.push_back(message);
        return;
    }
    const auto [known, isNew] = tallies.emplace(std::tuple(message.level, message.title, message.effect),
                                                STally{kept.size(), 1, shortened(message.placedText(), 200)});
    if (isNew) {
        kept.push_back(message);
        return;
    }
    STally& tally = known->second;
    SLogRecord& record = kept[tally.place];
    record.count += message.count;
    record.place = SDataPlace();
    record.text = std::to_string(++tally.messages) + " more messages of this kind, of which the first: " + tally.first;
}

void CPersistentLogger::setThreshold(ELogLevel level) { threshold = level; }

void CPersistentLogger::flush(quint32) {}

std::vector<SLogMessage> CPersistentLogger::messages() const
{
    std::vector<SLogMessage> messages;
    for (const SLogRecord& message : kept)
        messages.emplace_back(static_cast<int>(message.level), message.title, message.placedText());
    return messages;
}

const char* effectName(EEffect effect)
{
    static constexpr std::array names{"remark",   "lost",        "defaulted",     "repaired",
                                      "upgraded", "not carried", "carried unread"};
    return names[effect];
}

std::string SLogRecord::placedText() const
{
    const std::string where = place.text();
    return where.empty() ? text : where + ": " + text;
}

void addLogModule(ILogModule* module)
{
    const std::lock_guard<std::recursive_mutex> guard(moduleLock());
    std::vector<ILogModule*>& modules = logModules();
    if (module != nullptr && std::find(modules.begin(), modules.end(), module) == modules.end())
        modules.push_back(module);
}

void clearLogModules()
{
    const std::lock_guard<std::recursive_mutex> guard(moduleLock());
    logModules().clear();
}

void flushLogModules()
{
    const std::lock_guard<std::recursive_mutex> guard(moduleLock());
    for (ILogModule* module : logModules())
        module->flush(0);
}

static thread_local int silences = 0;

CLogSilence::CLogSilence() { ++silences; }
CLogSilence::~CLogSilence() { --silences; }

static thread_local CFailuresAsLosses* lossesAtWork = nullptr;

CFailuresAsLosses::CFailuresAsLosses() : before(lossesAtWork) { lossesAtWork = this; }
CFailuresAsLosses::~CFailuresAsLosses() { lossesAtWork = before; }

/// True for the first caller with this title and text since the memory was cleared.
static bool rememberOnce(const std::string& title, const std::string& text)
{
    if (silences > 0)
        return false;
    std::string key = title + "|" + text;
    const std::lock_guard<std::mutex> guard(onceLock);
    return onceMemory().insert(std::move(key)).second;
}

/// Bytes of a message. Names out of a file are shortened by those who put them in; this is for the one that forgets.
static constexpr std::size_t longestText = 4000;

void logMessage(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag, quint32 once)
{
    if (once == 1 && !rememberOnce(title, text))
        return;
    SLogRecord message;
    message.level = level;
    message.title = title;
    message.text = shortened(text, longestText);
    message.flag = flag;
    reportRecord(message);
}

void report(EEffect effect, const SLogTitle& title, const std::string& text, quint64 count, const std::string& object)
{
    if (count == 0)
        return;
    SLogRecord message;
    message.title = title.text;
    message.text = shortened(text, longestText);
    message.effect = effect;
    message.place = placeAtWork();
    message.count = count;
    if (!object.empty())
        message.place.object = shortened(object);
    reportRecord(message);
}

void reportOnce(EEffect effect, const SLogTitle& title, const std::string& text, quint64 count,
                const std::string& object)
{
    if (count > 0 && silences == 0 && rememberOnce(title.text, text))
        report(effect, title, text, count, object);
}

void reportFailure(const SLogTitle& title, const std::string& text, ECause cause)
{
    SLogRecord message;
    message.level = eError;
    message.title = title.text;
    message.text = shortened(text, longestText);
    message.cause = cause == eCauseNone ? title.blame : cause;
    message.place = placeAtWork();
    if (lossesAtWork) {
        lossesAtWork->lastWasLoss = message.cause == eCauseSource || message.cause == eCauseUnsupported;
        if (lossesAtWork->lastWasLoss) {
            message.level = eWarning;
            message.effect = eLost;
            message.cause = eCauseNone;
        }
    }
    reportRecord(message);
}

void reportRecord(const SLogRecord& message)
{
    if (silences > 0)
        return;
    const std::lock_guard<std::recursive_mutex> guard(moduleLock());
    for (ILogModule* module : logModules())
        module->record(message);
}

void clearLogOnceMemory()
{
    const std::lock_guard<std::mutex> guard(onceLock);
    onceMemory().clear();
}

} // namespace NBrenmark
