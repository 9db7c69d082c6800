// Decks that grow, are cut and are copied.
#include "io/hdf5/hdf5_deck_testing.h"

#include "core/deck/deck_files.h"
#include "support/counting_progress.h"
#include "support/h5_tree.h"

namespace NBrenmark {

using namespace NHdf5Testing;

class Hdf5Change : public testing::Test
{
protected:
    QString path() const { return folder.path("Kiste.dem"); }
    QString copyPath() const { return folder.path("copy.dem"); }
    QStringList dataFiles(const QString& name) const
    {
        QStringList names = QDir(folder.path(name + "_data")).entryList(QDir::Files, QDir::Name);
        return names;
    }
    void makeFour() { makeDeck(path(), {{0.1, "A"}, {0.2, "A"}, {0.3, "B"}, {0.4, "B"}}); }
    /// Makes the deck, opens it and loads a timestep.
    void load(quint32 number)
    {
        makeFour();
        ASSERT_EQ(deck.open(path()), eOpened);
        ASSERT_TRUE(deck.read(number));
    }
    std::string header(const QString& main) const
    {
        const std::string tree = treeOf(main);
        return tree.substr(0, tree.find("/CreatorData/"));
    }

    CTempFolder folder;
    CLogCapture log;
    CHdf5Deck deck;
};

// ---------------------------------------------------------------- append

TEST_F(Hdf5Change, appendsBehindWhatIsThere)
{
    load(3);
    EXPECT_FALSE(deck.creator().modified) << "no one changed it since it was read";
    EXPECT_TRUE(deck.append(0.5));
    EXPECT_EQ(deck.index.back().creatorIndex, 2);
    EXPECT_EQ(deck.manager->timestepCount, 5u);
    deck.creator().changeTitle("C"); // a modified model is stored without being asked for
    EXPECT_TRUE(deck.append(0.6));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 B, 0.6 C");
    EXPECT_EQ(treeOf(folder.path("Kiste_data/4.h5"), "/CreatorData/"), "/CreatorData/\n");
    EXPECT_EQ(log.text(), "");
}

TEST_F(Hdf5Change, keepsTheVersionThatMadeADeck)
{
    load(3);
    deck.manager->firstVersion = makeVersion(30, 0, 2);
    deck.manager->lastVersion = makeVersion(31, 0, 0); // of a later library
    ASSERT_TRUE(deck.append(0.5));
    EXPECT_EQ(header(path()), "/\n"
                              "/@original file version u32 = 1966082\n"
                              "/@current file version u32 = 2031616\n"
                              "/@num timesteps i32 = 5\n"
                              "/@file format u32 = 0\n"
                              "/@edition u32 = 1\n");
}

TEST_F(Hdf5Change, leavesNoFileBehindAWriteThatFailed)
{
    load(3);
    deck.timestep().particleTypes.types[0]->velocity.clear(); // an array that lacks its rows
    EXPECT_FALSE(deck.append(0.5, true));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
    EXPECT_NE(log.text().find("has 2 rows of ids and 0 of velocity"), std::string::npos) << log.text();
    // The model never arrived, though its write had begun: the next timestep brings it.
    fillTimestep(deck.timestep(), 2);
    deck.index.resize(4);
    EXPECT_TRUE(deck.append(0.6));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.6 B");
}

TEST_F(Hdf5Change, reportsThatAFolderIsGone)
{
    load(3);
    QDir(folder.path()).removeRecursively();
    QFile blocker(folder.path()); // a file where the folder was
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    EXPECT_FALSE(deck.append(0.5));
    EXPECT_NE(log.text().find("ERROR HDF5 write: Could not write file"), std::string::npos) << log.text();
    EXPECT_EQ(deck.manager->setOutputName(path()), 1);
    blocker.remove();
    QDir().mkpath(folder.path());
}

// ---------------------------------------------------------------- cut

struct SCutCase
{
    quint32 current;
    bool discard;
    const char* story;
    bool creatorFollows; ///< the next append must bring the model
};

static const SCutCase cutCases[] = {
    {3, false, "0.1 A, 0.2 A, 0.3 B, 0.4 B", false},
    {3, true, "0.1 A, 0.2 A, 0.3 B", false},
    {2, false, "0.1 A, 0.2 A, 0.3 B", false},
    {2, true, "0.1 A, 0.2 A", true}, // its file held model B
    {1, true, "0.1 A", false},
    {0, false, "0.1 A", false},
    {0, true, "open code 1", true},
};

TEST_F(Hdf5Change, cutsBehindOrBeforeATimestep)
{
    for (const SCutCase& c : cutCases) {
        QDir(folder.path("Kiste_data")).removeRecursively();
        load(c.current);
        EXPECT_TRUE(deck.manager->truncateAfterCurrent(deck.frame(), deck.index, c.discard));
        const quint32 kept = c.current + (c.discard ? 0 : 1);
        EXPECT_EQ(deck.index.size(), kept);
        EXPECT_EQ(deck.manager->timestepCount, kept);
        EXPECT_EQ(deck.manager->creatorRewritePending, c.creatorFollows);
        EXPECT_EQ(storyOf(path()), c.story);

        EXPECT_TRUE(deck.append(0.9));
        const std::string creators =
            treeOf(folder.path("Kiste_data/" + QString::number(kept) + ".h5"), "/CreatorData/");
        EXPECT_EQ(creators != "/CreatorData/\n", c.creatorFollows);
        deck.manager->reset();
    }
}

TEST_F(Hdf5Change, cutsNothingWithoutATimestep)
{
    load(1);
    deck.timestep().timestepIndex = CTimestepData::noTimestep;
    EXPECT_FALSE(deck.manager->truncateAfterCurrent(deck.frame(), deck.index, false));
    EXPECT_FALSE(deck.manager->appendTimestep(deck.frame(), deck.index, false, true));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
}

// ---------------------------------------------------------------- create

TEST_F(Hdf5Change, createsADeckOfOneTimestep)
{
    fillCreator(deck.creator());
    fillTimestep(deck.timestep(), 2);
    deck.timestep().time = 0.25;
    deck.simulation.writeOptions.overrideTime = true;
    deck.simulation.writeOptions.timeOverride = 4.0;
    ASSERT_TRUE(deck.manager->createSimulation(path(), deck.frame(), true, deck.index));
    ASSERT_EQ(deck.index.size(), 1u);
    EXPECT_EQ(deck.index[0].time, 4.0);
    EXPECT_EQ(deck.timestep().time, 4.0);
    EXPECT_EQ(deck.manager->timestepCount, 1u);
    EXPECT_EQ(deck.manager->fileName, path());
    EXPECT_EQ(storyOf(path()), "4 Kiste");
    EXPECT_TRUE(deck.append(5.0));
    EXPECT_EQ(storyOf(path()), "4 Kiste, 5 Kiste");
}

TEST_F(Hdf5Change, createsBesideTheOpenDeck)
{
    load(1);
    ASSERT_TRUE(deck.manager->createSimulation(copyPath(), deck.frame(), false, deck.index));
    EXPECT_EQ(deck.manager->fileName, path());
    EXPECT_EQ(deck.index.size(), 4u);
    EXPECT_EQ(storyOf(copyPath()), "0.2 A");
}

TEST_F(Hdf5Change, leavesNothingOfADeckThatCouldNotBeCreated)
{
    fillCreator(deck.creator());
    fillTimestep(deck.timestep(), 2);
    deck.timestep().particleTypes.types[0]->scale.clear();
    EXPECT_FALSE(deck.manager->createSimulation(path(), deck.frame(), true, deck.index));
    EXPECT_EQ(folder.names(), QStringList());
}

// ---------------------------------------------------------------- subset

TEST_F(Hdf5Change, copiesEveryThirdTimestepAndTheLast)
{
    makeDeck(path(), {{0, "A"}, {1, "A"}, {2, "B"}, {3, "B"}, {4, "C"}, {5, "C"}, {6, "C"}, {7, "C"}});
    ASSERT_EQ(deck.open(path()), eOpened);
    ASSERT_TRUE(deck.manager->saveSubset(copyPath(), 0, 7, 3, nullptr)) << log.text();
    EXPECT_EQ(storyOf(copyPath()), "0 A, 3 B, 6 C, 7 C");
    EXPECT_EQ(dataFiles("copy"), (QStringList{"0.h5", "1.h5", "2.h5", "3.h5"}));
    EXPECT_EQ(header(copyPath()), "/\n"
                                  "/@original file version u32 = 1966100\n"
                                  "/@current file version u32 = 1966100\n"
                                  "/@num timesteps i32 = 4\n"
                                  "/@file format u32 = 0\n"
                                  "/@edition u32 = 1\n");
    CHdf5Deck copy;
    ASSERT_EQ(copy.open(copyPath()), eOpened);
    const qint32 creators[] = {0, 1, 2, 2}; // each model under the number of the file that holds it now
    for (quint32 i = 0; i < 4; ++i)
        EXPECT_EQ(copy.index[i].creatorIndex, creators[i]) << i;
    EXPECT_EQ(log.text(), "");
}

struct SSubsetCase
{
    quint32 first;
    quint32 last;
    quint32 stride;
    const char* story;
};

static const SSubsetCase subsetCases[] = {
    {1, 3, 1, "0.2 A, 0.3 B, 0.4 B"}, // model A comes from a file that is left out
    {3, 3, 1, "0.4 B"},               // so does model B
    {2, 3, 5, "0.3 B, 0.4 B"},        // model B moves from number 2 to 0
    {0, 3, 2, "0.1 A, 0.3 B, 0.4 B"},
    {0, 3, 0, "0.1 A, 0.2 A, 0.3 B, 0.4 B"},
};

TEST_F(Hdf5Change, takesTheModelsAlong)
{
    load(0);
    const CSnapshot before = folder.snapshot();
    for (const SSubsetCase& c : subsetCases) {
        EXPECT_TRUE(deck.manager->saveSubset(copyPath(), c.first, c.last, c.stride, nullptr)) << log.text();
        EXPECT_EQ(storyOf(copyPath()), c.story);
        EXPECT_TRUE(deleteFamily(copyPath()));
    }
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
    EXPECT_TRUE(deck.read(3)) << "the deck stays open";
}

TEST_F(Hdf5Change, leavesNothingOfASubsetThatWasCancelled)
{
    load(0);
    const CSnapshot before = folder.snapshot();
    for (int questions = 0; questions < 5; ++questions) { // one a timestep, one at the end
        CCountingProgress progress(CCountingProgress::never, questions);
        EXPECT_FALSE(deck.manager->saveSubset(copyPath(), 0, 3, 1, &progress));
        EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
    }
    CCountingProgress progress(CCountingProgress::never, 5);
    EXPECT_TRUE(deck.manager->saveSubset(copyPath(), 0, 3, 1, &progress));
    EXPECT_EQ(progress.ticks, 5);
}

TEST_F(Hdf5Change, leavesWhatWasThereBeforeASubset)
{
    load(0);
    folder.write("copy_data/1.h5", "somebody's");
    EXPECT_FALSE(deck.manager->saveSubset(copyPath(), 0, 3, 1, nullptr));
    EXPECT_EQ(log.text(), "ERROR HDF5 write: Could not clone simulation to new file.\n Couldn't copy " +
                              folder.path("Kiste_data/1.h5").toStdString() + " to " +
                              folder.path("copy_data/1.h5").toStdString() + "\n");
    EXPECT_EQ(folder.read("copy_data/1.h5"), "somebody's");
    EXPECT_EQ(dataFiles("copy"), QStringList("1.h5"));
}

TEST_F(Hdf5Change, makesNoSubsetOntoItself)
{
    load(0);
    const CSnapshot before = folder.snapshot();
    EXPECT_FALSE(deck.manager->saveSubset(path(), 0, 3, 2, nullptr));
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
}

// ---------------------------------------------------------------- save as

TEST_F(Hdf5Change, savesACopyUpToTheLoadedTimestep)
{
    load(2);
    deck.timestep().time = 0.35; // what the frame holds is what counts
    QDir().mkpath(folder.path("temp"));
    ASSERT_TRUE(deck.manager->saveCopyUpToCurrent(deck.frame(), deck.index, copyPath(), folder.path("temp/")))
        << log.text();
    EXPECT_EQ(storyOf(copyPath()), "0.1 A, 0.2 A, 0.35 B");
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
    EXPECT_EQ(deck.manager->fileName, copyPath());
    EXPECT_EQ(deck.index.size(), 3u);
    EXPECT_EQ(QDir(folder.path("temp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    EXPECT_TRUE(folder.has("copy.ess") && folder.has("copy.dfg"));
    EXPECT_TRUE(deck.append(0.5));
    EXPECT_EQ(storyOf(copyPath()), "0.1 A, 0.2 A, 0.35 B, 0.5 B");
}

TEST_F(Hdf5Change, savesOverItsOwnName)
{
    load(1);
    QDir().mkpath(folder.path("temp"));
    ASSERT_TRUE(deck.manager->saveCopyUpToCurrent(deck.frame(), deck.index, path(), folder.path("temp/")))
        << log.text();
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A");
}

TEST_F(Hdf5Change, keepsTheTargetWhenACopyCannotBeMade)
{
    load(2);
    makeDeck(copyPath(), {{7, "old"}});
    EXPECT_FALSE(deck.manager->saveCopyUpToCurrent(deck.frame(), deck.index, copyPath(), folder.path("no such/")));
    EXPECT_EQ(log.text(), "ERROR HDF5 write: Could not copy file\n    Source: " + path().toStdString() +
                              "\n    Destination " + folder.path("no such/copy.dem").toStdString() + "\n");
    EXPECT_EQ(storyOf(copyPath()), "7 old");
}

} // namespace NBrenmark
