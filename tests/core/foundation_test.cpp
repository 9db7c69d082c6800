// Versions, the stopwatch, the stop flag and the stream with a version.
#include "core/stop_flag.h"
#include "core/timer.h"
#include "core/version.h"
#include "core/versioned_stream.h"

#include <QBuffer>
#include <gtest/gtest.h>
#include <chrono>
#include <thread>

namespace NBrenmark {

TEST(Version, packsIntoOneComparableWord)
{
    // Numbers that files hold: read off their first bytes.
    EXPECT_EQ(makeVersion(2, 4, 58), 132154u);
    EXPECT_EQ(makeVersion(30, 0, 0), 1966080u);
    EXPECT_EQ(currentFileVersion(), 1966100u);
    EXPECT_LT(makeVersion(20, 0, 255), makeVersion(20, 1, 0));
    EXPECT_EQ(versionText(makeVersion(27, 0, 3)), QString("27.0.3"));
    EXPECT_EQ(versionText(makeVersion(2, 255, 0)), QString("2.255.0"));
}

TEST(Version, majorThreeCountsAsTwenty)
{
    struct SCase
    {
        quint32 stored;
        quint32 counts;
    };
    const SCase cases[] = {
        {makeVersion(3, 4, 7), makeVersion(20, 4, 7)},  {makeVersion(3, 0, 0), makeVersion(20, 0, 0)},
        {makeVersion(2, 4, 7), makeVersion(2, 4, 7)},   {makeVersion(4, 0, 0), makeVersion(4, 0, 0)},
        {makeVersion(30, 0, 4), makeVersion(30, 0, 4)}, {makeVersion(20, 0, 3), makeVersion(20, 0, 3)},
        {makeVersion(13, 0, 9), makeVersion(13, 0, 9)},
    };
    QBuffer buffer;
    CVersionedStream stream(&buffer);
    for (const SCase& c : cases) {
        stream.setFileVersion(c.stored);
        EXPECT_EQ(stream.fileVersion(), c.counts) << versionText(c.stored).toStdString();
    }
}

TEST(VersionedStream, writesBigEndianDoublesOfEightBytesAndNullTexts)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    CVersionedStream stream(&buffer);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision); // no say in this encoding
    stream << quint32(0x01020304) << 1.0 << QStringLiteral("Ä") << QString() << QString("");
    EXPECT_EQ(buffer.data().toHex().toStdString(), "01020304"
                                                   "3ff0000000000000"
                                                   "0000000200c4"
                                                   "ffffffff"
                                                   "00000000");
    buffer.seek(4);
    EXPECT_EQ(stream.bytesLeft(), buffer.size() - 4);
    buffer.seek(buffer.size());
    EXPECT_EQ(stream.bytesLeft(), 0);
}

TEST(Timer, addsUpSpansAndCountsASecondStopFromTheSameStart)
{
    using namespace std::chrono_literals;
    CTimer timer;
    EXPECT_EQ(timer.elapsedSeconds(), 0.0);
    timer.start();
    std::this_thread::sleep_for(20ms);
    timer.stop();
    const double once = timer.elapsedSeconds();
    EXPECT_GE(once, 0.02);
    timer.stop(); // the span from the one start again, so at least as long
    EXPECT_GE(timer.elapsedSeconds(), 2 * once);
}

TEST(StopFlag, readingLeavesByAnExceptionThatRecoveryDoesNotCatch)
{
    clearStop();
    EXPECT_NO_THROW(leaveIfStopped());
    requestStop();
    EXPECT_TRUE(stopRequested());
    const auto recoveringRead = [] {
        try {
            leaveIfStopped();
        }
        catch (const std::exception&) {
            FAIL() << "a stop was taken for a damaged block";
        }
    };
    EXPECT_THROW(recoveringRead(), CReadStopped);
    clearStop();
    EXPECT_FALSE(stopRequested());
}

} // namespace NBrenmark
