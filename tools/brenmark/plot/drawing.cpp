// Curves over time: in characters, as SVG, as a table.

#include "brenmark/plot/canvas.h"
#include "brenmark/plot/time_series.h"
#include "brenmark/plot_axis.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_table.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace NBrenmark {

static constexpr int plotRows = 12; // of characters

static SAxis axisFor(const std::vector<double>& values, int ticks)
{
    double least = HUGE_VAL, greatest = -HUGE_VAL;
    for (const double value : values)
        if (std::isfinite(value)) {
            least = std::min(least, value);
            greatest = std::max(greatest, value);
        }
    return least <= greatest ? SAxis(least, greatest, ticks) : SAxis(0, 1, ticks);
}

/// The unit of an axis. Only these take a prefix: that of "m³" would be of metres, and "kg" has one.
static std::string axisUnit(const SAxis& axis, const std::string& unit)
{
    static const std::set<std::string> taking{"", "m", "s", "N", "Nm", "J", "Pa", "W", "C", "Hz", "m/s", "rad/s"};
    if (taking.count(unit) != 0 || axis.exponent == 0)
        return axis.unit(unit);
    return "1e" + std::to_string(axis.exponent) + ' ' + unit;
}

static std::string rightAligned(const std::string& text, std::size_t width)
{
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

static std::string panelText(const STimePlot& plot, const STimeSeries& series, int columns, bool braille)
{
    const SAxis x = axisFor(plot.times, 4), y = axisFor(series.values, 4);
    CCanvas canvas(std::max(20, std::min(columns, 100) - 12), plotRows, braille);
    const auto px = [&](double value) { return static_cast<int>(std::lround(x.at(value) * (canvas.width() - 1))); };
    const auto py = [&](double value) { return static_cast<int>(std::lround(y.at(value) * (canvas.height() - 1))); };
    for (std::size_t i = 0; i < series.values.size(); ++i) {
        if (!std::isfinite(series.values[i]))
            continue;
        const bool follows = i > 0 && std::isfinite(series.values[i - 1]);
        const std::size_t from = follows ? i - 1 : i;
        canvas.line(px(plot.times[from]), py(series.values[from]), px(plot.times[i]), py(series.values[i]));
    }
    std::string text = oneLine(withUnit(series.head, axisUnit(y, series.unit))) + '\n';
    for (int row = 0; row < plotRows; ++row) {
        std::string label;
        for (int tick = 0; tick < y.tickCount(); ++tick)
            if (static_cast<int>(std::lround((1 - y.at(y.tick(tick))) * (plotRows - 1))) == row)
                label = y.tickText(tick);
        text += rightAligned(label, 9) + " |" + canvas.row(row) + '\n';
    }
    const int width = std::max(20, std::min(columns, 100) - 12);
    text += std::string(10, ' ') + '+' + std::string(static_cast<std::size_t>(width), '-') + '\n';
    std::string labels(static_cast<std::size_t>(width) + 12, ' ');
    for (int tick = 0; tick < x.tickCount(); ++tick) {
        const std::string label = x.tickText(tick);
        const int centre = 11 + static_cast<int>(std::lround(x.at(x.tick(tick)) * (width - 1)));
        const auto at = static_cast<std::size_t>(std::max(0, centre - static_cast<int>(label.size()) / 2));
        if (at + label.size() <= labels.size())
            labels.replace(at, label.size(), label);
    }
    return text + labels.substr(0, labels.find_last_not_of(' ') + 1) + '\n' +
           rightAligned(oneLine(withUnit("time", axisUnit(x, plot.timeUnit))), 11 + static_cast<std::size_t>(width)) +
           '\n';
}

std::string plotText(const STimePlot& plot, int columns, bool braille)
{
    std::string text;
    for (const STimeSeries& series : plot.series)
        text += (text.empty() ? "" : "\n") + panelText(plot, series, columns, braille);
    return text;
}

// ---------------------------------------------------------------- SVG

static std::string panelSvg(const STimePlot& plot, const STimeSeries& series, double top)
{
    const double left = 80, width = 600, height = 260;
    const SAxis x = axisFor(plot.times, 6), y = axisFor(series.values, 5);
    const auto px = [&](double value) { return significant(left + x.at(value) * width, 6); };
    const auto py = [&](double value) { return significant(top + (1 - y.at(value)) * height, 6); };
    const auto label = [](const std::string& atX, double atY, const char* anchor, const std::string& text) {
        return "<text x=\"" + atX + "\" y=\"" + significant(atY, 6) + "\" text-anchor=\"" + anchor + "\">" +
               svgText(text) + "</text>\n";
    };
    std::string svg = label("80", top - 10, "start", withUnit(series.head, axisUnit(y, series.unit)));
    for (int tick = 0; tick < y.tickCount(); ++tick) {
        const std::string at = py(y.tick(tick));
        svg.append("<line x1=\"80\" x2=\"680\" y1=\"").append(at).append("\" y2=\"").append(at);
        svg += "\" stroke=\"#e4e4e4\"/>\n" +
               label("72", top + (1 - y.at(y.tick(tick))) * height + 4, "end", y.tickText(tick));
    }
    for (int tick = 0; tick < x.tickCount(); ++tick)
        svg += label(px(x.tick(tick)), top + height + 20, "middle", x.tickText(tick));
    std::string path;
    bool isDrawing = false;
    for (std::size_t i = 0; i < series.values.size(); ++i) {
        const bool isThere = std::isfinite(series.values[i]);
        if (isThere) {
            path += (isDrawing ? " L" : " M") + px(plot.times[i]) + ' ' + py(series.values[i]);
            svg += "<circle cx=\"" + px(plot.times[i]) + "\" cy=\"" + py(series.values[i]) +
                   "\" r=\"2.5\" fill=\"#0b5fa5\"/>\n";
        }
        isDrawing = isThere;
    }
    return svg + "<path d=\"" + path.substr(path.empty() ? 0 : 1) +
           "\" fill=\"none\" stroke=\"#0b5fa5\" stroke-width=\"1.5\"/>\n" +
           label("380", top + height + 40, "middle", withUnit("time", axisUnit(x, plot.timeUnit)));
}

std::string plotSvg(const STimePlot& plot, const std::string& title)
{
    const double panel = 340;
    const std::string height = significant(50 + panel * static_cast<double>(plot.series.size()), 6);
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 720 " + height +
                      "\" font-family=\"Helvetica, Arial, sans-serif\" font-size=\"13\" fill=\"#333\">\n"
                      "<rect width=\"720\" height=\"" +
                      height + "\" fill=\"#fff\"/>\n<text x=\"80\" y=\"30\" font-weight=\"bold\">" + svgText(title) +
                      "</text>\n";
    double top = 70;
    for (const STimeSeries& series : plot.series) {
        svg += panelSvg(plot, series, top);
        top += panel;
    }
    return svg + "</svg>\n";
}

std::string plotCsv(const STimePlot& plot)
{
    std::string text = "\"timestep\"," + quotedCell(withUnit("time", plot.timeUnit));
    for (const STimeSeries& series : plot.series)
        text += ',' + quotedCell(withUnit(series.head, series.unit));
    text += '\n';
    for (std::size_t i = 0; i < plot.times.size(); ++i) {
        text += std::to_string(plot.timesteps[i]) + ',' + exactNumber(plot.times[i]);
        for (const STimeSeries& series : plot.series)
            text += ',' + exactNumber(series.values[i]);
        text += '\n';
    }
    return text;
}

} // namespace NBrenmark
