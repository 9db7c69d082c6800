#include "brenmark/values/value_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>

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

} // namespace NBrenmark
