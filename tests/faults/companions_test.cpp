// Companions that are there and can't be read end a conversion before it touches the target, unless they may be left
// out: then the new deck is made and the ledger names what is missing from it.

#include "core/deck/conversion.h"

#include "core/deck/deck_files.h"
#include "support/legacy_deck.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>

namespace NBrenmark {
namespace {

class CDeafObserver : public IConversionObserver
{
    void starting(int, const QString&) override {}
    void stepReached(int) override {}
    void completed() override {}
};

struct SUnreadable
{
    const char* suffix;
    const char* linkTo; ///< nullptr for a folder in the file's place
    bool touchesTarget; ///< of a load that fails the target is made room for first
};

// The memory of a process is a plain file whose first byte can't be read.
const SUnreadable unreadables[] = {
    {".ess", nullptr, false},  {".ess", "nowhere", false},       {".ess", "/proc/self/mem", true},
    {".ptf", nullptr, false},  {".ptf", "nowhere", false},       {".dfg", nullptr, true},
    {".dfg", "nowhere", true}, {".dfg", "/proc/self/mem", true}, {".ppf", nullptr, true},
};

bool namesTheFile(const SLogRecord& message, const char* suffix)
{
    return message.placedText().find(std::string("deck") + suffix) != std::string::npos;
}

TEST(Companions, thatCantBeReadEndTheConversionOrAreLeftOut)
{
    for (const SUnreadable& c : unreadables) {
        const CTempFolder source;
        const CTempFolder target;
        CLegacyDeck deck(makeVersion(27, 0, 3));
        deck.creator(sampleCreator()).timestep(sampleTimestep(0.1));
        deck.write(source.path(), "deck");
        for (const char* const suffix : {".ess", ".dfg", ".ptf"})
            QFile::remove(source.path(QString("deck") + suffix));
        const QString path = source.path(QString("deck") + c.suffix);
        c.linkTo ? QFile::link(c.linkTo, path) : QDir().mkpath(path);
        target.write("new.dem", "stays");

        CDeafObserver observer;
        CConversion conversion(observer);
        const auto run = [&] { return conversion.run(source.path("deck.dem"), target.path("new.dem"), eFormatHdf5); };
        EXPECT_EQ(run(), eConvertDataFailed) << c.suffix;
        const std::vector<SLogRecord> ledger = conversion.records();
        const auto error = std::find_if(ledger.begin(), ledger.end(), [](auto& m) { return m.level == eError; });
        ASSERT_NE(error, ledger.end()) << c.suffix;
        EXPECT_EQ(error->cause, eCauseSource) << error->text;
        EXPECT_TRUE(namesTheFile(*error, c.suffix)) << error->text;
        EXPECT_EQ(target.has("new.dem") && target.read("new.dem") == "stays", !c.touchesTarget) << c.suffix;

        conversion.ignoreUnreadableCompanions = true;
        EXPECT_EQ(run(), eConvertOk) << c.suffix << conversion.failureText().toStdString();
        const std::vector<SLogRecord> kept = conversion.records();
        EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [&](const SLogRecord& message) {
            return message.effect == eLost && namesTheFile(message, c.suffix);
        })) << c.suffix;
        EXPECT_TRUE(std::none_of(kept.begin(), kept.end(), [](auto& m) { return m.level == eError; })) << c.suffix;
    }
}

} // namespace
} // namespace NBrenmark
