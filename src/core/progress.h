#pragma once
// How long operations report progress and learn that they shall stop. Callers hand in a pointer
// that is null where no one watches: every use tests it first.

#include <QObject>
#include <QString>

namespace NBrenmark {

/// Answer of IProgressController::cancelState.
enum ECancelState : unsigned char
{
    eGoOn = 0,
    eCancel = 1,
    eStopWithoutFailure = 2
};

class IProgressController : public QObject
{
    Q_OBJECT
public:
    ~IProgressController() override = default;
    /// Announces a step of so many ticks. flag is true at every call.
    virtual void startStep(int steps, const QString& text, bool flag) = 0;
    virtual void setText(const QString&) {}
    virtual void tick(int count) = 0;
    /// The step is over, normally or not.
    virtual void endStep() = 0;
    virtual void pause() {}
    virtual void resume() {}
    /// The library informs the controller that it has given up.
    virtual void cancel() = 0;
    /// Any value other than eGoOn and eCancel stops without failure where the caller knows that case.
    virtual unsigned char cancelState() = 0;
};

/// Whether the caller wants the work to end as a failure. Where no one watches, no one does.
inline bool wantsCancel(IProgressController* progress)
{
    return progress != nullptr && progress->cancelState() == eCancel;
}

/// A host's controller on a console. The library makes none.
class CConsoleProgressController : public QObject
{
    Q_OBJECT
Q_SIGNALS:
    void cancelClicked();
};

/// A host's controller with a progress bar. The library makes none.
class CProgressBarController : public QObject
{
    Q_OBJECT
Q_SIGNALS:
    void cancelClicked();
};

/// A host's reporter for work on another thread. The library makes none.
class AsyncProgressReporter : public QObject
{
    Q_OBJECT
Q_SIGNALS:
    void progressUpdate(int progress);
    void threadFinished();
};

} // namespace NBrenmark
