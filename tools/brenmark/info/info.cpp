// brenmark info: what a deck of either family holds, for a reader.

#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/commands.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_reader.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <QFileInfo>

namespace NBrenmark {

static Json fileList(const QStringList& files)
{
    Json list = Json::array();
    for (const QString& file : files)
        list.push_back({{"path", utf8(file)}, {"bytes", QFileInfo(file).size()}});
    return list;
}

/// The model of the last timestep tells most: what was created until then is in it. A deck without timesteps has an
/// empty model. \param timesteps  told before, which has loaded the last one
static Json describe(CDeckReader& reader, const SInfoOptions& options, const Json& timesteps)
{
    const SSimulationFrame& frame = *reader.deck().currentFrame;
    const QStringList files = familyFiles(options.deck);
    return {{"path", utf8(options.deck)},
            {"family", reader.familyName()},
            {"createdBy", utf8(versionText(reader.manager().firstVersion))},
            {"lastWrittenBy", utf8(versionText(reader.manager().lastVersion))},
            {"title", utf8(frame.creator.title)},
            {"description", utf8(frame.creator.description)},
            {"timesteps", timesteps},
            {"particleTypes", typeList(frame)},
            {"materials", materialList(frame)},
            {"geometryGroups", geometryList(frame.creator.geometryGroups)},
            {"factories", factoryList(frame.creator.geometryGroups)},
            {"physics", physicsObject(frame.creator.physicsModels)},
            {"customProperties", propertyList(reader)},
            {"files", fileList(files)},
            {"bytes", bytesOf(files)}};
}

/// No timestep is read: its models would define what they need beside what the file holds.
static Json describeSettings(CDeckReader& reader, const SInfoOptions& options)
{
    return {{"path", utf8(options.deck)},
            {"family", reader.familyName()},
            {"createdBy", utf8(versionText(reader.manager().firstVersion))},
            {"lastWrittenBy", utf8(versionText(reader.manager().lastVersion))},
            {"settings", settingsOf(reader)}};
}

static void printHead(const Json& deck)
{
    const std::string created = text(deck["createdBy"]), last = text(deck["lastWrittenBy"]);
    printResult(text(deck["path"]) + '\n');
    printResult("  " + text(deck["family"]) + " deck, version " + last +
                (created == last ? "" : ", created by version " + created) + ", " +
                sizeText(deck["bytes"].get<double>()) + " in all\n");
    for (const char* const line : {"title", "description"})
        if (!text(deck[line]).empty())
            printResult("  " + shown(deck[line]) + '\n');
    printResult("\n");
}

static void printFiles(const Json& deck)
{
    CTable files;
    for (const Json& file : deck["files"])
        files.row(shown(file["path"]), sizeText(file["bytes"].get<double>()));
    files.print(countText(files.size(), "file"));
}

static void print(const Json& deck)
{
    printHead(deck);
    printTimesteps(deck);
    printParticlesAndMaterials(deck);
    printGeometry(deck);
    printPhysics(deck);
    printProperties(deck);
    printFiles(deck);
}

EExitCode runInfo(const SInfoOptions& options)
{
    CDeckReader reader(options.deck);
    std::vector<CFailure> failures;
    Json deck = options.settings ? describeSettings(reader, options)
                                 : describe(reader, options, timestepList(reader, !options.quick, failures));
    const Ledger messages = reader.messages();
    if (options.json) {
        deck["messages"] = jsonMessages(messages);
        printJson(deck);
    }
    else {
        options.settings ? printSettings(deck) : print(deck);
        flushResult();
    }
    printLedger(messages, eWithoutUpgrades);
    for (const CFailure& failure : failures)
        printFailure(failure);
    return failures.empty() ? eExitDone : failures.front().code;
}

} // namespace NBrenmark
