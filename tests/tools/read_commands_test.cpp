// check, info and dump on decks whose contents are known from the builder.
#include "support/legacy_deck.h"
#include "support/old_deck.h"
#include "support/paths.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <sstream>
#include <tuple>

namespace NBrenmark {

using Json = nlohmann::json;

static std::map<std::string, std::string> linesOf(const std::string& text)
{
    std::map<std::string, std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const size_t blank = line.find(' ');
        EXPECT_NE(blank, std::string::npos) << line;
        EXPECT_TRUE(lines.emplace(line.substr(0, blank), line.substr(blank + 1)).second) << "twice: " << line;
    }
    return lines;
}

TEST(Check, reportsInALineWhatADeckIsAndWhatItNeeds)
{
    CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(24, 0, 30)).write(folder.path(), "pile"));
    const SToolResult result = runTool({"check", deck});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, deck + ": legacy 24.0.30, 3 timesteps, 72 particles of 2 types: needs conversion\n");
}

TEST(Check, goesThroughAFolderAndReportsTheWorstInItsExitCode)
{
    CTempFolder folder;
    const CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    deck.write(folder.path(), "a");
    deck.write(folder.path(), "c");
    folder.write("b.dem", "no deck");
    const SToolResult result = runTool({"check", "--json", argument(folder.path())});
    EXPECT_EQ(result.exitCode, 5);
    const Json list = Json::parse(result.output);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0]["path"], argument(folder.path("a.dem")));
    EXPECT_EQ(list[0]["family"], "legacy");
    EXPECT_EQ(list[0]["version"], "27.0.3");
    EXPECT_EQ(list[0]["timesteps"], 3);
    EXPECT_EQ(list[0]["particles"], 72);
    EXPECT_EQ(list[0]["types"], 2);
    EXPECT_EQ(list[0]["needsConversion"], true);
    EXPECT_EQ(list[0]["error"], nullptr);
    EXPECT_EQ(list[1]["code"], 5);
    EXPECT_EQ(list[1]["needsConversion"], false);
    EXPECT_EQ(list[2]["code"], 0);
}

TEST(Check, findsWhatADeckLacks)
{
    CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "source"));
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"out.ess", "removed", "out.ess is missing"},
        {"out.dfg", "removed", "out.dfg is missing"},
        {"out_data/1.h5", "removed", "Timestep 1 has no file"},
        {"out_data/2.h5", "removed", "2 data files exist"},
        {"out_data/1.h5", "cut", "1.h5"},
        {"out_data/2.h5", "cut", "2.h5"},
    };
    const std::string out = argument(folder.path("out.dem"));
    for (const auto& [name, done, told] : cases) {
        ASSERT_EQ(runTool({"convert", "--force", deck, out}).exitCode, 0);
        EXPECT_EQ(Json::parse(runTool({"check", "--json", out}).output)[0]["problems"], Json::array());
        QFile file(folder.path(name));
        ASSERT_TRUE(done == std::string("cut") ? file.resize(file.size() / 2) : file.remove());
        const SToolResult result = runTool({"check", "--json", out});
        EXPECT_EQ(result.exitCode, 3) << name << done;
        EXPECT_NE(Json::parse(result.output)[0]["problems"].dump().find(told), std::string::npos) << result.output;
        EXPECT_EQ(runTool({"check", out}).output.find("needs no conversion\n"), std::string::npos) << name << done;
    }
}

TEST(Check, goesThroughAWholeTreeAndNoCircles)
{
    CTempFolder folder;
    const CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    ASSERT_TRUE(QDir(folder.path()).mkpath("x/.y/z"));
    deck.write(folder.path("x/.y/z"), "a");
    ASSERT_TRUE(QFile::link(folder.path(), folder.path("x/circle")));
    ASSERT_TRUE(QFile::link(folder.path("x/.y/z/a.dem"), folder.path("x/linked.dem")));
    const Json list = Json::parse(runTool({"check", "--json", argument(folder.path())}).output);
    ASSERT_EQ(list.size(), 2u) << list;
    EXPECT_EQ(list[0]["path"], argument(folder.path("x/.y/z/a.dem")));
    EXPECT_EQ(list[1]["path"], argument(folder.path("x/linked.dem")));
}

TEST(Info, describesADeckInTextAndJson)
{
    CTempFolder folder;
    const CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    const std::string path = argument(deck.write(folder.path(), "pile"));
    settingsWith(makeVersion(27, 0, 3), -1, {{"Heat", 0, 2, 0, {1, 2}}}, -1, {}).toFile(folder.path("pile.ess"));

    const Json info = Json::parse(runTool({"info", "--json", path}).output);
    EXPECT_EQ(info["family"], "legacy");
    EXPECT_EQ(info["lastWrittenBy"], "27.0.3");
    EXPECT_EQ(info["title"], "Kiste");
    EXPECT_EQ(info["timesteps"][2]["timeSeconds"], 0.3);
    EXPECT_EQ(info["particleTypes"][0]["particles"], 60);
    EXPECT_EQ(info["particleTypes"][1]["particles"], 12);
    EXPECT_EQ(info["materials"][0]["name"], "glass");
    EXPECT_EQ(info["materials"][0]["densityKgPerM3"], 2500.0);
    EXPECT_EQ(info["customProperties"][0]["name"], "Heat");
    EXPECT_EQ(info["customProperties"][0]["elements"], 2);
    EXPECT_EQ(info["customProperties"][0]["stored"], false);
    EXPECT_EQ(info["files"].size(), 3u);
    const qint64 bytes = deck.segment(0).size() + deck.index().size() + folder.read("pile.ess").size();
    EXPECT_EQ(info["sizeBytes"], bytes);

    const std::string text = runTool({"info", path}).output;
    for (const char* const part : {"legacy deck, version 27.0.3", "Kiste", "t = 0.3 s", "60 particles of 1 sphere",
                                   "2 materials", "Heat  of particles, 2 elements, not in use yet", "3 files"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
}

/// A released contact counts for nothing.
static SDeckTimestep timestepWithPairs(double time)
{
    SDeckTimestep timestep = sampleTimestep(time);
    const std::vector<SDeckPair> pairs = {{0, 0, 0, 1}, {0, 1, 0, 2}, {0, 2, 0, 3}, {0, 3, 0, 4}};
    timestep.pairs.contacts[0] = makeDeckContacts(10, pairs, {1e-6, -2.0, 2e-6, 3e-6});
    timestep.pairs.contacts[0].collisionsActive = 1;
    timestep.pairs.contacts[0].collisions = makeDeckCollisions(1, 4, surfaceCollisionMask);
    timestep.pairs.bonds[0] = makeDeckBonds(20, pairs, {1, 0, 1, 0});
    timestep.pairs.collisions[0] = makeDeckCollisions(500, 3, surfaceCollisionMask);
    timestep.pairs.collisions[1] = makeDeckCollisions(600, 2, geometryCollisionMask);
    return timestep;
}

TEST(Info, countsPairsOfEachTimestepUnlessItIsToBeQuick)
{
    CTempFolder folder;
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(sampleCreator()).timestep(timestepWithPairs(0.1)).timestep(sampleTimestep(0.2));
    const std::string path = argument(deck.write(folder.path(), "pairs"));

    const SToolResult told = runTool({"info", "--json", path});
    const Json timesteps = Json::parse(told.output)["timesteps"];
    EXPECT_EQ(timesteps[0]["contacts"]["particleParticle"], 3);
    EXPECT_EQ(timesteps[0]["contacts"]["particleGeometry"], 0);
    EXPECT_EQ(timesteps[0]["bonds"]["intact"], 2);
    EXPECT_EQ(timesteps[0]["bonds"]["broken"], 2);
    EXPECT_EQ(timesteps[0]["collisions"]["finished"], 5);
    EXPECT_EQ(timesteps[0]["collisions"]["goingOn"], 4);
    EXPECT_EQ(timesteps[1]["contacts"]["particleParticle"], 0);
    const std::string text = runTool({"info", path}).output;
    EXPECT_NE(text.find(", 3 contacts, 4 bonds (2 broken), 5 finished collisions and 4 going on"), std::string::npos)
        << text;

    const Json quick = Json::parse(runTool({"info", "--quick", "--json", path}).output);
    EXPECT_FALSE(quick["timesteps"][0].contains("contacts"));
    EXPECT_EQ(quick["particleTypes"][0]["particles"], 60);
}

TEST(Info, reportsADamagedTimestepAndGoesOnWithTheOthers)
{
    CTempFolder folder;
    CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    const std::string path = argument(deck.write(folder.path(), "torn"));
    const QByteArray whole = folder.read("torn.dem");
    folder.write("torn.dem", whole.left(static_cast<int>(deck.timestepPlaces()[1].offset) + 100));

    const SToolResult result = runTool({"info", "--json", path});
    EXPECT_EQ(result.exitCode, 3);
    const Json info = Json::parse(result.output);
    EXPECT_EQ(info["title"], "Kiste") << "of the last timestep that can be read";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(info["timesteps"][i].contains("damaged"), i > 0) << i;
        EXPECT_EQ(info["timesteps"][i]["timeSeconds"].is_null(), i > 0) << i;
    }
    EXPECT_NE(result.error.find("timestep 1"), std::string::npos) << result.error;
    EXPECT_NE(runTool({"info", path}).output.find("\n  1  -, can't be read\n"), std::string::npos);
    EXPECT_EQ(CToolRun({"info", path}).outputToNoOne().run().exitCode, 3) << "whoever reads it";
}

TEST(Info, describesWhatIsKnownOfADeckThatItCannotRead)
{
    CTempFolder folder;
    sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "damaged");
    QByteArray bytes = folder.read("damaged.dem");
    folder.write("damaged.dem", bytes.replace(32, 40, QByteArray(40, '\xff'))); // the model's head
    const SToolResult result = runTool({"info", argument(folder.path("damaged.dem"))});
    EXPECT_EQ(result.exitCode, 3) << result.error;
    for (const char* const part : {"legacy deck, version 27.0.3", "\n  0  -, can't be read", "2 files"})
        EXPECT_NE(result.output.find(part), std::string::npos) << part << "\n" << result.output;

    const std::string source = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "source"));
    for (const char* const lost : {"0.h5", "2.h5"}) {
        const std::string out = argument(folder.path("out.dem"));
        ASSERT_EQ(runTool({"convert", "--force", source, out}).exitCode, 0);
        ASSERT_TRUE(QFile::remove(folder.path(QString("out_data/") + lost)));
        EXPECT_EQ(runTool({"info", out}).exitCode, 3) << lost;
        EXPECT_EQ(runTool({"info", "--quick", out}).exitCode, 3) << lost;
    }
}

TEST(Dump, showsWhatTheBuilderPutIn)
{
    CTempFolder folder;
    const std::string path = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile"));
    const SToolResult result = runTool({"dump", "--full", path});
    ASSERT_EQ(result.exitCode, 0) << result.error;
    auto lines = linesOf(result.output);
    EXPECT_EQ(lines["creator/title"], "\"Kiste\"");
    EXPECT_EQ(lines["creator/damping"], "0.25");
    EXPECT_EQ(lines["creator/gravity"], "(0, 0, -9.8100000000000005)");
    EXPECT_EQ(lines["creator/domain/periodicY"], "true");
    EXPECT_EQ(lines["creator/materials/glass/shearModulus"], "1900000");
    EXPECT_EQ(lines["creator/interactions/glass~seed/restitution"], "0.45000000000000001");
    EXPECT_EQ(lines["timestep/1/time"], "0.20000000000000001");
    EXPECT_EQ(lines["timestep/1/runNumber"], "3");
    EXPECT_EQ(lines["timestep/1/removedParticles/Oval%20(größer)"], "2");
    EXPECT_EQ(lines["timestep/1/energy/cumulative/lostThroughCapping"], "7.5");
    EXPECT_EQ(lines["timestep/1/energy/total"], "8.5");
    EXPECT_EQ(lines["stored/timestep/1/fileVersion"], "\"27.0.3\"");
    EXPECT_EQ(lines.count("timestep/2/time"), 1u);
    EXPECT_EQ(lines.count("timestep/3/time"), 0u);
    EXPECT_EQ(lines["timestep/0/particles/Oval%20(größer)/ids/11"], "72");

    // One timestep alone is the same lines, and no others.
    std::map<std::string, std::string> second;
    for (const auto& line : lines)
        if (line.first.rfind("timestep/2/", 0) == 0 || line.first.rfind("stored/timestep/2/", 0) == 0)
            second.insert(line);
    EXPECT_EQ(linesOf(runTool({"dump", "--full", path, "--timestep", "2"}).output), second);
}

TEST(Dump, showsTheRecordsOfAnOldDeckAsTheyAreStored)
{
    CTempFolder folder;
    const std::string path = argument(writeOldDeck(makeVersion(13, 0, 9), folder.path(), "old"));
    auto lines = linesOf(runTool({"dump", "--stored", path}).output);
    EXPECT_EQ(lines["stored/creator/prototypes/0/elements/0/contactRadius"], "0.5 m");
    // The second particle is twice as large, and the first end of each pair: nothing is rescaled or turned yet.
    EXPECT_EQ(lines["stored/timestep/0/particles/1/name"], "\"Ball\"");
    EXPECT_EQ(lines["stored/timestep/0/particles/1/position"], "(1, 0, 0) m");
    EXPECT_EQ(lines["stored/timestep/0/particles/1/mass"], "8 kg");
    EXPECT_EQ(lines["stored/timestep/0/particles/1/forceTorque/torque"], "(23, 24, 25) N m");
    EXPECT_EQ(lines["stored/timestep/0/contacts/surfaceSurface/0/firstParticleId"], "2");
    EXPECT_EQ(lines["stored/timestep/0/contacts/surfaceSurface/0/normalForce"], "(-1, -2, -3) N");
    EXPECT_EQ(lines["stored/timestep/0/contacts/surfaceGeometry/0/triangleId"], "5");
    EXPECT_EQ(lines["stored/timestep/1/collisions/surfaceSurface/0/startTime"], "0.5 s");
    EXPECT_EQ(lines["stored/timestep/1/collisions/surfaceSurface/0/second/particleId"], "1");
    EXPECT_EQ(lines["stored/timestep/1/bonds/0/tangentialTorque"], "(10, 11, 12) N m");
    EXPECT_EQ(lines.count("timestep/0/time"), 0u) << "what becomes of them is another dump";

    const SToolResult later = runTool({"dump", "--stored", sampleDeck("pile-27.dem")});
    EXPECT_EQ(later.output, "");
    EXPECT_NE(later.error.find("no records of versions below 20.0.0"), std::string::npos);
}

TEST(Dump, reportsATimestepOfWallsThatMoveAndStopAsIfItHadBeenReadAlone)
{
    CTempFolder folder;
    const std::string legacy = sampleDeck("moving-walls-26.dem");
    const std::string converted = argument(folder.path("converted.dem"));
    ASSERT_EQ(runTool({"convert", "--quiet", legacy, converted}).exitCode, 0);
    for (const std::string& deck : {legacy, converted}) {
        const auto all = linesOf(runTool({"dump", deck}).output);
        for (const char* const number : {"1", "2"})
            for (const auto& line : linesOf(runTool({"dump", deck, "--timestep", number}).output))
                EXPECT_EQ(all.at(line.first), line.second) << line.first;
        EXPECT_EQ(all.count("timestep/2/geometryGroups/Hopper/velocity"), 0u) << "a static group stores none";
        EXPECT_EQ(all.at("creator/geometryGroups/Hopper/velocity"), "(1, 2, 3)") << "in no timestep of the sample";
    }
}

TEST(Dump, namesAModelByTheTimestepFromWhichItIsInForce)
{
    CTempFolder folder;
    const std::string source = argument(sampleDeckOf(makeVersion(24, 0, 30), true).write(folder.path(), "pile"));
    const std::string converted = argument(folder.path("converted.dem"));
    ASSERT_EQ(runTool({"convert", source, converted, "--verify"}).exitCode, 0);
    for (const std::string& deck : {source, converted}) {
        auto lines = linesOf(runTool({"dump", deck}).output);
        EXPECT_EQ(lines["creator/title"], "\"Kiste\"");
        EXPECT_EQ(lines["creator@2/title"], "\"Kiste, verändert\"");
        EXPECT_EQ(lines.count("creator@1/title"), 0u);
    }
}

TEST(ReadingCommands, leaveTheDeckAsItIsUnderAnyLocale)
{
    CTempFolder folder; // its name has a blank and an umlaut
    const std::string path = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "größe 1"));
    emptySettings(makeVersion(27, 0, 3)).toFile(folder.path("größe 1.ess"));
    configurationFile("27.0.0", {"A:B=INT:1"}).toFile(folder.path("größe 1.dfg"));
    const CSnapshot before = folder.snapshot();
    std::string first;
    for (const char* const locale : {"C.UTF-8", "C", "POSIX", "de_DE.UTF-8"}) {
        for (const char* const command : {"check", "info", "dump"}) {
            const SToolResult result = CToolRun({command, path}).environment("LC_ALL", locale).run();
            EXPECT_EQ(result.exitCode, 0) << locale << ' ' << command << ": " << result.error;
        }
        const std::string text = CToolRun({"dump", path}).environment("LC_ALL", locale).run().output;
        if (first.empty())
            first = text;
        EXPECT_EQ(text, first) << locale;
    }
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
}

} // namespace NBrenmark
