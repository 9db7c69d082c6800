#include "physics/plugins/plugin_errors.h"

#include "core/log.h"
#include "core/shortened.h"

namespace NBrenmark {

/// As much as one can read of a text that a library gives.
static constexpr std::size_t longestPluginText = 4000;

static void tellOnce(ELogLevel level, const std::string& title, const QString& text)
{
    logMessage(level, shortened(title), shortened(text.toStdString(), longestPluginText), 0, 1);
}

void tellPluginError(const std::string& title, const QString& text) { tellOnce(eError, title, text); }

void tellPluginWarning(const std::string& title, const QString& text) { tellOnce(eWarning, title, text); }

void CPluginErrors::tell(const QString& text)
{
    if (!errorReported.exchange(true))
        tellPluginError(title, text);
}

} // namespace NBrenmark
