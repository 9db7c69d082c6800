// A disk that fails at every write of a conversion, one after the other. Each time the conversion says that it failed,
// on what file and why, and ends as a program should.
#include "core/version.h"

#include "support/failing_disk.h"
#include "support/legacy_deck.h"
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
        deck.write(folder.path(), "source");
    }

    SToolResult convert(const CFailingDisk& disk)
    {
        QDir(targetFolder()).removeRecursively();
        QDir().mkpath(targetFolder());
        CToolRun run({"convert", argument(folder.path("source.dem")), argument(targetFolder() + "/target")});
        disk.preloadInto(run);
        return run.run();
    }
    QString targetFolder() const { return folder.path("out"); }

    CTempFolder folder;
};

TEST_P(FailingWrites, failTheConversionWithFileAndCause)
{
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
        if (result.exitCode == 0 && !GetParam().staysFull && failed.find("_data/") == std::string::npos)
            continue;
        EXPECT_EQ(result.exitCode, 4) << "write " << at << ", " << failed << result.error;
        if (failed.find(".h5") == std::string::npos && failed.find(".dem") == std::string::npos)
            continue;
        EXPECT_NE(result.error.find(GetParam().cause), std::string::npos) << failed << result.error;
        EXPECT_NE(result.error.find(failed.substr(failed.find('/'))), std::string::npos) << failed << result.error;
    }
}

static const SFailure failures[] = {{"fullDisk", ENOSPC, true, "No space left on device"},
                                    {"brokenDisk", EIO, false, "Input/output error"}};

INSTANTIATE_TEST_SUITE_P(All, FailingWrites, testing::ValuesIn(failures),
                         [](const testing::TestParamInfo<SFailure>& tested) { return tested.param.name; });

} // namespace NBrenmark
