// Opening and reading legacy decks: headers, index forms, segments, what is missing or damaged. The
// files of a deck that is only read stay as they are.
#include "io/dem/dem_deck_testing.h"
#include "io/dem/dem_header.h"
#include "io/dem/dem_testing.h"

namespace NBrenmark {

// ---------------------------------------------------------------- headers

struct SHeaderCase
{
    const char* what;
    CBytes bytes;
    bool accepted;
    quint32 lastVersion;
    qint64 end; ///< where the first block stands
};

static CBytes words(std::initializer_list<quint32> values)
{
    CBytes bytes;
    for (const quint32 value : values)
        bytes.u32(value);
    return bytes;
}

TEST(DemHeader, hasTheFieldsOfItsCreatingVersion)
{
    const quint32 v2415 = makeVersion(2, 4, 15);
    const quint32 v2416 = makeVersion(2, 4, 16);
    const quint32 v2435 = makeVersion(2, 4, 35);
    const quint32 v2457 = makeVersion(2, 4, 57);
    const quint32 v2458 = makeVersion(2, 4, 58);
    const quint32 v27 = makeVersion(27, 0, 3);
    const quint32 now = makeVersion(30, 0, 20);
    const SHeaderCase cases[] = {
        {"2.4.15: version and count", words({v2415, 4}), true, v2415, 8},
        {"2.4.16: four words more, whose flag doesn't matter", words({v2416, 4, 9, 0, 0, 0}), true, v2416, 24},
        {"2.4.35: the edition", words({v2435, 4, 0, 0, 0, 0, 1}), true, v2435, 28},
        {"2.4.57: no last version yet", words({v2457, 4, 0, 0, 0, 0, 1}), true, v2457, 28},
        {"2.4.58: the last version", words({v2458, v27, 4, 0, 0, 0, 0, 1}), true, v27, 32},
        {"current", words({now, now, 4, 0, 0, 0, 0, 1}), true, now, 32},
        {"written by a later one", words({v27, now + 1, 4, 0, 0, 0, 0, 1}), false, now + 1, 32},
        {"no version", words({0, 0, 4, 0, 0, 0, 0, 1}), false, 0, 8},
        {"24.0.0 with any flag", words({v2458, makeVersion(24, 0, 0), 4, 7, 0, 0, 0, 1}), true, makeVersion(24, 0, 0),
         32},
        {"24.0.1", words({v2458, makeVersion(24, 0, 1), 4, 0, 0, 0, 0, 1}), false, makeVersion(24, 0, 1), 32},
        {"24.0.24", words({v2458, makeVersion(24, 0, 24), 4, 0, 0, 0, 0, 1}), false, makeVersion(24, 0, 24), 32},
        {"24.0.25", words({v2458, makeVersion(24, 0, 25), 4, 0, 0, 0, 0, 1}), true, makeVersion(24, 0, 25), 32},
        {"24.0.25 with the flag", words({v2458, makeVersion(24, 0, 25), 4, 7, 0, 0, 0, 1}), false,
         makeVersion(24, 0, 25), 32},
        {"cut in the edition", words({v27, v27, 4, 0, 0, 0, 0}) + CBytes().i8(0).i8(0), false, v27, 30},
        {"empty", CBytes(), false, 0, 0},
    };
    for (const SHeaderCase& c : cases) {
        QBuffer buffer;
        buffer.setData(c.bytes.bytes() + (c.accepted ? CBytes::garbage(20).bytes() : QByteArray()));
        buffer.open(QIODevice::ReadOnly);
        SDemHeader header;
        EXPECT_EQ(header.read(buffer) && header.isAcceptable(), c.accepted) << c.what;
        EXPECT_EQ(header.lastVersion, c.lastVersion) << c.what;
        EXPECT_EQ(buffer.pos(), c.end) << c.what;
        if (c.accepted) {
            EXPECT_EQ(header.timesteps, 4u) << c.what;
            EXPECT_EQ(header.edition, 1u) << c.what;
        }
    }
}

TEST(DemHeader, everyPrefixIsRefused)
{
    const QByteArray whole = sampleDeckOf(makeVersion(27, 0, 3)).header().bytes();
    for (int cut = 0; cut < whole.size(); ++cut) {
        QBuffer buffer;
        buffer.setData(whole.left(cut));
        buffer.open(QIODevice::ReadOnly);
        EXPECT_FALSE(SDemHeader().read(buffer)) << cut;
    }
}

// ---------------------------------------------------------------- opening

TEST(DemManager, readsTheIndexInItsThreeForms)
{
    struct SFormCase
    {
        quint32 lastVersion;
        qint64 entryBytes;
        bool storesFullFlag;
    };
    const SFormCase cases[] = {
        {makeVersion(3, 0, 16), 16, false},   {makeVersion(20, 0, 21), 16, false}, {makeVersion(20, 0, 22), 20, false},
        {makeVersion(21, 255, 0), 20, false}, {makeVersion(22, 0, 0), 24, true},   {makeVersion(27, 0, 3), 24, true},
    };
    for (const SFormCase& c : cases) {
        const std::string name = versionText(c.lastVersion).toStdString();
        SDeckTimestep partial = sampleTimestep(0.2);
        partial.isFull = 0;
        CLegacyDeck built(makeVersion(20, 0, 16));
        built.lastVersion = c.lastVersion;
        built.creator(sampleCreator()).timestep(sampleTimestep(0.1)).timestep(partial);
        EXPECT_EQ(built.index().size(), 4 + 2 * c.entryBytes);
        const CTempFolder folder;
        const QString path = built.write(folder.path(), "deck");
        CManagedDeck deck;
        ASSERT_EQ(deck.open(path), eOpened) << name;
        EXPECT_EQ(deck.manager->timestepCount, 2u);
        EXPECT_EQ(deck.manager->lastVersion, c.lastVersion);
        ASSERT_EQ(deck.index.size(), 2u);
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(deck.index[i].time, i == 0 ? 0.1 : 0.2) << name;
            EXPECT_EQ(deck.index[i].segment, 0u);
            EXPECT_EQ(deck.index[i].offset, built.timestepPlaces()[i].offset) << name;
            EXPECT_EQ(deck.index[i].isFull, i == 0 || !c.storesFullFlag) << name;
            EXPECT_TRUE(deck.read(static_cast<quint32>(i))) << name;
        }
    }
}

TEST(DemManager, reportsWhyADeckCantBeOpened)
{
    const CLegacyDeck built = sampleDeckOf(makeVersion(27, 0, 3));
    CLegacyDeck announcesMore = built;
    announcesMore.announcedTimesteps = 4;
    CLegacyDeck announcesAll = built;
    announcesAll.announcedTimesteps = 0x7FFFFFFF;
    struct SOpenCase
    {
        const char* what;
        CBytes data;
        CBytes index;
        int code;
        const char* file; ///< that the log names
    };
    const SOpenCase cases[] = {
        {"empty data file", CBytes(), built.index(), eOpenHeaderRefused, "deck.dem"},
        {"seven bytes", built.segment(0).first(7), built.index(), eOpenHeaderRefused, "deck.dem"},
        {"no header", CBytes::garbage(1000), built.index(), eOpenHeaderRefused, "deck.dem"},
        {"header with another count", announcesMore.segment(0), built.index(), eOpenIndexUnreadable, "deck.idx"},
        {"a count of 0x7FFFFFFF in both", announcesAll.segment(0), built.index().with(0, CBytes().i32(0x7FFFFFFF)),
         eOpenIndexUnreadable, "deck.idx"},
        {"empty index", built.segment(0), CBytes(), eOpenIndexUnreadable, "deck.idx"},
        {"index cut by a byte", built.segment(0), built.index().first(built.index().size() - 1), eOpenIndexUnreadable,
         "deck.idx"},
    };
    for (const SOpenCase& c : cases) {
        const CTempFolder folder;
        const QString path = folder.write("deck.dem", c.data.bytes());
        folder.write("deck.idx", c.index.bytes());
        const CSnapshot before = folder.snapshot();
        const CLogCapture log;
        CManagedDeck deck;
        EXPECT_EQ(deck.open(path), c.code) << c.what;
        EXPECT_NE(log.text().find(c.file), std::string::npos) << c.what << '\n' << log.text();
        EXPECT_EQ(before.changesUntil(folder.snapshot()), "") << c.what;
    }
    const CTempFolder folder;
    const CLogCapture log;
    CManagedDeck deck;
    EXPECT_EQ(deck.open(folder.path("missing.dem")), eOpenNoFile);
    folder.write("alone.dem", built.segment(0).bytes());
    EXPECT_EQ(deck.open(folder.path("alone.dem")), eOpenIndexUnreadable);
    EXPECT_EQ(folder.names(), QStringList{"alone.dem"}) << "nothing is created";
    EXPECT_EQ(log.count(), 2u);
}

// ---------------------------------------------------------------- reading

TEST(DemManager, readsEveryTimestepInAnyOrderAndTouchesNothing)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    for (const QString& name : folder.names())
        QFile::setPermissions(folder.path(name), QFileDevice::ReadOwner);
    const CSnapshot before = folder.snapshot();
    EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C");
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    for (const auto& [timestep, title] : {std::pair(4u, "C"), {0u, "A"}, {3u, "B"}, {2u, "B"}, {1u, "A"}}) {
        EXPECT_TRUE(deck.read(timestep));
        EXPECT_EQ(deck.frame().creator.title, title);
        EXPECT_EQ(deck.frame().creator.storageIndex(), timestep / 2);
    }
    EXPECT_FALSE(deck.read(5));
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
    for (const QString& name : folder.names())
        QFile::setPermissions(folder.path(name), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST(DemManager, readsTheModelOnceForAllItsTimesteps)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    ASSERT_TRUE(deck.read(0));
    deck.frame().creator.title = "left alone";
    EXPECT_TRUE(deck.read(1));
    EXPECT_EQ(deck.frame().creator.title, "left alone");
    EXPECT_TRUE(deck.manager->readCreatorData(deck.frame()));
    EXPECT_EQ(deck.frame().creator.title, "A");
}

TEST(DemManager, readsTheOlderNameWithAShortOffset)
{
    SDeckTimestep old = sampleTimestep(0.1);
    old.shortOffset = true;
    CLegacyDeck built(makeVersion(20, 0, 16));
    built.creator(sampleCreator()).timestep(old).timestep(sampleTimestep(0.2));
    const CTempFolder folder;
    EXPECT_EQ(storyOf(built.write(folder.path(), "deck")), "0.1 Kiste, 0.2 Kiste");
}

TEST(DemManager, aMissingSegmentIsAnErrorAndNotANewFile)
{
    const CTempFolder folder;
    const QString path = segmentedDeck().write(folder.path(), "deck");
    QFile::remove(path + ".scn.1");
    CManagedDeck deck;
    ASSERT_EQ(deck.open(path), eOpened);
    const CLogCapture log;
    EXPECT_TRUE(deck.read(1));
    EXPECT_FALSE(deck.read(2));
    EXPECT_NE(log.text().find("deck.dem.scn.1"), std::string::npos) << log.text();
    EXPECT_FALSE(folder.has("deck.dem.scn.1"));
    EXPECT_TRUE(deck.read(4));
    EXPECT_TRUE(deck.read(0));
}

TEST(DemManager, reportsFileTimestepAndByteOfDamage)
{
    const CLegacyDeck built = sampleDeckOf(makeVersion(27, 0, 3));
    const CTempFolder folder;
    const auto thirdAt = static_cast<qint64>(built.timestepPlaces()[2].offset);
    folder.write("deck.idx", built.index().bytes());
    struct SDamageCase
    {
        const char* what;
        CBytes data;
        quint32 timestep;
        std::string message;
        bool modelIsRead = false;
    };
    const auto creatorAt = static_cast<qint64>(built.creatorPlaces()[0].offset);
    const SDamageCase cases[] = {
        {"cut in the name", built.segment(0).first(thirdAt + 9), 2,
         "deck.dem, timestep 2: byte " + std::to_string(thirdAt + 4) + ": text announced (42 bytes), 5 bytes follow"},
        {"cut in the data", built.segment(0).first(built.segment(0).size() - 1), 2,
         "deck.dem, timestep 2: byte " + std::to_string(built.segment(0).size() - 1) + ": number ended early", true},
        {"another block in its place", built.segment(0).with(thirdAt, CBytes().text("class CGenericDatum")), 2,
         "deck.dem, timestep 2: byte " + std::to_string(thirdAt) + " holds something else: \"class CGenericDatum\""},
        {"a count in the model",
         built.segment(0).with(creatorAt + 4 + 38 + stampBytes(built.version, {}).size() + 24 + 60,
                               CBytes().i32(0x7FFFFFFF)),
         0, "deck.dem, creator data: byte "},
    };
    for (const SDamageCase& c : cases) {
        const QString path = folder.write("deck.dem", c.data.bytes());
        CManagedDeck deck;
        ASSERT_EQ(deck.open(path), eOpened) << c.what;
        const CLogCapture log;
        EXPECT_FALSE(deck.read(c.timestep)) << c.what;
        EXPECT_NE(log.text().find("ERROR Legacy read: " + c.message), std::string::npos) << c.what << '\n'
                                                                                         << log.text();
        EXPECT_EQ(deck.frame().creator.storageIndex() != CCreatorData::noStorageIndex, c.modelIsRead)
            << c.what << ": half a model is no model";
    }
}

// ---------------------------------------------------------------- a lost index

TEST(DemManager, rebuildsALostIndex)
{
    for (const quint32 version : {makeVersion(22, 0, 0), makeVersion(27, 0, 3)}) {
        CLegacyDeck built = segmentedDeck(version);
        const CBytes expected = built.index();
        built.creator(sampleCreator()); // no timestep came after it
        const CTempFolder folder;
        const QString path = built.write(folder.path(), "deck");
        QFile::remove(folder.path("deck.idx"));
        const CSnapshot before = folder.snapshot();
        CManagedDeck deck;
        EXPECT_EQ(deck.open(path), eOpenIndexUnreadable);
        EXPECT_EQ(deck.open(path, true), eOpened);
        EXPECT_EQ(deck.index.size(), 5u);
        EXPECT_EQ(firstDifference(expected, CBytes(folder.read("deck.idx"))), "");
        EXPECT_EQ(before.changesUntil(folder.snapshot()), "deck.idx is new\n");
        EXPECT_EQ(storyOf(path), "0.1 A, 0.2 A, 0.3 B, 0.4 B, 0.5 C");
    }
}

TEST(DemManager, rebuildsNothingOutOfDamage)
{
    const CLegacyDeck built = segmentedDeck();
    const CTempFolder folder;
    const QString path = built.write(folder.path(), "deck");
    folder.write("deck.dem.scn.2", built.segment(2).bytes() + QByteArray("\0\0\0\2\0x", 6));
    CManagedDeck deck;
    const CLogCapture log;
    EXPECT_EQ(deck.open(path, true), eOpenIndexNotRebuilt);
    EXPECT_FALSE(folder.has("deck.idx"));
    EXPECT_NE(log.text().find("deck.dem.scn.2: no block at byte " + std::to_string(built.segment(2).size())),
              std::string::npos)
        << log.text();
}

} // namespace NBrenmark
