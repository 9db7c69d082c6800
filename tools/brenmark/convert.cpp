// brenmark convert.

#include "brenmark/commands.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_reader.h"
#include "brenmark/interrupt.h"
#include "brenmark/json_text.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/verify.h"

#include "core/deck/conversion.h"
#include "core/deck/deck_files.h"

#include <chrono>

namespace NBrenmark {

namespace {

struct SConversion
{
    bool succeeded = false;
    bool interrupted = false;
    bool begun = false;        ///< what stood at the target is gone
    bool targetOpened = false; ///< a timestep was begun
    int timesteps = 0;         ///< of the source
    int written = 0;           ///< whole timesteps at the target
    double seconds = 0.0;
    std::string error;
    Ledger messages;
};

/// Hears how far the conversion is.
class CListener : public IConversionObserver
{
public:
    CListener(SConversion& result, qint64 bytes, CProgressDisplay& progress)
        : result(result), bytes(bytes), progress(progress)
    {}

    void starting(int steps, const QString&) override
    {
        result.begun = true;
        result.timesteps = steps / 2;
        progress.start(result.timesteps, "converting", static_cast<double>(bytes));
        if (interrupt)
            interrupt->repeat();
    }
    void stepReached(int step) override
    {
        result.targetOpened = true;
        // 2i before timestep i, 2i + 1 after it; whatever ends the conversion jumps to the total.
        if (step % 2 == 0)
            return;
        result.written = (step + 1) / 2;
        progress.update(result.written);
    }
    void completed() override {}

    CInterruptHandler* interrupt = nullptr;

private:
    SConversion& result;
    const qint64 bytes;
    CProgressDisplay& progress;
};

SConversion convert(const QString& source, const QString& target, qint64 bytes, CProgressDisplay& progress)
{
    SConversion result;
    CListener listener(result, bytes, progress);
    CConversion conversion(listener);
    CInterruptHandler interrupt(conversion);
    listener.interrupt = &interrupt;

    const auto begin = std::chrono::steady_clock::now();
    result.succeeded = conversion.run(source, target, eFormatHdf5) == eConvertOk;
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    result.interrupted = !result.succeeded && CInterruptHandler::interrupted();
    result.error = utf8(conversion.errorText());
    result.messages = conversion.records();
    progress.clear();
    return result;
}

CFailure failureOf(const SConversion& conversion, const QString& source, const QString& target)
{
    if (conversion.interrupted)
        return CFailure(
            eExitInterrupted,
            "interrupted behind timestep " + std::to_string(conversion.written) + " of " +
                std::to_string(conversion.timesteps),
            conversion.written == 0
                ? "Nothing is left at the target. Repeat this command to convert all; the source is untouched."
                : utf8(target) + " holds whole timesteps up to there, without settings and configuration. "
                                 "Repeat this command with --force to convert all; the source is untouched.");
    // Behind the last timestep, and before the first one, only the target is touched.
    const bool reachedTarget = conversion.written == conversion.timesteps || !conversion.targetOpened;
    const CFailure fallback(
        reachedTarget ? eExitTarget : eExitDifferent,
        conversion.error.empty() ? utf8(target) + ": can't be created" : conversion.error,
        reachedTarget
            ? "Check that the target's folder can be written and has room, and repeat this command with --force."
            : "The new deck isn't complete. The source is untouched.");
    return failureFromLog(conversion.messages, utf8(source), fallback);
}

Json resultObject(const char* result, EExitCode code, const QString& source, const QString& target)
{
    return {{"result", result}, {"code", code}, {"source", utf8(source)}, {"target", utf8(target)}};
}

void addConversion(Json& object, const SConversion& conversion, qint64 bytesRead, qint64 bytesWritten)
{
    object["seconds"] = conversion.seconds;
    object["bytesRead"] = bytesRead;
    object["bytesWritten"] = bytesWritten;
    object["timesteps"] = conversion.written;
    object["messages"] = jsonMessages(conversion.messages);
}

void tell(const SConvertOptions& options, const QString& target, const SConversion& conversion,
          const SVerification& verification, qint64 bytesRead, qint64 bytesWritten)
{
    if (!options.quiet)
        printResult(utf8(options.source) + ": converted to " + utf8(target) + ": " +
                    countText(static_cast<quint64>(conversion.written), "timestep") + ", " +
                    sizeText(static_cast<double>(bytesRead)) + " read, " + sizeText(static_cast<double>(bytesWritten)) +
                    " written in " + durationText(conversion.seconds) +
                    (holdsDamage(conversion.messages) ? "; lost: " + damageText(conversion.messages) : "") + '\n');
    if (options.verify && (!options.quiet || verification.exitCode() != eExitDone))
        printVerification(verification, options.source, target);
    flushResult();
}

EExitCode converted(const SConvertOptions& options, const QString& target)
{
    const qint64 bytesRead = bytesOf(familyFiles(options.source));
    SConversion conversion;
    {
        CProgressDisplay progress(options.quiet);
        conversion = convert(options.source, target, bytesRead, progress);
    }
    printLedger(conversion.messages);
    // Files without a timestep in them are no deck, and in the way of the next try.
    if (!conversion.succeeded && conversion.begun && conversion.written == 0)
        deleteFamily(target);
    const qint64 bytesWritten = bytesOf(familyFiles(target));

    if (!conversion.succeeded) {
        const CFailure failure = failureOf(conversion, options.source, target);
        if (options.json) {
            Json object =
                resultObject(conversion.interrupted ? "interrupted" : "failed", failure.code, options.source, target);
            addConversion(object, conversion, bytesRead, bytesWritten);
            object["error"] = failure.what();
            unlessReaderIsGone([&] { printJson(object); });
        }
        printFailure(failure);
        return failure.code;
    }

    SVerification verification;
    if (options.verify) {
        CProgressDisplay progress(options.quiet || !errorIsTerminal());
        verification = verify(options.source, target, defaultDifferenceLimit, progress);
    }
    EExitCode code = verification.exitCode();
    if (code == eExitDone && holdsDamage(conversion.messages))
        code = eExitSource;
    if (options.json) {
        Json object = resultObject("converted", code, options.source, target);
        addConversion(object, conversion, bytesRead, bytesWritten);
        if (options.verify)
            object["verification"] = jsonVerification(verification);
        unlessReaderIsGone([&] { printJson(object); });
        return code;
    }
    unlessReaderIsGone([&] { tell(options, target, conversion, verification, bytesRead, bytesWritten); });
    return code;
}

EExitCode nothingToDo(const SConvertOptions& options)
{
    if (options.json) {
        Json object = resultObject("nothing to do", eExitDone, options.source, options.source);
        addConversion(object, SConversion(), 0, 0);
        printJson(object);
    }
    else if (!options.quiet) {
        printResult(utf8(options.source) + ": is an HDF5 deck already: nothing to convert\n");
    }
    flushResult();
    return eExitDone;
}

/// Opens a deck and lets it go again. \throws CFailure  it can't be opened
void requireReadable(const QString& path) { const CDeckReader reader(path); }

} // namespace

EExitCode runConvert(const SConvertOptions& options)
{
    try {
        if (requireDeck(options.source) == eFormatHdf5)
            return nothingToDo(options);
        const QString target = targetPath(options.source, options.target);
        requireFreeTarget(options.source, target, options.force);
        requireReadable(options.source); // a deck that can't be opened must not cost the one at the target
        makeTargetFolder(target);
        return converted(options, target);
    }
    catch (const CFailure& failure) {
        if (options.json) {
            Json object = resultObject("failed", failure.code, options.source, options.target);
            addConversion(object, SConversion(), 0, 0);
            object["error"] = failure.what();
            unlessReaderIsGone([&] { printJson(object); });
        }
        throw;
    }
}

} // namespace NBrenmark
