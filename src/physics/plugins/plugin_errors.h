#pragma once
// How failures of plug-ins reach the log, and how calls into a library are kept from ending more than themselves.

#include <QString>

#include <atomic>
#include <exception>
#include <string>
#include <utility>

namespace NBrenmark {

/// The title of what befalls a library before it is known what is in it.
constexpr const char* pluginTitle = "Plugins";

/// Hands an error about a plug-in to the log, once per deck: a deck may name a library many times. It has no cause, for
/// the deck is read on, and what can't be bound is kept by its name.
void reportPluginError(const std::string& title, const QString& text);
/// The same as a warning.
void reportPluginWarning(const std::string& title, const QString& text);

/// What one plug-in has to say: the first failure reaches the log, what follows from it doesn't.
class CPluginErrors
{
public:
    void setTitle(const QString& text) { title = text.toStdString(); }
    /// Says nothing if something was said before.
    void report(const QString& text);
    /// Says it in any case: what belongs to a text logged before, or ends a run.
    void reportAlways(const QString& text) const { reportPluginError(title, text); }
    void reset() { errorReported = false; }

    /// What call gives, or failed if an exception leaves the library, which is logged.
    template <class TResult, class TCall>
    TResult guarded(TResult failed, TCall&& call)
    {
        try {
            return std::forward<TCall>(call)();
        }
        catch (const std::exception& thrown) {
            report(QStringLiteral("The plug-in threw an exception: ") + QString::fromUtf8(thrown.what()));
        }
        catch (...) { // it may throw anything
            report(QStringLiteral("The plug-in threw an exception."));
        }
        return failed;
    }
    /// The same of a call that gives nothing.
    template <class TCall>
    void attempt(TCall&& call)
    {
        guarded(false, [&] {
            call();
            return true;
        });
    }

private:
    std::string title = pluginTitle;
    std::atomic<bool> errorReported{false}; ///< several threads of a solver may fail at once
};

} // namespace NBrenmark
