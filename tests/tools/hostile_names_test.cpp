// Names that would steer a terminal: of files and out of decks, through every command.
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

namespace NBrenmark {

/// ESC, BEL, DEL, CSI and OSC of C1, right-to-left override, isolate, mark.
static const QString hostile =
    QString::fromUtf8("x\x1b[2J\x07\x7f\xC2\x9B\xC2\x9D\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\x8F\xD8\x9C!");

/// The first character of a text that isn't shown by a terminal but steers it; 0 for none.
static int steering(const std::string& text)
{
    for (const QChar c : QString::fromStdString(text)) {
        const int code = c.unicode();
        const bool isControl = (code < 0x20 && code != '\n' && code != '\t') || (code >= 0x7F && code < 0xA0);
        const bool isDirection = code == 0x61C || code == 0x200E || code == 0x200F ||
                                 (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        if (isControl || isDirection || code == QChar::ReplacementCharacter)
            return code;
    }
    return 0;
}

TEST(HostileNames, reachTheTerminalNowhere)
{
    CTempFolder folder;
    SDeckCreator model = sampleCreator();
    model.description = model.title = hostile;
    model.materials.push_back(model.materials.at(0));
    model.materials.back().name = hostile; // which no particle type uses: there is a warning about it
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(model).timestep(sampleTimestep(0.1));
    const std::string path = argument(deck.write(folder.path(), hostile));
    configurationFile("27.0.0", {"A=STD STRING:" + argument(hostile)}).toFile(folder.path(hostile + ".dfg"));
    const std::string out = argument(folder.path("out" + hostile));
    const std::string none = argument(folder.path("none\n" + hostile));
    folder.write("bad" + hostile + ".dem", "no deck");

    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"convert", "--verbose", "--verify", path, out},
                                               {"convert", path, out},
                                               {"convert", path, out, none},
                                               {"check", argument(folder.path())},
                                               {"check", "--json", path},
                                               {"info", path},
                                               {"info", "--json", out + ".dem"},
                                               {"info", none},
                                               {"config", path},
                                               {"config", path, none},
                                               {"dump", "--full", path},
                                               {"verify", path, out + ".dem"},
                                               {"verify", "--json", path, path},
                                               {argument(hostile)},
                                               {"info", "--" + argument(hostile), path},
                                               {"info", "--progress", argument(hostile), path}}) {
        const SToolResult result = runTool(arguments);
        EXPECT_EQ(steering(result.output), 0) << arguments[0] << ": " << result.output;
        EXPECT_EQ(steering(result.error), 0) << arguments[0] << ": " << result.error;
        EXPECT_FALSE(result.output.empty() && result.error.empty()) << arguments[0];
    }
}

} // namespace NBrenmark
