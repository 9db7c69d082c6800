#pragma once
// What an attribute comes to at each timestep: a number for all of its rows.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/view/left_out.h"

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
    bool isDamaged = false; ///< there are timesteps that can't be read
};

/// One series for each attribute of the options, in one pass over the deck.
/// \param leftOut  gets the timesteps that can't be read, and values that are no numbers
/// \throws CFailure  an attribute or a reduction of that name isn't there, or the deck holds no such values
STimePlot timePlot(CDeckReader& reader, const SPlotOptions& options, CLeftOut& leftOut);

/// The options of an attribute's values.
SValuesOptions valuesFor(const SPlotOptions& options, const std::string& attribute);

/// Curves in characters, one below the other. \param columns  of the terminal
std::string plotText(const STimePlot& plot, int columns, bool braille);
std::string plotSvg(const STimePlot& plot, const std::string& title);
std::string plotCsv(const STimePlot& plot);

} // namespace NBrenmark
