// What the command line says to what it can't do: the exit code, and a text that names the place
// and what to do, on standard error alone.
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

namespace NBrenmark {

namespace {

struct SRefusal
{
    std::vector<std::string> arguments; ///< DIR stands for the test's folder
    int exitCode;
    const char* text;   ///< part of the first line
    const char* advice; ///< part of what follows
};

const SRefusal refusals[] = {
    {{"transmute"},
     2,
     "transmute: there is no such command",
     "convert, check, info, config, dump, verify, diff, law, values"},
    {{"convrt", "DIR/pile.dem"}, 2, "no such command", "Did you mean brenmark convert?"},
    {{"help", "veri"}, 2, "no such command", "Did you mean brenmark verify?"},
    {{"--json", "info"}, 2, "--json: brenmark has no such option", "The command comes first"},
    {{"convert"}, 2, "IN and OUT are missing", "brenmark help convert"},
    {{"convert", "DIR/pile.dem"}, 2, "OUT is missing", "brenmark help convert"},
    {{"convert", "DIR/pile.dem", "DIR/damaged.dem", "DIR"}, 2, "one deck at a time", "convert *.dem -o OUT"},
    {{"convert", "DIR/empty folder", "DIR/out"}, 5, "is a folder", "empty folder' -o OUT"},
    {{"convert", "DIR/empty folder", "-o", "DIR/out"}, 3, "there is no deck in it", "NAME.dem"},
    {{"convert", "DIR", "-o", "DIR/out"}, 4, "is in the tree of DIR", "outside of it"},
    {{"convert", "DIR/pile.dem", "DIR/out", "-j", "2"}, 2, "--shard need -o", "-o new"},
    {{"convert", "DIR/pile.dem", "-o", "DIR/out", "--shard", "3/2"}, 2, "\"3/2\" isn't I/N", "2/8"},
    {{"verify", "DIR/pile.dem", "DIR/pile.dem", "--digest", "DIR/notes.dem"}, 2, "takes the place", "help verify"},
    {{"verify", "DIR/pile.dem", "--digest", "DIR/notes.dem"}, 3, "isn't a digest of a deck", "Copy the file"},
    {{"convert", "", "DIR/out"}, 2, "empty path", "first file"},
    {{"convert", "--fast", "DIR/pile.dem", "DIR/out"}, 2, "--fast: convert has no such", "brenmark help convert"},
    {{"convert", "--forse", "DIR/pile.dem", "DIR/out"}, 2, "--forse", "Did you mean --force?"},
    {{"convert", "--max-memory", "4XB", "DIR/pile.dem", "DIR/out"}, 2, "\"4XB\" isn't a size", "4GB"},
    {{"info", "--quick", "--settings", "DIR/pile.dem"}, 2, "--quick and --settings", "no timestep is read"},
    {{"info", "--json=yes", "DIR/pile.dem"}, 2, "--json takes no value", "alone"},
    {{"info", "DIR/pile.dem", "--progress", "dots"}, 2, "\"dots\" isn't auto, bar, plain, json or none", "--progress"},
    {{"verify", "DIR/pile.dem", "DIR/pile.dem", "--limit"}, 2, "--limit needs a value", "brenmark help verify"},
    {{"config", "DIR/pile.dem", ""}, 2, "empty key", "Leave it out"},
    {{"config", "DIR/pile.dem", "A:X"}, 2, "pile.dem: has no key A:X in its configuration", "A has B, C=D."},
    {{"config", "DIR/pile.dem", "NOTHING", "--json"}, 2, "no key NOTHING", "The configuration has A."},
    {{"config", "DIR/pile.dem", "A:B:C"}, 2, "no key A:B:C", "A:B has no other keys."},
    {{"config", "DIR/pile.dem", "PROCESSOR:GENERAL:PSI"},
     2,
     "no key PROCESSOR:GENERAL:PSI",
     "default value: PROCESSOR:GENERAL:PSI=INT:3"},
    {{"dump", "--timestep", "first", "DIR/pile.dem"}, 2, "\"first\" isn't a whole number", "--timestep"},
    {{"dump", "--timestep", "3", "DIR/pile.dem"}, 2, "no timestep 3", "It has 3"},
    {{"verify", "DIR/pile.dem"}, 2, "CONVERTED is missing", "brenmark help verify"},
    {{"values", "DIR/pile.dem"}, 2, "needs either --attribute, --query or --list", "For example"},
    {{"values", "DIR/pile.dem", "--attribute", "Mas"}, 2, "there is no attribute \"Mas\"", "Did you mean Mass?"},
    {{"values", "DIR/pile.dem", "--attribute", "Mass", "--units", "mass=lbs"}, 2, "isn't a unit of mass", "mean lb?"},
    {{"law", "DIR/pile.dem"}, 2, "needs DECK, --pair and --overlap", "For example"},
    {{"law", "DIR/pile.dem", "--pair", "A", "B", "--overlap", "0:1"}, 2, "\"0:1\" isn't FROM:TO:COUNT", "--overlap"},
    {{"law", "DIR/pile.dem", "--pair", "A", "B", "--overlap", "0:1:2"},
     2,
     "A: the deck has no such",
     "Particle types: "},
    {{"law", "--states", "DIR/notes.dem"}, 2, "notes.dem: line 1, column 1: isn't JSON", "last read: 'T'"},

    {{"config", "DIR/none.dem"}, 3, "none.dem: no such file", "Check the path"},
    {{"config", "DIR/lost index.dem"}, 3, "lost index.idx is missing", "Copy the index"},
    {{"config", "DIR/damaged.dem"}, 3, "damaged.dfg: Value is in invalid format (Key: A) (line: 4)", "Copy it again"},
    {{"info", "DIR/none.dem"}, 3, "none.dem: no such file", "Check the path"},
    {{"info", "DIR/pile"}, 3, "pile: no such file", "try DIR/pile.dem"},
    {{"convert", "DIR/none.dem", "DIR/out"}, 3, "no such file", "Check the path"},
    {{"dump", "DIR/lost index.dem"}, 3, "index DIR/lost index.idx is missing", "Copy the index"},
    {{"convert", "DIR/lost index.dem", "DIR/out"}, 3, "is missing", "Copy the index"},
    {{"check", "DIR/empty folder"}, 3, "holds no deck", "NAME.dem"},

    {{"convert", "DIR/pile.dem", "DIR/notes.dem/out"}, 4, "can't be made", "Check the path"},
    {{"convert", "DIR/pile.dem", "DIR/notes.dem/"}, 4, "can't be made", "Check the path"},
    {{"convert", "DIR/none.dem", "DIR/missing/out"}, 3, "no such file", "Check the path"}, // nor is a folder made
    {{"convert", "DIR/pile.dem", "DIR/pile"}, 4, "shares files", "another name"},
    {{"convert", "DIR/pile.dem", "DIR/./empty folder/../pile.dem"}, 4, "shares files", "another name"},
    {{"convert", "--force", "DIR/pile.dem", "DIR"}, 4, "shares files", "another name"},
    {{"convert", "DIR/pile.dem", "DIR/taken"}, 4, "taken.dfg exists already", "--force"},
    {{"convert", "DIR/pile.dem", "DIR/folder taken"}, 4, "folder taken_data exists already", "--force"},

    {{"config", "DIR/notes.dem"}, 5, "isn't a deck that brenmark can read", "legacy deck"},
    {{"info", "DIR/notes.dem"}, 5, "isn't a deck that brenmark can read", "legacy deck"},
    {{"info", "DIR/empty.dem"}, 5, "isn't a deck that brenmark can read", "legacy deck"},
    {{"info", "DIR/pile.idx"}, 5, "isn't a deck that brenmark can read", "try DIR/pile.dem"},
    {{"convert", "DIR/notes.dem", "DIR/out"}, 5, "isn't a deck that brenmark can read", "legacy deck"},
    {{"info", "DIR/empty folder"}, 5, "is a folder", "check"},
};

/// Puts the folder's path in the place of DIR.
std::string at(std::string text, const CTempFolder& folder)
{
    const std::string path = argument(folder.path()); // whose random part may hold the word as well
    for (size_t place = text.find("DIR"); place != std::string::npos; place = text.find("DIR", place + path.size()))
        text.replace(place, 3, path);
    return text;
}

} // namespace

class Refusal : public testing::TestWithParam<SRefusal>
{
};

TEST_P(Refusal, hasItsCodeAndSaysWhatWhereAndWhatToDo)
{
    CTempFolder folder;
    const CLegacyDeck deck = sampleDeckOf(makeVersion(27, 0, 3));
    deck.write(folder.path(), "pile");
    configurationFile("27.0.0", {"A:C\\=D=STD STRING:x", "A:B=INT:1"}).toFile(folder.path("pile.dfg"));
    deck.write(folder.path(), "lost index");
    deck.write(folder.path(), "damaged");
    configurationFile("27.0.0", {"A=INT:x"}).toFile(folder.path("damaged.dfg"));
    ASSERT_TRUE(QFile::remove(folder.path("lost index.idx")));
    folder.write("notes.dem", "This is no deck, and longer than a header has bytes.");
    folder.write("empty.dem", "");
    folder.write("taken.dfg", "somebody's");
    ASSERT_TRUE(QDir(folder.path()).mkdir("empty folder") && QDir(folder.path()).mkdir("folder taken_data"));
    const CSnapshot before = folder.snapshot();

    std::vector<std::string> arguments;
    for (const std::string& text : GetParam().arguments)
        arguments.push_back(at(text, folder));
    const SToolResult result = runTool(arguments);

    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.error;
    const size_t first = result.error.find("brenmark: ");
    const size_t second = result.error.find("\n  ", first);
    ASSERT_NE(second, std::string::npos) << result.error;
    EXPECT_NE(result.error.substr(first, second - first).find(at(GetParam().text, folder)), std::string::npos)
        << result.error;
    EXPECT_NE(result.error.find(at(GetParam().advice, folder), second), std::string::npos) << result.error;
    EXPECT_EQ(result.error.find('\x1b'), std::string::npos) << "colour into a pipe";
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
}

INSTANTIATE_TEST_SUITE_P(Table, Refusal, testing::ValuesIn(refusals));

TEST(Help, goesToStandardOutputAndIsNoFailure)
{
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"help"}, {"--help"}, {"-V"}, {"--version"}, {"help", "convert"}, {"check", "-h"}}) {
        const SToolResult result = runTool(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.error, "");
        const bool isVersion = !arguments.empty() && (arguments[0] == "-V" || arguments[0] == "--version");
        EXPECT_NE(result.output.find(isVersion ? "brenmark 1." : "Usage: brenmark"), std::string::npos)
            << result.output;
    }
}

TEST(StandardOutput, thatIsFullIsReportedAndAReaderThatLeavesIsNot)
{
    CTempFolder folder;
    const std::string deck = argument(sampleDeckOf(makeVersion(27, 0, 3)).write(folder.path(), "pile"));
    configurationFile("27.0.0", {"A=INT:1"}).toFile(folder.path("pile.dfg"));
    for (const char* const command : {"dump", "info", "check", "config"}) {
        const SToolResult full = CToolRun({command, deck}).outputTo("/dev/full").run();
        EXPECT_EQ(full.exitCode, 4) << command;
        EXPECT_NE(full.error.find("standard output: No space left"), std::string::npos) << full.error;

        const SToolResult gone = CToolRun({command, deck}).outputToNoOne().run();
        EXPECT_EQ(gone.exitCode, 0) << command;
        EXPECT_EQ(gone.error, "") << command;
    }
}

} // namespace NBrenmark
