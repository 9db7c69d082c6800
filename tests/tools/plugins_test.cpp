// The libraries of a user, as brenmark lists and binds them.
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/plugin_folders.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <QRegularExpression>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NBrenmark {

using Json = nlohmann::json;

namespace {

/// A user whose documents hold plug-ins, and who lets them be bound.
struct SUser
{
    QString put(const std::string& plugin, const QString& name) const
    {
        return putPlugin(home, plugin, "Documents/" + name + ".so");
    }
    SToolResult run(const std::vector<std::string>& arguments, const char* forbidden = "") const
    {
        CToolRun tool(arguments);
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME"})
            tool.environment(variable, argument(home.path()));
        return tool.environment("BRENMARK_NO_PLUGINS", forbidden).run();
    }

    const CTempFolder home;
    const std::string deck = sampleDeck("plugins-24.dem"); ///< names "My Model", "My Force" and "MyFactoryLib"
};

} // namespace

TEST(PluginsCommand, asksEachLibraryInAProcessOfItsOwn)
{
    const SUser user;
    user.put("model_250", "Good");
    user.put("model_210_fault_5", "Named");
    user.put("force_100", "ContactModels/Misplaced");
    user.put("model_aborts", "Aborts");
    user.put("factory_210_fault_3", "Refuses");
    user.put("model_reports_2_6_0", "Later");
    user.home.write("Documents/Text.so", "not a library");
    const SToolResult listed = user.run({"plugins", "--json"});
    EXPECT_EQ(listed.exitCode, 0) << listed.error;
    const Json result = Json::parse(listed.output);
    std::string rows;
    for (const Json& folder : result["folders"])
        for (const Json& library : folder["libraries"]) {
            rows += library["name"].get<std::string>() + ' ' + library["reason"].dump().substr(0, 40);
            for (const Json& plugin : library["plugins"])
                rows += ", " + plugin["kind"].get<std::string>() + ' ' + plugin["version"].get<std::string>() + ' ' +
                        plugin["supported"].dump() + ' ' + plugin["reason"].dump();
            rows += '\n';
        }
    EXPECT_EQ(rows, R"(Aborts "crashed when it was asked"
Good null, contact model 2.5.0 true null
Later null, contact model 2.6.0 false "The library interface version (2.6.0) is not supported by this release. The contact model interface version is not supported, the contact model must use interface version 2.5.0"
Named null, contact model 2.1.0 false "its custom property \"Wear_2\" has no valid name"
Refuses null, particle factory 2.1.0 false "Plugin factories setup() method return failure. line 3 isn't a number"
Text "can't be loaded: Cannot load library /t
Misplaced null, external force 1.0.0 false "isn't sought in this folder"
)");
    EXPECT_EQ(result["folders"][0]["libraries"][1]["plugins"][0]["properties"][3],
              Json({{"owner", "geometry"}, {"name", "Wear (geometry)"}, {"elements", 3}, {"boolean", false}}));
    const std::string text = user.run({"plugins"}).output;
    EXPECT_NE(text.find("2.5.0, supported; needs Wear (particle) of particles, Is Worn of"), std::string::npos) << text;
}

TEST(PlugInsOfADeck, areConvertedAlikeWithTheirLibrariesAndWithout)
{
    const SUser user;
    const auto converted = [&](const char* name, std::vector<std::string> options, const char* forbidden = "") {
        std::vector<std::string> arguments{"convert", user.deck, argument(user.home.path(name)), "--verify", "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const SToolResult result = user.run(arguments, forbidden);
        EXPECT_EQ(result.exitCode, 0) << result.error << result.output;
        EXPECT_EQ(Json::parse(result.output)["verification"]["notCarried"], Json::array()) << name;
        return result.error;
    };
    const auto text = [&](const char* name) {
        return user.run({"dump", argument(user.home.path(name)) + ".dem"}).output;
    };
    EXPECT_NE(converted("missing", {}).find("Plugin file does not exist:"), std::string::npos);
    user.put("model_250", "My Model");
    user.put("force_240", "My Force");
    user.put("factory_210", "MyFactoryLib");
    EXPECT_EQ(converted("bound", {}).find("isn't known here"), std::string::npos);
    EXPECT_NE(converted("option", {"--no-plugins"}).find("isn't known here"), std::string::npos);
    converted("environment", {}, "1");
    const std::string missing = text("missing");
    EXPECT_NE(missing.find("creator/pluginFactories/My%20Factory/library \"MyFactoryLib\"\n"), std::string::npos);
    EXPECT_EQ(text("option"), missing);
    EXPECT_EQ(text("environment"), missing);
    // The one with libraries defines what they need, five lines a property, and no line else.
    QString bound = QString::fromStdString(text("bound"));
    const QRegularExpression defined("[^\n]*(Wear%20\\(|Is%20Worn)[^\n]*\n");
    EXPECT_EQ(bound.count('\n'), QString::fromStdString(missing).count('\n') + 25);
    EXPECT_EQ(bound.remove(defined).toStdString(), missing);
}

TEST(PlugInsOfADeck, areThoseOfEachTimestep)
{
    const CTempFolder folder;
    SDeckTimestep first = sampleTimestep(0.1), second = sampleTimestep(0.2);
    first.pluginFactories = {{"library", "Feeder", "belt"}};
    second.pluginFactories = {{"library", "Feeder", "belt"}, {"library", "Hopper", "rain"}, {"library", "a/b", "rain"}};
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(sampleCreator()).timestep(first).timestep(first).timestep(second).timestep(second);
    const std::string source = argument(deck.write(folder.path(), "feed"));
    const std::string target = argument(folder.path("new")) + ".dem";
    EXPECT_EQ(runTool({"convert", "--verify", source, target}).exitCode, 0);
    const std::string text = runTool({"dump", target}).output;
    EXPECT_NE(text.find("creator/pluginFactories/Feeder/library \"belt\"\n"), std::string::npos);
    EXPECT_EQ(text.find("creator/pluginFactories/Hopper"), std::string::npos);
    EXPECT_NE(text.find("creator@2/pluginFactories/Hopper/library \"rain\"\n"), std::string::npos);
    EXPECT_EQ(text.find("creator@3/"), std::string::npos) << "the last timestep brings no new model";
}

/// A library whose loading would end the process is loaded by a conversion that isn't told otherwise, and by nothing
/// else.
TEST(PlugInsOfADeck, areLoadedByAConversionAlone)
{
    const SUser user;
    const std::string library = argument(user.put("model_aborts", "My Model"));
    const std::string target = argument(user.home.path("out"));
    EXPECT_EQ(user.run({"convert", user.deck, target}).exitCode, -6);
    EXPECT_EQ(user.run({"convert", "--force", "--no-plugins", user.deck, target}).exitCode, 0);
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {"convert", "--no-plugins", user.deck, "-o", argument(user.home.path("all"))},
             {"convert", "--dry-run", user.deck, "-o", argument(user.home.path("none"))},
             {"check", user.deck},
             {"dump", user.deck},
             {"verify", user.deck, target + ".dem"},
             {"info", user.deck}})
        EXPECT_EQ(user.run(command).exitCode, 0) << command[0];
    const Json info = Json::parse(user.run({"info", "--json", user.deck}).output);
    EXPECT_EQ(info["physics"]["sphereSphereModels"][1]["library"], library);
    EXPECT_EQ(info["physics"]["externalForces"][0]["library"], Json());
    EXPECT_EQ(info["pluginFactories"][0]["libraryName"], "MyFactoryLib");
}

} // namespace NBrenmark
