#pragma once
// A curve for the eye: in characters for a terminal, as SVG for a report; and as a table.

#include "brenmark/law/curve.h"

#include <string>

namespace NBrenmark {

/// Normal force over overlap in characters. \param columns  of the terminal
std::string terminalPlot(const SCurve& curve, int columns);
/// The same with axes, a grid, and the way back in a second colour.
std::string svgPlot(const SCurve& curve);
/// A head line and a row a point, aligned.
std::string tableText(const SCurve& curve);
/// The same, separated by commas, with 17 digits.
std::string csvText(const SCurve& curve);

} // namespace NBrenmark
