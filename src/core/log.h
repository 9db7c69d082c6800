#pragma once
// The process-wide log: messages go to pluggable modules, of which one keeps them in memory for
// the caller of a conversion. Nothing depends on a module being there.

#include <QtGlobal>
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
};

/// Level, title and text of one kept message.
using SLogMessage = std::tuple<int, std::string, std::string>;

/// Keeps messages in memory, in the order of arrival.
class CPersistentLogger : public ILogModule
{
public:
    explicit CPersistentLogger(ELogLevel threshold);
    void log(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag,
             quint32 reserved) override;
    /// Replaces the threshold; messages that are kept stay.
    void setThreshold(ELogLevel level) override;
    void flush(quint32 reserved) override;
    /// A copy of what was kept.
    std::vector<SLogMessage> messages() const;

private:
    ELogLevel threshold;
    std::vector<SLogMessage> kept;
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

/// Forgets which messages were said once: a message said once is said once per deck.
void clearLogOnceMemory();

} // namespace NBrenmark
