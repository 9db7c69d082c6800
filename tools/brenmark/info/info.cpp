// brenmark info: what a deck of either family holds, for a reader.

#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/commands.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_problems.h"
#include "brenmark/deck_reader.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

static Json fileList(const QStringList& files)
{
    Json list = Json::array();
    for (const QString& file : files)
        list.push_back({{"path", utf8(file)}, {"sizeBytes", QFileInfo(file).size()}});
    return list;
}

static Json versionOf(quint32 version) { return version == 0 ? Json() : Json(utf8(versionText(version))); }

/// What is known before anything is read.
static Json describeHead(const SDeckHead& head, const SInfoOptions& options)
{
    return {{"path", utf8(options.deck)},
            {"family", head.familyName()},
            {"createdBy", versionOf(head.firstVersion)},
            {"lastWrittenBy", versionOf(head.lastVersion)}};
}

static void addFiles(Json& deck, const SInfoOptions& options)
{
    const QStringList files = familyFiles(options.deck);
    deck["files"] = fileList(files);
    deck["sizeBytes"] = bytesOf(files);
}

/// The model of the last timestep says most: what was created until then is in it. A deck without timesteps has an
/// empty model.
static void addModel(Json& deck, CDeckReader& reader)
{
    const SSimulationFrame& frame = *reader.deck().currentFrame;
    deck["title"] = utf8(frame.creator.title);
    deck["description"] = utf8(frame.creator.description);
    deck["particleTypes"] = typeList(frame);
    deck["materials"] = materialList(frame);
    deck["geometryGroups"] = geometryList(frame.creator.geometryGroups);
    deck["factories"] = factoryList(frame.creator.geometryGroups);
    deck["physics"] = physicsObject(frame.creator.physicsModels);
    deck["pluginFactories"] = pluginFactoryList(frame.creator.pluginFactories);
    deck["customProperties"] = propertyList(reader);
}

static void printHead(const Json& deck)
{
    const std::string created = textOrNone(deck["createdBy"]), last = textOrNone(deck["lastWrittenBy"]);
    printResult(shown(deck["path"]) + '\n');
    printResult("  " + text(deck["family"]) +
                (last.empty() ? " file, of which no version is known" : " deck, version " + last) +
                (created == last ? "" : ", created by version " + created) + ", " +
                sizeText(deck["sizeBytes"].get<double>()) + " in all\n");
    for (const char* const line : {"title", "description"})
        if (deck.contains(line) && !text(deck[line]).empty())
            printResult("  " + shown(deck[line]) + '\n');
    printResult("\n");
}

static void printFiles(const Json& deck)
{
    CTable files;
    for (const Json& file : deck["files"])
        files.row(shown(file["path"]), sizeText(file["sizeBytes"].get<double>()));
    files.print(countText(files.size(), "file"));
}

/// A deck that can't be read whole lacks sections.
static void print(const Json& deck)
{
    printHead(deck);
    if (deck.contains("timesteps"))
        printTimesteps(deck);
    if (deck.contains("physics")) {
        printParticlesAndMaterials(deck);
        printGeometry(deck);
        printPhysics(deck);
        printProperties(deck);
    }
    printFiles(deck);
}

/// Reads what is to be described. \param failures  of timesteps, and of the deck as a whole
static Json describe(CDeckReader& reader, const SInfoOptions& options, std::vector<CFailure>& failures)
{
    Json deck = describeHead(reader.head(), options);
    if (options.settings) { // no timestep is read: its models would define what they need beside what the file holds
        deck["settings"] = settingsOf(reader);
        return deck;
    }
    const std::vector<std::string> problems = problemsOf(reader, options.deck);
    bool isAnyRead = false;
    deck["timesteps"] = timestepList(reader, options.deck, !options.quick, failures, isAnyRead);
    if (isAnyRead)
        addModel(deck, reader);
    addFiles(deck, options);
    deck["problems"] = problems;
    for (const std::string& problem : problems)
        failures.push_back(problemFailure(utf8(options.deck), reader.format(), problem));
    return deck;
}

/// What a command of its own reports as a failure isn't a warning as well.
static Ledger withoutProblems(const Ledger& messages, const Json& deck)
{
    Ledger others;
    for (const SLogRecord& message : messages) {
        const std::string words = withoutEnd(message.placedText());
        const bool isProblem =
            deck.contains("problems") && std::any_of(deck["problems"].begin(), deck["problems"].end(),
                                                     [&](const Json& problem) { return text(problem) == words; });
        if (!isProblem)
            others.push_back(message);
    }
    return others;
}

EExitCode runInfo(const SInfoOptions& options)
{
    std::vector<CFailure> failures;
    SDeckHead head = headOf(options.deck);
    Json deck;
    Ledger messages;
    try {
        CDeckReader reader(options.deck, eUpgradedModel, eNotExamined, false, &head);
        deck = describe(reader, options, failures);
        messages = reader.messages();
    }
    catch (const CFailure& failure) {
        deck = describeHead(head, options);
        addFiles(deck, options);
        failures.push_back(failure);
    }
    const bool isDescribed = head.format != eFormatUnknown;
    unlessReaderIsGone([&] {
        if (options.json) {
            deck["messages"] = jsonMessages(messages);
            deck["error"] = failures.empty() ? Json() : jsonFailure(failures.front());
            printJson(deck);
        }
        else if (isDescribed) {
            deck.contains("settings") ? printSettings(deck) : print(deck);
            flushResult();
        }
    });
    printLedger(withoutProblems(messages, deck), eWithoutUpgrades);
    for (const CFailure& failure : failures)
        printFailure(failure);
    return failures.empty() ? eExitDone : failures.front().code;
}

} // namespace NBrenmark
