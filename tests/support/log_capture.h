#pragma once
// What was told in the log while a test ran.

#include "core/log.h"

#include <string>

namespace NBrenmark {

/// Keeps warnings and errors from its making to its end. One at a time: its end empties the list of modules.
class CLogCapture
{
public:
    CLogCapture() { addLogModule(&logger); }
    ~CLogCapture() { clearLogModules(); }
    CLogCapture(const CLogCapture&) = delete;
    CLogCapture& operator=(const CLogCapture&) = delete;

    std::size_t count() const { return logger.messages().size(); }
    const std::vector<SLogRecord>& records() const { return logger.records(); }

    /// All messages, each as "WARNING title: text" and a line end.
    std::string text() const
    {
        std::string all;
        for (const auto& [level, title, text] : logger.messages())
            all.append(logLevelName(static_cast<ELogLevel>(level)))
                .append(" ")
                .append(title)
                .append(": ")
                .append(text)
                .append("\n");
        return all;
    }

private:
    CPersistentLogger logger{eWarning};
};

} // namespace NBrenmark
