// Which timesteps a deck has when it is opened, and what a reader does with them.
#include "io/hdf5/hdf5_deck_testing.h"

#include "support/h5_builder.h"
#include "support/h5_tree.h"
#include <H5Cpp.h>
#include <ostream>
#include <sys/file.h>

namespace NBrenmark {

using namespace NHdf5Testing;

class Hdf5Open : public testing::Test
{
protected:
    QString path() const { return folder.path("Kiste.dem"); }
    QString file(int number) const { return folder.path("Kiste_data/" + QString::number(number) + ".h5"); }
    void makeFour() { makeDeck(path(), {{0.1, "A"}, {0.2, "A"}, {0.3, "B"}, {0.4, "B"}}); }

    CTempFolder folder;
    CLogCapture log;
};

TEST_F(Hdf5Open, findsEveryTimestepAndItsModel)
{
    makeFour();
    const CSnapshot before = folder.snapshot();
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_EQ(deck.manager->timestepCount, 4u);
    EXPECT_EQ(deck.manager->firstVersion, makeVersion(30, 0, 20));
    EXPECT_EQ(deck.manager->edition, 1u);
    const qint32 creators[] = {0, 0, 2, 2}; // the number of the file that holds each model
    for (quint32 i = 0; i < 4; ++i) {
        EXPECT_EQ(deck.index[i].segment, i);
        EXPECT_EQ(deck.index[i].offset, 1u);
        EXPECT_TRUE(deck.index[i].isFull);
        EXPECT_EQ(deck.index[i].creatorIndex, creators[i]);
    }
    EXPECT_EQ(log.text(), "");
}

TEST_F(Hdf5Open, readsInAnyOrder)
{
    makeFour();
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    std::string story;
    for (const quint32 number : {3u, 0u, 2u, 1u, 1u}) {
        ASSERT_TRUE(deck.read(number));
        story += deck.creator().title.toStdString() + std::to_string(deck.creator().storageIndex()) + " ";
    }
    EXPECT_EQ(story, "B2 A0 B2 A0 A0 ");
    deck.timestep().timestepIndex = 2;
    EXPECT_TRUE(deck.manager->readTimestep(deck.frame(), deck.index, true, nullptr));
    EXPECT_FALSE(deck.read(4));
}

TEST_F(Hdf5Open, leavesAModelAloneThatItHolds)
{
    makeFour();
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    ASSERT_TRUE(deck.read(0));
    deck.manager->reset();
    CH5Builder(file(0), false).without("/CreatorData/0"); // no one may miss it
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_TRUE(deck.read(1));
    deck.creator().clear();
    EXPECT_FALSE(deck.read(1));
    EXPECT_FALSE(deck.read(1)) << "a model that couldn't be read is none";
}

TEST_F(Hdf5Open, readsBesideAnotherReaderButNotBesideAWriter)
{
    makeFour();
    QFile other(file(1));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    ASSERT_EQ(flock(other.handle(), LOCK_SH), 0);
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
    ASSERT_EQ(flock(other.handle(), LOCK_EX), 0);
    CHdf5Deck deck;
    EXPECT_EQ(deck.open(path()), eOpened);
    EXPECT_FALSE(deck.read(1));
    EXPECT_NE(log.text().find("is in use by another process"), std::string::npos) << log.text();
}

// ---------------------------------------------------------------- the folder wins

TEST_F(Hdf5Open, believesTheFolderAndNotTheHeader)
{
    makeFour();
    const int count = 2;
    CH5Builder(path(), false).attribute("/", "num timesteps", H5T_NATIVE_INT, &count);
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
    EXPECT_EQ(log.text(), "WARNING POSSIBLE DATA LOSS: 4 data files exist in folder \"" +
                              folder.path("Kiste_data/").toStdString() +
                              "\". Brenmark expected there to be 2 timestep data files.\n");
}

TEST_F(Hdf5Open, countsInTheSingularToo)
{
    makeDeck(path(), {{0.1, "A"}});
    const int count = 0;
    CH5Builder(path(), false).attribute("/", "num timesteps", H5T_NATIVE_INT, &count);
    EXPECT_EQ(storyOf(path()), "0.1 A");
    EXPECT_NE(log.text().find(": 1 data file exists in folder"), std::string::npos) << log.text();
    EXPECT_NE(log.text().find("expected there to be 0 timestep data file.\n"), std::string::npos) << log.text();
}

TEST_F(Hdf5Open, keepsTheNumbersAcrossAGap)
{
    makeFour();
    QFile::remove(file(1));
    EXPECT_EQ(storyOf(path()), "0.1 A, no file, 0.3 B, 0.4 B");
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_EQ(deck.manager->timestepCount, 4u);
    EXPECT_EQ(deck.index[1].time, 0.0);
    EXPECT_FALSE(deck.index[1].isFull);
    EXPECT_FALSE(deck.read(1)) << "a timestep without a file must not be another's";
}

TEST_F(Hdf5Open, sortsByNumberAndNotByName)
{
    std::vector<std::pair<double, QString>> timesteps;
    for (int i = 0; i < 12; ++i)
        timesteps.emplace_back(i, "A");
    makeDeck(path(), timesteps);
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_EQ(deck.index.size(), 12u);
    EXPECT_EQ(deck.index[11].time, 11.0);
    EXPECT_EQ(log.text(), "");
}

TEST_F(Hdf5Open, takesNothingElseForATimestep)
{
    makeFour();
    for (const char* name :
         {"5.h5.bak", "5.H5", "x5.h5", "007.h5", "-1.h5", "+5.h5", "3999999.h5", "4294967295.h5", ".h5", "5 .h5"})
        ASSERT_TRUE(QFile::copy(file(0), folder.path(QString("Kiste_data/") + name))) << name;
    QDir().mkpath(folder.path("Kiste_data/9.h5"));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
}

TEST_F(Hdf5Open, goesOnWithoutAFileThatIsNoHdf5)
{
    makeFour();
    folder.write("Kiste_data/1.h5", "nothing of the kind");
    EXPECT_EQ(storyOf(path()), "0.1 A, no file, 0.3 B, 0.4 B");
    EXPECT_NE(log.text().find("ERROR HDF5 read: Could not open file " + file(1).toStdString()), std::string::npos)
        << log.text();
}

// ---------------------------------------------------------------- what is refused

struct SRefusedDeck
{
    const char* name;
    int code;
    void (*spoil)(const CTempFolder& folder);
};

static std::ostream& operator<<(std::ostream& stream, const SRefusedDeck& c) { return stream << c.name; }

class RefusedDecks : public Hdf5Open, public testing::WithParamInterface<SRefusedDeck>
{
};

TEST_P(RefusedDecks, giveTheirCodeAndAText)
{
    makeFour();
    GetParam().spoil(folder);
    const CSnapshot before = folder.snapshot();
    CHdf5Deck deck;
    EXPECT_EQ(deck.open(path()), GetParam().code);
    EXPECT_NE(log.text().find("ERROR HDF5 read: Could not "), std::string::npos) << log.text();
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "") << "a missing file is no new one";
}

static const SRefusedDeck refusedDecks[] = {
    {"noMainFile", eOpenNoFile, [](const CTempFolder& f) { QFile::remove(f.path("Kiste.dem")); }},
    {"mainFileIsEmpty", eOpenNoFile, [](const CTempFolder& f) { f.write("Kiste.dem", ""); }},
    {"mainFileIsNoHdf5", eOpenNoFile, [](const CTempFolder& f) { f.write("Kiste.dem", QByteArray(4096, 'x')); }},
    {"mainFileIsCut", eOpenNoFile, [](const CTempFolder& f) { f.write("Kiste.dem", f.read("Kiste.dem").left(100)); }},
    {"anotherFormat", eOpenHeaderRefused,
     [](const CTempFolder& f) { CH5Builder(f.path("Kiste.dem"), false).count("/", "file format", 1); }},
    {"noEdition", eOpenHeaderRefused,
     [](const CTempFolder& f) { CH5Builder(f.path("Kiste.dem"), false).withoutAttribute("/", "edition"); }},
    {"noFolder", eOpenNoFile, [](const CTempFolder& f) { QDir(f.path("Kiste_data")).removeRecursively(); }},
    {"emptyFolder", eOpenNoFile,
     [](const CTempFolder& f) {
         QDir(f.path("Kiste_data")).removeRecursively();
         QDir().mkpath(f.path("Kiste_data"));
     }},
    {"noTimestepInAFile", eOpenNoFile,
     [](const CTempFolder& f) { CH5Builder(f.path("Kiste_data/1.h5"), false).without("/TimestepData/0.2"); }},
    {"twoTimestepsInAFile", eOpenNoFile,
     [](const CTempFolder& f) { CH5Builder(f.path("Kiste_data/1.h5"), false).group("/TimestepData/0.9"); }},
    {"noTime", eOpenNoFile,
     [](const CTempFolder& f) {
         CH5Builder(f.path("Kiste_data/1.h5"), false).withoutAttribute("/TimestepData/0.2", "time");
     }},
    {"noFirstTimestep", eOpenNoFile, [](const CTempFolder& f) { QFile::remove(f.path("Kiste_data/0.h5")); }},
};

INSTANTIATE_TEST_SUITE_P(All, RefusedDecks, testing::ValuesIn(refusedDecks),
                         [](const testing::TestParamInfo<SRefusedDeck>& tested) { return tested.param.name; });

TEST_F(Hdf5Open, readsALaterVersion)
{
    makeFour();
    CH5Builder(path(), false).count("/", "current file version", makeVersion(31, 2, 0));
    EXPECT_EQ(storyOf(path()), "0.1 A, 0.2 A, 0.3 B, 0.4 B");
}

TEST_F(Hdf5Open, forgetsTheDeckOnReset)
{
    makeFour();
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    ASSERT_TRUE(deck.read(0));
    deck.manager->reset();
    EXPECT_EQ(deck.manager->timestepCount, 0u);
    EXPECT_EQ(deck.manager->fileName, "");
    EXPECT_EQ(H5Fget_obj_count(hid_t(H5F_OBJ_ALL), H5F_OBJ_FILE), 0) << "a file stays open";
    EXPECT_FALSE(deck.read(0));
}

TEST_F(Hdf5Open, leavesNoObjectOpenInHdf5)
{
    makeFour();
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    for (quint32 i = 0; i < 4; ++i)
        ASSERT_TRUE(deck.read(i));
    EXPECT_EQ(H5Fget_obj_count(hid_t(H5F_OBJ_ALL), H5F_OBJ_GROUP | H5F_OBJ_DATASET | H5F_OBJ_ATTR), 0);
}

// ---------------------------------------------------------------- values that don't fit

TEST_F(Hdf5Open, fitsCustomPropertiesToTheirDefinition)
{
    {
        CHdf5Deck writer;
        finalizeProperty(*writer.simulation.settings->propertyManagers().particle, "Heat", {0.0});
        finalizeProperty(*writer.simulation.settings->propertyManagers().particle, "Age", {0.0});
        fillCreator(writer.creator());
        fillTimestep(writer.timestep(), 2);
        writer.timestep().particleTypes.types[0]->customProperties.list("Heat")->values = {5.0, 6.0};
        ASSERT_EQ(writer.manager->setOutputName(path()), 0);
        ASSERT_TRUE(writer.append(0.1, true));
    }
    CHdf5Deck reader; // its settings define one wider property and none after it
    finalizeProperty(*reader.simulation.settings->propertyManagers().particle, "Heat", {0.0, 0.0});
    ASSERT_EQ(reader.open(path()), eOpened);
    ASSERT_TRUE(reader.read(0));
    CCustomPropertyData& properties = reader.timestep().particleTypes.types[0]->customProperties;
    EXPECT_EQ(properties.list("Heat")->values, (std::vector<double>{5.0, 0.0, 6.0, 0.0}));
    EXPECT_NE(log.text().find("1 values an item in file for property: Heat, 2 expected"), std::string::npos)
        << log.text();
    EXPECT_NE(log.text().find("2 custom properties are stored where the settings define 1"), std::string::npos)
        << log.text();
}

TEST_F(Hdf5Open, doesNotMixArraysOfDifferentLengths)
{
    makeFour();
    const double three[9] = {};
    CH5Builder(file(1), false)
        .without("/TimestepData/0.2/ParticleTypes/0/velocity")
        .dataset("/TimestepData/0.2/ParticleTypes/0", "velocity", H5T_NATIVE_DOUBLE, {3, 3}, three);
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_FALSE(deck.read(1));
    EXPECT_NE(log.text().find("Particle type \"Ball\" has 2 rows of ids and 3 of velocity."), std::string::npos)
        << log.text();
}

TEST_F(Hdf5Open, believesTheArraysAndNotTheSize)
{
    makeFour();
    CH5Builder(file(1), false).count("/TimestepData/0.2/ParticleTypes/0", "size", 0xFFFFFFFFu);
    CHdf5Deck deck;
    ASSERT_EQ(deck.open(path()), eOpened);
    EXPECT_TRUE(deck.read(1));
    EXPECT_EQ(deck.timestep().particleTypes.types[0]->slotCount(), 2u);
    EXPECT_NE(log.text().find("announces 4294967295 particles and holds 2"), std::string::npos) << log.text();
}

} // namespace NBrenmark
