// Timesteps that hold their geometry whole: it takes the place of the model's, and what upgrades do to materials goes by
// the walls that are there then.
#include "io/dem/dem_deck_testing.h"
#include "model/geometry/geometry_group.h"
#include "support/old_deck.h"
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

TEST(OldDecks, convertAndVerify)
{
    for (const quint32 version : {makeVersion(2, 4, 2), makeVersion(2, 4, 16), makeVersion(2, 4, 40),
                                  makeVersion(13, 0, 1), makeVersion(13, 0, 9), makeVersion(20, 0, 2),
                                  makeVersion(20, 0, 9), makeVersion(3, 0, 12), makeVersion(20, 0, 15)}) {
        const CTempFolder folder;
        const QString deck = writeOldDeck(version, folder.path(), "old");
        const SToolResult run = runTool({"convert", argument(deck), argument(folder.path("new")), "--verify"});
        EXPECT_EQ(run.exitCode, 0) << versionText(version).toStdString() << run.error << run.output;
    }
}

} // namespace NBrenmark
