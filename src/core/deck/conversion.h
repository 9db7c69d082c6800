#pragma once
// One conversion of a stored deck into another file family: what CDataConverter shows to hosts, with what the command
// line needs beyond it.

#include "core/log.h"

#include <QString>

#include <atomic>
#include <vector>

namespace NBrenmark {

class CSimulation;
class IFileFormatManager;
enum EDeckFormat : int;
struct STimestepIndexEntry;

enum EConvertError : int
{
    eConvertOk = 0,
    eConvertFailed = 1,
    eConvertNoIndex = 2,
    eConvertConfigWriteFailed = 6,
    eConvertDataFailed = 10
};

/// Hears how a conversion goes on, on the thread that runs it.
class IConversionObserver
{
public:
    virtual ~IConversionObserver() = default;
    /// \param steps  two for each timestep: 2i is told before timestep i is written, 2i + 1 after it
    virtual void starting(int steps, const QString& title) = 0;
    virtual void stepReached(int step) = 0;
    /// All timesteps were written and the companion files have been seen to.
    virtual void completed() = 0;
};

class CConversion
{
public:
    /// \param observer  not owned
    explicit CConversion(IConversionObserver& observer) : observer(observer) {}

    /// Runs on the caller's thread. The source is only read; a target of that name is deleted first.
    /// \param source, target  first files of the decks
    EConvertError run(const QString& source, const QString& target, EDeckFormat format);
    /// Ends the run after the current timestep. From any thread, and from a signal handler.
    void cancel() { cancelled = true; }

    /// Of the last run, for the user; empty after success.
    const QString& errorText() const { return error; }
    /// The ledger of the last run.
    const std::vector<SLogRecord>& records() const { return ledger; }

private:
    EConvertError convert(const QString& source, const QString& target, EDeckFormat format, CSimulation& simulation);
    EConvertError convertTimesteps(CSimulation& simulation, IFileFormatManager& manager,
                                   const std::vector<STimestepIndexEntry>& sourceIndex,
                                   std::vector<STimestepIndexEntry>& targetIndex);
    EConvertError writeCompanions(CSimulation& simulation, const QString& sourceBase, const QString& targetBase);

    IConversionObserver& observer;
    std::atomic<bool> cancelled{false};
    QString error;
    std::vector<SLogRecord> ledger;
};

} // namespace NBrenmark
