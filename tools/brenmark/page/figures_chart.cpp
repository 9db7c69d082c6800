#include "brenmark/page/figures_chart.h"

#include "brenmark/plot_axis.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace NBrenmark {

namespace {

constexpr size_t timeColumn = 0, particlesColumn = 1, smallestColumn = 2, meanColumn = 3, largestColumn = 4,
                 bytesColumn = 5, kineticColumn = 6, potentialColumn = 7;

double figure(const Json& row, size_t column)
{
    return column < row.size() && row[column].is_number() ? row[column].get<double>() : 0.0;
}

bool holdsEnergy(const Json& table)
{
    return std::any_of(table.begin(), table.end(), [](const Json& row) {
        return figure(row, kineticColumn) != 0.0 || figure(row, potentialColumn) != 0.0;
    });
}

class CChart
{
public:
    CChart(const std::string& title, const std::string& unit, const Json& source, const Json& target,
           std::initializer_list<size_t> columns)
        : x(axisOf({&source, &target}, {timeColumn}, false)), y(axisOf({&source, &target}, columns, true))
    {
        svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 480 284\" role=\"img\" aria-label=\"" +
              svgText(title) + "\" font-family=\"Helvetica, Arial, sans-serif\" font-size=\"13\" fill=\"#333\">\n";
        label(left, 16, "start", withUnit(title, y.unit(unit)));
        for (int tick = 0; tick < x.tickCount(); ++tick) {
            line(px(x.tick(tick)), top, px(x.tick(tick)), top + height);
            label(px(x.tick(tick)), top + height + 18, "middle", x.tickText(tick));
        }
        for (int tick = 0; tick < y.tickCount(); ++tick) {
            line(left, py(y.tick(tick)), left + width, py(y.tick(tick)));
            label(left - 6, py(y.tick(tick)) + 4, "end", y.tickText(tick));
        }
        label(left + width / 2, top + height + 38, "middle", withUnit("time", x.unit("s")));
        key(left, sourceStyle, "source");
        key(left + 100, targetStyle, "new deck");
        for (const size_t column : columns) { // the source broad below, the new deck narrow above
            curve(source, column, sourceStyle);
            curve(target, column, targetStyle);
        }
    }

    std::string text() const { return svg + "</svg>\n"; }

private:
    // As wide as a phone, on which the words are to be read.
    static constexpr double left = 56, top = 46, width = 404, height = 192;
    static constexpr const char *sourceStyle = "stroke=\"#9cc5e8\" stroke-width=\"7\"",
                                *targetStyle = "stroke=\"#b3261e\" stroke-width=\"2\"";

    static SAxis axisOf(std::initializer_list<const Json*> tables, std::initializer_list<size_t> columns, bool fromZero)
    {
        double least = fromZero ? 0.0 : HUGE_VAL, greatest = -HUGE_VAL;
        for (const Json* const table : tables)
            for (const Json& row : *table)
                for (const size_t column : columns) {
                    least = std::min(least, figure(row, column));
                    greatest = std::max(greatest, figure(row, column));
                }
        constexpr int ticks = 5;
        return least <= greatest && std::isfinite(least) ? SAxis(least, greatest, ticks) : SAxis(0, 1, ticks);
    }

    double px(double value) const { return left + x.at(value) * width; }
    double py(double value) const { return top + (1 - y.at(value)) * height; }
    static std::string number(double value) { return significant(value, 6); }

    void label(double atX, double atY, const char* anchor, const std::string& words)
    {
        svg += "<text x=\"" + number(atX) + "\" y=\"" + number(atY) + "\" text-anchor=\"" + anchor + "\">" +
               svgText(words) + "</text>\n";
    }
    void line(double x1, double y1, double x2, double y2)
    {
        svg += "<line x1=\"" + number(x1) + "\" y1=\"" + number(y1) + "\" x2=\"" + number(x2) + "\" y2=\"" +
               number(y2) + "\" stroke=\"#e4e4e4\"/>\n";
    }
    void key(double atX, const char* style, const char* words)
    {
        svg += "<path d=\"M" + number(atX) + " 32h24\" " + style + "/>\n";
        label(atX + 30, 36, "start", words);
    }
    void curve(const Json& table, size_t column, const char* style)
    {
        std::string points;
        for (const Json& row : table)
            points += number(px(figure(row, timeColumn))) + ',' + number(py(figure(row, column))) + ' ';
        if (table.size() == 1) // a line of one point shows nothing
            points += number(px(figure(table[0], timeColumn)) + 4) + ',' + number(py(figure(table[0], column)));
        svg +=
            "<polyline fill=\"none\" stroke-linecap=\"round\" " + std::string(style) + " points=\"" + points + "\"/>\n";
    }

    SAxis x, y;
    std::string svg;
};

} // namespace

std::string figureCharts(const Json& source, const Json& target)
{
    std::string charts = CChart("particles", "", source, target, {particlesColumn}).text();
    charts += CChart("size of particles: smallest, mean, largest", "m", source, target,
                     {smallestColumn, meanColumn, largestColumn})
                  .text();
    if (holdsEnergy(source) || holdsEnergy(target))
        charts += CChart("energy: kinetic, potential", "J", source, target, {kineticColumn, potentialColumn}).text();
    return charts + CChart("stored timestep", "B", source, target, {bytesColumn}).text();
}

} // namespace NBrenmark
