// brenmark info --settings: what the settings file of a deck holds, and nothing of its timesteps.
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/settings_entries.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NBrenmark {

using Json = nlohmann::json;

TEST(InfoSettings, reportsTheFileAndItsDefinitions)
{
    const CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile"));
    settingsWith(makeVersion(27, 0, 2), 0, {{"Heat", 0, 2, 5, {1, 2.5}}, {"Wet", 1, 1, 0, {1}}}, -1, {})
        .toFile(folder.path("pile.ess"));

    const SToolResult result = runTool({"info", "--settings", deck});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output.find(deck + "\n  settings in " + argument(folder.path("pile.ess")) +
                                 ", version 27.0.2, edition 0\n\n"),
              0u)
        << result.output;
    EXPECT_NE(result.output.find("2 custom properties\n"
                                 "  Heat  of particles, 2 real elements, at first 1, 2.5\n"
                                 "  Wet   of particles, 1 boolean element, at first true, not in use yet\n"),
              std::string::npos)
        << result.output;

    const Json settings = Json::parse(runTool({"info", "--settings", "--json", deck}).output)["settings"];
    EXPECT_EQ(settings["version"], "27.0.2");
    EXPECT_EQ(settings["edition"], 0);
    EXPECT_EQ(settings["propertyFile"], nullptr);
    EXPECT_EQ(settings["propertyDefinitions"], Json::parse(R"([
        {"name": "Heat", "owner": "particles", "type": "real", "elements": 2, "unitsType": 5,
         "initialValues": [1.0, 2.5], "stored": true},
        {"name": "Wet", "owner": "particles", "type": "boolean", "elements": 1, "unitsType": 0,
         "initialValues": [true], "stored": false}])"));
}

TEST(InfoSettings, reportsSelectionsAndFields)
{
    const CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile"));
    const quint32 version = makeVersion(30, 0, 20);
    const CBytes selections = CBytes().i32(2) + selectionHead("Manual Selection", "picked") +
                              selectionBase(queryMapBytes({})) + colourBytes(version) + CBytes().i32(1).i32(9) +
                              selectionHead("Primitive Geometry Bin", "unread") + CBytes::garbage(90);
    const CBytes fields = CBytes().i32(2) + fieldBytes(version, "air", 4, 3, {{1, 2, 3}, {4, 5, 6}}, {{5}, {6}}) +
                          fieldBytes(version, "wind", 5, 3, {{1, 2, 3}}, {{7, 8, 9}});
    (settingsHeader(version) + settingsBlock(eSelectionBlock, selections) + settingsBlock(eFieldBlock, fields))
        .toFile(folder.path("pile.ess"));

    const std::string output = runTool({"info", "--settings", deck}).output;
    EXPECT_NE(output.find("2 selections\n"
                          "  picked  Manual Selection, active, 1 filter\n"
                          "  unread  Primitive Geometry Bin, 107 bytes of version 30.0.20 carried as they are\n"
                          "2 fields\n"
                          "  air   1 component at 2 points\n"
                          "  wind  3 components at 1 point\n"),
              std::string::npos)
        << output;
    const Json settings = Json::parse(runTool({"info", "--settings", "--json", deck}).output)["settings"];
    EXPECT_EQ(
        settings["selections"][0],
        Json::parse(
            R"({"name": "picked", "class": "Manual Selection", "active": true, "filters": 1, "queries": 0, "carriedAsBytes": false})"));
    EXPECT_EQ(settings["selections"][1]["carriedAsBytes"], true);
    EXPECT_EQ(settings["fields"][1], Json::parse(R"({"name": "wind", "id": 5, "dimension": 3, "points": 1})"));
}

TEST(InfoSettings, reportsWhatIsMissingOrLeftOut)
{
    const CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile"));
    const SToolResult none = runTool({"info", "--settings", deck});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_NE(none.output.find("  no settings beside it\n"), std::string::npos) << none.output;

    (emptySettings(makeVersion(24, 0, 30)) + settingsBlock(7, CBytes().i32(1))).toFile(folder.path("pile.ess"));
    const SToolResult damaged = runTool({"info", "--settings", deck});
    EXPECT_EQ(damaged.exitCode, 0);
    EXPECT_NE(damaged.output.find(", version 24.0.30, edition 0\n  1 damaged block left out\n"), std::string::npos)
        << damaged.output;
    EXPECT_NE(damaged.error.find("unkown settings entry ID"), std::string::npos) << damaged.error;

    // A timestep that can't be read is no business of the settings.
    QFile segment(folder.path("pile.dem"));
    ASSERT_TRUE(segment.resize(segment.size() - 40));
    EXPECT_EQ(runTool({"info", "--settings", deck}).exitCode, 0);
}

// The definitions of the sample's companion, as a dump of its bytes shows them, take the place of those of its settings.
TEST(InfoSettings, reportsWhereOldDecksDefineTheirParticleProperties)
{
    const CTempFolder folder;
    const std::string converted = argument(folder.path("ppf.dem"));
    ASSERT_EQ(runTool({"convert", sampleDeck("ppf-21.dem"), converted}).exitCode, 0);
    for (const std::string& deck : {sampleDeck("ppf-21.dem"), converted}) {
        const std::string output = runTool({"info", "--settings", deck}).output;
        EXPECT_EQ(output.find("  particle properties from " + sampleDeck("ppf-21.ppf") + "\n") == std::string::npos,
                  deck == converted);
        EXPECT_NE(output.find("3 custom properties\n"
                              "  Moisture  of particles, 1 real element, at first 0.5\n"
                              "  Two       of particles, 2 real elements, at first 1.5\n"
                              "  Much      of particles, 256 real elements, at first 2, not in use yet\n"),
                  std::string::npos)
            << output;
    }
}

} // namespace NBrenmark
