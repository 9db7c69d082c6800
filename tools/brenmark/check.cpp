// brenmark check: which decks need converting.

#include "brenmark/commands.h"
#include "brenmark/deck_problems.h"
#include "brenmark/json_text.h"
#include "brenmark/partial_folder.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "api/data_converter.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <memory>

namespace NBrenmark {

namespace {

struct SCheckedDeck
{
    std::string path;
    EDeckFormat format = eFormatUnknown;
    std::string family = "unknown"; ///< or "partial"
    std::string version;            ///< empty if it isn't known
    bool isOpen = false;
    std::string finished; ///< of a partial deck, "3 of 8 timesteps"
    bool needsConversion = false;
    quint32 timesteps = 0;
    quint32 particles = 0; ///< at the last timestep
    quint32 types = 0;
    std::vector<std::string> problems;
    std::unique_ptr<CFailure> failure; ///< why it can't be read to its end
};

SCheckedDeck checked(const QString& path)
{
    SCheckedDeck deck;
    deck.path = utf8(path);
    if (const std::optional<SPartialDeck> partial = partialDeckAt(path)) {
        deck.family = "partial";
        deck.finished = partial->countText();
    }
    deck.needsConversion = CDataConverter::legacyDataConversionRequired(path);
    SDeckHead head = headOf(path);
    const auto takeHead = [&] {
        deck.format = head.format;
        if (head.format != eFormatUnknown)
            deck.family = head.familyName();
        if (head.lastVersion != 0)
            deck.version = utf8(versionText(head.lastVersion));
    };
    try {
        CDeckReader reader(path, eUpgradedModel, eNotExamined, false, &head);
        takeHead();
        deck.isOpen = true;
        deck.timesteps = reader.timestepCount();
        deck.problems = problemsOf(reader, path);
        if (deck.timesteps > 0) {
            reader.deck().readOptions.extent = eReadParticles;
            reader.deck().readOptions.wantedParticleFields = eIds; // a slot without one is free
            const CParticleTypes& types = reader.timestep(deck.timesteps - 1).timestep.particleTypes;
            deck.particles = types.particleCount();
            deck.types = types.count();
        }
        for (const SLogRecord& message : reader.messages())
            if (isDamage(message.effect))
                if (const std::string problem = withoutEnd(message.placedText());
                    std::find(deck.problems.begin(), deck.problems.end(), problem) == deck.problems.end())
                    deck.problems.push_back(problem);
    }
    catch (const CFailure& failure) {
        takeHead();
        deck.failure = std::make_unique<CFailure>(failure);
        deck.problems.emplace_back(failure.what());
    }
    return deck;
}

std::string lineOf(const SCheckedDeck& deck)
{
    const std::string path = oneLine(deck.path);
    if (!deck.finished.empty())
        return path + ": partial, " + deck.finished + ": needs to be resumed\n";
    std::string line = path + ": " + deck.family + (deck.version.empty() ? "" : ' ' + deck.version);
    if (deck.isOpen)
        line += ", " + countText(deck.timesteps, "timestep");
    if (!deck.failure)
        line += ", " + countText(deck.particles, "particle") + " of " + countText(deck.types, "type");
    line += deck.needsConversion ? ": needs conversion" : ": needs no conversion";
    if (deck.failure)
        line += deck.failure->code == eExitUnsupported ? ", which isn't possible" : ", but can't be read whole";
    else if (!deck.problems.empty())
        line += ", but isn't whole";
    return line + '\n';
}

Json objectOf(const SCheckedDeck& deck)
{
    Json object{{"path", deck.path}, {"family", deck.family}, {"needsConversion", deck.needsConversion}};
    if (!deck.version.empty())
        object["version"] = deck.version;
    if (!deck.finished.empty())
        object["finished"] = deck.finished;
    if (deck.isOpen)
        object["timesteps"] = deck.timesteps;
    if (!deck.failure) {
        object["particles"] = deck.particles;
        object["types"] = deck.types;
    }
    object["problems"] = deck.problems;
    object["code"] = deck.failure ? deck.failure->code : deck.problems.empty() ? eExitDone : eExitSource;
    object["error"] = deck.failure ? jsonFailure(*deck.failure) : Json();
    return object;
}

/// Adds the decks below a folder, and the unfinished ones. A link to a deck is one; a link to a folder isn't
/// followed, for it may lead back.
void addDecks(QStringList& decks, const QString& path)
{
    if (!QFileInfo(path).isReadable())
        throw CFailure(eExitSource, utf8(path) + ": the folder can't be read", "Check its permissions.");
    const QDir::Filters all = QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : QDir(path).entryInfoList(all, QDir::Name)) {
        const bool isFolder = entry.isDir();
        if (isFolder ? partialDeckAt(entry.filePath()).has_value() : entry.fileName().endsWith(NDeckFile::demSuffix))
            decks.append(entry.filePath());
        else if (isFolder && !entry.isSymLink())
            addDecks(decks, entry.filePath());
    }
}

/// A folder means the decks below it.
QStringList decksOf(const QString& path)
{
    if (!QFileInfo(path).isDir() || partialDeckAt(path))
        return {path};
    QStringList decks;
    addDecks(decks, path);
    if (decks.isEmpty())
        throw CFailure(eExitSource, utf8(path) + ": the folder holds no deck",
                       "Name a folder with files NAME.dem in it or below it.");
    return decks;
}

} // namespace

EExitCode runCheck(const SCheckOptions& options)
{
    Json list = Json::array();
    EExitCode code = eExitDone;
    const auto failed = [&code](const CFailure& failure) {
        printFailure(failure);
        code = std::max(code, failure.code);
    };
    for (const QString& path : options.paths) {
        QStringList decks;
        try {
            decks = decksOf(path);
        }
        catch (const CFailure& failure) {
            list.push_back({{"path", utf8(path)}, {"code", failure.code}, {"error", jsonFailure(failure)}});
            failed(failure);
        }
        for (const QString& deckPath : decks) {
            const SCheckedDeck deck = checked(deckPath);
            list.push_back(objectOf(deck));
            if (!options.json && (deck.family != "unknown"))
                unlessReaderIsGone([&] {
                    printResult(lineOf(deck));
                    flushResult(); // so that results and failures come in order
                });
            if (deck.failure)
                failed(*deck.failure);
            for (size_t i = 0; i + (deck.failure ? 1 : 0) < deck.problems.size(); ++i)
                failed(problemFailure(deck.path, deck.format, deck.problems[i]));
        }
    }
    if (options.json)
        unlessReaderIsGone([&] { printJson(list); });
    return code;
}

} // namespace NBrenmark
