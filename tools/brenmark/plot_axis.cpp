#include "brenmark/plot_axis.h"

#include "brenmark/terminal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace NBrenmark {

std::string significant(double value, int digits)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

std::string withUnit(const std::string& name, const std::string& unit)
{
    return unit.empty() ? name : name + " [" + unit + "]";
}

std::string svgText(const std::string& text)
{
    std::string out;
    for (const char c : oneLine(text))
        out += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : c == '"' ? "&quot;" : std::string(1, c);
    return out;
}

SAxis::SAxis(double least, double greatest, int ticks)
{
    if (!(greatest > least)) {
        const double pad = std::max(std::abs(least) * 0.5, 1e-12);
        least -= pad;
        greatest += pad;
    }
    const double raw = (greatest - least) / ticks;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    const double rest = raw / power;
    step = (rest <= 1 ? 1 : rest <= 2 ? 2 : rest <= 5 ? 5 : 10) * power;
    from = std::floor(least / step + 1e-9) * step;
    to = std::ceil(greatest / step - 1e-9) * step;
    exponent = static_cast<int>(std::floor(std::log10(std::max(std::abs(from), std::abs(to))) / 3.0 + 1e-9)) * 3;
}

int SAxis::tickCount() const { return static_cast<int>(std::lround((to - from) / step)) + 1; }

std::string SAxis::tickText(int number) const
{
    const double value = tick(number) / std::pow(10.0, exponent);
    return significant(std::abs(value) < 1e-9 ? 0.0 : value, 6);
}

std::string SAxis::unit(const std::string& base) const
{
    switch (base.empty() ? (exponent == 0 ? 0 : 1) : exponent) {
    case 0: return base;
    case 3: return std::string("k") + base;
    case 6: return std::string("M") + base;
    case -3: return std::string("m") + base;
    case -6: return std::string("\u00b5") + base;
    case -9: return std::string("n") + base;
    case -12: return std::string("p") + base;
    default: return "1e" + std::to_string(exponent) + (base.empty() ? "" : " ") + base;
    }
}

} // namespace NBrenmark
