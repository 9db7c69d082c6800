// What is read of a deck, value by value, and what is said of that, as files in tests/golden/decks: two fields of one type
// that change places in a form, or a value that is no longer read, differ there even where the same form reads and writes
// them. The bytes come from elsewhere: the samples from another writer, old decks from support/old_deck.cpp, field by
// field.
#include "core/version.h"
#include "support/golden.h"
#include "support/old_deck.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <QDir>

#include <map>
#include <regex>

namespace NBrenmark {

/// The model, and the last timestep.
static std::string lastOf(const std::string& dump)
{
    std::string model, timestep, name;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("timestep/", 0) != 0) {
            model += line + '\n';
            continue;
        }
        const std::string number = line.substr(0, line.find('/', sizeof "timestep/" - 1));
        if (number != name)
            timestep.clear();
        name = number;
        timestep += line + '\n';
    }
    return model + timestep;
}

TEST(DumpedDecks, ofOthersWritersHoldWhatTheyHeld)
{
    const QDir samples(QString::fromStdString(projectFolder() + "/samples"));
    const QStringList names = samples.entryList({"*.dem"});
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        const SToolResult dump = runTool({"dump", samples.filePath(name).toStdString()});
        EXPECT_EQ(dump.exitCode, 0) << dump.error;
        expectKept("decks/" + name.chopped(4).toStdString() + ".txt", lastOf(dump.output) + dump.error);
    }
}

/// Values by their paths, without those of the file, and of the model that each timestep reads again; messages by
/// themselves.
static std::map<std::string, std::string> valuesOf(const std::string& dump)
{
    std::map<std::string, std::string> values;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("stored/", 0) != 0 && line.rfind("creator@", 0) != 0)
            values[line.rfind("brenmark:", 0) == 0 ? line : line.substr(0, line.find(' '))] = line;
    return values;
}

TEST(DumpedDecks, ofOldVersionsDifferFromThoseBeforeInWhatIsStored)
{
    const CTempFolder folder;
    std::map<std::string, std::string> before;
    std::string text;
    for (const quint32 version : oldVersions) {
        const QString deck = writeOldDeck(version, folder.path(), "old");
        const SToolResult dump = runTool({"dump", "--full", deck.toStdString()});
        EXPECT_NE(dump.output, "") << dump.error;
        text += "== " + versionText(version).toStdString() + '\n';
        std::map<std::string, std::string> values = valuesOf(lastOf(dump.output) + dump.error);
        for (const auto& [path, line] : before)
            if (values.count(path) == 0)
                text += "- " + path + '\n';
        for (const auto& [path, line] : values)
            if (before[path] != line)
                text += line + '\n';
        before = std::move(values);
    }
    expectKept("decks/old versions.txt", text);
}

} // namespace NBrenmark
