// verify lets a legacy model change where its upgrades mean to change it, and nowhere else.
#include "brenmark/meant_changes.h"

#include "support/legacy_deck.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <functional>
#include <map>

namespace NBrenmark {

using Json = nlohmann::json;

// ---------------------------------------------------------------- the list

using TextMap = std::map<std::string, std::string>;

static TextLines linesOf(const TextMap& text)
{
    TextLines lines;
    for (const auto& [path, value] : text)
        lines.emplace_back("creator/" + path, value);
    return lines;
}

/// Types A and B of material m, type C of n; a wall of n; factories of A and of both; parameters by pairs.
static TextMap storedModel()
{
    TextMap text{
        {"title", "\"T\""},
        {"geometryGroups/Wall/name", "\"Wall\""},
        {"geometryGroups/Wall/materialName", "\"n\""},
        {"geometryGroups/Wall/factories/F/sizes/A/kind", "\"fixed\""},
        {"geometryGroups/Wall/factories/F/sizes/A/value", "2"},
        {"geometryGroups/Wall/factories/F/type/names/0", "\"A\""},
        {"physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/A/A", "0.5"},
        {"physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/A/gone", "0.75"},
        {"physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/gone/A", "0.25"},
        {"physicsModels/sphereSphereModels/Linear%20Cohesion%20V2/energyDensity/m/n", "8"},
        {"physicsModels/sphereGeometryModels/Hysteretic%20Spring/interactions/A/Wall/damping", "0.5"},
        {"physicsModels/sphereSphereModels/Hertz-Mindlin%20with%20bonding/bondParameters/A%20<>%20C/bondRadius", "4"},
        {"interactions/m~n/restitution", "0.5"},
    };
    for (const char* name : {"m", "n"}) {
        const std::string material = std::string("materials/") + name;
        text.insert({{material + "/name", '"' + std::string(name) + '"'},
                     {material + "/density", "2500"},
                     {material + "/type", "1"}});
    }
    int index = 0;
    for (const auto& [name, material] : {std::pair("A", "m"), std::pair("B", "m"), std::pair("C", "n")}) {
        const std::string type = std::string("particles/") + name;
        text.insert({{type + "/name", '"' + std::string(name) + '"'},
                     {type + "/index", std::to_string(index++)},
                     {type + "/materialName", '"' + std::string(material) + '"'},
                     {type + "/spheres/0/contactRadius", "0.125"}});
    }
    return text;
}

static void makeMaterial(TextMap& text, const std::string& name, const std::string& density = "2500")
{
    text["materials/" + name + "/name"] = '"' + name + '"';
    text["materials/" + name + "/density"] = density;
    text["materials/" + name + "/type"] = "1";
}

struct SChangeCase
{
    const char* what;
    int meant; ///< lines
    int other;
    std::function<void(TextMap&)> upgrade;
};

static const std::string cohesion = "physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/";

const SChangeCase changeCases[] = {
    {"nothing", 0, 0, [](TextMap&) {}},
    {"a title", 0, 1, [](TextMap& t) { t["title"] = "\"U\""; }},
    {"a line that goes", 0, 1, [](TextMap& t) { t.erase("title"); }},

    {"a new material and who moves to it", 4, 0,
     [](TextMap& t) {
         makeMaterial(t, "m(1)");
         t["particles/B/materialName"] = "\"m(1)\"";
     }},
    {"a copy that differs", 2, 1, [](TextMap& t) { makeMaterial(t, "m(1)", "2501"); }},
    {"a copy of nothing", 0, 3, [](TextMap& t) { makeMaterial(t, "x(1)"); }},
    {"a move to a copy of another material", 3, 1,
     [](TextMap& t) {
         makeMaterial(t, "n(1)");
         t["particles/B/materialName"] = "\"n(1)\"";
     }},
    {"a move to a material that was there", 0, 1, [](TextMap& t) { t["particles/B/materialName"] = "\"n\""; }},
    {"interactions of a copy, in either order of the names", 4, 1,
     [](TextMap& t) {
         makeMaterial(t, "n(1)");
         t["interactions/m~n(1)/restitution"] = "0.5";
         t["interactions/m~n(1)/rollingFriction"] = "0.5";
     }},
    {"a new type and its factory", 10, 1,
     [](TextMap& t) {
         makeMaterial(t, "m(1)");
         t["particles/A(1)/name"] = "\"A(1)\"";
         t["particles/A(1)/index"] = "3";
         t["particles/A(1)/materialName"] = "\"m(1)\"";
         t["particles/A(1)/spheres/0/contactRadius"] = "0.125";
         const std::string factory = "geometryGroups/Wall/factories/F/";
         t[factory + "type/names/0"] = "\"A(1)\"";
         t[factory + "sizes/A(1)/kind"] = t[factory + "sizes/A/kind"];
         t[factory + "sizes/A(1)/value"] = "2.5"; // another size than the original's
         t.erase(factory + "sizes/A/kind");
     }},
    {"a size that is lost", 0, 1, [](TextMap& t) { t.erase("geometryGroups/Wall/factories/F/sizes/A/value"); }},

    {"walls of grains' material", 3, 1,
     [](TextMap& t) {
         makeMaterial(t, "n(1)");
         t["materials/n(1)/type"] = "0";
         t["geometryGroups/Wall/materialName"] = "\"m\""; // and not the copy
     }},
    {"a material that no type uses", 1, 1,
     [](TextMap& t) {
         t["particles/C/materialName"] = "\"m\"";
         t["materials/n/type"] = "0";
     }},
    {"a material that types use", 0, 1, [](TextMap& t) { t["materials/m/type"] = "0"; }},

    {"pairs of materials", 5, 0,
     [](TextMap& t) {
         t.erase(cohesion + "gone/A"); // no type
         t.erase(cohesion + "A/A");
         t.erase(cohesion + "A/gone");
         t[cohesion + "m/m"] = "0.5";
         t[cohesion + "m/n"] = "0.75";
     }},
    {"a value that is lost", 0, 1, [](TextMap& t) { t.erase(cohesion + "A/A"); }},
    {"a value that is new", 1, 1,
     [](TextMap& t) {
         t.erase(cohesion + "gone/A");
         t[cohesion + "m/m"] = "0.625";
     }},
    {"a table that never went by types", 0, 1,
     [](TextMap& t) { t["physicsModels/sphereSphereModels/Linear%20Cohesion%20V2/energyDensity/m/n"] = "7"; }},
    {"entries of a copy in such a table", 4, 1,
     [](TextMap& t) {
         const std::string table = "physicsModels/sphereSphereModels/Linear%20Cohesion%20V2/energyDensity/";
         makeMaterial(t, "m(1)");
         t[table + "m(1)/n"] = "8";
         t[table + "m/m(1)"] = "8"; // m doesn't touch itself
     }},
    {"pairs with walls and bonds", 4, 0,
     [](TextMap& t) {
         const std::string walls = "physicsModels/sphereGeometryModels/Hysteretic%20Spring/interactions/";
         const std::string bonds = "physicsModels/sphereSphereModels/Hertz-Mindlin%20with%20bonding/bondParameters/";
         t.erase(walls + "A/Wall/damping");
         t[walls + "m/n/damping"] = "0.5";
         t.erase(bonds + "A%20<>%20C/bondRadius");
         t[bonds + "m%20<>%20n/bondRadius"] = "4";
     }},

    {"size laws", 6, 0,
     [](TextMap& t) {
         t["sizeDistributions/A/percentage"] = "50";
         t["sizeDistributions/A/kind"] = "\"fixed\"";
         t["sizeDistributions/A/value"] = "2";
         t["sizeDistributions/C/percentage"] = "100";
         t["sizeDistributions/C/value"] = "1";
         t["sizeDistributions/C/radiusScaling"] = "true";
     }},
    {"size laws of no one", 0, 3,
     [](TextMap& t) {
         t["sizeDistributions/A/percentage"] = "100"; // B shares the material
         t["sizeDistributions/A/value"] = "3";
         t["sizeDistributions/C/kind"] = "\"normal\"";
     }},
};

TEST(MeantChanges, areThoseOfTheListAndNoOthers)
{
    for (const SChangeCase& c : changeCases) {
        const TextMap stored = storedModel();
        TextMap upgraded = stored;
        c.upgrade(upgraded);
        const std::vector<SModelChange> changes = modelChanges(linesOf(stored), linesOf(upgraded), "creator");
        std::string text = c.what;
        for (const SModelChange& change : changes)
            text += "\n  " + change.path + ": " + change.stored + " -> " + change.upgraded + " by " + change.upgrade;
        const auto other = std::count_if(changes.begin(), changes.end(),
                                         [](const SModelChange& change) { return change.upgrade.empty(); });
        EXPECT_EQ(static_cast<int>(changes.size()) - other, c.meant) << text;
        EXPECT_EQ(other, c.other) << text;
    }
}

// ---------------------------------------------------------------- a deck

/// A deck in which each upgrade finds something to do.
static CLegacyDeck oldDeck()
{
    const QString ball = QStringLiteral("Ball");
    SDeckCreator creator = sampleCreator();
    const QString oval = creator.particles.types[1].name;
    for (SDeckParticleType& type : creator.particles.types)
        type.materialName = QStringLiteral("glass");
    creator.groups = sampleGroups();
    SDeckFactory both = deckFactory(QStringLiteral("C"), ball);
    both.typeNames = {ball, oval};
    both.type = {QStringLiteral("binary"), CBytes().i32(0).i32(2).text(ball).text(oval), CBytes().i32(1)};
    creator.groups[0].factories.push_back(both);
    creator.particleParticle = {
        {"Hertz-Mindlin with JKR", 0,
         CBytes().i32(3).text(ball).text(ball).f64(0.5).text(ball).text(oval).f64(0.75).text("x").text("y").f64(1)}};
    creator.particleGeometry = {{"Linear Cohesion", 0, CBytes().i32(1).text(ball).text("Drum").f64(0.25)}};
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(creator);
    SDeckTimestep timestep = sampleTimestep(0.1);
    timestep.groups = creator.groups;
    deck.timestep(timestep);
    return deck;
}

TEST(MeantChanges, ofADeckAreCountedAndItsConversionIsWhole)
{
    CTempFolder folder;
    const std::string source = argument(oldDeck().write(folder.path(), "old"));
    const std::string converted = argument(folder.path("new.dem"));
    const SToolResult result = runTool({"convert", source, converted, "--verify", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.output << result.error;
    const SToolResult verification = runTool({"verify", source, converted, "--json"});
    ASSERT_EQ(verification.exitCode, 0) << verification.output;
    const Json verified = Json::parse(verification.output);
    std::map<std::string, int> counts;
    for (const Json& change : verified["meant"])
        ++counts[change["upgrade"]];
    EXPECT_EQ(counts.size(), 5u) << "each has something to do: " << verified["meant"].dump(1);
    const auto told = [&](const char* part) {
        const Json& messages = verified["messages"];
        return std::any_of(messages.begin(), messages.end(), [&](const Json& message) {
            return message["text"].get<std::string>().find(part) != std::string::npos;
        });
    };
    EXPECT_TRUE(told("it feeds the new type \"Ball(1)\" of the new material \"glass(1)\""));
    EXPECT_TRUE(told("the entry of \"x\" and \"y\" is dropped"));

    // Without --json the same is told to a reader.
    const std::string text = runTool({"verify", source, converted}).output;
    EXPECT_NE(text.find("no difference\n  upgraded to the current model: "), std::string::npos) << text;
}

} // namespace NBrenmark
