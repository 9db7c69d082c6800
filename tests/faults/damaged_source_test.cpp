// Conversions of damaged decks, as a host sees them: no damage, wherever it is, ends in a crash, in a changed
// source, or in a new deck that is called done and lacks something.

#include "api/data_converter.h"

#include "core/deck/application_state.h"
#include "core/log.h"
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NBrenmark {
namespace {

/// The bytes of a deck, each file by itself, before something happens to them.
struct SStored
{
    CBytes data;
    CBytes segment; ///< empty if there is none
    CBytes index;
    CBytes settings;
    CBytes configuration;

    QString write(const CTempFolder& folder) const
    {
        if (segment.size() > 0)
            segment.toFile(folder.path("deck.dem.scn.1"));
        index.toFile(folder.path("deck.idx"));
        settings.toFile(folder.path("deck.ess"));
        configuration.toFile(folder.path("deck.dfg"));
        data.toFile(folder.path("deck.dem"));
        return folder.path("deck.dem");
    }
};

/// A timestep with few particles, of which one type's are deflated.
SDeckTimestep smallTimestep(quint32 version, double time, int count)
{
    SDeckTimestep timestep = sampleTimestep(time);
    SDeckParticleType& first = timestep.particles.types[0];
    SDeckParticleType& second = timestep.particles.types[1];
    first.rows = makeDeckRows(1, count, deckFields, true);
    second.rows = makeDeckRows(1 + count, 2);
    if (version >= makeVersion(24, 0, 0)) {
        first.properties = {{makeDeckValues(300.0, count, 1)}, count};
        second.properties = {{makeDeckValues(400.0, 2, 1)}, 2};
    }
    return timestep;
}

constexpr int timestepsOfSmallDeck = 3;

/// Three timesteps: two of one model, and one in the next file with a model of its own.
CLegacyDeck smallDeck(quint32 version)
{
    SDeckCreator model = sampleCreator();
    CLegacyDeck deck(version);
    deck.creator(model).timestep(smallTimestep(version, 0.1, 3)).timestep(smallTimestep(version, 0.2, 4));
    model.title = "B";
    deck.nextSegment().creator(model).timestep(smallTimestep(version, 0.3, 5));
    return deck;
}

SStored stored(const CLegacyDeck& deck)
{
    return {deck.segment(0), deck.segmentCount() > 1 ? deck.segment(1) : CBytes(), deck.index(),
            settingsWith(qMax(deck.version, makeVersion(20, 0, 16)), 0, {{"Heat", 0, 1, 0, {1}}}, 0,
                         {{"Fill", 0, 2, 0, {1, 2}}}),
            configurationFile("27.0.0", {"SITE:NOTE=STD STRING:kept"})};
}

struct SOutcome
{
    bool result = false;
    QString error;
    std::string log;
    int timesteps = 0; ///< numbered files at the target, which are 0.h5 and on
    bool companions = false;
};

/// Converts; the source must stay what it was.
SOutcome convertDeck(const CTempFolder& source, const QString& path, const CTempFolder& target)
{
    const CSnapshot before = source.snapshot();
    CDataConverter converter;
    SOutcome outcome;
    outcome.result =
        converter.convertSimulationData(path.toUtf8().constData(), target.path("new.dem").toUtf8().constData());
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
    outcome.error = converter.getError();
    for (const auto& [level, title, text] : converter.getLogMessages())
        outcome.log += logLevelName(static_cast<ELogLevel>(level)) + " " + title + ": " + text + "\n";
    while (target.has("new_data/" + QString::number(outcome.timesteps) + ".h5"))
        ++outcome.timesteps;
    EXPECT_EQ(QDir(target.path("new_data")).entryList(QDir::Files).size(), outcome.timesteps);
    outcome.companions = target.has("new.ess") && target.has("new.dfg");
    EXPECT_EQ(outcome.companions, outcome.result && target.has("new.dem")) << "companions come last";
    return outcome;
}

SOutcome convertStored(const SStored& deck)
{
    const CTempFolder source;
    const CTempFolder target;
    return convertDeck(source, deck.write(source), target);
}

/// Whether a deck converts when nothing is damaged: what the tests below start from.
TEST(DamagedSource, isTheOnlyReasonToFail)
{
    for (const quint32 version :
         {makeVersion(3, 0, 16), makeVersion(20, 0, 16), makeVersion(24, 0, 30), makeVersion(27, 0, 3)}) {
        const SOutcome outcome = convertStored(stored(smallDeck(version)));
        EXPECT_TRUE(outcome.result) << outcome.log;
        EXPECT_EQ(outcome.log, "");
        EXPECT_EQ(outcome.timesteps, timestepsOfSmallDeck);
    }
}

// ---------------------------------------------------------------- one fault

struct SFault
{
    const char* what;
    std::function<void(SStored&, const CLegacyDeck&)> inflict;
    int timesteps;   ///< that are converted all the same; all of them for a deck that is no worse for it
    const char* log; ///< part of it
};

qint64 placeOf(const CLegacyDeck& deck, int timestep)
{
    return static_cast<qint64>(deck.timestepPlaces()[timestep].offset);
}

/// After its name, place of the model and stamp, a timestep begins with a marker.
qint64 markerAt(const CLegacyDeck& deck, int timestep)
{
    const qint64 name = CBytes().text(QStringLiteral("class CTimestepData64")).size();
    return placeOf(deck, timestep) + name + 4 + 8 + stampBytes(deck.version, {}).size();
}

const SFault faults[] = {
    {"an offset after the end of the file",
     [](SStored& s, const CLegacyDeck&) { s.index = s.index.with(4 + 24 + 12, CBytes().u64(0x7FFFFFFFFFFF)); }, 1,
     "deck.dem"},
    {"an offset that is negative",
     [](SStored& s, const CLegacyDeck&) { s.index = s.index.with(4 + 24 + 12, CBytes().u64(0xFFFFFFFFFFFFFFFF)); }, 1,
     "deck.dem"},
    {"a segment that isn't there", [](SStored& s, const CLegacyDeck&) { s.segment = CBytes(); }, 2, "deck.dem.scn.1"},
    {"a segment that is out of numbers",
     [](SStored& s, const CLegacyDeck&) { s.index = s.index.with(4 + 24 + 8, CBytes().u32(0xFFFFFFFF)); }, 1,
     "deck.dem.scn.4294967295"},
    {"a model that isn't where the timestep says",
     [](SStored& s, const CLegacyDeck& d) {
         const qint64 model = placeOf(d, 1) + CBytes().text(QStringLiteral("class CTimestepData64")).size() + 4;
         s.data = s.data.with(model, CBytes().u64(33));
     },
     1, "deck.dem"},
    {"cut in the model", [](SStored& s, const CLegacyDeck& d) { s.data = s.data.first(placeOf(d, 0) - 1); }, 0,
     "deck.dem"},
    {"cut in a timestep", [](SStored& s, const CLegacyDeck& d) { s.data = s.data.first(placeOf(d, 1) + 500); }, 1,
     "deck.dem, timestep 1: byte "},
    {"cut in a timestep of the next file",
     [](SStored& s, const CLegacyDeck&) { s.segment = s.segment.first(s.segment.size() - 1); }, 2,
     "deck.dem.scn.1, timestep 2: byte "},
    {"wrong marker",
     [](SStored& s, const CLegacyDeck& d) { s.data = s.data.with(markerAt(d, 1), CBytes().u32(0xBEEFCAFF)); }, 1,
     "Invalid marker found in data stream loading expected tag=3203386110 at pos="},
    // The second word of the header is the version that wrote last.
    {"last written by 24.0.1",
     [](SStored& s, const CLegacyDeck&) { s.data = s.data.with(4, CBytes().u32(makeVersion(24, 0, 1))); }, 0,
     "deck.dem: header of version"},
    {"last written by 24.0.24",
     [](SStored& s, const CLegacyDeck&) { s.data = s.data.with(4, CBytes().u32(makeVersion(24, 0, 24))); }, 0,
     "deck.dem: header of version"},
    {"last written by a later one",
     [](SStored& s, const CLegacyDeck&) { s.data = s.data.with(4, CBytes().u32(makeVersion(30, 0, 21))); }, 0,
     "deck.dem: header of version"},
    {"bytes after the last timestep", [](SStored& s, const CLegacyDeck&) { s.segment += CBytes::garbage(100); }, 3,
     "100 bytes before the end of the file, and no block begins there"},
    {"bytes between two timesteps",
     [](SStored& s, const CLegacyDeck& d) {
         s.data = s.data.first(placeOf(d, 1)) + CBytes::garbage(9) + s.data.from(placeOf(d, 1));
         s.index = s.index.with(4 + 24 + 12, CBytes().u64(static_cast<quint64>(placeOf(d, 1)) + 9));
     },
     3, "9 bytes before the next timestep, and no block begins there"},
    {"two timesteps in one place",
     [](SStored& s, const CLegacyDeck& d) {
         s.index = s.index.with(4 + 24 + 12, CBytes().u64(static_cast<quint64>(placeOf(d, 0))));
     },
     3, "the index has more than one timestep at byte"},
    {"bytes after the index", [](SStored& s, const CLegacyDeck&) { s.index += CBytes::garbage(5); }, 3,
     "5 bytes follow the last entry"},
    {"no settings", [](SStored& s, const CLegacyDeck&) { s.settings = s.settings.first(3); }, 0, "deck.ess"},
    {"no configuration", [](SStored& s, const CLegacyDeck&) { s.configuration = CBytes().ascii("Greetings"); }, 0,
     "deck.dfg"},
};

TEST(DamagedSource, costsWhatIsDamagedAndIsReported)
{
    const CLegacyDeck deck = smallDeck(makeVersion(27, 0, 3));
    for (const SFault& fault : faults) {
        SStored damaged = stored(deck);
        fault.inflict(damaged, deck);
        const SOutcome outcome = convertStored(damaged);
        EXPECT_EQ(outcome.timesteps, fault.timesteps) << fault.what << '\n' << outcome.log;
        EXPECT_EQ(outcome.result, fault.timesteps == timestepsOfSmallDeck) << fault.what;
        EXPECT_NE(outcome.log.find(fault.log), std::string::npos) << fault.what << '\n' << outcome.log;
        EXPECT_EQ(outcome.error.isEmpty(), outcome.result) << fault.what;
    }
}

TEST(DamagedSource, cutAnywhereGivesTheTimestepsBeforeTheCutAndIsNeverDone)
{
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(27, 0, 3)}) {
        CLegacyDeck deck(version);
        deck.creator(sampleCreator()).timestep(smallTimestep(version, 0.1, 3)).timestep(smallTimestep(version, 0.2, 4));
        const SStored whole = stored(deck);
        // Every byte of the header and round the ends of blocks; between them every 97th.
        std::vector<qint64> cuts;
        const auto isNearAnEnd = [&](qint64 at) {
            return at < 40 || at > whole.data.size() - 8 || std::abs(at - placeOf(deck, 0)) < 4 ||
                   std::abs(at - placeOf(deck, 1)) < 4;
        };
        for (qint64 at = 0; at <= whole.data.size(); ++at)
            if (at % 97 == 0 || isNearAnEnd(at))
                cuts.push_back(at);
        for (const qint64 at : cuts) {
            SStored cut = whole;
            cut.data = whole.data.first(at);
            const SOutcome outcome = convertStored(cut);
            int complete = 0;
            for (const SDeckPlace& place : deck.timestepPlaces())
                complete += static_cast<qint64>(place.offset + place.size) <= at ? 1 : 0;
            EXPECT_EQ(outcome.timesteps, complete) << "cut at " << at << '\n' << outcome.log;
            EXPECT_EQ(outcome.companions, at == whole.data.size()) << at;
            // Below its count of timesteps a file isn't known to be a deck, and there is nothing to do.
            EXPECT_EQ(outcome.result, at < 12 || at == whole.data.size()) << at;
        }
    }
}

TEST(DamagedSource, losesOfItsSettingsTheDamagedBlockAlone)
{
    SStored damaged = stored(smallDeck(makeVersion(27, 0, 3)));
    const CBytes particle = propertyPayload(makeVersion(27, 0, 3), 0, {{"Heat", 0, 1, 0, {1}}});
    const qint64 at = damaged.settings.bytes().indexOf(particle.bytes());
    ASSERT_GT(at, 0);
    damaged.settings = damaged.settings.with(at + 4, CBytes().i32(0x7FFFFFFF)); // its count of properties
    const CTempFolder source;
    const CTempFolder target;
    const SOutcome outcome = convertDeck(source, damaged.write(source), target);
    EXPECT_TRUE(outcome.result) << outcome.log;
    EXPECT_NE(outcome.log.find("deck.ess, "), std::string::npos) << outcome.log;
    EXPECT_TRUE(target.read("new.ess").contains(CBytes().text("Fill").bytes()));
    EXPECT_FALSE(target.read("new.ess").contains(CBytes().text("Heat").bytes()));
}

// ---------------------------------------------------------------- what is no file

TEST(DamagedSource, isNotWaitedForWhereNoOneWrites)
{
    const SStored whole = stored(smallDeck(makeVersion(27, 0, 3)));
    struct SPlaceholder
    {
        const char* name;
        const char* kind;
        bool result;
        const char* log;
    };
    const SPlaceholder placeholders[] = {
        {"deck.dem", "pipe", true, ""}, // no deck: there is nothing to do
        {"deck.dem", "folder", true, ""},
        {"deck.dem", "device", true, ""},
        {"deck.idx", "pipe", false, "deck.idx: It isn't a regular file"},
        {"deck.idx", "folder", false, "deck.idx: It is a folder"},
        {"deck.idx", "device", false, "deck.idx: It isn't a regular file"},
        {"deck.idx", "/proc/self/mem", false, "deck.idx"}, // can be opened, and no byte of it read
        {"deck.dem.scn.1", "pipe", false, "deck.dem.scn.1: It isn't a regular file"},
        {"deck.dem.scn.1", "folder", false, "deck.dem.scn.1: It is a folder"},
        {"deck.ess", "pipe", false, "deck.ess is there and can't be opened: It isn't a regular file"},
        {"deck.ess", "/proc/self/mem", false, "deck.ess"},
        {"deck.dfg", "device", false, "deck.dfg: Could not open file for input. It isn't a regular file"},
        {"deck.ppf", "pipe", false, "deck.ppf: It isn't a regular file"},
        {"deck.ptf", "pipe", false, ""},
        {"deck.ptf", "folder", false, ""},
    };
    for (const SPlaceholder& placeholder : placeholders) {
        const CTempFolder folder;
        const CTempFolder target;
        whole.write(folder);
        const std::string path = folder.path(placeholder.name).toStdString();
        const std::string kind = placeholder.kind;
        QFile::remove(folder.path(placeholder.name));
        if (kind == "pipe")
            ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        else if (kind == "folder")
            ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
        else
            ASSERT_EQ(symlink(kind == "device" ? "/dev/zero" : placeholder.kind, path.c_str()), 0);
        CDataConverter converter;
        EXPECT_EQ(converter.convertSimulationData(folder.path("deck.dem").toUtf8().constData(),
                                                  target.path("new.dem").toUtf8().constData()),
                  placeholder.result)
            << placeholder.name << ' ' << kind;
        std::string log;
        for (const auto& [level, title, text] : converter.getLogMessages())
            log += text + "\n";
        EXPECT_NE(log.find(placeholder.log), std::string::npos) << placeholder.name << ' ' << kind << '\n' << log;
    }
}

// ---------------------------------------------------------------- chance

/// Bytes after a few accidents: bits flipped, words of the worst kind laid over, bytes lost and come in.
class CAccidents
{
public:
    explicit CAccidents(quint32 seed) : random(seed) {}

    int below(int limit) { return static_cast<int>(random() % static_cast<quint32>(limit)); }

    CBytes happenTo(const CBytes& bytes)
    {
        QByteArray hit = bytes.bytes();
        for (int left = below(4) == 0 ? 5 : 1; left > 0 && !hit.isEmpty(); --left)
            happenOnce(hit);
        return CBytes(hit);
    }

private:
    void happenOnce(QByteArray& bytes)
    {
        static const quint32 words[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x00010000, 0x10000000, 0x7FF00000};
        const int at = below(bytes.size());
        switch (below(6)) {
        case 0:
        case 1: bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8))); return;
        case 2: bytes.replace(at, 4, CBytes().u32(words[below(8)]).bytes()); return;
        case 3: bytes.insert(at, CBytes::garbage(1 + below(16)).bytes()); return;
        case 4: bytes.remove(at, 1 + below(16)); return;
        default:
            if (below(3) == 0)
                bytes.truncate(at);
            else
                bytes[at] = static_cast<char>(random());
        }
    }

    std::mt19937 random; // the same numbers everywhere, which distributions are not
};

/// Opens a deck and reads what there is of it. \return the timesteps that could be read
int readAll(const QString& path)
{
    CSimulation simulation;
    EXPECT_TRUE(simulation.setUp());
    int count = 0;
    if (simulation.load(path) == eLoaded) {
        const auto timesteps = static_cast<quint32>(simulation.index.size());
        for (quint32 i = 0; i < timesteps; ++i)
            count += simulation.goToTimestep(i, eIntoCurrentFrame) ? 1 : 0;
    }
    simulation.close(false);
    return count;
}

constexpr int accidentsOfADay = 80;

// --gtest_shuffle --gtest_random_seed=N --gtest_repeat=M runs other accidents than those of every day.
TEST(DamagedSource, byAccidentIsReadAsFarAsItGoes)
{
    for (const quint32 version : {makeVersion(3, 0, 16), makeVersion(20, 0, 16), makeVersion(21, 0, 3),
                                  makeVersion(24, 0, 30), makeVersion(27, 0, 3)}) {
        const SStored whole = stored(smallDeck(version));
        const auto seed = static_cast<quint32>(testing::UnitTest::GetInstance()->random_seed());
        CAccidents accidents(version + seed);
        const CTempFolder source;
        ASSERT_EQ(readAll(whole.write(source)), timestepsOfSmallDeck);
        int untouched = 0;
        for (int i = 0; i < accidentsOfADay; ++i) {
            SStored damaged = whole;
            CBytes* const files[] = {&damaged.data,    &damaged.data,  &damaged.data,     &damaged.segment,
                                     &damaged.segment, &damaged.index, &damaged.settings, &damaged.configuration};
            CBytes& hit = *files[accidents.below(8)];
            hit = accidents.happenTo(hit);
            const QString path = damaged.write(source);
            const bool isAll = readAll(path) == timestepsOfSmallDeck;
            untouched += isAll ? 1 : 0;
            if (isAll && i % 10 == 0) { // what can be read can be converted, whatever its numbers are now
                const CTempFolder target;
                convertDeck(source, path, target);
            }
        }
        EXPECT_GT(untouched, 0) << "a damaged number is a number";
        EXPECT_LT(untouched, accidentsOfADay);
    }
}

// ---------------------------------------------------------------- memory

#if !defined(__SANITIZE_ADDRESS__) // whose shadow takes terabytes of addresses

/// Lets this process have so much more than it has now.
void allowMore(rlim_t bytes)
{
    QFile status("/proc/self/statm");
    ASSERT_TRUE(status.open(QIODevice::ReadOnly));
    const rlim_t pages = status.readAll().split(' ').first().toULongLong();
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + bytes;
    setrlimit(RLIMIT_AS, &limit);
}

/// A step that meets words of every alignment. Each position is tried on the single forms, without files, by
/// DemTimestepData.noWordOfItTakesTheMachinesMemory; here the files around them count.
constexpr qint64 wordStep = 31;

/// Reads a deck again and again with 0x7FFFFFFF in the place of one word or the other.
/// \return what ran out of memory, a line each
std::string wordsThatTakeMemory(const SStored& whole, CBytes SStored::*file, const char* name)
{
    const CTempFolder source;
    const QString path = whole.write(source);
    std::string taken;
    QFile target(source.path(name));
    const qint64 size = (whole.*file).size();
    for (qint64 at = 0; at + 4 <= size; at += wordStep) {
        (whole.*file).with(at, CBytes().i32(0x7FFFFFFF)).toFile(target.fileName());
        CPersistentLogger log(eWarning);
        addLogModule(&log);
        readAll(path);
        clearLogModules();
        for (const auto& [level, title, text] : log.messages())
            if (text.find("bad_alloc") != std::string::npos)
                taken += std::to_string(at) + ": " + text + "\n";
    }
    return taken;
}

TEST(DamagedSourceDeathTest, takesNoMemoryForACount)
{
    const auto readWithLittle = [] {
        // Threads' stacks and arenas take addresses as well: what is left is far below the two gigabytes
        // that the smallest elements would take.
        allowMore(rlim_t(400) << 20);
        CLegacyDeck deck(makeVersion(27, 0, 3));
        deck.creator(sampleCreator()).timestep(smallTimestep(deck.version, 0.1, 3));
        const SStored whole = stored(deck);
        const std::string taken = wordsThatTakeMemory(whole, &SStored::data, "deck.dem") +
                                  wordsThatTakeMemory(whole, &SStored::index, "deck.idx") +
                                  wordsThatTakeMemory(whole, &SStored::settings, "deck.ess");
        std::fprintf(stderr, "%s", taken.c_str());
        std::_Exit(taken.empty() ? 0 : 1);
    };
    EXPECT_EXIT(readWithLittle(), testing::ExitedWithCode(0), "^$");
}

#endif

} // namespace
} // namespace NBrenmark
