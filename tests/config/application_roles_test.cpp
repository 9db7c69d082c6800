// The three roles: each has its key, fills its gaps with defaults, and leaves what it doesn't know.

#include "config/application_roles.h"

#include "config/config_file.h"
#include "core/log.h"
#include "support/golden.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace NBrenmark {
namespace {

using NConfig::CConfigManager;
using NConfig::CKeyPath;

CKeyPath path(const char* text) { return CKeyPath::fromString(text); }

/// A tree with the roles on it.
struct SRoleTree
{
    CConfigManager manager;
    SApplicationRoles roles{manager};

    int read(const QByteArray& entries, const QByteArray& fileVersion = "27.0.3")
    {
        const CTempFolder folder;
        const QString file = folder.write(
            "a.dfg", "!format=KEYPATHVALUE\n!format-version=2.4.0.1\n!file-version=" + fileVersion + "\n" + entries);
        return NConfig::readConfigurationFile(file.toStdString(), *manager.rootHandle(), {});
    }
    /// The entries, in any order that is always the same.
    QList<QByteArray> entries()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        EXPECT_EQ(NConfig::writeConfiguration(buffer, *manager.rootHandle()), NConfig::eConfigDone);
        QList<QByteArray> lines = buffer.data().split('\n');
        lines.erase(lines.begin(), lines.begin() + 3);
        lines.removeLast();
        std::sort(lines.begin(), lines.end());
        return lines;
    }
};

QList<QByteArray> linesOf(const QByteArray& text)
{
    QList<QByteArray> lines = text.trimmed().split('\n');
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(ApplicationRoles, giveATreeWithoutAFileEveryDefault)
{
    SRoleTree tree;
    EXPECT_EQ(tree.roles.creator.configuration(), nullptr);
    EXPECT_TRUE(tree.manager.loadAll());
    const QList<QByteArray> defaults = tree.entries();
    expectKept("default_configuration.txt", (defaults.join('\n') + '\n').toStdString());

    EXPECT_TRUE(tree.manager.resetAll(true));
    EXPECT_EQ(tree.entries(), QList<QByteArray>());
    EXPECT_TRUE(tree.manager.resetAll(false));
    // The views of creator and processor are no own keys of theirs.
    QList<QByteArray> expected = defaults;
    EXPECT_TRUE(expected.removeOne("CREATOR:VIEWS:CURRENT VIEW=QT STRING:"));
    EXPECT_TRUE(expected.removeOne("PROCESSOR:VIEWS:CURRENT VIEW=QT STRING:"));
    EXPECT_EQ(tree.entries(), expected);
}

// What a file holds comes first, keys that no one knows among it: below a role, in the elements of its lists,
// where a list has other children, and beside the roles.
TEST(ApplicationRoles, changeNothingThatAFileHolds)
{
    const QByteArray held = "PROCESSOR:GENERAL:NUM THREADS=INT:8\n"
                            "PROCESSOR:GENERAL:UNHEARD OF=3D POINT:(1, 2, 3)\n"
                            "PROCESSOR:GENERAL=QT STRING:a value beside its children\n"
                            "CREATOR:VIEWS:00002:Name=QT STRING:front\n"
                            "CREATOR:VIEWS:00002:FOG=FLOAT:0.25\n"
                            "CREATOR:VIEWS:2=INT:1\n"
                            "ANALYST:DISPLAY OPTIONS:00001:CHART:RANGE:MAX:VALUE=DOUBLE:7.5\n"
                            "ANALYST:CLIPPING GROUPS:00001:PLANE:00003:X=DOUBLE:-1\n"
                            "ANALYST:DATA EXPORT:00001:DATA MINER:QUERIES:00001:SECTION=QT STRING:kept\n"
                            "ANALYST:DATA EXPORT:00001:TEXT:DELIMITER=CHAR:;\n"
                            "ANALYST:PARTICLE REPRESENTATION:ACTIVE=BOOLEAN:TRUE\n"
                            "SITE NOTES:OWNER=STD STRING:a=b: c\n"
                            "CREATOR2=STD STRING SET:\"x\\,y\"\n";
    SRoleTree tree;
    ASSERT_EQ(tree.read(held), NConfig::eConfigDone);
    EXPECT_TRUE(tree.manager.loadAll());
    const QList<QByteArray> entries = tree.entries();
    for (const QByteArray& line : linesOf(held))
        EXPECT_TRUE(entries.contains(line)) << line.toStdString();
    // The gaps of an element are filled like those of a role: 8 keys of a view, 20 + 27 of an option, 3 + 12 of a
    // group with one plane, 16 + 3 of an export; the others of the file have none of their own.
    const auto below = [&](const char* start) {
        return std::count_if(entries.begin(), entries.end(), [&](const QByteArray& e) { return e.startsWith(start); });
    };
    EXPECT_EQ(below("CREATOR:VIEWS:00002:"), 8 + 1);
    EXPECT_EQ(below("CREATOR:VIEWS:2"), 1);
    EXPECT_EQ(below("ANALYST:DISPLAY OPTIONS:"), 20 + 27);
    EXPECT_EQ(below("ANALYST:CLIPPING GROUPS:00001:"), 3 + 12);
    EXPECT_EQ(below("ANALYST:DATA EXPORT:"), 16 + 3 + 1);
    EXPECT_EQ(below("ANALYST:USER TEXT"), 0);
    EXPECT_EQ(below("SITE NOTES"), 1);

    // Once filled, a tree has no gaps.
    EXPECT_TRUE(tree.manager.loadAll());
    EXPECT_EQ(tree.entries(), entries);
}

TEST(ApplicationRoles, chooseTheTimestepByTheVersionOfTheFile)
{
    const std::pair<const char*, bool> cases[] = {
        {"24.0.0", false}, {"29.255.255", false}, {"30.0.0", true}, {"30.0.2", true}, {"31.0.0", true}};
    for (const auto& [version, isAuto] : cases) {
        SRoleTree tree;
        ASSERT_EQ(tree.read("", version), NConfig::eConfigDone);
        EXPECT_TRUE(tree.manager.loadAll());
        EXPECT_EQ(tree.manager.value<bool>(path("PROCESSOR:GENERAL:AUTO TIMESTEP")), isAuto) << version;
    }
    SRoleTree told;
    ASSERT_EQ(told.read("PROCESSOR:GENERAL:AUTO TIMESTEP=BOOLEAN:TRUE\n"), NConfig::eConfigDone);
    EXPECT_TRUE(told.manager.loadAll());
    EXPECT_TRUE(told.manager.value<bool>(path("PROCESSOR:GENERAL:AUTO TIMESTEP")));
}

TEST(ApplicationRoles, saveWhatTheKeysDontTakeOut)
{
    SRoleTree tree;
    ASSERT_EQ(tree.read("PROCESSOR:WRITE:SELECTIVE SAVE:TIMESTEP:BONDS=BOOLEAN:FALSE\n"
                        "PROCESSOR:WRITE:SELECTIVE SAVE:PARTICLE:CUSTOM PROPERTIES=BOOLEAN:FALSE\n"
                        "PROCESSOR:WRITE:SELECTIVE SAVE:GEOMETRY:FORCE AND TORQUE=BOOLEAN:FALSE\n"),
              NConfig::eConfigDone);
    EXPECT_TRUE(tree.manager.loadAll());
    const SSelectiveSave& masks = tree.roles.processor->selectiveSave();
    EXPECT_EQ(masks.timestepMask, 255u - 64u);
    EXPECT_EQ(masks.particleMask, 47u - 32u);
    EXPECT_EQ(masks.geometryMask, 41u - 8u);

    EXPECT_TRUE(tree.manager.resetAll(false));
    EXPECT_EQ(masks.timestepMask, 255u);
}

TEST(ApplicationRoles, reportAKeyOfAnotherKindAndLeaveIt)
{
    SRoleTree tree;
    ASSERT_EQ(tree.read("PROCESSOR:GENERAL:PSI=DOUBLE:3\nANALYST:STEP:MODE=INT:2\n"), NConfig::eConfigDone);
    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    EXPECT_FALSE(tree.manager.loadAll());
    clearLogModules();
    ASSERT_EQ(logger.messages().size(), 1u);
    EXPECT_NE(std::get<2>(logger.messages()[0]).find("different type (Key: PROCESSOR:GENERAL:PSI)"), std::string::npos);
    EXPECT_EQ(tree.manager.value<double>(path("PROCESSOR:GENERAL:PSI")), 3.0);
    EXPECT_EQ(tree.manager.value<int>(path("ANALYST:STEP:MODE")), 2);
    // Creator comes before it and is whole, whatever the addresses of this run.
    EXPECT_TRUE(tree.manager.findNode(path("CREATOR:VIEWS:CURRENT VIEW"), false));
    EXPECT_FALSE(tree.manager.findNode(path("ANALYST:IMAGE EXPORT"), false));
}

TEST(ApplicationRoles, theProcessHasOneProcessor)
{
    CConfigManager manager;
    EXPECT_EQ(CProcessor::current(), nullptr);
    auto processor = std::make_unique<CProcessor>(manager);
    EXPECT_EQ(CProcessor::current(), processor.get());
    EXPECT_FALSE(SApplicationRoles(manager).processor);
    EXPECT_EQ(CProcessor::current(), processor.get());
    processor.reset();
    EXPECT_EQ(CProcessor::current(), nullptr);
    EXPECT_TRUE(manager.loadAll());
}

} // namespace
} // namespace NBrenmark
