// Contact models, external forces and custom properties as brenmark info tells them.
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

TEST(PhysicsOfADeck, isToldChainByChain)
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

    const std::string text = runTool({"info", deck}).output;
    for (const char* line :
         {"3 contact models between particles, in the order of the chain\n",
          "  Hertz-Mindlin with bonding  bond of 1 pair, formed from 0.5 s, formed until 0.75 s, formation under way, "
          "torque feedback on, rolling friction on both sides\n",
          "  Linear Cohesion             energy density of 1 pair\n", "  Tribocharging               alpha 0.375\n",
          "4 contact models between particles and geometry, in the order of the chain\n",
          "  Hertz-Mindlin with Archard Wear  wear constant of 1 geometry group, rolling friction on the first side\n",
          "  Moving Plane                     start and end point of 1 plane, velocity of 0 motions\n",
          "  Relative Wear                    no parameters\n", "2 external forces\n",
          "  Electrostatics      screening distance 7.5 smallest particle radii\n",
          "  Temperature Update  heat capacity of 1 particle type\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST(PhysicsOfADeck, tellsWhatIsNotKnownHere)
{
    const std::string text = runTool({"info", sampleDeck("plugins-24.dem")}).output;
    EXPECT_NE(text.find("  My Model                 not known here, kept by its name\n"), std::string::npos) << text;
}

TEST(PhysicsOfADeck, customPropertiesAreToldWithOwnerAndKind)
{
    const std::string text = runTool({"info", sampleDeck("properties-24.dem")}).output;
    for (const char* line :
         {"  Pair        of particles, 2 elements\n", "  Later       of particles, 1 element, not in use yet\n",
          "  Is-Hot      of geometry, 2 elements, true or false\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
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

} // namespace NBrenmark
