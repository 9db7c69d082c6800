// A disk that fails at every write of a conversion, one after the other. Each time the conversion says that it failed,
// on what file and why, and ends as a program should.
#include "core/version.h"

#include "support/failing_disk.h"
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"
#include <gtest/gtest.h>
#include <cerrno>
#include <ostream>

namespace NBrenmark {

struct SFailure
{
    const char* name;
    int error;
    bool staysFull; ///< every later write fails as well
    const char* cause;
};

static std::ostream& operator<<(std::ostream& stream, const SFailure& c) { return stream << c.name; }

class FailingWrites : public testing::TestWithParam<SFailure>
{
protected:
    FailingWrites()
    {
        SDeckCreator model = sampleCreator();
        CLegacyDeck deck(makeVersion(27, 0, 3));
        deck.creator(model).timestep(sampleTimestep(0.1)).timestep(sampleTimestep(0.2));
        deck.write(source.path(), "source");
        settingsWith(deck.version, 0, {{"Heat", 0, 2, 0, {1, 2}}}, -1, {}).toFile(source.path("source.ess"));
        configurationFile("27.0.0", {"SITE:NOTE=STD STRING:kept"}).toFile(source.path("source.dfg"));
        source.write("source.ptf", "anything");
    }

    SToolResult convert(const CFailingDisk& disk)
    {
        QDir(targetFolder()).removeRecursively();
        QDir().mkpath(targetFolder() + "/temporary"); // settings and configuration are begun there
        CToolRun run({"convert", argument(source.path("source.dem")), argument(targetFolder() + "/target")});
        run.environment("TMPDIR", argument(targetFolder() + "/temporary"));
        disk.preloadInto(run);
        return run.run();
    }
    QString targetFolder() const { return folder.path("out"); }

    /// Called done, it must be done.
    void expectNoDifference(const std::string& failed)
    {
        const SToolResult verified =
            runTool({"verify", argument(source.path("source.dem")), argument(targetFolder() + "/target.dem")});
        EXPECT_EQ(verified.exitCode, 0) << failed << verified.output << verified.error;
    }

    CTempFolder source;
    CTempFolder folder;
};

TEST_P(FailingWrites, failTheConversionWithFileAndCause)
{
    const CSnapshot before = source.snapshot();
    CFailingDisk disk(targetFolder(), folder.path("failed"));
    ASSERT_EQ(convert(disk).exitCode, 0);
    const long writes = disk.countedWrites();
    ASSERT_GT(writes, 50);
    for (long at = 1; at <= writes; ++at) {
        disk.fail(at, GetParam().error, GetParam().staysFull);
        const SToolResult result = convert(disk);
        const std::string failed = disk.failedWrite();
        ASSERT_NE(failed, "") << "write " << at;
        // Settings and configuration are finished elsewhere and copied: a copy that fails once is tried again.
        if (result.exitCode == 0 && !GetParam().staysFull && failed.find("_data/") == std::string::npos) {
            expectNoDifference(failed);
            continue;
        }
        EXPECT_EQ(result.exitCode, 4) << "write " << at << ", " << failed << result.error;
        EXPECT_NE(result.error.find(GetParam().cause), std::string::npos) << failed << result.error;
        // Settings and configuration are two files from one place, of which either may be told first.
        const bool isDeck = failed.find(".h5") != std::string::npos ||
                            failed.find("/target.dem", failed.size() - 11) != std::string::npos;
        const auto names = [&](const std::string& file) { return result.error.find(file) != std::string::npos; };
        EXPECT_TRUE(isDeck ? names(failed.substr(failed.find('/')))
                           : names("target.ess: ") || names("target.dfg: ") || names("/target.dem.partial/"))
            << failed << result.error;
    }
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
}

static const SFailure failures[] = {{"fullDisk", ENOSPC, true, "No space left on device"},
                                    {"brokenDisk", EIO, false, "Input/output error"}};

INSTANTIATE_TEST_SUITE_P(All, FailingWrites, testing::ValuesIn(failures),
                         [](const testing::TestParamInfo<SFailure>& tested) { return tested.param.name; });

} // namespace NBrenmark
