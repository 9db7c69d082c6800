#pragma once
// The process-wide log: messages go to pluggable modules, of which one keeps them in memory for
// the caller of a conversion. Nothing depends on a module being there.

#include "core/cause.h"
#include "core/data_place.h"
#include "core/log_titles.h"

#include <QtGlobal>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace NBrenmark {

enum ELogLevel : quint32
{
    eDebug = 0,
    eTrace = 1,
    ePerf = 2,
    eInfo = 3,
    eWarning = 4,
    eError = 5
};

/// The text of a level: "DEBUG", "TRACE", "PERF", "INFO", "WARNING", "ERROR".
const std::string& logLevelName(ELogLevel level);

/// What a message says of the data. All that isn't a remark belongs to the ledger of a conversion.
enum EEffect
{
    eRemark,       ///< nothing of the data changed
    eLost,         ///< damage: what the source holds there can't be read and isn't in the result
    eDefaulted,    ///< damage: a default stands in for what is missing or can't be read
    eRepaired,     ///< values that contradict each other were made to agree
    eUpgraded,     ///< an old model was brought to the form of today, as is meant
    eNotCarried,   ///< the target's format has no place for it
    eCarriedUnread ///< carried as its bytes, which nothing here understands
};

/// "lost", "defaulted", "repaired", "upgraded", "not carried", "carried unread"; "remark".
const char* effectName(EEffect effect);
/// Whether an effect means that the source was damaged.
constexpr bool isDamage(EEffect effect) { return effect == eLost || effect == eDefaulted; }

/// One message with all that is known of it.
struct SLogRecord
{
    ELogLevel level = eWarning;
    std::string title; ///< of NLogTitle
    std::string text;  ///< what happened, without the place
    EEffect effect = eRemark;
    ECause cause = eCauseNone; ///< of a failure
    SDataPlace place;
    quint64 count = 1; ///< of the rows, values or objects that it is about
    unsigned char flag = 0;

    /// The text after its place, as it is shown.
    std::string placedText() const;
};

/// A sink of log messages.
class ILogModule
{
public:
    virtual ~ILogModule() = default;
    /// Takes one message. reserved is 0 at every call.
    virtual void log(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag,
                     quint32 reserved) = 0;
    /// Sets the lowest level that the module keeps.
    virtual void setThreshold(ELogLevel level) = 0;
    /// Brings out what the module holds back. reserved is 0 at every call.
    virtual void flush(quint32 reserved) = 0;
    virtual void idle() {}
    /// Takes one message with all that is known of it. A module that keeps no more than texts needn't override it.
    virtual void record(const SLogRecord& message)
    {
        log(message.level, message.title, message.placedText(), message.flag, 0);
    }
};

/// Level, title and text of one kept message.
using SLogMessage = std::tuple<int, std::string, std::string>;

/// Keeps messages in memory, in the order of arrival. A damaged deck may cause one for each of its bytes: beyond a great
/// number one message of each kind counts the others.
class CPersistentLogger : public ILogModule
{
public:
    explicit CPersistentLogger(ELogLevel threshold);
    void log(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag,
             quint32 reserved) override;
    /// Replaces the threshold; messages that are kept stay.
    void setThreshold(ELogLevel level) override;
    void flush(quint32 reserved) override;
    void record(const SLogRecord& message) override;
    /// A copy of what was kept.
    std::vector<SLogMessage> messages() const;
    const std::vector<SLogRecord>& records() const { return kept; }

private:
    ELogLevel threshold;
    std::vector<SLogRecord> kept;
    struct STally
    {
        std::size_t place; ///< in kept
        quint64 messages;
        std::string first; ///< the words of the first one
    };
    std::map<std::tuple<ELogLevel, std::string, EEffect>, STally> tallies;
};

/// Appends a module to the list; a null pointer or a module that is in the list is ignored.
/// The list doesn't own its modules. Modules come and go outside of any worker's life.
void addLogModule(ILogModule* module);

/// Empties the list of modules.
void clearLogModules();

/// Flushes every module in list order.
void flushLogModules();

/// Hands a message to every module in list order. With once 1 the same title and text reach the
/// modules once only, until clearLogOnceMemory. May be called from worker threads and OpenMP teams.
void logMessage(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag = 0,
                quint32 once = 0);

/// Hands a message of the ledger to every module, as a warning with the place of the work on this thread.
/// \param count   of the rows, values or objects that it is about; 0 says nothing at all
/// \param object  the name of the one that it is about; empty for that of the place
void report(EEffect effect, const SLogTitle& title, const std::string& text, quint64 count = 1,
            const std::string& object = std::string());
/// The same, once per deck for the same title and text, wherever it comes up first.
void reportOnce(EEffect effect, const SLogTitle& title, const std::string& text, quint64 count = 1,
                const std::string& object = std::string());
/// Hands an error to every module, with its place and cause.
/// \param cause  eCauseNone: the one whom the title blames
void reportFailure(const SLogTitle& title, const std::string& text, ECause cause = eCauseNone);
/// Hands a record to every module as it is.
void reportRecord(const SLogRecord& message);

/// Nothing that this thread says reaches a module while one lives: for what is tried out and thrown away.
class CLogSilence
{
public:
    CLogSilence();
    ~CLogSilence();
    CLogSilence(const CLogSilence&) = delete;
    CLogSilence& operator=(const CLogSilence&) = delete;
};

/// Forgets which messages were said once: a message said once is said once per deck.
void clearLogOnceMemory();

} // namespace NBrenmark
