// Decks with geometry, motions and factories through the command line.
#include "support/legacy_deck.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NBrenmark {

using Json = nlohmann::json;

/// Four groups, one of each shape, and two factories.
static CLegacyDeck deckWithGeometry()
{
    SDeckCreator creator = sampleCreator();
    creator.groups = sampleGroups();
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(creator);
    for (const double time : {0.1, 0.2}) {
        SDeckTimestep timestep = sampleTimestep(time);
        timestep.groups = creator.groups;
        for (SDeckGroup& group : timestep.groups)
            group.state.time = time;
        deck.timestep(timestep);
    }
    return deck;
}

TEST(GeometryOfADeck, isConvertedWhole)
{
    CTempFolder folder;
    const std::string source = argument(deckWithGeometry().write(folder.path(), "walls"));
    const std::string converted = argument(folder.path("walls-30.dem"));
    const SToolResult conversion = runTool({"convert", source, converted});
    EXPECT_EQ(conversion.exitCode, 0) << conversion.error;
    const SToolResult verification = runTool({"verify", source, converted});
    EXPECT_EQ(verification.exitCode, 0) << verification.output << verification.error;
    const auto described = [](const std::string& deck) {
        return Json::parse(runTool({"info", "--json", deck}).output);
    };
    EXPECT_EQ(described(source)["geometryGroups"], described(converted)["geometryGroups"]);
    EXPECT_EQ(described(source)["factories"], described(converted)["factories"]);
}

TEST(GeometryOfADeck, isToldByInfo)
{
    CTempFolder folder;
    const std::string path = argument(deckWithGeometry().write(folder.path(), "walls"));
    const Json info = Json::parse(runTool({"info", "--json", path}).output);
    ASSERT_EQ(info["geometryGroups"].size(), 4u);
    const Json& box = info["geometryGroups"][0];
    EXPECT_EQ(box["name"], "Trichter");
    EXPECT_EQ(box["shape"], "Box");
    EXPECT_EQ(box["material"], "glass(1)"); // particles are of glass, so the walls get an equipment material
    EXPECT_EQ(box["triangles"], 4);
    EXPECT_EQ(box["moving"], true);
    EXPECT_EQ(box["motions"].size(), 4u);
    EXPECT_EQ(info["geometryGroups"][2]["triangles"], 60);
    ASSERT_EQ(info["factories"].size(), 2u);
    EXPECT_EQ(info["factories"][1]["name"], "B");
    EXPECT_EQ(info["factories"][1]["kind"], "static");
    EXPECT_EQ(info["factories"][1]["geometry"], "Trichter");
    EXPECT_EQ(info["factories"][1]["created"], 7);

    const std::string text = runTool({"info", path}).output;
    for (const char* const part :
         {"4 geometry groups\n", "Drum      cylinder of 4 triangles, material glass(1), static\n",
          "Plate     polygon of 60 triangles, material glass(1), static\n", "2 particle factories\n",
          "A  dynamic in Trichter, of Ball, 7 particles created\n"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "in\n" << text;
}

} // namespace NBrenmark
