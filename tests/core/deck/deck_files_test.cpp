#include "core/deck/deck_files.h"

#include "core/version.h"
#include "support/full_disk.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <sys/resource.h>

namespace NBrenmark {

static QByteArray words(std::initializer_list<quint32> values)
{
    QByteArray bytes;
    for (const quint32 value : values) {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.append(static_cast<char>(value >> shift));
    }
    return bytes;
}

/// A file of so many bytes, each of which says where it was.
static QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251);
    return bytes;
}

// ---------------------------------------------------------------- formats

struct SHeaderCase
{
    const char* what;
    QByteArray bytes;
    EDeckFormat format;
};

// In file order: version, last version, timesteps, the reserved flag, three words, edition.
const SHeaderCase headerCases[] = {
    {"signature of HDF5", QByteArray("\x89HDF\r\n\x1a\nand more", 16), eFormatHdf5},
    {"signature cut by a byte", QByteArray("\x89HDF\r\n\x1a", 7), eFormatUnknown},
    {"signature mangled by a text transfer", QByteArray("\x89HDF\n\n\x1a\n", 8), eFormatUnknown},
    {"empty", QByteArray(), eFormatUnknown},
    {"seven bytes", QByteArray(7, '\x02'), eFormatUnknown},
    {"zeros", QByteArray(64, '\0'), eFormatUnknown},
    {"below 2.0.0", words({makeVersion(1, 255, 255), 4, 0, 0, 0, 0, 1}), eFormatUnknown},
    {"2.0.0: version, timesteps", words({makeVersion(2, 0, 0), 4}), eFormatLegacy},
    {"2.4.15: nothing after the timesteps is read", words({makeVersion(2, 4, 15), 4, 7, 7, 7, 7, 7}), eFormatLegacy},
    {"2.4.15 without a timestep", words({makeVersion(2, 4, 15), 0, 4, 4}), eFormatUnknown},
    {"2.4.16: the flag, whatever it holds", words({makeVersion(2, 4, 16), 4, 9, 0, 0, 0}), eFormatLegacy},
    {"2.4.34: no edition yet", words({makeVersion(2, 4, 34), 4, 0, 0, 0, 0, 5}), eFormatLegacy},
    {"2.4.35: the greatest edition", words({makeVersion(2, 4, 35), 4, 0, 0, 0, 0, 4}), eFormatLegacy},
    {"2.4.35: an edition too far", words({makeVersion(2, 4, 35), 4, 0, 0, 0, 0, 5}), eFormatUnknown},
    {"2.4.57: no last version yet", words({makeVersion(2, 4, 57), 4, 0, 0, 0, 0, 1}), eFormatLegacy},
    {"2.4.57 without a timestep", words({makeVersion(2, 4, 57), 0, 4, 0, 0, 0, 1}), eFormatUnknown},
    {"2.4.58: the last version", words({makeVersion(2, 4, 58), makeVersion(2, 4, 58), 4, 0, 0, 0, 0, 1}),
     eFormatLegacy},
    {"2.4.58 without a timestep", words({makeVersion(2, 4, 58), makeVersion(2, 4, 58), 0, 1, 0, 0, 0, 1}),
     eFormatUnknown},
    {"flag set, last version 24.0.24", words({makeVersion(20, 0, 0), makeVersion(24, 0, 24), 4, 1, 0, 0, 0, 1}),
     eFormatLegacy},
    {"flag set, last version 24.0.25", words({makeVersion(20, 0, 0), makeVersion(24, 0, 25), 4, 1, 0, 0, 0, 1}),
     eFormatUnknown},
    {"flag set, but the first version is the later one",
     words({makeVersion(27, 0, 3), makeVersion(24, 0, 0), 4, 1, 0, 0, 0, 1}), eFormatLegacy},
    {"the other three words don't matter", words({makeVersion(27, 0, 3), makeVersion(27, 0, 3), 4, 0, 1, 2, 3, 1}),
     eFormatLegacy},
    {"old numbering", words({makeVersion(3, 0, 15), makeVersion(3, 0, 15), 4, 0, 0, 0, 0, 1}), eFormatLegacy},
    {"29.255.255", words({makeVersion(29, 255, 255), makeVersion(29, 255, 255), 1, 0, 0, 0, 0, 1}), eFormatLegacy},
    {"30.0.0", words({makeVersion(30, 0, 0), makeVersion(30, 0, 0), 4, 0, 0, 0, 0, 1}), eFormatUnknown},
    {"the version of the current family", words({makeVersion(30, 0, 20), makeVersion(30, 0, 20), 4, 0, 0, 0, 0, 1}),
     eFormatUnknown},
    {"ends after the timesteps: zeros stand for the rest", words({makeVersion(27, 0, 3), makeVersion(27, 0, 3), 4}),
     eFormatLegacy},
    {"ends before the timesteps", words({makeVersion(27, 0, 3), makeVersion(27, 0, 3)}), eFormatUnknown},
};

TEST(DetectFormat, goesByTheFirstBytes)
{
    const CTempFolder folder;
    for (const SHeaderCase& c : headerCases)
        EXPECT_EQ(detectFormat(folder.write("header.dem", c.bytes)), c.format) << c.what;
}

TEST(DetectFormat, isUnknownWhereNothingCanBeRead)
{
    const CTempFolder folder;
    EXPECT_EQ(detectFormat(folder.path("missing.dem")), eFormatUnknown);
    EXPECT_EQ(detectFormat(folder.path()), eFormatUnknown);
    EXPECT_EQ(detectFormat("/dev/zero"), eFormatUnknown);
}

TEST(DetectFormat, saysWhyAFileCouldNotBeLookedInto)
{
    const CTempFolder folder;
    const QString deck = folder.write("a.dem", words({makeVersion(2, 0, 0), 4}));
    std::string cause;
    EXPECT_EQ(detectFormat(folder.write("b.dem", "no deck"), &cause), eFormatUnknown);
    EXPECT_EQ(cause, "");
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_EQ(detectFormat(deck, &cause), eFormatUnknown);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(cause, "Too many open files");
}

TEST(CheckSourceFiles, wantsAnIndexBesideALegacyDeckOnly)
{
    const CTempFolder folder;
    const QByteArray legacy = words({makeVersion(27, 0, 3), makeVersion(27, 0, 3), 4, 0, 0, 0, 0, 1});
    const QString deck = folder.write("a.dem", legacy);
    EXPECT_EQ(checkSourceFiles(deck, false), 2);
    EXPECT_EQ(checkSourceFiles(deck, true), 0);
    folder.write("a.idx", "");
    EXPECT_EQ(checkSourceFiles(deck, false), 0);
    // A segment's index is the deck's.
    EXPECT_EQ(checkSourceFiles(folder.write("a.dem.scn.12", legacy), false), 0);
    EXPECT_EQ(checkSourceFiles(folder.write("b.dem", QByteArray("\x89HDF\r\n\x1a\n", 8)), false), 0);
    EXPECT_EQ(checkSourceFiles(folder.write("c.dem", "no deck"), false), 0);
    EXPECT_EQ(checkSourceFiles(folder.path("missing.dem"), true), 1);
}

// ---------------------------------------------------------------- names

TEST(Suffixes, areStrippedAtTheEndAndOnce)
{
    struct SCase
    {
        const char* path;
        const char* withoutDeckSuffix;
        const char* withoutLegacySuffix;
    };
    const SCase cases[] = {
        {"/d/name.dem", "/d/name", "/d/name"},
        {"/d/name.dem.scn.12", "/d/name", "/d/name"},
        {"/d/name.ess", "/d/name", "/d/name.ess"},
        {"/d/name.dfg", "/d/name", "/d/name.dfg"},
        {"/d/name.", "/d/name.", "/d/name"},
        {"/d/name", "/d/name", "/d/name"},
        {"/d/name.DEM", "/d/name.DEM", "/d/name.DEM"},
        {"/d/name.idx", "/d/name.idx", "/d/name.idx"},
        {"/d/name.ptf", "/d/name.ptf", "/d/name.ptf"},
        {"/d/name.dem.scn.", "/d/name.dem.scn.", "/d/name.dem.scn"},
        {"/d/name.dem.scn.1x", "/d/name.dem.scn.1x", "/d/name.dem.scn.1x"},
        {"/d/name.dem.dem", "/d/name.dem", "/d/name.dem"},
        {"/d/name.dem.ess", "/d/name.dem", "/d/name.dem.ess"},
        {"/d.dem/name", "/d.dem/name", "/d.dem/name"},
        {"/d/a.b.dem", "/d/a.b", "/d/a.b"},
        {"/d/namedem", "/d/namedem", "/d/namedem"},
        {"/d/run[1].dem", "/d/run[1]", "/d/run[1]"},
        {".dem", "", ""},
        {"", "", ""},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(stripDeckSuffix(c.path).toStdString(), c.withoutDeckSuffix) << c.path;
        EXPECT_EQ(stripLegacySuffix(c.path).toStdString(), c.withoutLegacySuffix) << c.path;
    }
}

// ---------------------------------------------------------------- families

static void writeFamily(const CTempFolder& folder, const QString& name)
{
    for (const char* suffix :
         {".dem", ".idx", ".dfg", ".ptf", ".ess", ".ppf", ".dem.scn.1", ".dem.scn.2", ".dem.scn.10"})
        folder.write(name + suffix, QByteArray(suffix) + " of " + name.toUtf8());
    folder.write(name + "_data/0.h5", "first");
    folder.write(name + "_data/sub/1.h5", "second");
}

// Names that a pattern would misread, next to the decks that it would mistake for them.
const char* const familyNames[] = {"pile", "run[1]", "all*", "one?", "Schüttung 5 °C", ".hidden", "a.b", "back\\slash"};
const char* const neighbours[] = {"run1", "allied", "ones", "pile2", "PILE", "a-b", "pile.dem"};

TEST(DeleteFamily, takesAllOfADeckAndNothingOfItsNeighbours)
{
    for (const QString name : familyNames) {
        const CTempFolder folder;
        for (const char* neighbour : neighbours)
            writeFamily(folder, neighbour);
        folder.write(name + ".h5", "not in the family");
        folder.write(name + ".xml", "neither");
        folder.write(name + ".dem.scn", "nor this");
        const CSnapshot neighbourhood = folder.snapshot();
        writeFamily(folder, name);
        EXPECT_TRUE(deleteFamily(folder.path(name + ".dem.scn.3"))) << name.toStdString();
        EXPECT_EQ(neighbourhood.changesUntil(folder.snapshot()), "") << name.toStdString();
    }
}

TEST(DeleteFamily, isContentWithWhatThereIs)
{
    const CTempFolder folder;
    EXPECT_TRUE(deleteFamily(folder.path("nothing.dem")));
    EXPECT_TRUE(deleteFamily(folder.path("no such folder/nothing.dem")));
    folder.write("part.dem.scn.4", "an orphan");
    EXPECT_TRUE(deleteFamily(folder.path("part.ess")));
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(DeleteFamily, stopsAtWhatItCannotRemove)
{
    const CTempFolder folder;
    writeFamily(folder, "a");
    QFile::remove(folder.path("a.dfg"));
    folder.write("a.dfg/in the way", "a folder isn't removed as a file");
    EXPECT_FALSE(deleteFamily(folder.path("a.dem")));
    EXPECT_FALSE(folder.has("a.dem")); // before it in the order
    EXPECT_FALSE(folder.has("a.idx"));
    EXPECT_TRUE(folder.has("a.ptf")); // after it
    EXPECT_TRUE(folder.has("a.dem.scn.1"));
    EXPECT_TRUE(folder.has("a_data/0.h5"));
}

TEST(DeleteFamily, unlinksADataFolderThatLiesElsewhere)
{
    const CTempFolder folder;
    folder.write("elsewhere/0.h5", "kept");
    ASSERT_TRUE(QFile::link(folder.path("elsewhere"), folder.path("a_data")));
    EXPECT_TRUE(deleteFamily(folder.path("a.dem")));
    EXPECT_FALSE(folder.has("a_data"));
    EXPECT_EQ(folder.read("elsewhere/0.h5"), "kept");
}

TEST(RenameFamily, carriesEveryMemberAndReplacesTheTarget)
{
    for (const QString name : familyNames) {
        const CTempFolder folder;
        writeFamily(folder, name);
        writeFamily(folder, "target");
        folder.write("target.dem.scn.77", "of the deck that goes");
        EXPECT_TRUE(renameFamily(folder.path(name + ".dem"), folder.path("target.dem"))) << name.toStdString();
        for (const char* suffix : {".dem", ".idx", ".dfg", ".ptf", ".ess", ".dem.scn.1", ".dem.scn.2", ".dem.scn.10"}) {
            ASSERT_TRUE(folder.has(QString("target") + suffix)) << name.toStdString() << suffix;
            EXPECT_EQ(folder.read(QString("target") + suffix), QByteArray(suffix) + " of " + name.toUtf8());
        }
        EXPECT_EQ(folder.read("target_data/0.h5"), "first");
        EXPECT_EQ(folder.read("target_data/sub/1.h5"), "second");
        EXPECT_FALSE(folder.has("target.dem.scn.77"));
        // The old property file is no part of what is renamed; with it ten names are left.
        EXPECT_EQ(folder.names().size(), 10) << folder.names().join(" ").toStdString();
        EXPECT_TRUE(folder.has(name + ".ppf"));
    }
}

TEST(RenameFamily, failsWithoutSourceSettingsOrConfiguration)
{
    for (const char* missing : {".dem", ".dfg", ".ess"}) {
        const CTempFolder folder;
        writeFamily(folder, "a");
        QFile::remove(folder.path(QString("a") + missing));
        EXPECT_FALSE(renameFamily(folder.path("a.dem"), folder.path("b.dem"))) << missing;
    }
    for (const char* missing : {".idx", ".ptf", ".dem.scn.1"}) {
        const CTempFolder folder;
        writeFamily(folder, "a");
        QFile::remove(folder.path(QString("a") + missing));
        EXPECT_TRUE(renameFamily(folder.path("a.dem"), folder.path("b.dem"))) << missing;
    }
}

TEST(RenameFamily, ontoItselfLosesNothing)
{
    const CTempFolder folder;
    writeFamily(folder, "a");
    const CSnapshot before = folder.snapshot();
    EXPECT_TRUE(renameFamily(folder.path("a.dem"), folder.path("./a.dem")));
    EXPECT_FALSE(renameFamily(folder.path("a.dem"), folder.path("a.dem.scn.1")));
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
}

// ---------------------------------------------------------------- bytes

TEST(CopyFile, carriesAsManyBytesAsTheLimitSays)
{
    constexpr int mebibyte = 0x100000;
    const CTempFolder folder;
    const QByteArray bytes = pattern(2 * mebibyte + 3);
    const QString from = folder.write("from", bytes);
    const CSnapshot before = folder.snapshot();
    for (const int limit : {0, 1, mebibyte - 1, mebibyte, mebibyte + 1, bytes.size() - 1, bytes.size(), 3 * mebibyte}) {
        EXPECT_TRUE(copyOrTruncateFile(from, folder.path("to"), limit)); // over what the last one left
        EXPECT_EQ(folder.read("to"), bytes.left(limit)) << limit;
    }
    EXPECT_TRUE(copyOrTruncateFile(from, folder.path("copy"), wholeFile));
    EXPECT_EQ(folder.read("copy"), bytes);
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "copy is new\nto is new\n");
}

TEST(CopyFile, leavesAllAsItIsWhereItFails)
{
    const CTempFolder folder;
    folder.write("from", "content");
    folder.write("to", "old");
    ASSERT_TRUE(QFile::link(folder.path("from"), folder.path("link")));
    const struct
    {
        const char* from;
        const char* to;
        int limit;
        ECause side;
    } cases[] = {
        {"from", "to", wholeFile, eCauseTarget}, // exists
        {"from", "from", 3, eCauseTarget},       // the source would be emptied
        {"from", "link", 3, eCauseTarget},         {"missing", "new", wholeFile, eCauseSource},
        {"missing", "new", 4, eCauseSource},       {"from", "no/folder/to", wholeFile, eCauseTarget},
        {"from", "no/folder/to", 4, eCauseTarget},
    };
    SCopyFailure failure;
    const CSnapshot before = folder.snapshot();
    for (const auto& c : cases) {
        EXPECT_FALSE(copyOrTruncateFile(folder.path(c.from), folder.path(c.to), c.limit, &failure)) << c.to;
        EXPECT_EQ(failure.side, c.side) << failure.text;
        EXPECT_EQ(before.changesUntil(folder.snapshot()), "") << c.from << ' ' << c.to << ' ' << c.limit;
    }
}

TEST(CopyFile, aFullDiskDoesNotPassInSilence)
{
    const CTempFolder folder;
    const QString from = folder.write("from", pattern(300000));
    EXPECT_FALSE(copyOrTruncateFile(from, "/dev/full", 10));
    const CFullDisk disk(200000);
    EXPECT_FALSE(copyOrTruncateFile(from, folder.path("to"), 250000));
    EXPECT_FALSE(copyOrTruncateFile(from, folder.path("whole"), wholeFile));
    EXPECT_FALSE(folder.has("whole")); // half a companion isn't one
    EXPECT_TRUE(copyOrTruncateFile(from, folder.path("to"), 200000));
}

TEST(TruncateFile, cutsWhatWasWrittenAndStaysOpen)
{
    constexpr int mebibyte = 0x100000;
    const QByteArray bytes = pattern(2 * mebibyte + 100);
    for (const int length : {0, 1, mebibyte, 2 * mebibyte + 99, bytes.size()}) {
        const CTempFolder folder;
        QFile file(folder.write("deck.dem", bytes.chopped(3)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(bytes.size() - 3);
        file.write(bytes.right(3)); // counts, though it isn't flushed
        EXPECT_TRUE(truncateFile(file, length));
        EXPECT_EQ(folder.names(), QStringList("deck.dem"));
        EXPECT_EQ(folder.read("deck.dem"), bytes.left(length));
        EXPECT_EQ(file.openMode() & QIODevice::ReadWrite, QIODevice::ReadWrite);
        EXPECT_TRUE(file.seek(length) && file.write("more") == 4 && file.flush());
        EXPECT_EQ(folder.read("deck.dem"), bytes.left(length) + "more");
    }
}

TEST(TruncateFile, leavesTheFileWhenItFails)
{
    const CTempFolder folder;
    QFile file(folder.write("deck.dem", pattern(1000)));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_FALSE(truncateFile(file, 1001)); // beyond the end
    EXPECT_FALSE(truncateFile(file, -1));
    {
        const CFullDisk disk(100);
        EXPECT_FALSE(truncateFile(file, 500));
    }
    EXPECT_EQ(folder.names(), QStringList("deck.dem"));
    folder.write("deck.dem.old", "in the way");
    EXPECT_FALSE(truncateFile(file, 500));
    EXPECT_EQ(folder.names(), QStringList({"deck.dem", "deck.dem.old"}));
    EXPECT_EQ(folder.read("deck.dem"), pattern(1000));
    EXPECT_TRUE(file.isOpen());
    folder.write("deck.dem.tmp/in the way", "the temporary file can't be opened");
    EXPECT_FALSE(truncateFile(file, 500));
    EXPECT_EQ(folder.read("deck.dem"), pattern(1000));
}

} // namespace NBrenmark
