// A conversion that goes on after any timestep makes what an unbroken one makes.
#include "core/deck/conversion.h"

#include "core/deck/deck_files.h"
#include "core/version.h"
#include "support/legacy_deck.h"
#include "support/paths.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <QDir>
#include <gtest/gtest.h>

namespace NBrenmark {

class CDeafObserver : public IConversionObserver
{
    void starting(int, const QString&) override {}
    void stepReached(int) override {}
    void completed() override {}
};

static void convert(const QString& source, const QString& target, quint32 firstTimestep)
{
    CDeafObserver observer;
    CConversion conversion(observer);
    SConversionOptions options;
    options.firstTimestep = firstTimestep;
    EXPECT_EQ(conversion.run(source, target, eFormatHdf5, options), eConvertOk) << source.toStdString();
}

/// How many places a conversion of a deck was resumed at.
static int resumeEverywhere(const QString& source)
{
    const CTempFolder folder;
    convert(source, folder.path("whole.dem"), 0);
    const std::string text = runTool({"dump", argument(folder.path("whole.dem"))}).output;
    const QDir data(folder.path("whole_data"));
    const int timesteps = data.entryList(QDir::Files).size();
    for (int first = 1; first < timesteps; ++first) {
        deleteFamily(folder.path("part.dem"));
        QDir().mkpath(folder.path("part_data"));
        for (int i = 0; i < first; ++i)
            QFile::copy(data.filePath(QString("%1.h5").arg(i)), folder.path(QString("part_data/%1.h5").arg(i)));
        convert(source, folder.path("part.dem"), static_cast<quint32>(first));
        EXPECT_EQ(runTool({"dump", argument(folder.path("part.dem"))}).output, text)
            << source.toStdString() << " from timestep " << first;
    }
    return timesteps - 1;
}

TEST(ResumedConversion, makesWhatAnUnbrokenOneMakes)
{
    const QDir samples = QFileInfo(QString::fromStdString(sampleDeck("pile-27.dem"))).dir();
    int resumed = 0;
    for (const QString& name : samples.entryList({"*.dem"}))
        resumed += resumeEverywhere(samples.filePath(name));
    EXPECT_GT(resumed, 10);

    const CTempFolder folder;
    SDeckCreator later = sampleCreator();
    later.description = "with another model from its third timestep on";
    CLegacyDeck deck(makeVersion(27, 0, 3));
    deck.creator(sampleCreator()).timestep(sampleTimestep(0.1)).timestep(sampleTimestep(0.2));
    deck.creator(later).timestep(sampleTimestep(0.3)).timestep(sampleTimestep(0.4));
    EXPECT_EQ(resumeEverywhere(deck.write(folder.path(), "models")), 3);
}

} // namespace NBrenmark
