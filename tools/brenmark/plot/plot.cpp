// brenmark plot: attributes over time in the terminal, as SVG and as a table.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/ledger.h"
#include "brenmark/plot/canvas.h"
#include "brenmark/plot/time_series.h"
#include "brenmark/target_file.h"
#include "brenmark/terminal.h"

#include <QFileInfo>

namespace NBrenmark {

static void writeFile(const QString& path, const std::string& text)
{
    if (path.isEmpty())
        return;
    CTargetFile file(path);
    file.write(text);
    file.commit();
}

/// How values are spread is what brenmark values draws.
static EExitCode plotHistogram(const SPlotOptions& options)
{
    SValuesOptions values = valuesFor(options, options.attributes);
    values.intervals = options.intervals;
    values.svg = options.svg;
    return runValues(values);
}

EExitCode runPlot(const SPlotOptions& options)
{
    if (options.intervals > 0)
        return plotHistogram(options);
    CDeckReader reader(options.deck);
    const STimePlot plot = timePlot(reader, options);
    if (plot.series.empty())
        throw CFailure(eExitUsage, "--attribute names nothing", "brenmark values --list shows the attributes.");
    writeFile(options.svg, plotSvg(plot, utf8(QFileInfo(options.deck).fileName())));
    writeFile(options.csv, plotCsv(plot));
    printResult(plotText(plot, errorColumns(), localeIsUtf8()));
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return holdsDamage(reader.messages()) ? eExitSource : eExitDone;
}

} // namespace NBrenmark
