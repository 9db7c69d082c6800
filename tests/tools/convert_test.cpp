// convert, run as a user runs it: what it leaves on disk, what it says, and what it never touches.
#include "support/failing_disk.h"
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <unistd.h>

namespace NBrenmark {

namespace {

using Json = nlohmann::json;

/// A source in a folder of its own, and a folder for what comes out.
class CSource
{
public:
    explicit CSource(const CLegacyDeck& deck = sampleDeckOf(makeVersion(27, 0, 3)))
    {
        path = argument(deck.write(folder.path(), "kleine Probe"));
        settingsWith(makeVersion(27, 0, 3), -1, {{"Heat", 0, 2, 0, {1, 2}}}, -1, {})
            .toFile(folder.path("kleine Probe.ess"));
        configurationFile("27.0.0", {"SITE:NOTE=STD STRING:kept"}).toFile(folder.path("kleine Probe.dfg"));
        folder.write("kleine Probe.ptf", "anything");
        before = std::make_unique<CSnapshot>(folder.snapshot());
    }
    /// Bytes and time stamps are what they were.
    ~CSource() { EXPECT_EQ(before->changesUntil(folder.snapshot()), ""); }

    std::string target(const char* name = "out") const { return argument(out.path(name)); }

    CTempFolder folder;
    CTempFolder out;
    std::string path;

private:
    std::unique_ptr<CSnapshot> before;
};

const QStringList convertedNames{"out.dem", "out.dfg", "out.ess", "out.ptf", "out_data"};

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// A deck that takes long enough to be interrupted.
CLegacyDeck longDeck(int timesteps)
{
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(sampleCreator());
    for (int i = 0; i < timesteps; ++i)
        deck.timestep(sampleTimestep(0.01 * i));
    return deck;
}

} // namespace

TEST(Convert, makesADeckThatHoldsAllAndSaysSo)
{
    CSource source;
    const SToolResult result = runTool({"convert", source.path, source.target(), "--verify", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(source.out.names(), convertedNames);
    EXPECT_EQ(QDir(source.out.path("out_data")).entryList(QDir::Files), QStringList({"0.h5", "1.h5", "2.h5"}));
    EXPECT_EQ(source.out.read("out.ptf"), "anything");

    const Json object = Json::parse(result.output);
    EXPECT_EQ(object["result"], "converted");
    EXPECT_EQ(object["code"], 0);
    EXPECT_EQ(object["target"], source.target("out.dem"));
    EXPECT_EQ(object["timesteps"], 3);
    EXPECT_GT(object["seconds"].get<double>(), 0.0);
    qint64 bytes = 0;
    for (const QString& name : source.folder.names())
        bytes += source.folder.read(name).size();
    EXPECT_EQ(object["bytesRead"], bytes);
    EXPECT_GT(object["bytesWritten"].get<qint64>(), 0);
    EXPECT_TRUE(object["messages"].is_array());
    EXPECT_EQ(object["verification"]["equal"], true);
    EXPECT_EQ(object["verification"]["timesteps"], 3);

    const SToolResult check = runTool({"check", source.target("out.dem")});
    EXPECT_EQ(check.output,
              source.target("out.dem") + ": HDF5 30.0.20, 3 timesteps, 72 particles of 2 types: needs no conversion\n");
}

TEST(Convert, callsADeckWholeOnlyIfNothingOfItWasLost)
{
    CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "d"));
    emptySettings(makeVersion(27, 0, 3)).toFile(folder.path("d.ess"));
    // What isn't read is missing on both sides, so no difference says it.
    folder.write("d.ess", folder.read("d.ess") + "ESS_BLOCK_ no block");
    const std::string out = argument(folder.path("out.dem"));
    const SToolResult alone = runTool({"convert", deck, out});
    EXPECT_EQ(alone.exitCode, 3) << alone.error;
    EXPECT_TRUE(contains(alone.output, "; lost: ")) << alone.output;
    for (const SToolResult& result :
         {runTool({"convert", deck, out, "--force", "--verify"}), runTool({"verify", deck, out})}) {
        EXPECT_EQ(result.exitCode, 3) << result.error;
        EXPECT_TRUE(contains(result.output, "holds all that could be read of " + deck)) << result.output;
    }
    EXPECT_EQ(Json::parse(runTool({"verify", deck, out, "--json"}).output)["result"], "partial");
}

TEST(Convert, makesNoDeckOfADamagedSourceIfItIsStrict)
{
    CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "d"));
    emptySettings(makeVersion(27, 0, 3)).toFile(folder.path("d.ess"));
    folder.write("d.ess", folder.read("d.ess") + "ESS_BLOCK_ no block");
    const std::string out = argument(folder.path("out.dem"));
    for (const char* again : {"--strict", "--resume"}) { // the loss is remembered
        const SToolResult strict = runTool({"convert", deck, out, "--strict", again});
        EXPECT_EQ(strict.exitCode, 3) << strict.error;
        EXPECT_TRUE(contains(strict.error, "without --strict")) << strict.error;
        EXPECT_FALSE(folder.has("out.dem"));
    }
    const SToolResult resumed = runTool({"convert", deck, out, "--resume"});
    EXPECT_EQ(resumed.exitCode, 3);
    EXPECT_TRUE(contains(resumed.output, "; lost: ")) << resumed.output;
    EXPECT_TRUE(folder.has("out.dem"));
}

TEST(Convert, looksForWhatWouldStopItBeforeItWrites)
{
    CSource source;
    source.out.write("strange_data/notes", "anything");
    source.out.write("sub.dem/file", "anything");
    source.out.write("file_data", "anything");
    source.out.write("folder.ess/file", "anything");
    const CSnapshot before = source.out.snapshot();
    const std::pair<std::string, const char*> cases[] = {
        {"/dev/null", "is a device"},
        {source.target("sub"), "is a folder"},
        {source.target("file"), "file_data: isn't a folder"},
        {source.target("folder"), "folder.ess: is a folder"},
        {source.target("strange"), "notes: isn't a file of a deck"},
        {source.target(std::string(244, 'x').c_str()), "too long by 1 byte"}, // with .dem.partial 256 bytes
        {"/proc/none", "/proc/none.dem"},
    };
    for (const auto& [out, told] : cases) {
        const SToolResult result = runTool({"convert", "--force", source.path, out});
        EXPECT_EQ(result.exitCode, 4) << out << result.error;
        EXPECT_TRUE(contains(result.error, told)) << result.error;
    }
    EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
    EXPECT_EQ(runTool({"convert", "-q", source.path, source.target(std::string(243, 'x').c_str())}).exitCode, 0);
}

TEST(Convert, carriesEverySampleDeckOverWithoutADifference)
{
    const QDir samples = QFileInfo(QString::fromStdString(sampleDeck("pile-27.dem"))).dir();
    const QStringList decks = samples.entryList({"*.dem"});
    ASSERT_GE(decks.size(), 11);
    for (const QString& deck : decks) {
        const QString name = deck.chopped(4);
        CTempFolder out;
        const SToolResult result =
            runTool({"convert", argument(samples.filePath(deck)), argument(out.path(name)), "--verify", "--json"});
        ASSERT_EQ(result.exitCode, 0) << name.toStdString() << result.output << result.error;
        EXPECT_EQ(Json::parse(result.output)["verification"]["differences"].size(), 0u) << name.toStdString();
        for (const char* suffix : {".ess", ".dfg", ".ptf"})
            EXPECT_EQ(out.names().contains(name + suffix), samples.exists(name + suffix)) << argument(name) << suffix;
        EXPECT_FALSE(out.names().contains(name + ".ppf")) << "its definitions are part of the settings now";
    }
}

TEST(Convert, takesOutAsAFolderAndCompletesNames)
{
    const std::pair<const char*, const char*> cases[] = {
        {"out", "out.dem"},     {"out.dem", "out.dem"},          {"run.5", "run.5.dem"},
        {"ü ber", "ü ber.dem"}, {"sub", "sub/kleine Probe.dem"}, {"sub/", "sub/kleine Probe.dem"},
        {"sub/x", "sub/x.dem"}, {"new/er/x", "new/er/x.dem"},    {"new/", "new/kleine Probe.dem"},
    };
    for (const auto& [given, made] : cases) {
        CSource source;
        ASSERT_TRUE(QDir(source.out.path()).mkdir("sub"));
        const SToolResult result =
            CToolRun({"convert", "--json", source.path, source.target(given)}).environment("LC_ALL", "C").run();
        EXPECT_EQ(result.exitCode, 0) << given << ": " << result.error;
        EXPECT_TRUE(source.out.has(QString::fromUtf8(made))) << given;
        EXPECT_EQ(Json::parse(result.output)["target"], source.target(made));
    }
}

TEST(Convert, replacesAllOfAnExistingDeckWithForceAlone)
{
    CSource source;
    CLegacyDeck old = sampleDeckOf(makeVersion(27, 0, 3));
    old.nextSegment().timestep(sampleTimestep(0.4)).write(source.out.path(), "out");
    const CSnapshot before = source.out.snapshot();
    EXPECT_EQ(runTool({"convert", source.path, source.target()}).exitCode, 4);
    EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
    EXPECT_EQ(runTool({"convert", source.path, source.target(), "--force"}).exitCode, 0);
    EXPECT_EQ(source.out.names(), convertedNames);
    EXPECT_EQ(runTool({"convert", source.path, source.target(), "--force", "--verify"}).exitCode, 0);
}

TEST(Convert, touchesTheSourceByNoLinkAndNoDetour)
{
    namespace fs = std::filesystem;
    CSource source;
    const fs::path folder(argument(source.out.path()));
    fs::create_symlink(argument(source.folder.path()), folder / "link to the source's folder");
    fs::create_symlink(source.path, folder / "soft.dem");
    // The deck once more, all by hard links; then a target of which one companion is the source's.
    for (const QString& name : source.folder.names())
        fs::create_hard_link(argument(source.folder.path(name)), folder / argument(name));
    fs::create_hard_link(argument(source.folder.path("kleine Probe.dfg")), folder / "half.dfg");
    // A source inside of the folder that the target would remove.
    fs::create_directory(folder / "nest_data");
    const std::string nested = argument(
        sampleDeckOf(makeVersion(27, 0, 3)).write(QString::fromStdString((folder / "nest_data").string()), "d"));

    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {source.path, (folder / "link to the source's folder/kleine Probe").string()},
             {source.path, (folder / "soft").string()},
             {source.path, (folder / "kleine Probe.dem").string()},
             {source.path, (folder / "half").string()},
             {(folder / "soft.dem").string(), source.path},
             {nested, (folder / "nest").string()}}) {
        const CSnapshot before = source.out.snapshot();
        const SToolResult result = runTool({"convert", "--force", from, to});
        if (from != (folder / "soft.dem").string()) { // by that name the deck has no index
            EXPECT_EQ(result.exitCode, 4) << to;
            EXPECT_TRUE(contains(result.error, "shares files")) << result.error;
        }
        EXPECT_NE(result.exitCode, 0);
        EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
    }
}

TEST(Convert, doesNothingToADeckOfTheCurrentFamily)
{
    CSource source;
    ASSERT_EQ(runTool({"convert", source.path, source.target()}).exitCode, 0);
    const CSnapshot before = source.out.snapshot();
    const SToolResult result = runTool({"convert", source.target("out.dem"), source.target("again"), "--json"});
    EXPECT_EQ(result.exitCode, 6) << "nothing was made";
    EXPECT_EQ(Json::parse(result.output)["result"], "nothing to do");
    EXPECT_EQ(runTool({"convert", source.target("out.dem"), source.target()}).exitCode, 0);
    EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
    EXPECT_EQ(runTool({"convert", source.target("out_data/0.h5"), source.target("again")}).exitCode, 5) << "no deck";
}

TEST(ConvertProgress, isPlainLinesWhereNoTerminalIs)
{
    CSource source;
    const SToolResult result = runTool({"convert", source.path, source.target()});
    EXPECT_TRUE(contains(result.error, "converting timestep 1 of 3 done")) << result.error;
    EXPECT_TRUE(contains(result.error, "converting timestep 3 of 3 done")) << result.error;
    EXPECT_EQ(result.error.find_first_of("\r\x1b"), std::string::npos) << result.error;
    EXPECT_TRUE(contains(result.output, "3 timesteps"));
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1);
}

TEST(ConvertProgress, isABarOnATerminalAndWipedAtTheEnd)
{
    CSource source;
    const SToolResult colour =
        CToolRun({"convert", source.path, source.target()}).environment("TERM", "xterm").errorOnTerminal().run();
    EXPECT_EQ(colour.exitCode, 0);
    EXPECT_TRUE(contains(colour.error, "\r[\x1b[32m")) << colour.error;
    EXPECT_TRUE(contains(colour.error, "timestep 2 of 3")) << colour.error;
    EXPECT_TRUE(contains(colour.error, " left")) << colour.error;
    EXPECT_EQ(colour.error.substr(colour.error.size() - 4), "\r\x1b[K");
    for (size_t start = 0, end; (end = colour.error.find('\r', start)) != std::string::npos; start = end + 1)
        EXPECT_LE(end - start, 100u + 14u) << "wider than the terminal, its control sequences apart";

    const SToolResult plain = CToolRun({"convert", source.path, source.target(), "--force"})
                                  .environment("TERM", "xterm")
                                  .environment("NO_COLOR", "1")
                                  .errorOnTerminal()
                                  .run();
    EXPECT_TRUE(contains(plain.error, "\r[##")) << plain.error;
    EXPECT_FALSE(contains(plain.error, "\x1b[3")) << plain.error;

    const SToolResult dumb = CToolRun({"convert", source.path, source.target(), "--force"})
                                 .environment("TERM", "dumb")
                                 .errorOnTerminal()
                                 .run();
    EXPECT_FALSE(contains(dumb.error, "\x1b")) << dumb.error;
    EXPECT_TRUE(contains(dumb.error, "timestep 3 of 3 done")) << dumb.error;
}

TEST(ConvertProgress, takesItsFormAndColourFromOptionsBeforeTheEnvironment)
{
    struct SCase
    {
        const char *option, *variable;
        const char* shown; ///< null for nothing at all
    };
    const SCase cases[] = {
        {"--progress=bar", "FORCE_COLOR", "\r[\x1b[32m"},
        {"--progress=bar", "NO_COLOR", "\r["},
        {"--progress=plain", "TERM", "timestep 3 of 3 done"},
        {"--progress=json", "TERM", "{\"progress\":{\"work\":"},
        {"--progress=none", "TERM", nullptr},
    };
    CSource source;
    for (const auto& [option, variable, shown] : cases) {
        const SToolResult result =
            CToolRun({"convert", "--force", option, source.path, source.target()}).environment(variable, "1").run();
        EXPECT_TRUE(shown == nullptr ? result.error.empty() : contains(result.error, shown)) << option << result.error;
        EXPECT_EQ(contains(result.error, "\x1b[3"), std::string(variable) == "FORCE_COLOR") << option;
    }
    EXPECT_TRUE(contains(CToolRun({"info", "--color=always", source.target()}).environment("NO_COLOR", "1").run().error,
                         "\x1b[31mbrenmark:"));
}

TEST(ConvertProgress, isNothingWithQuiet)
{
    CSource source;
    const SToolResult result =
        CToolRun({"convert", source.path, source.target(), "--quiet", "--verify"}).errorOnTerminal().run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "");
}

class Interrupted : public testing::TestWithParam<int>
{
};

TEST_P(Interrupted, conversionIsPartialUntilItIsResumed)
{
    const int timesteps = 120;
    CSource source(longDeck(timesteps));
    CToolRun run({"convert", source.path, source.target(), "--json"});
    run.start();
    ASSERT_TRUE(run.waitForError("timestep 1 of 120 done"));
    run.signal(GetParam());
    const SToolResult result = run.finish();
    ASSERT_EQ(result.exitCode, 130) << result.error;
    EXPECT_TRUE(contains(result.error, "brenmark: finishing timestep")) << result.error;
    EXPECT_TRUE(contains(result.error, "interrupted after timestep")) << result.error;
    const Json object = Json::parse(result.output);
    EXPECT_EQ(object["result"], "interrupted");
    EXPECT_EQ(object["code"], 130);
    EXPECT_EQ(object["partial"], source.target("out.dem.partial"));
    const int written = object["timesteps"].get<int>();
    EXPECT_GE(written, 1);
    EXPECT_LT(written, timesteps);

    EXPECT_EQ(source.out.names(), QStringList("out.dem.partial"));
    const std::string partial = ", " + std::to_string(written) + " of 120 timesteps";
    for (const char* path : {"out.dem", "out.dem.partial", "out.dem.partial/out.dem"})
        for (const char* command : {"check", "info"}) {
            const SToolResult seen = runTool({command, source.target(path)});
            EXPECT_EQ(seen.exitCode, 3) << command << path;
            EXPECT_TRUE(contains(seen.error, "is a partial deck") && contains(seen.error, partial)) << seen.error;
        }
    EXPECT_EQ(runTool({"verify", source.path, source.target("out.dem")}).exitCode, 3);
    const SToolResult refused = runTool({"convert", source.path, source.target()});
    EXPECT_EQ(refused.exitCode, 4);
    EXPECT_TRUE(contains(refused.error, "--resume") && contains(refused.error, "--force")) << refused.error;

    const SToolResult resumed = runTool({"convert", "--resume", "--verify", "--quiet", source.path, source.target()});
    EXPECT_EQ(resumed.exitCode, 0) << resumed.error;
    EXPECT_EQ(source.out.names(), convertedNames);
}

INSTANTIATE_TEST_SUITE_P(Signals, Interrupted, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(ConvertResumed, goesOnAfterASecondInterruptThatStopsAtOnce)
{
    CSource source(longDeck(120));
    CToolRun run({"convert", source.path, source.target()});
    run.start();
    ASSERT_TRUE(run.waitForError("timestep 1 of 120 done"));
    run.signal(SIGINT);
    ASSERT_TRUE(run.waitForError("press Ctrl-C again to stop now"));
    run.signal(SIGINT); // the conversion may have ended by the first one in between
    const SToolResult result = run.finish();
    EXPECT_EQ(result.exitCode, 130) << result.error;
    EXPECT_TRUE(contains(result.error, "--resume")) << result.error;
    EXPECT_EQ(runTool({"convert", "--resume", "--verify", "--quiet", source.path, source.target()}).exitCode, 0);
    EXPECT_EQ(source.out.names(), convertedNames);
}

TEST(ConvertResumed, goesOnFromNothingElseThanWhatItBegan)
{
    CTempFolder folder;
    const std::string deck = argument(longDeck(120).write(folder.path(), "d"));
    const std::string out = argument(folder.path("out"));
    CToolRun run({"convert", deck, out});
    run.start();
    ASSERT_TRUE(run.waitForError("timestep 1 of 120 done"));
    const SToolResult second = runTool({"convert", deck, out, "--force"});
    EXPECT_EQ(second.exitCode, 4);
    EXPECT_TRUE(contains(second.error, "another conversion is making it")) << second.error;
    run.signal(SIGKILL);
    run.finish();
    const std::string other = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "other"));
    const SToolResult foreign = runTool({"convert", other, out, "--resume"});
    EXPECT_EQ(foreign.exitCode, 5);
    EXPECT_TRUE(contains(foreign.error, "it was made from " + deck)) << foreign.error;
    folder.write("d.ptf", "anything");
    const SToolResult changed = runTool({"convert", deck, out, "--resume"});
    EXPECT_EQ(changed.exitCode, 3);
    EXPECT_TRUE(contains(changed.error, "d.ptf is new since")) << changed.error;
    EXPECT_EQ(runTool({"convert", other, out, "--force", "--verify"}).exitCode, 0);
    EXPECT_FALSE(folder.has("out.dem.partial"));
}

TEST(ConvertFailure, ofADamagedSourceIsReportedByFileAndTimestep)
{
    // Cut in the second timestep: the first one is converted, the file and the place are named.
    const CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    CSource source(deck);
    const SDeckPlace second = deck.timestepPlaces()[1];
    CTempFolder cut;
    for (const QString& name : source.folder.names())
        QFile::copy(source.folder.path(name), cut.path(name));
    QFile file(cut.path("kleine Probe.dem"));
    ASSERT_TRUE(file.resize(static_cast<qint64>(second.offset + second.size / 2)));
    const CSnapshot before = cut.snapshot();

    const SToolResult result = runTool({"convert", argument(file.fileName()), source.target(), "--json"});
    EXPECT_EQ(result.exitCode, 3) << result.error;
    EXPECT_TRUE(contains(result.error, "kleine Probe.dem")) << result.error;
    EXPECT_TRUE(contains(result.error, "archive")) << result.error;
    const Json object = Json::parse(result.output);
    EXPECT_EQ(object["result"], "failed");
    EXPECT_EQ(object["timesteps"], 1);
    EXPECT_EQ(before.changesUntil(cut.snapshot()), "");
}

TEST(ConvertFailure, costsNoDeckAtTheTargetIfTheSourceCannotBeOpened)
{
    CSource source;
    ASSERT_EQ(runTool({"convert", source.path, source.target()}).exitCode, 0);
    const CSnapshot before = source.out.snapshot();
    CTempFolder broken;
    sampleDeckOf(makeVersion(27, 0, 3)).write(broken.path(), "b");
    broken.write("b.ess", "no settings");
    const SToolResult result = runTool({"convert", argument(broken.path("b.dem")), source.target(), "--force"});
    EXPECT_EQ(result.exitCode, 3) << result.error;
    EXPECT_TRUE(contains(result.error, "b.ess")) << result.error;
    EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
}

TEST(ConvertFailure, ofAWriteGivesTheAdviceThatFitsItsError)
{
    const std::pair<int, const char*> cases[] = {{EACCES, "Check the permissions"}, {ENOSPC, "Free some space"}};
    for (const auto& [error, advice] : cases) {
        CSource source;
        const CTempFolder notes;
        CFailingDisk disk(source.out.path(), notes.path("note"));
        disk.fail(5, error, false);
        CToolRun run({"convert", source.path, source.target(), "--json"});
        disk.preloadInto(run);
        const SToolResult result = run.run();
        EXPECT_EQ(result.exitCode, 4) << result.error;
        EXPECT_TRUE(contains(Json::parse(result.output)["error"]["advice"].get<std::string>(), advice))
            << result.output;
        EXPECT_FALSE(contains(result.error, "epeat")) << result.error; // which would meet what is left
    }
}

TEST(ConvertResumed, saysThatADeckIsCompleteWhichWasKilledAfterItGotItsName)
{
    CSource source;
    ASSERT_EQ(runTool({"convert", source.path, source.target()}).exitCode, 0);
    const CSnapshot before = source.out.snapshot();
    const SToolResult result = runTool({"convert", source.path, source.target(), "--resume", "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(Json::parse(result.output)["result"], "complete already");
    EXPECT_EQ(before.changesUntil(source.out.snapshot()), "");
    ASSERT_TRUE(QFile::remove(source.out.path("out_data/2.h5")));
    EXPECT_EQ(runTool({"convert", source.path, source.target(), "--resume"}).exitCode, 4) << "not whole: in the way";
}

TEST(Convert, endsAsItsDeckDoesWhereTheResultCannotBePrinted)
{
    CSource source;
    for (const char* const json : {"--force", "--json"}) {
        const SToolResult result =
            CToolRun({"convert", "--force", json, source.path, source.target()}).outputTo("/dev/full").run();
        EXPECT_EQ(result.exitCode, 0) << result.error;
        EXPECT_TRUE(contains(result.error, "the result can't be reported: standard output: No space")) << result.error;
    }
}

TEST(Convert, carriesATypeThatNoGroupCanBeNamedAfter)
{
    SDeckCreator model = sampleCreator();
    SDeckTimestep timestep = sampleTimestep(0.1);
    model.particles.types.at(0).name = timestep.particles.types.at(0).name = "Sand 2/4 mm";
    CSource source(CLegacyDeck(makeVersion(27, 0, 3)).creator(model).timestep(timestep));
    const SToolResult result = runTool({"convert", source.path, source.target()});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_TRUE(contains(result.error, "Particle type \"Sand 2/4 mm\" has no size law in the deck")) << result.error;
    EXPECT_EQ(runTool({"convert", "--verify", source.path, source.target("other")}).exitCode, 0);
    const Json verified = Json::parse(runTool({"verify", "--json", source.path, source.target("out.dem")}).output);
    EXPECT_EQ(verified["differences"], Json::array());
    EXPECT_EQ(verified["notCarried"], Json::array({"creator/sizeDistributions/Sand%202%2f4%20mm"}));
}

TEST(ConvertFailure, ofATextThatTheFormatHasNoRoomForBlamesTheTextAndNotTheDisk)
{
    SDeckCreator longName = sampleCreator(); // a field takes 255 bytes and a zero
    longName.materials.at(0).name = QString(256, 'x');
    SDeckCreator longText = sampleCreator(); // an attribute is part of a header of 64 KiB
    longText.description = QString(65488, 'y');
    const std::pair<SDeckCreator, const char*> cases[] = {
        {longName, "takes 256 bytes, 255 can be stored"},
        {longText, "\"description\" takes 65488 bytes, 65487 can be stored"},
    };
    for (const auto& [model, told] : cases) {
        CSource source(CLegacyDeck(makeVersion(27, 0, 3)).creator(model).timestep(sampleTimestep(0.1)));
        const SToolResult result = runTool({"convert", source.path, source.target()});
        EXPECT_EQ(result.exitCode, 5);
        EXPECT_TRUE(contains(result.error, told)) << result.error;
        EXPECT_TRUE(contains(result.error, "Change or shorten that")) << result.error;
        EXPECT_EQ(source.out.names(), QStringList());
    }
    longText.description.chop(1);
    CSource source(CLegacyDeck(makeVersion(27, 0, 3)).creator(longText).timestep(sampleTimestep(0.1)));
    EXPECT_EQ(runTool({"convert", "--verify", source.path, source.target()}).exitCode, 0) << "the longest that fits";
}

} // namespace NBrenmark
