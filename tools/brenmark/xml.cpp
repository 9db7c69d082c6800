// brenmark xml: decks as documents, and documents as decks.

#include "brenmark/commands.h"
#include "brenmark/deck_family.h"
#include "brenmark/partial_folder.h"
#include "brenmark/target_checks.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "brenmark/xml_deck.h"

#include "config/file_replacer.h"
#include "core/deck/family_files.h"
#include "xml/document.h"

#include <QFileInfo>
#include <QSaveFile>

namespace NBrenmark {

// ---------------------------------------------------------------- export

/// The document may replace neither a file of the deck, by whatever path or link, nor without force any other.
static void requireFreeDocument(const SXmlOptions& options)
{
    const QFileInfo target(options.target);
    for (const QString& file : familyFiles(options.source))
        if (target.exists() && QFileInfo(file).canonicalFilePath() == target.canonicalFilePath())
            throw CFailure(eExitTarget, utf8(options.target) + ": is a file of the deck itself",
                           "Choose another name for the document: the deck must stay as it is.");
    if (target.exists() && !target.isFile())
        throw CFailure(eExitTarget, utf8(options.target) + ": isn't a file", "Choose another name for the document.");
    if (target.exists() && !options.force)
        throw CFailure(eExitTarget, utf8(options.target) + " exists already",
                       "Choose another name for the document, or replace it with --force.");
}

static EExitCode exportDeck(const SXmlOptions& options)
{
    CDeckReader reader(options.source);
    requireFreeDocument(options);
    const quint32 count = reader.timestepCount();
    if (options.timestep >= count)
        throw CFailure(eExitUsage, utf8(options.source) + ": has no timestep " + std::to_string(options.timestep),
                       "It has " + std::to_string(count) + ", counted from 0.");
    SSimulationFrame& frame = reader.timestep(options.timestep);
    QSaveFile file(options.target); // it gets its name when it is whole
    const auto fail = [&](const std::string& cause) {
        throw CFailure(eExitTarget, utf8(options.target) + ": can't be written: " + cause, adviceForWriting(cause));
    };
    if (!file.open(QIODevice::WriteOnly))
        fail(utf8(file.errorString()));
    CXmlIoOptions chosen = reader.deck().xmlOptions;
    chosen.writeParticles = options.particles;
    chosen.writeContacts = options.contacts;
    chosen.writeBonds = options.bonds;
    chosen.writeCollisions = options.collisions;
    try {
        if (options.oneTimestep)
            writeTimestep(file, frame.timestep, chosen);
        else
            writeDefinition(file, frame.creator, chosen);
    }
    catch (const caused_error& error) {
        fail(error.what());
    }
    if (!file.commit())
        fail(utf8(file.errorString()));
    printLedger(reader.messages());
    return holdsDamage(reader.messages()) ? eExitSource : eExitDone;
}

// ---------------------------------------------------------------- import

/// What was begun here before is finished if its deck was about to take its place, and else only discarded by force.
static void makeRoom(CPartialFolder& folder, bool force)
{
    if (!folder.isBegun()) {
        folder.clear(); // of what an import left that was ended
        return;
    }
    const SJournal earlier = folder.read();
    if (earlier.state >= eReplacing)
        folder.place(earlier);
    else if (force)
        folder.clear();
    else
        throw CFailure(eExitTarget, utf8(folder.path()) + ": holds an unfinished conversion",
                       "Repeat this command with --force to discard it.");
}

/// Makes the deck in its folder, with all that belongs to it.
static void makeDeck(CXmlDeck& deck, const CPartialFolder& folder)
{
    CSimulation& simulation = deck.simulation();
    const QString base = stripDeckSuffix(folder.deck());
    const std::string path = utf8(folder.deck());
    const CFailure fallback(eExitTarget, path + ": can't be created", adviceForWriting(path));
    if (!simulation.ioManager.active().createSimulation(folder.deck(), deck.frame(), false, simulation.index))
        throw failureFromLog(deck.messages(), path, fallback);
    setFolderOfReplacements(folder.path());
    const bool settingsWritten = simulation.writeSettings(true, base);
    const bool configurationWritten = simulation.writeConfiguration(base);
    const bool allArrived = waitForCopies().empty();
    setFolderOfReplacements(QString());
    if (!settingsWritten || !configurationWritten || !allArrived)
        throw failureFromLog(deck.messages(), path, fallback);
    folder.syncTimesteps(0, 1);
    folder.syncDeck();
}

static EExitCode importDeck(const SXmlOptions& options)
{
    const QString stem = QFileInfo(options.source).completeBaseName() + NDeckFile::demSuffix;
    const QString target = targetPath(stem, options.target);
    CXmlDeck deck(options.source, options.timestepDocument);
    requirePossibleTarget(options.target, target);
    requireFreeTarget(options.source, target, options.force);
    makeTargetFolder(target);
    CPartialFolder folder(target);
    makeRoom(folder, options.force);
    requireFreeTarget(options.source, target, options.force);
    SJournal journal;
    journal.program = BRENMARK_VERSION;
    journal.source = QFileInfo(options.source).absoluteFilePath();
    journal.replaces = options.force;
    journal.timesteps = journal.finished = 1;
    try {
        makeDeck(deck, folder);
    }
    catch (const CFailure&) {
        folder.clear();
        throw;
    }
    journal.state = eComplete;
    folder.write(journal);
    folder.place(journal);
    printLedger(deck.messages());
    printResult(utf8(target) + ": made of " + utf8(options.source) + ", " +
                countText(deck.frame().timestep.particleTypes.particleCount(), "particle") + '\n');
    flushResult();
    return holdsDamage(deck.messages()) ? eExitSource : eExitDone;
}

EExitCode runXml(const SXmlOptions& options) { return options.exports ? exportDeck(options) : importDeck(options); }

} // namespace NBrenmark
