// brenmark config: what the file beside a deck holds, and nothing that it doesn't.
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NBrenmark {

using Json = nlohmann::json;

namespace {

class Config : public testing::Test
{
protected:
    Config() : deck(argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile")))
    {
        configurationFile("27.0.0", {"PROCESSOR:WRITE:TOTAL=DOUBLE:2.5", "PROCESSOR:WRITE=QT STRING:né",
                                     "PROCESSOR:WRITER=BOOLEAN:TRUE", "B\\=C=STD STRING VECTOR:\"x\\,y\",\"p\\nq\"",
                                     "A:LIMIT=DOUBLE:inf", "A:GREY=FLOAT:0.1", "A:AT=3D POINT:(1, -2.5, 3e-06)",
                                     "A:RED=QT COLOUR:R:255 G:0 B:1", "A:CUT=CHAR:\x1b"})
            .toFile(folder.path("pile.dfg"));
    }

    SToolResult run(std::vector<std::string> more)
    {
        more.insert(more.begin(), {"config", deck});
        return runTool(more);
    }

    CTempFolder folder;
    std::string deck;
};

} // namespace

TEST_F(Config, showsTheEntriesInTheOrderOfTheirKeys)
{
    const SToolResult all = run({});
    EXPECT_EQ(all.exitCode, 0);
    EXPECT_EQ(all.error, "");
    EXPECT_EQ(all.output, "A:AT=3D POINT:(1, -2.5, 3e-06)\n"
                          "A:CUT=CHAR:\\u001b\n" // what would steer a terminal
                          "A:GREY=FLOAT:0.1\n"
                          "A:LIMIT=DOUBLE:inf\n"
                          "A:RED=QT COLOUR:R:255 G:0 B:1\n"
                          "B\\=C=STD STRING VECTOR:\"x\\,y\",\"p\\nq\"\n"
                          "PROCESSOR:WRITE=QT STRING:né\n"
                          "PROCESSOR:WRITE:TOTAL=DOUBLE:2.5\n"
                          "PROCESSOR:WRITER=BOOLEAN:TRUE\n");
    EXPECT_EQ(run({"PROCESSOR:WRITE"}).output, "PROCESSOR:WRITE=QT STRING:né\nPROCESSOR:WRITE:TOTAL=DOUBLE:2.5\n");
    for (const char* const key : {"B=C", "B\\=C", "B\\=C:"})
        EXPECT_EQ(run({key}).output, "B\\=C=STD STRING VECTOR:\"x\\,y\",\"p\\nq\"\n") << key;
}

TEST_F(Config, givesValuesTheirTypesInJson)
{
    const Json all = Json::parse(run({"--json"}).output);
    EXPECT_EQ(all["path"], deck);
    EXPECT_EQ(all["file"], argument(folder.path("pile.dfg")));
    EXPECT_EQ(all["formatVersion"], "2.4.0.1");
    EXPECT_EQ(all["fileVersion"], "27.0.0");
    EXPECT_EQ(all["messages"].size(), 0u);
    EXPECT_EQ(all["entries"], Json::parse(R"([
        {"key": "A:AT", "kind": "3D POINT", "value": [1.0, -2.5, 3e-06]},
        {"key": "A:CUT", "kind": "CHAR", "value": "\u001b"},
        {"key": "A:GREY", "kind": "FLOAT", "value": 0.1},
        {"key": "A:LIMIT", "kind": "DOUBLE", "value": "inf"},
        {"key": "A:RED", "kind": "QT COLOUR", "value": [255, 0, 1]},
        {"key": "B=C", "kind": "STD STRING VECTOR", "value": ["x,y", "p\nq"]},
        {"key": "PROCESSOR:WRITE", "kind": "QT STRING", "value": "né"},
        {"key": "PROCESSOR:WRITE:TOTAL", "kind": "DOUBLE", "value": 2.5},
        {"key": "PROCESSOR:WRITER", "kind": "BOOLEAN", "value": true}])"));
    EXPECT_EQ(Json::parse(run({"--json", "PROCESSOR:WRITE"}).output)["entries"].size(), 2u);
}

TEST_F(Config, ofADeckWithoutOneIsEmpty)
{
    ASSERT_TRUE(QFile::remove(folder.path("pile.dfg")));
    const SToolResult text = run({});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(text.output, "");
    EXPECT_NE(text.error.find("has no configuration; there is no " + argument(folder.path("pile.dfg"))),
              std::string::npos);
    const Json json = Json::parse(run({"--json"}).output);
    EXPECT_EQ(json["file"], nullptr);
    EXPECT_EQ(json["entries"].size(), 0u);
    EXPECT_EQ(run({"A"}).exitCode, 2);
}

TEST_F(Config, ofAConvertedDeckHasTheDefaultsBesideAllOfTheSource)
{
    const CTempFolder out;
    const std::string target = argument(out.path("pile.dem"));
    ASSERT_EQ(runTool({"convert", "--verify", deck, target}).exitCode, 0);
    EXPECT_EQ(runTool({"config", target, "A"}).output, run({"A"}).output);
    EXPECT_EQ(runTool({"config", target, "PROCESSOR:WRITE:TOTAL"}).output, "PROCESSOR:WRITE:TOTAL=DOUBLE:2.5\n");
    EXPECT_EQ(runTool({"config", target, "PROCESSOR:WRITE:INTERVAL"}).output, "PROCESSOR:WRITE:INTERVAL=DOUBLE:0.01\n");
}

} // namespace NBrenmark
