// Contact models, external forces, custom properties and geometry as brenmark info shows them.
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NBrenmark {

using Json = nlohmann::json;

static std::string namesOf(const Json& models)
{
    std::string names;
    for (const Json& model : models)
        names += (names.empty() ? "" : ", ") + model["name"].get<std::string>();
    return names;
}

TEST(PhysicsOfADeck, isReportedChainByChain)
{
    const std::string deck = sampleDeck("physics-25.dem");
    const Json physics = Json::parse(runTool({"info", "--json", deck}).output)["physics"];
    EXPECT_EQ(namesOf(physics["sphereSphereModels"]), "Hertz-Mindlin with bonding, Linear Cohesion, Tribocharging");
    EXPECT_EQ(namesOf(physics["sphereGeometryModels"]),
              "Hertz-Mindlin with Archard Wear, Linear Cohesion, Moving Plane, Relative Wear");
    EXPECT_EQ(namesOf(physics["externalForces"]), "Electrostatics, Temperature Update");
    const Json bond = physics["sphereSphereModels"][0]["parameters"];
    EXPECT_EQ(bond[0]["count"], 1);
    EXPECT_EQ(bond[1]["value"], 0.5);

    const std::pair<const char*, std::vector<const char*>> cases[] = {
        {"physics-25.dem",
         {"3 contact models between particles, in the order of the chain\n",
          ("  Hertz-Mindlin with bonding  bond of 1 pair, formed from 0.5 s, formed until 0.75 s, formation under way, "
           "torque feedback on, rolling friction on both sides\n"),
          "  Linear Cohesion             energy density of 1 pair\n", "  Tribocharging               alpha 0.375\n",
          "4 contact models between particles and geometry, in the order of the chain\n",
          "  Hertz-Mindlin with Archard Wear  wear constant of 1 geometry group, rolling friction on the first side\n",
          "  Moving Plane                     start and end point of 1 plane, velocity of 0 motions\n",
          "  Relative Wear                    no parameters\n", "2 external forces\n",
          "  Electrostatics      screening distance 7.5 smallest particle radii\n",
          "  Temperature Update  heat capacity of 1 particle type\n"}},
        {"plugins-24.dem", {"  My Model                 of a plug-in; its library isn't in ", "1 plug-in factory\n"}},
        {"properties-24.dem",
         {"  Pair        of particles, 2 elements\n", "  Later       of particles, 1 element, not in use yet\n",
          "  Is-Hot      of geometry, 2 elements, true or false\n"}},
    };
    for (const auto& [name, lines] : cases) {
        const std::string text = runTool({"info", sampleDeck(name)}).output;
        for (const char* line : lines)
            EXPECT_NE(text.find(line), std::string::npos) << line << text;
    }
}

/// Each model of the registry stands in a deck that was converted, and says what it holds.
TEST(PhysicsOfADeck, namesTheTablesOfEveryModel)
{
    struct SCase
    {
        const char* model;
        const char* told;
        CBytes parameters;
    };
    const CBytes pair = CBytes().i32(1).text("Ball").text("Ball").f64(2.5);
    const CBytes name = CBytes().i32(1).text("Ball").f64(2.5);
    const SCase cases[] = {
        {"Linear Spring", "characteristic velocity 2.5 m/s, rolling friction on both sides", CBytes().f64(2.5)},
        {"Hertz-Mindlin (no slip)", "rolling friction on both sides", {}},
        {"Hertz-Mindlin (no slip) with RVD Rolling Friction", "no parameters", {}},
        {"Hertz-Mindlin with JKR", "surface energy of 1 pair, rolling friction on both sides", pair},
        {"Hertz-Mindlin with heat conduction", "thermal conductivity of 1 particle type", name},
        {"Linear Cohesion V2", "energy density of 1 pair", pair},
        {"Hysteretic Spring",
         "damping and stiffness of 1 pair, yield strength of 1 name, rolling friction on both sides",
         CBytes().i32(1).text("Ball").text("Ball").f64(2.5).f64(3.5) + name},
        {"Edinburgh Elasto-Plastic Adhesion", "adhesion of 0 pairs, rolling friction on both sides", {}},
        {"Leeds Elastic-Plastic Adhesion", "adhesion of 0 pairs, rolling friction on both sides", {}},
    };
    CTempFolder folder;
    SDeckCreator creator = sampleCreator();
    creator.particleParticle.clear();
    for (const SCase& c : cases)
        creator.particleParticle.push_back({c.model, 0, c.parameters});
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(creator).timestep(sampleTimestep(0.1));
    const std::string text = runTool({"info", argument(deck.write(folder.path(), "models"))}).output;
    for (const SCase& c : cases) {
        const std::size_t line = text.find("  " + std::string(c.model) + "  ");
        ASSERT_NE(line, std::string::npos) << c.model << text;
        EXPECT_EQ(text.substr(text.find_first_not_of(' ', line + 2 + std::string(c.model).size()),
                              std::string(c.told).size() + 1),
                  c.told + std::string("\n"));
    }
}

/// Four groups, one of each shape, and two factories.
TEST(GeometryOfADeck, isReportedByInfo)
{
    CTempFolder folder;
    SDeckCreator creator = sampleCreator();
    creator.groups = sampleGroups();
    SDeckTimestep timestep = sampleTimestep(0.1);
    timestep.groups = creator.groups;
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(creator).timestep(timestep);
    const std::string path = argument(deck.write(folder.path(), "walls"));
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
