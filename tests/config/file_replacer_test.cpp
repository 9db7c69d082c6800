// A finished file reaches its target or is reported: nothing is lost in between.

#include "config/file_replacer.h"

#include "core/log.h"
#include "support/full_disk.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace NBrenmark {
namespace {

bool replaceBy(const QByteArray& bytes, const QString& target)
{
    CFileReplacement replacement;
    EXPECT_TRUE(replacement.isOpen());
    replacement.device().write(bytes);
    return replacement.replace(target);
}

/// The file that a message says was kept, removed; its content before.
QByteArray takeKeptFile(const std::string& cause)
{
    const QString start = "kept as ";
    const QString text = QString::fromStdString(cause);
    QFile kept(text.mid(text.indexOf(start) + start.size()).chopped(1));
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly)) << cause;
    const QByteArray bytes = kept.readAll();
    kept.remove();
    return bytes;
}

TEST(FileReplacement, arrivesWholeAndLeavesNothingBehind)
{
    const CTempFolder folder;
    const QByteArray large(5 * 1024 * 1024 + 1, 'x');
    folder.write("old", "something longer than what comes");
    folder.write("mine", "whoever laid the link beside the target");
    QFile::link(folder.path("mine"), folder.path("old.part"));
    EXPECT_TRUE(replaceBy("new", folder.path("old")));
    EXPECT_TRUE(replaceBy("", folder.path("empty")));
    EXPECT_TRUE(replaceBy(large, folder.path("large")));
    EXPECT_TRUE(waitForCopies().empty());
    EXPECT_EQ(folder.read("old"), "new");
    EXPECT_EQ(folder.read("empty"), "");
    EXPECT_EQ(folder.read("large"), large);
    EXPECT_EQ(folder.read("mine"), "whoever laid the link beside the target");
    EXPECT_EQ(folder.names().size(), 5);
}

TEST(FileReplacement, ofOneTargetKeepTheirOrder)
{
    const CTempFolder folder;
    for (int i = 0; i <= 50; ++i)
        replaceBy(QByteArray(1000 * (51 - i), 'x') + QByteArray::number(i), folder.path("a"));
    EXPECT_TRUE(waitForCopies().empty());
    EXPECT_EQ(folder.read("a"), QByteArray(1000, 'x') + "50");
}

TEST(FileReplacement, waitsForATargetThatIsOutOfReachForAMoment)
{
    const CTempFolder folder;
    EXPECT_TRUE(replaceBy("late", folder.path("later/a")));
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    QDir(folder.path()).mkdir("later");
    EXPECT_TRUE(waitForCopies().empty());
    EXPECT_EQ(folder.read("later/a"), "late");
}

TEST(FileReplacement, reportsATargetThatNoTryReaches)
{
    const CTempFolder folder;
    CPersistentLogger logger(eError);
    addLogModule(&logger);
    EXPECT_TRUE(replaceBy("precious", folder.path("no such folder/a.ess")));
    const std::vector<SFailedCopy> failed = waitForCopies();
    clearLogModules();

    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].target, folder.path("no such folder/a.ess"));
    EXPECT_EQ(takeKeptFile(failed[0].cause), "precious");
    ASSERT_EQ(logger.messages().size(), 1u);
    EXPECT_NE(std::get<2>(logger.messages()[0]).find("no such folder/a.ess could not be written: "), std::string::npos);
    EXPECT_TRUE(waitForCopies().empty()) << "told once";
}

TEST(FileReplacement, isNotLostToTheEndOfTheProcess)
{
    const CTempFolder folder;
    const QByteArray bytes(8 * 1024 * 1024, 'x');
    EXPECT_EXIT(
        {
            replaceBy("first", folder.path("not yet/a")); // keeps trying while the process ends
            replaceBy(bytes, folder.path("b"));
            QDir(folder.path()).mkdir("not yet");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(folder.read("not yet/a"), "first");
    EXPECT_TRUE(folder.read("b") == bytes);
}

TEST(FileReplacement, takesNoPartOfAFileForTheWhole)
{
    const CTempFolder folder;
    const QByteArray bytes(3000000, 'x');
    folder.write("a", "the earlier file");
    std::vector<SFailedCopy> failed;
    {
        CFileReplacement replacement;
        replacement.device().write(bytes);
        EXPECT_TRUE(replacement.complete());
        const CFullDisk disk(2000000);
        EXPECT_TRUE(replacement.replace(folder.path("a")));
        failed = waitForCopies();
    }
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_TRUE(takeKeptFile(failed[0].cause) == bytes);
    EXPECT_EQ(folder.read("a"), "the earlier file");
    EXPECT_EQ(folder.names().size(), 1) << "and no part of the new one";
}

TEST(FileReplacement, thatIsNotWholeItselfLeavesTheTargetAlone)
{
    const CTempFolder folder;
    folder.write("a", "old");
    {
        CFileReplacement replacement;
        const CFullDisk disk(1000);
        replacement.device().write(QByteArray(3000, 'x'));
        EXPECT_FALSE(replacement.replace(folder.path("a")));
        EXPECT_NE(replacement.cause(), "");
    }
    EXPECT_TRUE(waitForCopies().empty());
    EXPECT_EQ(folder.read("a"), "old");
}

} // namespace
} // namespace NBrenmark
