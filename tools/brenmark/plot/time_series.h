#pragma once
// What an attribute comes to at each timestep: a number for all of its rows.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"

#include <string>
#include <vector>

namespace NBrenmark {

struct STimeSeries
{
    std::string head;           ///< "mean Velocity Magnitude"
    std::string unit;           ///< "m/s"; empty for none
    std::vector<double> values; ///< one for each time; not a number where there are no rows
};

struct STimePlot
{
    std::string timeUnit;
    std::vector<quint32> timesteps;
    std::vector<double> times;
    std::vector<STimeSeries> series;
};

/// One series for each attribute of the options.
/// \throws CFailure  an attribute or a reduction of that name isn't there, or the deck holds no such values
STimePlot timePlot(CDeckReader& reader, const SPlotOptions& options);

/// The options of an attribute's values.
SValuesOptions valuesFor(const SPlotOptions& options, const std::string& attribute);

/// Curves in characters, one below the other. \param columns  of the terminal
std::string plotText(const STimePlot& plot, int columns, bool braille);
std::string plotSvg(const STimePlot& plot, const std::string& title);
std::string plotCsv(const STimePlot& plot);

} // namespace NBrenmark
