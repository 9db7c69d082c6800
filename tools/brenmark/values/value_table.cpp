#include "brenmark/values/value_table.h"

#include "brenmark/plot_axis.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace NBrenmark {

/// Room for any double or 64-bit integer.
static constexpr std::size_t numberRoom = 32;
/// Text that is handed over at once.
static constexpr std::size_t tableBlock = 1u << 20;

std::string quotedCell(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + '"';
}

std::string exactNumber(double value)
{
    char text[numberRoom];
    return std::string(text, std::to_chars(text, text + numberRoom, value).ptr);
}

CValueTable::CValueTable(const std::string& timeHead, const std::vector<std::string>& heads, Out out)
    : out(std::move(out))
{
    text = "\"timestep\"," + quotedCell(timeHead) + ",\"name\",\"id\"";
    for (const std::string& head : heads)
        text += ',' + quotedCell(head);
    text += '\n';
}

void CValueTable::add(const SValueBlock& block)
{
    const std::string front =
        std::to_string(block.timestep) + ',' + exactNumber(block.time) + ',' + quotedCell(block.source.name) + ',';
    const std::size_t used = text.size();
    text.resize(used + block.count * (front.size() + (block.columns + 1) * (numberRoom + 1)));
    char* at = text.data() + used;
    const double* value = block.values;
    for (std::size_t i = 0; i < block.count; ++i) {
        at = std::copy(front.begin(), front.end(), at);
        at = std::to_chars(at, at + numberRoom, block.source.idOf(block.rows[i])).ptr;
        for (std::size_t column = 0; column < block.columns; ++column) {
            *at++ = ',';
            at = std::to_chars(at, at + numberRoom, *value++).ptr;
        }
        *at++ = '\n';
    }
    text.resize(static_cast<std::size_t>(at - text.data()));
    if (text.size() >= tableBlock)
        finish();
}

void CValueTable::finish()
{
    out(text);
    text.clear();
}

// ---------------------------------------------------------------- summary

/// The sum keeps what each addition rounds off.
/// Source: Neumaier, Z. angew. Math. Mech. 54 (1974) 39.
void SValueSummary::add(double value)
{
    if (std::isnan(value)) {
        ++notNumbers;
        return;
    }
    minimum = count == 0 ? value : std::min(minimum, value);
    maximum = count == 0 ? value : std::max(maximum, value);
    ++count;
    const double next = total + value;
    if (std::isfinite(next))
        correction += std::abs(total) >= std::abs(value) ? (total - next) + value : (value - next) + total;
    total = next;
}

// ---------------------------------------------------------------- histogram

double SHistogram::edge(std::size_t number) const
{
    const double share = static_cast<double>(number) / static_cast<double>(counts.size());
    return number == counts.size() ? to : from + (to - from) * share;
}

void SHistogram::add(double value)
{
    if (!(value >= from && value <= to))
        return;
    const double place = to > from ? (value - from) / (to - from) * static_cast<double>(counts.size()) : 0.0;
    ++counts[std::min(static_cast<std::size_t>(place), counts.size() - 1)];
}

std::string SHistogram::text(const std::string& head, int columns) const
{
    const quint64 most = std::max<quint64>(*std::max_element(counts.begin(), counts.end()), 1);
    const int width = std::max(10, std::min(columns, 100) - 42);
    std::string result = head + '\n';
    for (std::size_t i = 0; i < counts.size(); ++i) {
        char line[96];
        std::snprintf(line, sizeof line, "%13.6g to %13.6g %10llu |", edge(i), edge(i + 1),
                      static_cast<unsigned long long>(counts[i]));
        const double share = static_cast<double>(counts[i]) / static_cast<double>(most);
        result += line + std::string(static_cast<std::size_t>(std::lround(share * width)), '*') + '\n';
    }
    return result;
}

std::string SHistogram::csv(const std::string& head) const
{
    std::string text = quotedCell("from " + head) + ',' + quotedCell("to " + head) + ",\"count\"\n";
    for (std::size_t i = 0; i < counts.size(); ++i)
        text += exactNumber(edge(i)) + ',' + exactNumber(edge(i + 1)) + ',' + std::to_string(counts[i]) + '\n';
    return text;
}

std::string SHistogram::svg(const std::string& title, const std::string& axisHead) const
{
    const double left = 80, top = 56, width = 600, height = 360;
    const SAxis x(from, to, 6), y(0.0, static_cast<double>(*std::max_element(counts.begin(), counts.end())), 6);
    const auto px = [&](double value) { return significant(left + x.at(value) * width, 6); };
    const auto py = [&](double value) { return significant(top + (1 - y.at(value)) * height, 6); };
    const auto tickText = [](const SAxis& axis, int tick) {
        const double value = axis.tick(tick);
        return significant(std::abs(value) < 1e-9 * axis.step ? 0.0 : value, 6);
    };
    const auto label = [](const std::string& atX, const std::string& atY, const char* anchor, const std::string& text) {
        return "<text x=\"" + atX + "\" y=\"" + atY + "\" text-anchor=\"" + anchor + "\">" + svgText(text) +
               "</text>\n";
    };
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 720 480\" "
                      "font-family=\"Helvetica, Arial, sans-serif\" font-size=\"13\" fill=\"#333\">\n"
                      "<rect width=\"720\" height=\"480\" fill=\"#fff\"/>\n";
    svg += label("80", "36", "start", title);
    for (int tick = 0; tick < y.tickCount(); ++tick) {
        const std::string at = py(y.tick(tick));
        svg.append("<line x1=\"80\" x2=\"680\" y1=\"").append(at).append("\" y2=\"").append(at);
        svg += "\" stroke=\"#e4e4e4\"/>\n";
        svg += label("72", at, "end", tickText(y, tick));
    }
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const double share = y.at(static_cast<double>(counts[i]));
        svg += "<rect x=\"" + px(edge(i)) + "\" y=\"" + py(static_cast<double>(counts[i])) + "\" width=\"" +
               significant((x.at(edge(i + 1)) - x.at(edge(i))) * width, 6) + "\" height=\"" +
               significant(share * height, 6) + "\" fill=\"#0b5fa5\" stroke=\"#fff\"/>\n";
    }
    for (int tick = 0; tick < x.tickCount(); ++tick)
        svg += label(px(x.tick(tick)), "436", "middle", tickText(x, tick));
    return svg + label("380", "462", "middle", axisHead) + "</svg>\n";
}

} // namespace NBrenmark
