// Draws curves over the overlap.
#include "brenmark/law/plot.h"

#include "brenmark/failure.h"
#include "brenmark/plot_axis.h"
#include "brenmark/terminal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace NBrenmark {

static SAxis axisOf(const SCurve& curve, int ticks, std::size_t column)
{
    double least = HUGE_VAL, greatest = -HUGE_VAL;
    for (const std::vector<double>& point : curve.points)
        if (std::isfinite(point[column])) {
            least = std::min(least, point[column]);
            greatest = std::max(greatest, point[column]);
        }
    return least <= greatest ? SAxis(least, greatest, ticks) : SAxis(0, 1, ticks);
}

/// "normal force [kN]"
static std::string axisText(const SCurve& curve, std::size_t column, const SAxis& axis)
{
    return withUnit(curve.columns[column].name, axis.unit(curve.columns[column].unit));
}

static std::string padded(const std::string& text, std::size_t width)
{
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

static std::vector<std::string> heads(const SCurve& curve)
{
    std::vector<std::string> all;
    for (const SCurveColumn& column : curve.columns)
        all.push_back(withUnit(column.name, column.unit));
    return all;
}

static std::string chainText(const SCurve& curve)
{
    std::string text;
    for (const std::string& model : curve.models)
        text += (text.empty() ? "" : ", ") + model;
    return text.empty() ? "no contact model" : text;
}

std::size_t columnNamed(const SCurve& curve, const std::string& name)
{
    std::string names;
    for (std::size_t i = eNormalForceColumn; i < curve.columns.size(); ++i) {
        if (curve.columns[i].name == name)
            return i;
        names += (names.empty() ? "" : ", ") + oneLine(curve.columns[i].name);
    }
    throw CFailure(eExitUsage, oneLine(name) + ": isn't a column of this curve", "It has: " + names + ".");
}

// ---------------------------------------------------------------- tables

std::string tableText(const SCurve& curve)
{
    const std::vector<std::string> names = heads(curve);
    std::string text;
    const auto line = [&](const auto& cell) {
        for (std::size_t i = 0; i < names.size(); ++i)
            text += (i == 0 ? "" : "  ") + padded(cell(i), std::max<std::size_t>(names[i].size(), 13));
        text += '\n';
    };
    line([&](std::size_t i) { return oneLine(names[i]); });
    for (const std::vector<double>& point : curve.points)
        line([&point](std::size_t i) { return significant(point[i], 6); });
    return text;
}

std::string csvText(const SCurve& curve)
{
    std::string text;
    for (const std::string& name : heads(curve)) {
        std::string quoted;
        for (const char c : name)
            quoted += c == '"' ? "\"\"" : std::string(1, c);
        text += (text.empty() ? "\"" : ",\"") + quoted + '"';
    }
    text += '\n';
    for (const std::vector<double>& point : curve.points) {
        std::string line;
        for (const double value : point)
            line += (line.empty() ? "" : ",") + significant(value, 17);
        text += line + '\n';
    }
    return text;
}

// ---------------------------------------------------------------- pictures

std::string terminalPlot(const SCurve& curve, std::size_t column, int columns)
{
    const SAxis x = axisOf(curve, 4, eOverlapColumn), y = axisOf(curve, 4, column);
    const int height = 17;
    const int width = std::max(20, std::min(columns, 100) - 12);
    std::vector<std::string> rows(height, std::string(static_cast<std::size_t>(width), ' '));
    const auto cell = [](double share, int size) { return static_cast<int>(std::lround(share * (size - 1))); };
    const auto put = [&](double overlap, double value, char mark) {
        rows[static_cast<std::size_t>(height - 1 - cell(y.at(value), height))]
            [static_cast<std::size_t>(cell(x.at(overlap), width))] = mark;
    };
    if (y.from < 0.0 && y.to > 0.0)
        rows[static_cast<std::size_t>(height - 1 - cell(y.at(0.0), height))].assign(static_cast<std::size_t>(width),
                                                                                    '-');
    for (std::size_t i = 0; i < curve.points.size(); ++i)
        if (std::isfinite(curve.points[i][column]))
            put(curve.points[i][eOverlapColumn], curve.points[i][column], i < curve.unloading ? '*' : 'o');

    std::string text = oneLine(axisText(curve, column, y)) +
                       (curve.unloading < curve.points.size() ? "   * loading  o unloading" : "") + '\n';
    for (int row = 0; row < height; ++row) {
        std::string label;
        for (int tick = 0; tick < y.tickCount(); ++tick)
            if (height - 1 - cell(y.at(y.tick(tick)), height) == row)
                label = y.tickText(tick);
        text += padded(label, 9) + " |" + rows[static_cast<std::size_t>(row)] + '\n';
    }
    text += std::string(10, ' ') + '+' + std::string(static_cast<std::size_t>(width), '-') + '\n';
    std::string labels(static_cast<std::size_t>(width) + 12, ' ');
    for (int tick = 0; tick < x.tickCount(); ++tick) {
        const std::string label = x.tickText(tick);
        const auto at = static_cast<std::size_t>(
            std::max(0, 11 + cell(x.at(x.tick(tick)), width) - static_cast<int>(label.size()) / 2));
        if (at + label.size() <= labels.size())
            labels.replace(at, label.size(), label);
    }
    return text + labels.substr(0, labels.find_last_not_of(' ') + 1) + '\n' +
           padded(axisText(curve, eOverlapColumn, x), 11 + static_cast<std::size_t>(width)) + '\n';
}

std::string svgPlot(const SCurve& curve, std::size_t column)
{
    const SAxis x = axisOf(curve, 6, eOverlapColumn), y = axisOf(curve, 6, column);
    const double left = 80, top = 56, width = 600, height = 360;
    const auto px = [&](double value) { return left + x.at(value) * width; };
    const auto py = [&](double value) { return top + (1 - y.at(value)) * height; };
    const auto number = [](double value) { return QString::number(value, 'f', 2).toStdString(); };
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 720 480\" "
                      "font-family=\"Helvetica, Arial, sans-serif\" font-size=\"13\" fill=\"#333\">\n"
                      "<rect width=\"720\" height=\"480\" fill=\"#fff\"/>\n";
    const auto label = [&](double atX, double atY, const char* anchor, const std::string& text, const char* more) {
        svg += "<text x=\"" + number(atX) + "\" y=\"" + number(atY) + "\" text-anchor=\"" + anchor + "\" " + more +
               ">" + svgText(text) + "</text>\n";
    };
    const auto line = [&](double x1, double y1, double x2, double y2, const char* colour) {
        svg += "<line x1=\"" + number(x1) + "\" y1=\"" + number(y1) + "\" x2=\"" + number(x2) + "\" y2=\"" +
               number(y2) + "\" stroke=\"" + colour + "\"/>\n";
    };
    label(left, 24, "start", curve.title, "font-size=\"16\" font-weight=\"bold\"");
    label(left, 43, "start", chainText(curve), "fill=\"#666\"");
    for (int tick = 0; tick < x.tickCount(); ++tick) {
        line(px(x.tick(tick)), top, px(x.tick(tick)), top + height, "#e4e4e4");
        label(px(x.tick(tick)), top + height + 20, "middle", x.tickText(tick), "");
    }
    for (int tick = 0; tick < y.tickCount(); ++tick) {
        line(left, py(y.tick(tick)), left + width, py(y.tick(tick)), "#e4e4e4");
        label(left - 8, py(y.tick(tick)) + 4, "end", y.tickText(tick), "");
    }
    if (y.from < 0.0 && y.to > 0.0)
        line(left, py(0), left + width, py(0), "#888");
    line(left, top, left, top + height, "#333");
    line(left, top + height, left + width, top + height, "#333");
    label(left + width / 2, top + height + 46, "middle", axisText(curve, eOverlapColumn, x), "");
    label(0, 0, "middle", axisText(curve, column, y),
          ("transform=\"translate(24 " + number(top + height / 2) + ") rotate(-90)\"").c_str());

    const auto path = [&](std::size_t begin, std::size_t end, const char* colour, const char* dash) {
        std::string points;
        for (std::size_t i = begin; i < end; ++i)
            if (std::isfinite(curve.points[i][column]))
                points += number(px(curve.points[i][eOverlapColumn])) + ',' + number(py(curve.points[i][column])) + ' ';
        svg += "<polyline fill=\"none\" stroke=\"" + std::string(colour) + "\" stroke-width=\"2\" " + dash +
               " points=\"" + points + "\"/>\n";
    };
    path(0, curve.unloading, "#0b5fa5", "");
    if (curve.unloading < curve.points.size()) {
        path(curve.unloading - 1, curve.points.size(), "#d1495b", "stroke-dasharray=\"7 4\"");
        line(left + width - 210, 20, left + width - 182, 20, "#0b5fa5");
        label(left + width - 176, 24, "start", "loading", "");
        line(left + width - 104, 20, left + width - 76, 20, "#d1495b");
        label(left + width - 70, 24, "start", "unloading", "");
    }
    return svg + "</svg>\n";
}

} // namespace NBrenmark
