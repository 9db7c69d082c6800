// What a host sees of a conversion: results, texts, signals, and that the source stays what it was.

#include "api/data_converter.h"
#include "config/file_replacer.h"

#include "core/deck/application_state.h"
#include "core/log.h"
#include "support/paths.h"
#include "support/plugin_folders.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QMetaMethod>
#include <QObject>
#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <unistd.h>
#include <vector>

namespace NBrenmark {
namespace {

/// A host that writes down every signal in order.
class CHost
{
public:
    CHost()
    {
        QObject::connect(&converter, &CDataConverter::starting, [this](int steps, const QString& title, bool infinite) {
            heard.push_back(QString("starting %1 %2").arg(steps).arg(infinite));
            startTitle = title;
        });
        QObject::connect(&converter, &CDataConverter::maxSteps,
                         [this](int steps) { heard.push_back(QString("maxSteps %1").arg(steps)); });
        QObject::connect(&converter, &CDataConverter::currentStepUpdate, [this](int step) {
            heard.push_back(QString::number(step));
            if (atStep)
                atStep(step);
        });
        QObject::connect(&converter, &CDataConverter::completed, [this] { heard.push_back("completed"); });
    }

    bool convert(const QString& input, const QString& output)
    {
        heard.clear();
        startTitle.clear();
        return converter.convertSimulationData(input.toUtf8().constData(), output.toUtf8().constData());
    }

    std::string signalsHeard() const { return heard.join(' ').toStdString(); }

    CDataConverter converter;
    QString startTitle;
    std::function<void(int)> atStep;

private:
    QStringList heard;
};

// Four timesteps make eight steps.
const char* const wholeConversion = "starting 8 0 0 1 2 3 4 5 6 7 8 completed";

class DataConverter : public testing::Test
{
protected:
    DataConverter()
    {
        for (const char* suffix : {".dem", ".idx", ".ess", ".dfg", ".ptf"})
            source.write(QString("pile") + suffix, sampleFile(suffix));
    }

    static QByteArray sampleFile(const std::string& suffix)
    {
        QFile file(QString::fromStdString(sampleDeck("pile-27" + suffix)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    CTempFolder source;
    CTempFolder target;
    CHost host;
};

TEST_F(DataConverter, makesAWholeNewDeckAndLeavesTheSourceAlone)
{
    const CSnapshot before = source.snapshot();
    EXPECT_TRUE(CDataConverter::legacyDataConversionRequired(source.path("pile.dem")));

    EXPECT_TRUE(host.convert(source.path("pile.dem"), target.path("heap.dem")));

    EXPECT_EQ(host.signalsHeard(), wholeConversion);
    EXPECT_EQ(host.startTitle,
              "Converting simulation " + source.path("pile.dem") + " to " + target.path("heap.dem") + ".");
    EXPECT_EQ(host.converter.getError(), "");
    EXPECT_EQ(target.names(), QStringList({"heap.dem", "heap.dfg", "heap.ess", "heap.ptf", "heap_data"}));
    EXPECT_EQ(QDir(target.path("heap_data")).entryList(QDir::Files, QDir::Name),
              QStringList({"0.h5", "1.h5", "2.h5", "3.h5"}));
    EXPECT_EQ(target.read("heap.ptf"), sampleFile(".ptf"));
    EXPECT_FALSE(CDataConverter::legacyDataConversionRequired(target.path("heap.dem")));
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
}

TEST_F(DataConverter, bindsPluginsOnlyWhereAHostAsksForIt)
{
    putPlugin(source, "model_250", "Documents/My Model.so");
    const QString deck = QString::fromStdString(sampleDeck("plugins-24.dem"));
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(source.path()));
    const auto isBound = [&](const char* name) { // of a model without a library there is something to say
        EXPECT_TRUE(host.convert(deck, target.path(name)));
        const std::vector<SConversionMessage> messages = host.converter.messages();
        return std::none_of(messages.begin(), messages.end(), [](const auto& m) { return m.object == "My Model"; });
    };
    EXPECT_FALSE(isBound("default.dem"));
    host.converter.bindPlugins(true);
    EXPECT_TRUE(isBound("asked.dem"));
    qputenv("BRENMARK_NO_PLUGINS", "1");
    EXPECT_FALSE(isBound("forbidden.dem"));
    qunsetenv("BRENMARK_NO_PLUGINS");
    qputenv("HOME", home);
}

TEST_F(DataConverter, refusesATargetThatIsItsSource)
{
    QFile::copy(source.path("pile.dem"), source.path("pile.dem.scn.1"));
    ASSERT_EQ(link(source.path("pile.dfg").toUtf8().constData(), target.path("half.dfg").toUtf8().constData()), 0);
    ASSERT_TRUE(QFile::link(source.path(), target.path("link")));
    const CSnapshot before = source.snapshot();
    for (const QString& name : {source.path("pile.dem"), source.path("pile"), source.path("pile.dem.scn.1"),
                                source.path("pile."), target.path("half.dem"), target.path("link/pile.dem")}) {
        EXPECT_FALSE(host.convert(source.path("pile.dem"), name)) << name.toStdString();
        EXPECT_TRUE(host.converter.getError().contains("shares files with the source")) << name.toStdString();
    }
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
}

TEST_F(DataConverter, failsWhereTheSourceChangesMeanwhile)
{
    for (const int atStep : {0, 3, 8}) {
        host.atStep = [&](int step) {
            if (step == atStep)
                source.write("pile.ptf", QByteArray(atStep + 100, 'x'));
        };
        EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("heap.dem"))) << atStep;
        EXPECT_TRUE(host.converter.failureText().contains("pile.ptf has changed")) << atStep;
        EXPECT_EQ(host.converter.messages().back().cause, SConversionMessage::eCauseSource);
    }
}

TEST_F(DataConverter, servesSeveralConversionsAndKeepsNothingOfThemInTheProcess)
{
    QFile::remove(source.path("pile.ptf"));                           // its absence changes nothing
    for (const char* name : {"first.dem", "second.dem", "first.dem"}) // the last one replaces a deck
    {
        EXPECT_TRUE(host.convert(source.path("pile.dem"), target.path(name))) << name;
        EXPECT_EQ(host.signalsHeard(), wholeConversion) << name;
        EXPECT_EQ(applicationState().simulation, nullptr);
    }
    EXPECT_FALSE(target.has("first.ptf"));
}

TEST_F(DataConverter, takesADeckThatNeedsNoConversionAsDone)
{
    ASSERT_TRUE(host.convert(source.path("pile.dem"), target.path("heap.dem")));
    const CSnapshot before = target.snapshot();
    EXPECT_TRUE(host.convert(target.path("heap.dem"), target.path("again.dem")));
    EXPECT_EQ(host.signalsHeard(), "");
    EXPECT_EQ(host.converter.outcome(), CDataConverter::eNothingToDo);
    EXPECT_EQ(host.converter.failureText(), "");
    EXPECT_EQ(before.changesUntil(target.snapshot()), "");
}

TEST_F(DataConverter, refusesASecondConversionAndLeavesTheFirstAlone)
{
    CHost other;
    host.atStep = [&](int step) {
        if (step != 3)
            return;
        const auto second = [&] {
            EXPECT_FALSE(other.convert(source.path("pile.dem"), target.path("other.dem")));
            EXPECT_FALSE(host.converter.convertSimulationData("no.dem", "such.dem")); // the same object
        };
        second(); // from inside a signal
        std::thread(second).join();
        EXPECT_EQ(host.converter.outcome(), CDataConverter::eBusy);
    };
    EXPECT_TRUE(host.convert(source.path("pile.dem"), target.path("heap.dem")));
    EXPECT_EQ(host.signalsHeard(), wholeConversion);
    EXPECT_EQ(host.converter.outcome(), CDataConverter::eConverted);
    EXPECT_EQ(host.converter.failureText(), "");
    EXPECT_EQ(other.signalsHeard(), "");
    EXPECT_EQ(other.converter.outcome(), CDataConverter::eBusy);
    EXPECT_EQ(other.converter.failureText(), "Another conversion is running in this process.");
    EXPECT_FALSE(target.has("other.dem"));
    EXPECT_TRUE(other.convert(source.path("pile.dem"), target.path("other.dem"))) << "the right to run is given back";
}

TEST_F(DataConverter, writesIntoNoFolderOfAnotherDeck)
{
    ASSERT_TRUE(host.convert(source.path("pile.dem"), target.path("run.1")));
    const CSnapshot before = target.snapshot();
    for (const char* name : {"run.2", "run.dem"}) { // all keep their timesteps in run_data
        EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path(name))) << name;
        EXPECT_EQ(host.converter.outcome(), CDataConverter::eFailed);
        EXPECT_TRUE(host.converter.failureText().contains("belongs to the deck " + target.path("run.1"))) << name;
    }
    EXPECT_EQ(before.changesUntil(target.snapshot()), "");
    ASSERT_EQ(host.converter.messages().size(), 1u);
    EXPECT_EQ(host.converter.messages().front().cause, SConversionMessage::eCauseTarget);
    EXPECT_EQ(host.converter.messages().front().level, SConversionMessage::eError);

    target.write("run_data/4.h5", "of a longer deck"); // which the new one replaces whole
    EXPECT_TRUE(host.convert(source.path("pile.dem"), target.path("run.1")));
    EXPECT_FALSE(target.has("run_data/4.h5"));
}

struct SRefused
{
    const char* why;
    std::function<void(const CTempFolder&)> damage;
    bool result;
    const char* signalsHeard;
    bool mentionsInput; ///< in the error text
};

class RefusedSources : public DataConverter, public testing::WithParamInterface<SRefused>
{
};

const SRefused refusedSources[] = {
    {"no such file", [](const CTempFolder& f) { QFile::remove(f.path("pile.dem")); }, false, "", false},
    {"no index", [](const CTempFolder& f) { QFile::remove(f.path("pile.idx")); }, false, "", false},
    // No deck of either family: there is nothing to do.
    {"empty file", [](const CTempFolder& f) { f.write("pile.dem", {}); }, true, "", false},
    {"seven bytes", [](const CTempFolder& f) { f.write("pile.dem", QByteArray("\0\x1b\0\x03\0\x1b\0", 7)); }, true, "",
     false},
    {"a folder",
     [](const CTempFolder& f) {
         QFile::remove(f.path("pile.dem"));
         QDir().mkpath(f.path("pile.dem"));
     },
     true, "", false},
    // One entry that is empty stands for a deck that couldn't be loaded.
    {"empty index", [](const CTempFolder& f) { f.write("pile.idx", {}); }, false, "starting 2 0 2", true},
    {"foreign settings", [](const CTempFolder& f) { f.write("pile.ess", "no settings at all"); }, false,
     "starting 2 0 2", true},
    {"unreadable configuration", [](const CTempFolder& f) { f.write("pile.dfg", "!format=XML\n"); }, false,
     "starting 2 0 2", true},
};

TEST_P(RefusedSources, giveTheirCodeAndTextAndTouchNothing)
{
    const SRefused& refused = GetParam();
    refused.damage(source);
    const CSnapshot before = source.snapshot();
    EXPECT_EQ(host.convert(source.path("pile.dem"), target.path("heap.dem")), refused.result);
    EXPECT_EQ(host.signalsHeard(), refused.signalsHeard);
    EXPECT_EQ(host.converter.getError(),
              refused.mentionsInput ? "Failed to convert simulation " + source.path("pile.dem") + "." : QString());
    EXPECT_EQ(host.converter.outcome(), refused.result ? CDataConverter::eNotADeck : CDataConverter::eFailed);
    EXPECT_TRUE(host.converter.failureText().contains("pile.")) << host.converter.failureText().toStdString();
    EXPECT_EQ(host.converter.messages().empty(), refused.result);
    EXPECT_EQ(host.converter.getLogMessages().empty(), refused.result) << "a failure is told in the log";
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
    EXPECT_FALSE(target.has("heap.ess"));
}

INSTANTIATE_TEST_SUITE_P(DataConverter, RefusedSources, testing::ValuesIn(refusedSources), [](const auto& tested) {
    QString name(tested.param.why);
    return name.replace(' ', '_').toStdString();
});

TEST_F(DataConverter, cancelsBehindTheTimestepInHand)
{
    host.atStep = [this](int step) {
        if (step == 2)
            host.converter.cancel();
    };
    EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("heap.dem")));
    EXPECT_EQ(host.signalsHeard(), "starting 8 0 0 1 2 3 8");
    EXPECT_EQ(host.converter.getError(), "");
    EXPECT_EQ(host.converter.outcome(), CDataConverter::eCancelled);
    EXPECT_EQ(QDir(target.path("heap_data")).entryList(QDir::Files, QDir::Name), QStringList({"0.h5", "1.h5"}));
    EXPECT_FALSE(target.has("heap.ess"));

    // A cancel before a conversion has no effect on it.
    host.atStep = nullptr;
    host.converter.cancel();
    EXPECT_TRUE(host.convert(source.path("pile.dem"), target.path("heap.dem")));
}

TEST_F(DataConverter, reportsATargetThatCantBeMade)
{
    target.write("occupied", "a file, no folder");
    EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("occupied/heap.dem")));
    EXPECT_EQ(host.signalsHeard(), "starting 8 0"); // no step was begun
    EXPECT_FALSE(host.converter.getLogMessages().empty());
}

TEST_F(DataConverter, reportsATargetThatVanishes)
{
    const CSnapshot before = source.snapshot();
    const std::pair<int, const char*> vanishings[] = {
        // after step, what goes away
        {0, "."}, {1, "."}, {2, "."}, {1, "heap_data"}, {4, "heap_data"}, {1, "heap.dem"}, {6, "heap.dem"}};
    for (const auto& [atStep, name] : vanishings) {
        host.atStep = [&, atStep = atStep, name = name](int step) {
            if (step == atStep && !QFile::remove(target.path(name)))
                QDir(target.path(name)).removeRecursively();
        };
        EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("heap.dem"))) << name << " after " << atStep;
        EXPECT_EQ(host.converter.getError(), "Failed to convert simulation " + source.path("pile.dem") + ".");
        std::string told;
        for (const auto& [level, title, text] : host.converter.getLogMessages())
            told += level == eError ? text : std::string();
        EXPECT_NE(told.find("Could not write file " + target.path("heap").toStdString()), std::string::npos) << told;
        EXPECT_FALSE(target.has("heap.ess"));
        QDir().mkpath(target.path());
    }
    EXPECT_EQ(before.changesUntil(source.snapshot()), "");
}

TEST_F(DataConverter, endsWithTheLastFailureOfTheCompanions)
{
    // After the last timestep the companions' names are taken by folders that hold something, so that
    // neither file can take its place. What couldn't get there is kept where it was made.
    const CTempFolder kept;
    setFolderOfReplacements(kept.path());
    host.atStep = [this](int step) {
        if (step != 8)
            return;
        target.write("heap.ess/kept", "x");
        target.write("heap.dfg/kept", "x");
    };
    EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("heap.dem")));
    EXPECT_EQ(host.converter.getError(), "Failed to write new data (Reason: Could not write configuration data)");
    EXPECT_EQ(host.signalsHeard(), wholeConversion);

    EXPECT_EQ(kept.names().size(), 2);
    setFolderOfReplacements(QString());

    // A companion that is in the way is never written over, and its failure is the last word.
    host.atStep = [this](int step) {
        if (step == 8)
            target.write("heap2.ptf", "in the way");
    };
    EXPECT_FALSE(host.convert(source.path("pile.dem"), target.path("heap2.dem")));
    EXPECT_EQ(host.converter.getError(), "Could not copy file\n    Source: " + source.path("pile.ptf") +
                                             "\n    Destination " + target.path("heap2.ptf"));
    EXPECT_EQ(target.read("heap2.ptf"), QByteArray("in the way"));
}

TEST(DataConverterMetaObject, showsItsMethodsInTheirOrder)
{
    const QMetaObject& meta = CDataConverter::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    EXPECT_EQ(methods, QStringList({"starting(int,QString,bool)", "starting(int,QString)", "maxSteps(int)",
                                    "currentStepUpdate(int)", "completed()", "cancel()"}));
}

} // namespace
} // namespace NBrenmark
