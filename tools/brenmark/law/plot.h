#pragma once
// A curve for the eye: in characters for a terminal, as SVG for a report; and as a table.

#include "brenmark/law/curve.h"

#include <string>

namespace NBrenmark {

/// The column of a curve that a name means. \throws CFailure  there is none, or it is the overlap
std::size_t columnNamed(const SCurve& curve, const std::string& name);
/// A column over the overlap in characters. \param columns  of the terminal
std::string terminalPlot(const SCurve& curve, std::size_t column, int columns);
/// The same with axes, a grid, and the way back in a second colour.
std::string svgPlot(const SCurve& curve, std::size_t column);
/// A head line and a row a point, aligned.
std::string tableText(const SCurve& curve);
/// The same, separated by commas, with 17 digits.
std::string csvText(const SCurve& curve);

} // namespace NBrenmark
