#include "brenmark/conversion_run.h"

#include "brenmark/early_reading.h"
#include "brenmark/failure.h"
#include "brenmark/interrupt.h"
#include "brenmark/plugins/output_aside.h"
#include "brenmark/progress_display.h"
#include "brenmark/units_text.h"

#include "config/file_replacer.h"
#include "core/deck/conversion.h"
#include "core/deck/deck_files.h"
#include "core/log_titles.h"
#include "physics/plugins/host/user_plugins.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <optional>
#include <sys/stat.h>

namespace NBrenmark {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds betweenNotes(1);

/// Hears how far the conversion is, and notes it.
class CListener : public IConversionObserver
{
public:
    CListener(const CPartialFolder& folder, SJournal& journal, const std::vector<double>& sizes,
              CProgressDisplay& progress, bool verbose, bool digest, bool compared)
        : folder(folder),
          journal(journal),
          first(journal.finished),
          written(first),
          sizes(sizes),
          progress(progress),
          verbose(verbose),
          inherited(journal.ledger)
    {
        if (digest)
            source.emplace(eFormatLegacy);
        if (compared && CDigestProcess::isPossible())
            early.emplace(folder, journal.source, sizes);
    }

    void starting(int steps, const QString&) override
    {
        journal.timesteps = static_cast<quint32>(steps / 2);
        setInterruptLeftover(journal.finished, journal.timesteps, utf8(folder.path()));
        sizes.resize(journal.timesteps, 1.0);
        constexpr double readAndWritten = 2.0; // bytes for one of the source, until the first timestep says so
        progress.start(sizes, "converting", readAndWritten);
        lastStep = Clock::now();
    }

    void timestepRead(const CSimulation& deck, bool modelChanged) override
    {
        if (source)
            source->take(deck, modelChanged, sizes.at(deck.currentFrame->timestep.timestepIndex));
    }

    void timestepsMoved(const CSimulation& deck) override
    {
        try {
            if (source)
                source->takeBeside(deck);
        }
        catch (const CFailure&) { // a companion that is left out: whoever needs the digest reads the deck again for it
            source.reset();
        }
    }

    void rereadDone(quint32 timestep) override
    {
        firstOwn = conversion->recordsSoFar().size();
        progress.pass(timestep + 1);
        showTimestep(timestep, "read again");
    }

    void stepReached(int step) override
    {
        targetOpened = true;
        const auto timestep = static_cast<quint32>(step / 2);
        // 2i before timestep i, 2i + 1 after it; whatever ends the conversion jumps to the total.
        if (step % 2 == 0) {
            if (timestep < journal.timesteps)
                setInterruptTimestep(timestep + 1, journal.timesteps);
            return;
        }
        written = timestep + 1;
        if (early)
            early->finished(written);
        said = conversion->recordsSoFar().size();
        progress.update(written);
        showTimestep(timestep, "converted");
        if (Clock::now() - lastNote < betweenNotes)
            return;
        try {
            note(conversion->recordsSoFar());
        }
        catch (const CFailure& failure) { // reported as a failure of the library's own writing would be
            throw caused_error(eCauseTarget, failure.what());
        }
    }
    void completed() override {}

    /// Notes what is finished. \throws CFailure
    void note(const Ledger& own)
    {
        if (written == journal.finished || isBroken)
            return;
        isBroken = true; // what a disk couldn't sync it may call synced at the second try
        folder.syncTimesteps(journal.finished, written);
        SJournal next = journal;
        next.finished = written;
        next.ledger = joined(own, said);
        folder.write(next);
        journal = std::move(next);
        setInterruptLeftover(written, journal.timesteps, utf8(folder.path()));
        lastNote = Clock::now();
        isBroken = false;
    }

    /// The ledger of the runs before and of this one, without what the timesteps said that were read once more.
    Ledger joined(const Ledger& own, size_t end) const
    {
        Ledger all = inherited;
        const auto at = [&own](size_t i) { return own.begin() + static_cast<std::ptrdiff_t>(std::min(i, own.size())); };
        if (firstOwn < end)
            all.insert(all.end(), at(firstOwn), at(end));
        return all;
    }

    /// Sees what upgrades do to the source; null if no one asks.
    CDigestTaker* upgradeListener() { return source ? &*source : nullptr; }
    /// What the reading of the source came to.
    std::optional<SDeckDigest> takenSource(const Ledger& own)
    {
        Ledger ofReading;
        std::copy_if(own.begin(), own.end(), std::back_inserter(ofReading),
                     [](const SLogRecord& message) { return message.title != NLogTitle::hdf5Write.text; });
        return source ? std::make_optional(source->taken(ofReading)) : std::nullopt;
    }

    /// \param digest  of the source
    DigestParts takenConverted(const SDeckDigest& digest) { return early ? early->take(digest) : DigestParts(); }

    CConversion* conversion = nullptr;
    bool targetOpened = false;

private:
    void showTimestep(quint32 timestep, const char* what)
    {
        const double seconds = std::chrono::duration<double>(Clock::now() - lastStep).count();
        lastStep = Clock::now();
        if (verbose)
            progress.printLine("brenmark: timestep " + std::to_string(timestep + 1) + " of " +
                               std::to_string(journal.timesteps) + ' ' + what + ": " + sizeText(sizes.at(timestep)) +
                               " of the source in " + durationText(seconds));
    }

    const CPartialFolder& folder;
    SJournal& journal;
    const quint32 first;
    quint32 written;
    std::vector<double> sizes;
    CProgressDisplay& progress;
    const bool verbose;
    std::optional<CDigestTaker> source;
    std::optional<CEarlyReading> early;
    Clock::time_point lastStep;
    const Ledger inherited;
    bool isBroken = false; ///< a note has failed
    size_t firstOwn = 0;
    size_t said = 0;            ///< when the last timestep was whole
    Clock::time_point lastNote; ///< long ago: the first timestep is noted at once
};

/// A copy has the permissions of the user's new files, whatever its source has.
void giveUsualPermissions(const QString& companion)
{
    const mode_t mask = umask(0);
    umask(mask);
    std::error_code failure;
    std::filesystem::permissions(QFile::encodeName(companion).toStdString(),
                                 static_cast<std::filesystem::perms>(0666 & ~mask), failure);
}

} // namespace

SConversionRun runConversion(const CPartialFolder& folder, SJournal& journal, const std::vector<double>& sizes,
                             CProgressDisplay& progress, bool verbose, bool bindPlugins, bool digest, bool compared)
{
    SConversionRun run;
    CListener listener(folder, journal, sizes, progress, verbose, digest, compared);
    CConversion conversion(listener, interruptWish());
    listener.conversion = &conversion;
    conversion.ignoreUnreadableCompanions = journal.ignoresCompanions;
    SConversionOptions options;
    options.firstTimestep = journal.finished;
    options.upgrades = listener.upgradeListener();

    std::optional<COutputAside> aside; // libraries may print, and the result is the command's alone
    std::optional<CUserPlugins> plugins;
    if (bindPlugins) {
        aside.emplace();
        plugins.emplace();
    }
    const auto begin = Clock::now();
    setFolderOfReplacements(folder.path());
    const bool ok = conversion.run(journal.source, folder.deck(), eFormatHdf5, options) == eConvertOk;
    setFolderOfReplacements(QString());
    run.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    progress.clear();

    run.succeeded = ok && conversion.outcome() == eOutcomeConverted;
    run.interrupted = conversion.outcome() == eOutcomeCancelled;
    run.targetOpened = listener.targetOpened;
    run.error = utf8(conversion.failureText());
    run.messages = listener.joined(conversion.records(), conversion.records().size());
    if (run.succeeded) {
        if (!plugins || !plugins->haveLoaded()) // what a library adds to a model isn't the source's
            run.source = listener.takenSource(conversion.records());
        if (run.source)
            run.converted = listener.takenConverted(*run.source);
        if (verbose && !run.converted.empty())
            progress.printLine("brenmark: " + countText(timestepsOf(run.converted), "timestep") +
                               " read back meanwhile: as in the source");
        giveUsualPermissions(stripDeckSuffix(folder.deck()) + NDeckFile::companionSuffix);
        listener.note(conversion.records());
        folder.syncDeck();
        journal.ledger = run.messages;
        journal.state = eComplete;
        folder.write(journal);
    }
    else {
        try {
            listener.note(conversion.records());
        }
        catch (const CFailure&) { // what ended the conversion is the one to report; the earlier note holds
        }
    }
    return run;
}

} // namespace NBrenmark
