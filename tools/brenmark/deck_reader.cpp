#include "brenmark/deck_reader.h"

#include "brenmark/partial_folder.h"

#include "core/deck/application_state.h"
#include "core/plain_file.h"
#include "io/dem/dem_header.h"

#include <QFile>
#include <QFileInfo>

namespace NBrenmark {

/// What to try instead of a path that is no deck.
static std::string advice(const QString& path)
{
    const QString deck = stripDeckSuffix(path) + NDeckFile::demSuffix;
    if (deck != path && detectFormat(deck) != eFormatUnknown)
        return "A deck is named by its first file: try " + utf8(deck) + ".";
    for (const QLatin1String suffix : {NDeckFile::indexSuffix, NDeckFile::companionSuffix,
                                       NDeckFile::legacyPropertySuffix, NDeckFile::dataFolderSuffix}) {
        const QString other = path.chopped(path.endsWith(suffix) ? suffix.size() : 0) + NDeckFile::demSuffix;
        if (path.endsWith(suffix) && QFileInfo::exists(other))
            return "A deck is named by its first file: try " + utf8(other) + ".";
    }
    return std::string();
}

static CFailure openFailure(int code, const QString& path, const Ledger& messages)
{
    const std::string name = utf8(path);
    const char* const copyAgain = "Copy the deck again from the archive, with all its files.";
    const auto is = [&](EExitCode exitCode, const char* what) {
        return CFailure(exitCode, name + ": " + what, copyAgain);
    };
    switch (code) {
    case eOpenIndexUnreadable:
        return failureFromLog(messages, name, is(eExitSource, "the index can't be read, or doesn't fit the deck"));
    case eOpenIndexNotRebuilt: return failureFromLog(messages, name, is(eExitSource, "the index can't be rebuilt"));
    case eOpenHeaderRefused: {
        CFailure failure =
            failureFromLog(messages, name, is(eExitUnsupported, "the header isn't one that can be read"));
        if (detectFormat(path) == eFormatHdf5) { // any program may have made it
            failure.code = eExitUnsupported;
            failure.advice = "It is an HDF5 file without the header of a deck. If it was a deck, copy it again.";
        }
        return failure;
    }
    case eLoadConfigurationFailed:
        return failureFromLog(messages, name, is(eExitSource, "the configuration beside it can't be read"));
    default: return failureFromLog(messages, name, is(eExitSource, "the deck or its settings can't be opened"));
    }
}

void requireNoPartialDeck(const QString& path)
{
    if (const std::optional<SPartialDeck> partial = partialDeckAt(path))
        throw CFailure(eExitSource,
                       utf8(path) + ": is a partial deck in " + utf8(partial->path) + ", " + partial->countText(),
                       "Go on with it: " + partial->command());
}

EDeckFormat requireDeck(const QString& path)
{
    const std::string name = utf8(path);
    const QFileInfo info(path);
    requireNoPartialDeck(path);
    if (!info.exists()) {
        const std::string other = advice(path);
        throw CFailure(eExitSource, name + ": no such file", other.empty() ? "Check the path." : other);
    }
    if (info.isDir()) {
        const std::string other = advice(path);
        throw CFailure(eExitUnsupported, name + ": is a folder",
                       other.empty() ? "Name the deck's first file; brenmark check lists the decks of a folder."
                                     : other);
    }
    if (!info.isFile())
        throw CFailure(eExitUnsupported, name + ": is a device, pipe or socket", "Name the deck's first file.");
    QFile file(path);
    if (const std::string cause = openPlainFile(file); !cause.empty())
        throw CFailure(eExitSource, name + ": can't be opened: " + cause, "Check the file's permissions.");
    file.close();

    std::string cause;
    const EDeckFormat format = detectFormat(path, &cause);
    if (!cause.empty())
        throw CFailure(eExitSource, name + ": can't be read: " + cause, "Check the disk.");
    if (format == eFormatUnknown) {
        const std::string other = advice(path);
        throw CFailure(eExitUnsupported, name + ": isn't a deck that brenmark can read",
                       other.empty() ? "Its first bytes are neither those of an HDF5 file nor those of a legacy deck "
                                       "with timesteps, of a version from 2.0.0 to below 30.0.0."
                                     : other);
    }
    if (checkSourceFiles(path, false) != 0) {
        const QString index = stripDeckSuffix(path) + NDeckFile::indexSuffix;
        throw CFailure(eExitSource, name + ": its index " + utf8(index) + " is missing",
                       "Copy the index from the archive and put it beside the deck.");
    }
    return format;
}

COpenLibrary::COpenLibrary(ILogModule& log)
{
    if (!initialiseApplication(applicationState()))
        throw CFailure(eExitTarget, "the library can't be set up", "There may be too little memory.", eCauseMemory);
    roles.emplace(*simulation().configuration);
    addLogModule(&log);
}

COpenLibrary::~COpenLibrary()
{
    simulation().close(false);
    flushLogModules();
    shutdownApplication(applicationState());
    clearLogModules();
}

CSimulation& COpenLibrary::simulation() const { return *applicationState().simulation; }

CDeckReader::CDeckReader(const QString& deckPath, EModelForm form, EExamination examination, bool ignoreCompanions,
                         SDeckHead* known)
    : path(utf8(deckPath)),
      deckFormat(requireDeck(deckPath)),
      logger(eWarning),
      library(logger),
      modelIndex(CCreatorData::noStorageIndex),
      modelOffset(CCreatorData::noStorageOffset)
{
    deck().readOptions.examine = examination == eExamined;
    deck().readOptions.upgradeOldModels = form == eUpgradedModel;
    deck().ignoreUnreadableCompanions = ignoreCompanions;
    const int code = deck().load(deckPath);
    if (known != nullptr && code != eOpenHeaderRefused && !manager().fileName.isEmpty())
        *known = head(); // else what is there are the manager's own versions
    if (code != eOpened)
        throw openFailure(code, deckPath, logger.records());
}

const char* SDeckHead::familyName() const
{
    return format == eFormatLegacy ? "legacy" : format == eFormatHdf5 ? "HDF5" : "unknown";
}

SDeckHead headOf(const QString& path)
{
    SDeckHead head{detectFormat(path)};
    QFile file(path);
    SDemHeader header;
    if (head.format == eFormatLegacy && openPlainFile(file).empty() && header.read(file)) {
        head.firstVersion = header.firstVersion;
        head.lastVersion = header.lastVersion;
    }
    return head;
}

SDeckHead CDeckReader::head() const { return {deckFormat, manager().firstVersion, manager().lastVersion}; }

SSimulationFrame& CDeckReader::timestep(quint32 number)
{
    CSimulation& simulation = deck();
    const CCreatorData& creator = simulation.currentFrame->creator;
    const size_t saidBefore = logger.records().size();
    loaded.reset();
    if (!simulation.goToTimestep(number, eIntoCurrentFrame)) {
        const Ledger& all = logger.records();
        const std::string where = path + ", timestep " + std::to_string(number);
        throw failureFromLog({all.begin() + static_cast<std::ptrdiff_t>(saidBefore), all.end()}, where,
                             CFailure(eExitSource, where + ": can't be read", "Copy the deck again from the archive."));
    }
    changed = creator.modified || creator.storageIndex() != modelIndex || creator.storageOffset() != modelOffset;
    modelIndex = creator.storageIndex();
    modelOffset = creator.storageOffset();
    loaded = number;
    return *simulation.currentFrame;
}

SSimulationFrame& CDeckReader::loadedTimestep(quint32 number)
{
    return loaded == number ? *deck().currentFrame : timestep(number);
}

} // namespace NBrenmark
