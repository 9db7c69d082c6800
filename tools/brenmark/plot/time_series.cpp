#include "brenmark/plot/time_series.h"

#include "brenmark/argument_values.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_reading.h"

#include <algorithm>
#include <cmath>
#include <deque>
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

/// A series without values yet.
static STimeSeries seriesOf(const CValueReading& reading, const std::string& attribute, const std::string& reduce)
{
    if (reading.heads().size() != 1)
        throw CFailure(eExitUsage, "\"" + oneLine(attribute) + "\" has several numbers a row",
                       "Ask for one of its components or its magnitude: \"" + oneLine(attribute) + " Magnitude\".");
    const std::string& head = reading.heads().front(); // "Velocity X [m/s]"
    const std::size_t bracket = head.rfind(" [");
    STimeSeries series;
    series.head = reduce + ' ' + head.substr(0, bracket);
    if (bracket != std::string::npos && reduce != "count")
        series.unit = head.substr(bracket + 2, head.size() - bracket - 3);
    return series;
}

static double reducedAt(CValueReading& reading, quint32 timestep, const std::string& reduce,
                        const std::string& attribute, CLeftOut& leftOut)
{
    SValueSummary summary;
    reading.readTimestep(timestep, [&summary](const SValueBlock& block) {
        for (std::size_t i = 0; i < block.count; ++i)
            summary.add(block.values[i]);
    });
    if (summary.notNumbers > 0)
        leftOut.add("values of " + attribute + " that are no numbers", timestep);
    return reduced(summary, reduce);
}

STimePlot timePlot(CDeckReader& reader, const SPlotOptions& options, CLeftOut& leftOut)
{
    requireReduction(options.reduce);
    const CChosenUnits units(options.units);
    const SUnit* const unit = units.of(eTimeQuantity);
    STimePlot plot;
    plot.timeUnit = units.nameOf(eTimeQuantity);
    const auto [first, end] = chosenTimesteps(reader, valuesFor(options, std::string()));
    std::deque<SValuesOptions> wanted; // which the readings refer to
    std::deque<CValueReading> readings;
    readAlone(reader, namesFrom(options.attributes), mayBeOfParticles(options.owner));
    for (quint32 number = first; number < end; ++number) {
        const SSimulationFrame* const frame = readableTimestep(reader, number, leftOut);
        if (frame == nullptr) {
            plot.isDamaged = true;
            continue;
        }
        if (plot.timesteps.empty())
            for (const std::string& attribute : namesFrom(options.attributes)) {
                wanted.push_back(valuesFor(options, attribute));
                wanted.back().allTimesteps = false;
                wanted.back().firstTimestep = wanted.back().lastTimestep = number;
                readings.emplace_back(reader, wanted.back());
                plot.series.push_back(seriesOf(readings.back(), attribute, options.reduce));
            }
        const double time = frame->timestep.time;
        plot.timesteps.push_back(number);
        plot.times.push_back(unit == nullptr ? time : time * unit->toDisplayFactor);
        for (std::size_t i = 0; i < readings.size(); ++i)
            plot.series[i].values.push_back(
                reducedAt(readings[i], number, options.reduce, wanted[i].attribute, leftOut));
    }
    for (const CValueReading& reading : readings) {
        reading.requireAny();
        reading.printMissing();
    }
    return plot;
}

} // namespace NBrenmark
