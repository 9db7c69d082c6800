#include "physics/plugins/plugin_errors.h"

#include "core/log.h"
#include "core/shortened.h"

namespace NBrenmark {

/// As much as one can read of a text that a library gives.
static constexpr std::size_t longestPluginText = 4000;

static void reportPluginText(ELogLevel level, const std::string& title, const QString& text)
{
    logMessage(level, shortened(title), shortened(text.toStdString(), longestPluginText), 0, 1);
}

void reportPluginError(const std::string& title, const QString& text) { reportPluginText(eError, title, text); }

void reportPluginWarning(const std::string& title, const QString& text) { reportPluginText(eWarning, title, text); }

void CPluginErrors::report(const QString& text)
{
    if (!errorReported.exchange(true))
        reportPluginError(title, text);
}

} // namespace NBrenmark
