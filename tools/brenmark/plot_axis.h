#pragma once
// Axes of plots, and what their labels take.

#include <string>

namespace NBrenmark {

/// A number with so many significant digits.
std::string significant(double value, int digits);
/// "normal force [N]"
std::string withUnit(const std::string& name, const std::string& unit);
/// Text for an SVG, in one line.
std::string svgText(const std::string& text);

/// A range with ticks at round numbers.
struct SAxis
{
    SAxis(double least, double greatest, int ticks);

    /// 0 to 1 along the axis.
    double at(double value) const { return (value - from) / (to - from); }
    int tickCount() const;
    double tick(int number) const { return from + number * step; }
    /// In units of the axis.
    std::string tickText(int number) const;
    /// "mm", "kN".
    std::string unit(const std::string& base) const;

    double from = 0.0;
    double to = 1.0;
    double step = 1.0;
    int exponent = 0;
};

} // namespace NBrenmark
