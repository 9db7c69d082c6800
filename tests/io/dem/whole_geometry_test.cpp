// Timesteps that hold their geometry whole: it takes the place of the model's, and what upgrades do to materials goes by
// the walls that are there then.
#include "io/dem/dem_deck_testing.h"
#include "model/geometry/geometry_group.h"
#include "support/old_deck.h"
#include "support/text_lines.h"
#include "support/tool_run.h"

namespace NBrenmark {

static QString materialsOf(CManagedDeck& deck)
{
    QStringList texts = deck.creator().materials.keys();
    for (const CGeometryGroup* group : deck.creator().geometryGroups.groups())
        texts += group->displayedName + ":" + group->materialName;
    return texts.join(' ');
}

// The balls are of glass, and so is the wall of some timesteps: it needs a material of its own then, the same each time.
TEST(WholeGeometry, getsTheMaterialsThatItsWallsNeed)
{
    const auto walls = [](const char* material) {
        SDeckGroup wall = sampleGroups()[1];
        wall.index = 0;
        wall.materialName = material;
        return std::vector<SDeckGroup>{wall};
    };
    const auto step = [&](double time, const char* material, int fullGeometry) {
        SDeckTimestep timestep = sampleTimestep(time);
        timestep.groups = walls(material);
        timestep.fullGeometry = fullGeometry;
        return timestep;
    };
    SDeckCreator model = sampleCreator();
    model.groups = walls("glass");
    CLegacyDeck stored(makeVersion(21, 0, 0));
    stored.creator(model).timestep(step(0.1, "glass", 1)).timestep(step(0.2, "glass", 1));
    stored.timestep(step(0.3, "seed", 1)).timestep(step(0.4, "glass", 0));
    const CTempFolder folder;
    CManagedDeck deck;
    ASSERT_EQ(deck.open(stored.write(folder.path(), "deck")), eOpened);
    const CLogCapture log;
    const char* const expected[] = {"glass glass(1) seed Drum:glass(1)", "glass glass(1) seed Drum:glass(1)",
                                    "glass seed seed(1) Drum:seed(1)", "glass glass(1) seed Drum:glass(1)"};
    for (const quint32 number : {0u, 1u, 2u, 3u, 2u, 0u}) {
        ASSERT_TRUE(deck.read(number)) << log.text();
        EXPECT_EQ(materialsOf(deck), expected[number]) << number;
        EXPECT_EQ(deck.creator().modified, number != 3) << number;
    }
    EXPECT_EQ(log.count(), 2u) << "of each of two new materials once\n" << log.text();
}

/// Two types and the wall are of glass, each type has a factory of its own, and each pair has its own cohesion.
static SDeckCreator modelOfOneMaterial()
{
    SDeckCreator model = sampleCreator();
    model.particles.types[1].materialName = "glass";
    SDeckGroup wall = sampleGroups()[1];
    wall.index = 0;
    wall.factories = {deckFactory("F", "Ball"), deckFactory("G", "Oval (größer)")};
    model.groups = {wall};
    const CBytes grains = CBytes().i32(2).text("Ball").text("Ball").f64(1).text("Ball").text("Oval (größer)").f64(2);
    const CBytes walls = CBytes().i32(2).text("Ball").text("Drum").f64(3).text("Drum").text("Oval (größer)").f64(4);
    model.particleParticle.push_back({"Linear Cohesion", 0, grains});
    model.particleGeometry.push_back({"Linear Cohesion", 0, walls});
    return model;
}

// Ball gets glass(1) from its factory; then the wall leaves the material of the grains.
TEST(WholeGeometry, agreesWithTheModelThatItComesTo)
{
    const SDeckCreator model = modelOfOneMaterial();
    CLegacyDeck stored(makeVersion(21, 0, 0));
    stored.creator(model);
    for (const int fullGeometry : {1, 0, 1}) {
        SDeckTimestep timestep = sampleTimestep(0.1);
        timestep.particles.types[1].materialName = "glass";
        timestep.groups = model.groups;
        timestep.fullGeometry = fullGeometry;
        stored.timestep(timestep);
    }
    const CTempFolder folder;
    CManagedDeck deck;
    ASSERT_EQ(deck.open(stored.write(folder.path(), "deck")), eOpened);
    const CLogCapture log;
    for (const quint32 number : {0u, 1u, 2u}) {
        ASSERT_TRUE(deck.read(number));
        EXPECT_EQ(materialsOf(deck), "glass glass(1) glass(2) seed Drum:glass(2)") << number;
        expectText(deck.creator(),
                   "particles/Ball/materialName \"glass(1)\"; particles/Oval%20(größer)/materialName \"glass\"; "
                   "geometryGroups/Drum/factories/F/type/names/0 \"Ball\"; "
                   "physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/glass(1)/glass(1) 1; "
                   "physicsModels/sphereSphereModels/Linear%20Cohesion/energyDensity/glass/glass(1) 2; "
                   "physicsModels/sphereGeometryModels/Linear%20Cohesion/energyDensity/glass(1)/glass(2) 3; "
                   "physicsModels/sphereGeometryModels/Linear%20Cohesion/energyDensity/glass/glass(2) 4");
        EXPECT_EQ(deck.timestep().particleTypes.types[0]->materialName, "glass(1)");
        EXPECT_EQ(deck.timestep().particleTypes.types[1]->materialName, "glass");
    }
    EXPECT_EQ(log.count(), 3u) << "of both splits, and of the seed that no type is of\n" << log.text();
}

TEST(OldDecks, convertAndVerify)
{
    for (const quint32 version : {makeVersion(2, 4, 2), makeVersion(2, 4, 16), makeVersion(2, 4, 40),
                                  makeVersion(13, 0, 1), makeVersion(13, 0, 9), makeVersion(20, 0, 2),
                                  makeVersion(20, 0, 9), makeVersion(3, 0, 12), makeVersion(20, 0, 15)}) {
        const CTempFolder folder;
        const QString deck = writeOldDeck(version, folder.path(), "old");
        const SToolResult run = runTool({"convert", argument(deck), argument(folder.path("new")), "--verify"});
        EXPECT_EQ(run.exitCode, 0) << versionText(version).toStdString() << run.error << run.output;
        EXPECT_EQ(run.error.find("equipment material (2 times)"), std::string::npos) << "said with every timestep";
    }
}

} // namespace NBrenmark
