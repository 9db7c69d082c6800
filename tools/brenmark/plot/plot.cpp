// brenmark plot: attributes over time in the terminal, as SVG, as a table and as JSON.

#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
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
    const std::vector<std::string> attributes = namesFrom(options.attributes);
    if (attributes.size() != 1)
        throw CFailure(eExitUsage, "--histogram takes one attribute", "Draw one after the other.");
    SValuesOptions values = valuesFor(options, attributes.front());
    values.intervals = options.intervals;
    values.svg = options.svg;
    values.csv = options.csv;
    values.json = options.json;
    return runValues(values);
}

static Json jsonSeries(const STimePlot& plot)
{
    Json all = Json::array();
    for (const STimeSeries& series : plot.series)
        all.push_back({{"name", series.head}, {"unit", series.unit}, {"values", series.values}}); // null for no number
    return all;
}

EExitCode runPlot(const SPlotOptions& options)
{
    if (options.intervals > 0)
        return plotHistogram(options);
    if (namesFrom(options.attributes).empty())
        throw CFailure(eExitUsage, "--attribute names nothing", "brenmark values --list shows the attributes.");
    CDeckReader reader(options.deck);
    CLeftOut leftOut;
    const STimePlot plot = timePlot(reader, options, leftOut);
    leftOut.print(utf8(options.deck));
    if (plot.timesteps.empty())
        throw CFailure(eExitSource, utf8(options.deck) + ": has no timestep that can be read",
                       "There is nothing to show.");
    writeFile(options.svg, plotSvg(plot, utf8(QFileInfo(options.deck).fileName())));
    writeFile(options.csv, plotCsv(plot));
    const EExitCode code = plot.isDamaged || holdsDamage(reader.messages()) ? eExitSource : eExitDone;
    if (options.json)
        printJson({{"path", utf8(options.deck)},
                   {"timesteps", plot.timesteps},
                   {"timeUnit", plot.timeUnit},
                   {"times", plot.times},
                   {"series", jsonSeries(plot)},
                   {"leftOut", leftOut.json()},
                   {"messages", jsonMessages(reader.messages())},
                   {"code", code},
                   {"error", nullptr}});
    else
        printResult(plotText(plot, errorColumns(), localeIsUtf8()));
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return code;
}

} // namespace NBrenmark
