#include "brenmark/plot/time_series.h"

#include "brenmark/export/pieces.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_reading.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NBrenmark {

SValuesOptions valuesFor(const SPlotOptions& options, const std::string& attribute)
{
    SValuesOptions values;
    values.deck = options.deck;
    values.attribute = attribute;
    values.owner = options.owner;
    values.type = options.type;
    values.units = options.units;
    values.allTimesteps = options.allTimesteps;
    values.firstTimestep = options.firstTimestep;
    values.lastTimestep = options.lastTimestep;
    return values;
}

static double reduced(const SValueSummary& summary, const std::string& how)
{
    if (how == "count")
        return static_cast<double>(summary.count);
    if (summary.count == 0)
        return std::numeric_limits<double>::quiet_NaN();
    return how == "sum"   ? summary.sum()
           : how == "min" ? summary.minimum
           : how == "max" ? summary.maximum
                          : summary.mean();
}

static void requireReduction(const std::string& how)
{
    const std::vector<std::string> words{"mean", "sum", "min", "max", "count"};
    const std::string nearest = nearestOf(how, words);
    if (std::find(words.begin(), words.end(), how) == words.end())
        throw CFailure(eExitUsage, "--reduce: there is no \"" + oneLine(how) + "\"",
                       nearest.empty() ? "It is mean, sum, min, max or count." : "Did you mean " + nearest + "?");
}

static STimeSeries seriesOf(CDeckReader& reader, const SPlotOptions& options, const std::string& attribute,
                            const STimePlot& plot)
{
    const SValuesOptions values = valuesFor(options, attribute);
    CValueReading reading(reader, values);
    if (reading.heads().size() != 1)
        throw CFailure(eExitUsage, "\"" + oneLine(attribute) + "\" has several numbers a row",
                       "Ask for one of its components or its magnitude: \"" + oneLine(attribute) + " Magnitude\".");
    std::vector<SValueSummary> summaries(plot.timesteps.size());
    reading.forEachBlock([&](const SValueBlock& block) {
        const auto at = std::lower_bound(plot.timesteps.begin(), plot.timesteps.end(), block.timestep);
        SValueSummary& summary = summaries[static_cast<std::size_t>(at - plot.timesteps.begin())];
        for (std::size_t i = 0; i < block.count; ++i)
            summary.add(block.values[i]);
    });
    reading.printMissing();
    STimeSeries series;
    const std::string& head = reading.heads().front(); // "Velocity X [m/s]"
    const std::size_t bracket = head.rfind(" [");
    series.head = options.reduce + ' ' + head.substr(0, bracket);
    if (bracket != std::string::npos && options.reduce != "count")
        series.unit = head.substr(bracket + 2, head.size() - bracket - 3);
    for (const SValueSummary& summary : summaries)
        series.values.push_back(reduced(summary, options.reduce));
    return series;
}

STimePlot timePlot(CDeckReader& reader, const SPlotOptions& options)
{
    requireReduction(options.reduce);
    const CChosenUnits units(options.units);
    const SUnit* const unit = units.of(eTimeQuantity);
    STimePlot plot;
    plot.timeUnit = units.nameOf(eTimeQuantity);
    const auto [first, end] = chosenTimesteps(reader, valuesFor(options, std::string()));
    for (quint32 number = first; number < end; ++number) {
        const double time = reader.index()[number].time;
        plot.timesteps.push_back(number);
        plot.times.push_back(unit == nullptr ? time : time * unit->toDisplayFactor);
    }
    for (const std::string& attribute : attributeList(options.attributes))
        plot.series.push_back(seriesOf(reader, options, attribute, plot));
    return plot;
}

} // namespace NBrenmark
