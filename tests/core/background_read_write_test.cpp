// A worker that is waited for: what it ends with reaches the caller, at once.

#include "core/background_read_write.h"

#include "core/cause.h"
#include "core/progress.h"
#include "core/read_write.h"
#include "core/stop_flag.h"
#include "core/versioned_stream.h"
#include "support/no_threads.h"

#include <QBuffer>
#include <QThread>
#include <gtest/gtest.h>
#include <functional>

namespace NBrenmark {
namespace {

class CTarget : public IReadWrite
{
public:
    bool read(CVersionedStream&, IProgressController*) override { return onRead(); }
    bool write(CVersionedStream&, IProgressController*) override { return onWrite(); }
    std::function<bool()> onRead = [] { return true; };
    std::function<bool()> onWrite = [] { return true; };
};

class CController : public IProgressController
{
public:
    void startStep(int, const QString&, bool) override {}
    void tick(int) override {}
    void endStep() override {}
    void cancel() override { wasCancelled = true; }
    unsigned char cancelState() override { return state; }
    unsigned char state = eGoOn;
    bool wasCancelled = false;
};

class BackgroundReadWrite : public testing::Test
{
protected:
    bool execute(bool isWrite, qint64 timeLimit = CBackgroundReadWriteController::defaultTimeLimit)
    {
        QBuffer buffer;
        CVersionedStream stream(&buffer);
        CBackgroundReadWriteController controller(target, stream, isWrite, &progress);
        const bool result = controller.execute(timeLimit);
        errorText = controller.errorText();
        return result;
    }

    CTarget target;
    CController progress;
    std::string errorText;
};

TEST_F(BackgroundReadWrite, givesTheResultOfTheOneThatWasAsked)
{
    target.onRead = [] { return false; };
    EXPECT_FALSE(execute(false));
    EXPECT_TRUE(execute(true));
    EXPECT_EQ(errorText, "");
}

TEST_F(BackgroundReadWrite, isDoneByTheCallerWhereNoThreadIsToBeHad)
{
    const CNoThreads noThreads;
    int writes = 0;
    target.onWrite = [&writes] { return ++writes > 1; };
    EXPECT_FALSE(execute(true));
    EXPECT_TRUE(execute(true));
    EXPECT_EQ(writes, 2);
}

TEST_F(BackgroundReadWrite, turnsExceptionsIntoAFailureWithTheirText)
{
    target.onRead = []() -> bool { throw std::runtime_error("reason"); };
    EXPECT_FALSE(execute(false));
    EXPECT_EQ(errorText, "reason");
    target.onRead = []() -> bool { throw caused_error(eCauseUnsupported, "walls of glass"); };
    EXPECT_FALSE(execute(false));
    EXPECT_EQ(errorText, "walls of glass");
    target.onRead = []() -> bool { throw CReadStopped(); };
    EXPECT_FALSE(execute(false));
    EXPECT_EQ(errorText, "");
}

TEST_F(BackgroundReadWrite, aCancelUndoesAReadAndNoWrite)
{
    progress.state = eCancel;
    EXPECT_FALSE(execute(false));
    EXPECT_TRUE(execute(true));
    progress.state = eStopWithoutFailure;
    EXPECT_TRUE(execute(false));
}

TEST_F(BackgroundReadWrite, stopsWhatTakesTooLong)
{
    target.onRead = [] {
        while (true) {
            leaveIfStopped();
            QThread::msleep(1);
        }
        return true;
    };
    EXPECT_FALSE(execute(false, 20));
    EXPECT_TRUE(progress.wasCancelled);
    EXPECT_NE(errorText, "");
    EXPECT_FALSE(stopRequested()) << "the next read is not to be stopped";
}

TEST_F(BackgroundReadWrite, isNotStoppedByAStopForAnother)
{
    requestStop();
    target.onRead = [] {
        leaveIfStopped();
        return true;
    };
    EXPECT_TRUE(execute(false));
}

} // namespace
} // namespace NBrenmark
