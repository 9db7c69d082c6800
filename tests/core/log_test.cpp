#include "core/log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace NBrenmark {

using testing::ElementsAre;

/// Writes down what reaches it, and in which order among several.
class CRecorder : public ILogModule
{
public:
    CRecorder(std::string name, std::vector<std::string>& record) : name(std::move(name)), record(record) {}
    void log(ELogLevel level, const std::string& title, const std::string& text, unsigned char flag,
             quint32 reserved) override
    {
        record.push_back(name + " " + logLevelName(level) + " " + title + ": " + text + " " + std::to_string(flag) +
                         std::to_string(reserved));
    }
    void setThreshold(ELogLevel) override {}
    void flush(quint32 reserved) override { record.push_back(name + " flush " + std::to_string(reserved)); }

private:
    std::string name;
    std::vector<std::string>& record;
};

class Log : public testing::Test
{
protected:
    Log() { clearLogOnceMemory(); }
    ~Log() override
    {
        clearLogModules();
        clearLogOnceMemory();
    }
    std::vector<std::string> record;
    CRecorder first{"first", record};
    CRecorder second{"second", record};
};

TEST_F(Log, reachesEachModuleOnceInListOrder)
{
    addLogModule(&first);
    addLogModule(nullptr);
    addLogModule(&second);
    addLogModule(&first); // is in the list already
    logMessage(eWarning, "title", "text", 7);
    flushLogModules();
    EXPECT_THAT(record, ElementsAre("first WARNING title: text 70", "second WARNING title: text 70", "first flush 0",
                                    "second flush 0"));
    clearLogModules();
    logMessage(eError, "title", "text");
    EXPECT_EQ(record.size(), 4u);
}

TEST_F(Log, saysOnceWhatIsToBeSaidOncePerDeck)
{
    logMessage(eError, "t", "kept without a module", 0, 1);
    addLogModule(&first);
    logMessage(eError, "t", "kept without a module", 0, 1); // was said, if to no one
    logMessage(eError, "t", "new", 0, 1);
    logMessage(eWarning, "t", "new", 3, 1); // level and flag are no part of what is remembered
    logMessage(eError, "t", "new", 0, 0);
    logMessage(eError, "t", "new", 0, 2); // only 1 means once
    logMessage(eError, "a|b", "c", 0, 1);
    logMessage(eError, "a", "b|c", 0, 1); // the same key
    EXPECT_THAT(record, ElementsAre("first ERROR t: new 00", "first ERROR t: new 00", "first ERROR t: new 00",
                                    "first ERROR a|b: c 00"));
    record.clear();
    logMessage(eInfo, "t", "every time");
    logMessage(eInfo, "t", "every time", 0, 1); // may still be said once
    logMessage(eInfo, "t", "every time", 0, 1);
    EXPECT_EQ(record.size(), 2u);
    clearLogOnceMemory();
    logMessage(eError, "t", "new", 0, 1);
    EXPECT_EQ(record.size(), 3u);
}

TEST_F(Log, loggerKeepsFromItsThresholdOn)
{
    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    for (const ELogLevel level : {eDebug, eTrace, ePerf, eInfo, eWarning, eError})
        logMessage(level, "level", logLevelName(level));
    EXPECT_THAT(logger.messages(), ElementsAre(SLogMessage(4, "level", "WARNING"), SLogMessage(5, "level", "ERROR")));
    logger.setThreshold(eError);
    logMessage(eWarning, "level", "dropped now");
    logMessage(eError, "level", "kept");
    const std::vector<SLogMessage> kept = logger.messages();
    ASSERT_EQ(kept.size(), 3u); // those before the change stay
    EXPECT_EQ(std::get<2>(kept.back()), "kept");
}

TEST_F(Log, loggerCountsWhatComesBeyondAGreatNumber)
{
    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    const quint64 kept = 20000, more = 5; // of two rows each
    for (quint64 i = 0; i < kept + more; ++i)
        report(eLost, NLogTitle::legacyRead, "row " + std::to_string(i), 2);
    reportFailure(NLogTitle::legacyRead, "cut");
    ASSERT_EQ(logger.records().size(), kept + 2);
    const SLogRecord& others = logger.records()[kept];
    EXPECT_EQ(others.count, 2 * more);
    EXPECT_EQ(others.text, "5 more messages of this kind, of which the first: row 20000");
    EXPECT_EQ(logger.records().back().text, "cut") << "what ends a conversion is never one of many";
}

TEST_F(Log, loggerLosesNothingWhenATeamOfThreadsLogs)
{
    CPersistentLogger logger(eDebug);
    addLogModule(&logger);
#pragma omp parallel for num_threads(4)
    for (int i = 0; i < 400; ++i) {
        logMessage(eInfo, "team", std::to_string(i));
        logMessage(eInfo, "team", "once", 0, 1);
        flushLogModules();
    }
    EXPECT_EQ(logger.messages().size(), 401u);
}

TEST_F(Log, recordsTakeTheirPlaceFromTheWorkOfTheirThread)
{
    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    addLogModule(&first); // one that overrides nothing gets the whole text
    {
        const CPlaceScope file(SDataPlace{"a.dem", {}, {}, {}});
        const CPlaceScope timestep(placeAtWork().inTimestep(3));
        const CPlaceScope block(placeAtWork().inBlock("contacts"));
        report(eLost, NLogTitle::legacyRead, "two rows dropped", 2, "Drum");
        report(eLost, NLogTitle::legacyRead, "none", 0);
        reportOnce(eUpgraded, NLogTitle::conversion, "once");
        reportOnce(eUpgraded, NLogTitle::conversion, "once");
    }
    reportFailure(NLogTitle::settings, "no room", eCauseTarget);
    reportFailure(NLogTitle::hdf5Read, "cut");
    ASSERT_EQ(logger.records().size(), 4u);
    const SLogRecord& lost = logger.records()[0];
    EXPECT_EQ(lost.placedText(), "a.dem, timestep 3: two rows dropped");
    EXPECT_EQ(lost.place.block + " " + lost.place.object, "contacts Drum");
    EXPECT_EQ(lost.count, 2u);
    EXPECT_EQ(logger.records()[2].cause, eCauseTarget); // told by the message
    EXPECT_EQ(logger.records()[3].cause, eCauseSource); // by the title
    EXPECT_EQ(record[0], "first WARNING Legacy read: a.dem, timestep 3: two rows dropped 00");
}

} // namespace NBrenmark
