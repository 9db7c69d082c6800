// Operations that change, copy and create legacy decks, on decks of several segments and models.
#include "io/dem/dem_deck_testing.h"
#include "support/counting_progress.h"
#include "support/full_disk.h"

#include <QDataStream>

namespace NBrenmark {

/// The deck's header, word by word.
static std::vector<quint32> headerOf(const CTempFolder& folder, const QString& name)
{
    std::vector<quint32> words;
    const QByteArray bytes = folder.read(name).left(32);
    QDataStream stream(bytes);
    for (int i = 0; i < 8; ++i) {
        quint32 word = 0;
        stream >> word;
        words.push_back(word);
    }
    return words;
}

// ---------------------------------------------------------------- appending

TEST(DemAppend, goesOnWhereTheDeckEnds)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    const CSnapshot before = folder.snapshot();
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    ASSERT_TRUE(deck.read(4));
    EXPECT_TRUE(deck.append(0.6));
    deck.frame().creator.title = "D";
    EXPECT_TRUE(deck.append(0.7, true));
    EXPECT_TRUE(deck.append(0.8));
    EXPECT_EQ(deck.manager->timestepCount, 8u);
    EXPECT_EQ(before.changesUntil(folder.snapshot()).find("is new"), std::string::npos);
    EXPECT_EQ(headerOf(folder, "deck.dem"),
              (std::vector<quint32>{makeVersion(27, 0, 3), makeVersion(30, 0, 20), 8, 0, 0, 0, 0, 1}));
    EXPECT_EQ(folder.read("deck.idx").size(), 4 + 8 * 24);
    EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C, 0.6 C, 0.7 D, 0.8 D");
    // The manager that appended reads as well as a new one.
    EXPECT_TRUE(deck.read(2));
    EXPECT_EQ(deck.frame().creator.title, "B");
}

TEST(DemAppend, writesTheModelWhenItMust)
{
    struct SModelCase
    {
        const char* what;
        bool changed;
        bool pending;
        bool modified;
        quint32 expected; ///< segment of the model after the append
    };
    const SModelCase cases[] = {
        {"nothing changed", false, false, false, 0},
        {"the caller says so", true, false, false, 1},
        {"a cut took it", false, true, false, 1},
        {"it was edited", false, false, true, 1},
    };
    for (const SModelCase& c : cases) {
        const CTempFolder folder;
        const QString path = segmentedDeck().write(folder.path(), "deck");
        CManagedDeck deck(1); // every block opens a segment
        ASSERT_EQ(deck.open(path), eOpened);
        ASSERT_TRUE(deck.read(0));
        EXPECT_FALSE(deck.frame().creator.modified) << "no one changed it since it was read";
        deck.manager->creatorRewritePending = c.pending;
        deck.frame().creator.modified = c.modified;
        EXPECT_TRUE(deck.append(0.6, c.changed)) << c.what;
        EXPECT_EQ(deck.frame().creator.storageIndex(), c.expected == 0 ? 0u : 3u) << c.what;
        EXPECT_FALSE(deck.manager->creatorRewritePending || deck.frame().creator.modified) << c.what;
        EXPECT_EQ(deck.index.back().segment, 3u);
        EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C, 0.6 A") << c.what;
    }
}

TEST(DemAppend, opensASegmentWhenTheLastIsFull)
{
    const CLegacyDeck built = sampleDeckOf(makeVersion(27, 0, 3));
    const qint64 size = built.segment(0).size();
    // Exactly as long as the limit counts as full; a byte less takes one more block, however long.
    for (const auto& [limit, segment] : {std::pair(size, 1u), {size + 1, 0u}}) {
        const CTempFolder folder;
        const QString path = built.write(folder.path(), "deck");
        CManagedDeck deck(limit);
        ASSERT_EQ(deck.open(path), eOpened);
        ASSERT_TRUE(deck.read(2));
        EXPECT_TRUE(deck.append(0.4));
        EXPECT_EQ(deck.index.back().segment, segment);
        EXPECT_EQ(deck.index.back().offset, segment == 1 ? 0u : static_cast<quint64>(size));
        EXPECT_EQ(folder.has("deck.dem.scn.1"), segment == 1);
        EXPECT_EQ(storyOf(path), "0.1 Kiste, 0.2 Kiste, 0.3 Kiste, 0.4 Kiste");
    }
}

TEST(DemAppend, bringsAnOldIndexIntoTodaysForm)
{
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(20, 0, 22)}) {
        const CTempFolder folder;
        const QString path = segmentedDeck(version).write(folder.path(), "deck");
        CManagedDeck deck;
        ASSERT_EQ(deck.open(path), eOpened);
        ASSERT_TRUE(deck.read(4));
        EXPECT_TRUE(deck.append(0.6));
        EXPECT_EQ(folder.read("deck.idx").size(), 4 + 6 * 24);
        EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C, 0.6 C");
    }
}

TEST(DemAppend, fillsADeckFromNothing)
{
    const CTempFolder folder;
    const QString source = segmentedDeck().write(folder.path(), "source");
    CManagedDeck reader;
    ASSERT_EQ(reader.open(source), eOpened);
    ASSERT_TRUE(reader.read(0));
    CManagedDeck writer;
    EXPECT_EQ(writer.manager->setOutputName(folder.path("new.dem")), 0);
    TimestepIndex index(1);
    index[0].time = 0.1;
    EXPECT_TRUE(writer.manager->appendTimestep(reader.frame(), index, true, true));
    EXPECT_EQ(storyOf(folder.path("new.dem")), "0.1 A");
}

TEST(DemAppend, refusesADeckWhoseHeaderIsShort)
{
    // Created by 2.4.57, its header ends where the eighth word of ours would be.
    CLegacyDeck built = sampleDeckOf(makeVersion(27, 0, 3));
    const CBytes shortHeader = CBytes().u32(makeVersion(2, 4, 57)).i32(3).u32(0).u32(0).u32(0).u32(0).u32(1);
    const CTempFolder folder;
    const QString path = folder.write("deck.dem", (shortHeader + built.segment(0).from(32)).bytes());
    CBytes index = CBytes().i32(3);
    for (const SDeckPlace& place : built.timestepPlaces())
        index.f64(0.0).u32(0).u32(static_cast<quint32>(place.offset - 4));
    folder.write("deck.idx", index.bytes());
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    const CSnapshot before = folder.snapshot();
    EXPECT_FALSE(deck.append(0.6));
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
}

TEST(DemAppend, aFullDiskIsAFailureWithFileAndCause)
{
    const CTempFolder folder;
    const QString path = sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "deck");
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    ASSERT_TRUE(deck.read(2));
    const qint64 size = QFileInfo(path).size();
    // From no room at all to all but the last bytes of the block.
    for (const qint64 room : {0, 1, 100, 5000}) {
        const CLogCapture log;
        {
            const CFullDisk disk(static_cast<rlim_t>(size + room));
            EXPECT_FALSE(deck.append(0.4)) << room;
        }
        EXPECT_NE(log.text().find("ERROR Legacy write: "), std::string::npos) << room << log.text();
        EXPECT_NE(log.text().find("deck.dem"), std::string::npos) << log.text();
        deck.index.pop_back();
        EXPECT_EQ(deck.manager->timestepCount, 3u);
    }
    EXPECT_EQ(storyOf(path), "0.1 Kiste, 0.2 Kiste, 0.3 Kiste");
}

// ---------------------------------------------------------------- cutting

TEST(DemTruncate, cutsBehindOrBeforeTheCurrentTimestep)
{
    struct SCutCase
    {
        quint32 current;
        bool discard;
        const char* story;
        const char* files; ///< beside name.dem and name.idx
        bool modelIsDue;
        const char* appended; ///< the story with one more timestep
    };
    const SCutCase cases[] = {
        {4, false, "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C", "deck.dem.scn.1 deck.dem.scn.2", false,
         "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C, 0.9 C"},
        {3, false, "0.1 A, 0.2 A, 0.3 B, 0.4 B", "deck.dem.scn.1 deck.dem.scn.2", false,
         "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.9 B"},
        {4, true, "0.1 A, 0.2 A, 0.3 B, 0.4 B", "deck.dem.scn.1", true, "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.9 C"},
        {3, true, "0.1 A, 0.2 A, 0.3 B", "deck.dem.scn.1", false, "0.1 A, 0.2 A, 0.3 B, 0.9 B"},
        {2, true, "0.1 A, 0.2 A", "", true, "0.1 A, 0.2 A, 0.9 B"},
        {0, false, "0.1 A", "", false, "0.1 A, 0.9 A"},
        {0, true, "", "", true, "0.9 A"},
    };
    for (const SCutCase& c : cases) {
        const CTempFolder folder;
        const QString path = segmentedDeck().write(folder.path(), "deck");
        CManagedDeck deck;
        ASSERT_EQ(deck.open(path), eOpened);
        ASSERT_TRUE(deck.read(c.current));
        EXPECT_TRUE(deck.manager->truncateAfterCurrent(deck.frame(), deck.index, c.discard));
        EXPECT_EQ(storyOf(path), c.story) << c.current << c.discard;
        QStringList files = folder.names();
        files.removeAll("deck.dem");
        files.removeAll("deck.idx");
        EXPECT_EQ(files.join(' ').toStdString(), c.files) << c.current << c.discard;
        EXPECT_EQ(deck.manager->creatorRewritePending, c.modelIsDue) << c.current << c.discard;
        EXPECT_TRUE(deck.append(0.9));
        EXPECT_EQ(storyOf(path), c.appended) << c.current << c.discard;
    }
}

// ---------------------------------------------------------------- copying

TEST(DemCopy, savesTheDeckUpToTheCurrentTimestep)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    folder.write("copy.dem", "a deck that is to be replaced");
    folder.write("copy.dem.scn.7", "and its segment");
    folder.write("temp.ess", "settings"); // what a host lays beside the copy
    folder.write("temp.dfg", "configuration");
    const CSnapshot before = folder.snapshot();
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    ASSERT_TRUE(deck.read(3));
    deck.frame().creator.title = "B, edited";
    EXPECT_TRUE(
        deck.manager->saveCopyUpToCurrent(deck.frame(), deck.index, folder.path("copy.dem"), folder.path("temp")));
    EXPECT_EQ(storyOf(folder.path("copy.dem")), "0.1 A, 0.2 A, 0.3 B, 0.4 B, edited");
    EXPECT_EQ(folder.names(), (QStringList{"copy.dem", "copy.dem.scn.1", "copy.dfg", "copy.ess", "copy.idx", "deck.dem",
                                           "deck.dem.scn.1", "deck.dem.scn.2", "deck.idx"}));
    EXPECT_EQ(before.changesUntil(folder.snapshot()).find("deck."), std::string::npos);
    // The manager holds the copy now.
    EXPECT_EQ(deck.manager->fileName, folder.path("copy.dem"));
    EXPECT_TRUE(deck.append(0.9));
    EXPECT_EQ(storyOf(folder.path("copy.dem")), "0.1 A, 0.2 A, 0.3 B, 0.4 B, edited, 0.9 B, edited");
    EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C");
}

TEST(DemCopy, savesEveryOtherTimestepAndAlwaysTheLast)
{
    struct SSubsetCase
    {
        quint32 first;
        quint32 last;
        quint32 stride;
        qint64 segmentLimit;
        const char* story;
        int segments;
    };
    const qint64 none = CDemIoManager::fullSegment;
    const SSubsetCase cases[] = {
        {0, 4, 1, none, "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C", 0},
        {0, 4, 2, none, "0.1 A, 0.3 B, 0.5 C", 0},
        {0, 4, 3, none, "0.1 A, 0.4 B, 0.5 C", 0},
        {1, 3, 5, none, "0.2 A, 0.4 B", 0},
        {2, 2, 1, none, "0.3 B", 0},
        {0, 4, 1, 40, "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C", 4}, // a segment for each, its model in it
    };
    for (const SSubsetCase& c : cases) {
        const CTempFolder folder;
        const QString path = segmentedDeck().write(folder.path(), "deck");
        CManagedDeck deck(c.segmentLimit);
        ASSERT_EQ(deck.simulation.load(path), eLoaded);
        ASSERT_EQ(deck.open(path), eOpened);
        CCountingProgress progress;
        deck.manager->writeOptions.fullSave = false;
        EXPECT_TRUE(deck.manager->saveSubset(folder.path("part.dem"), c.first, c.last, c.stride, &progress));
        EXPECT_EQ(storyOf(folder.path("part.dem")), c.story);
        EXPECT_EQ(folder.names().filter("part.dem.scn").size(), c.segments);
        EXPECT_EQ(static_cast<quint32>(progress.ticks), headerOf(folder, "part.dem")[2] + 1);
        EXPECT_FALSE(deck.manager->writeOptions.fullSave) << "the options are given back";
    }
}

TEST(DemCopy, aCancelledSubsetIsAFailure)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    CManagedDeck deck;
    ASSERT_EQ(deck.simulation.load(path), eLoaded);
    ASSERT_EQ(deck.open(path), eOpened);
    for (const int cancelAt : {0, 2, 6}) {
        CCountingProgress progress(cancelAt);
        EXPECT_FALSE(deck.manager->saveSubset(folder.path("part.dem"), 0, 4, 1, &progress));
        EXPECT_EQ(progress.ticks, cancelAt);
    }
    EXPECT_FALSE(deck.manager->saveSubset(folder.path("part.dem"), 0, 4, 0, nullptr)) << "a stride of nothing";
}

// ---------------------------------------------------------------- creating

TEST(DemCreate, makesADeckOfOneTimestep)
{
    for (const bool switchToNew : {false, true}) {
        const CTempFolder folder;
        const QString path = segmentedDeck().write(folder.path(), "deck");
        CManagedDeck deck;
        ASSERT_EQ(deck.open(path), eOpened);
        ASSERT_TRUE(deck.read(4));
        deck.manager->writeOptions.overrideTime = true;
        deck.manager->writeOptions.timeOverride = 7.5;
        const QString newPath = folder.path("new.dem");
        EXPECT_TRUE(deck.manager->createSimulation(newPath, deck.frame(), switchToNew, deck.index));
        EXPECT_EQ(storyOf(newPath), "7.5 C");
        EXPECT_EQ(headerOf(folder, "new.dem"),
                  (std::vector<quint32>{makeVersion(30, 0, 20), makeVersion(30, 0, 20), 1, 0, 0, 0, 0, 1}));
        EXPECT_EQ(deck.manager->fileName, switchToNew ? newPath : path);
        EXPECT_EQ(deck.index.size(), switchToNew ? 1u : 5u);
        EXPECT_TRUE(deck.append(8.5)) << "the time stands in once";
        EXPECT_EQ(storyOf(switchToNew ? newPath : path),
                  switchToNew ? "7.5 C, 8.5 C" : "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C, 8.5 C");
    }
}

TEST(DemCreate, leavesNothingBehindInAFolderThatIsntThere)
{
    const CTempFolder folder;
    CManagedDeck deck;
    const CLogCapture log;
    EXPECT_FALSE(deck.manager->createSimulation(folder.path("missing/new.dem"), deck.frame(), true, deck.index));
    EXPECT_NE(log.text().find("missing/new.dem: No such file"), std::string::npos) << log.text();
    EXPECT_EQ(folder.names(), QStringList());
}

} // namespace NBrenmark
