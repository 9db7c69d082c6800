#pragma once
// One conversion of a stored deck into another file family: what CDataConverter shows to hosts, with what the command
// line needs beyond it.

#include "core/deck/family_files.h"
#include "core/log.h"
#include "core/stop_flag.h"

#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace NBrenmark {

class CSimulation;
class IFileFormatManager;
enum EDeckFormat : int;
struct STimestepIndexEntry;
namespace NLegacySupport {
class IUpgradeListener;
}

enum EConvertError : int
{
    eConvertOk = 0,
    eConvertFailed = 1,
    eConvertNoIndex = 2,
    eConvertConfigWriteFailed = 6,
    eConvertDataFailed = 10
};

/// How a run ended, for those to whom a bool says too little.
enum EConversionOutcome : int
{
    eOutcomeNotRun = 0,
    eOutcomeConverted,
    eOutcomeNothingToDo, ///< the source is of the current family
    eOutcomeNotADeck,    ///< neither family; success without any effect
    eOutcomeCancelled,
    eOutcomeFailed,
    eOutcomeBusy ///< another run of the process wasn't over
};

/// Hears how a conversion goes on, on the thread that runs it.
class IConversionObserver
{
public:
    virtual ~IConversionObserver() = default;
    /// \param steps  two for each timestep: 2i is reported before timestep i is written, 2i + 1 after it
    virtual void starting(int steps, const QString& title) = 0;
    virtual void stepReached(int step) = 0;
    /// A timestep was read and not written yet: the current frame has the values of the source.
    /// \param modelChanged  whether it brought another model than the one before it; true for the first
    virtual void timestepRead(const CSimulation&, bool /*modelChanged*/) {}
    /// All timesteps were read and written, and what is beside them is still as it was read.
    virtual void timestepsMoved(const CSimulation&) {}
    /// A timestep that is at the target already was read once more, from 0 on.
    virtual void rereadDone(quint32) {}
    /// All timesteps were written and the companion files have been seen to.
    virtual void completed() = 0;
};

/// What a run does otherwise than the plain one.
struct SConversionOptions
{
    /// Timesteps before this one are at the target already, from a run that was broken off. They are read once more,
    /// for what follows builds on them, and not written. Less than the number of timesteps.
    quint32 firstTimestep = 0;
    /// Called when the run has begun; what it gives lives until the run is over. Plug-ins are bound by a CPluginBinding
    /// in it, which must not be made while another run may be on.
    std::function<std::shared_ptr<const void>()> bindPlugins;
    NLegacySupport::IUpgradeListener* upgrades = nullptr; ///< sees what they change; not owned
};

class CConversion
{
public:
    /// With a wish to stop of its own, which a run forgets when it begins.
    /// \param observer  not owned
    explicit CConversion(IConversionObserver& observer) : observer(observer), wish(ownWish) {}
    /// \param wish  of a host that stops more than this; one that was raised before a run counts. Not owned
    CConversion(IConversionObserver& observer, CStopWish& wish) : observer(observer), wish(wish) {}

    /// A companion that is there and can't be read is left out and reported as lost. Without this it fails the run
    /// before the target is touched.
    bool ignoreUnreadableCompanions = false;

    /// Runs on the caller's thread. The source is only read; a target of that name is deleted first.
    /// One run at a time in a process: a second one, from whatever thread or object, fails at once and touches
    /// nothing of the first.
    /// \param source, target  first files of the decks
    EConvertError run(const QString& source, const QString& target, EDeckFormat format,
                      const SConversionOptions& options = {});
    /// Ends the run after the current timestep. From any thread, and from a signal handler.
    void cancel() { wish.raise(); }

    // Of the last run, from any thread. While this object runs, its outcome is eOutcomeBusy.
    EConversionOutcome outcome() const;
    /// For the user; empty after success, and after failures that have none.
    QString errorText() const;
    /// What came between the user and a new deck: the error text, and below it the first error of the ledger. Empty
    /// for eOutcomeConverted and eOutcomeNothingToDo, and for those alone.
    QString failureText() const;
    /// The ledger.
    std::vector<SLogRecord> records() const;
    /// The ledger so far, for the observer, while it is called.
    const std::vector<SLogRecord>& recordsSoFar() const;

private:
    class CClaim;
    struct SResult
    {
        EConversionOutcome outcome = eOutcomeNotRun;
        QString error;
        QString failure;
        std::vector<SLogRecord> ledger;
    };

    void begin(const QString& source);
    void publish(SResult result);
    EConvertError convert(const QString& source, const QString& target, EDeckFormat format, CSimulation& simulation);
    bool prepareTarget(const QString& source, const QString& target);
    bool isUnchanged(const QStringList& files) const;
    EConvertError cancelledResult();
    void setEnd(EConversionOutcome outcome, const QString& failure = QString());
    EConvertError convertTimesteps(CSimulation& simulation, IFileFormatManager& manager,
                                   const std::vector<STimestepIndexEntry>& sourceIndex,
                                   std::vector<STimestepIndexEntry>& targetIndex);
    EConvertError writeCompanions(CSimulation& simulation, const QString& sourceBase, const QString& targetBase);

    IConversionObserver& observer;
    CStopWish ownWish;
    CStopWish& wish;
    SConversionOptions options;
    FileStates sourceStates; ///< when the run began
    const CPersistentLogger* logger = nullptr;
    SResult running; ///< of the run that goes on, and of its thread alone
    SResult last;    ///< what others see
    mutable std::mutex lastLock;
};

} // namespace NBrenmark
