#pragma once
// What becomes of the values of a deck: a table of all, or numbers that sum them up.

#include "brenmark/values/value_sources.h"

#include <functional>
#include <string>
#include <vector>

namespace NBrenmark {

/// Values of some rows of a source, row by row.
struct SValueBlock
{
    quint32 timestep = 0;
    double time = 0.0; ///< in the chosen unit
    const SValueSource& source;
    const quint32* rows = nullptr;
    std::size_t count = 0;
    const double* values = nullptr; ///< count x columns
    std::size_t columns = 1;
};

/// A table with commas: a head line, then a line a row, each number with as many of its 17 digits as it takes to read
/// the same number back.
class CValueTable
{
public:
    using Out = std::function<void(const std::string&)>;

    /// \param heads  of the columns of values, with their units
    CValueTable(const std::string& timeHead, const std::vector<std::string>& heads, Out out);

    void add(const SValueBlock& block);
    /// Hands over what is left.
    void finish();

private:
    Out out;
    std::string text;
};

/// Count, extremes, mean and sum of one column, as its values pass.
struct SValueSummary
{
    void add(double value);
    double mean() const { return count == 0 ? 0.0 : sum() / static_cast<double>(count); }
    double sum() const { return total + correction; }

    quint64 count = 0;
    quint64 notNumbers = 0; ///< left out of the rest
    double minimum = 0.0;
    double maximum = 0.0;

private:
    double total = 0.0;
    double correction = 0.0; ///< what rounding took
};

/// How many values are in each of some equal intervals; the last one has both of its ends.
struct SHistogram
{
    SHistogram(double from, double to, quint32 intervals) : from(from), to(to), counts(intervals) {}
    void add(double value);
    double edge(std::size_t number) const;
    /// In characters. \param columns  of the terminal
    std::string text(const std::string& head, int columns) const;
    /// As bars over an axis. \param axisHead  with the unit
    std::string svg(const std::string& title, const std::string& axisHead) const;
    /// A row for each interval: its ends and its count. \param head  of the values, with the unit
    std::string csv(const std::string& head) const;

    double from;
    double to;
    std::vector<quint64> counts;
};

/// A text of a table, in double quotes.
std::string quotedCell(const std::string& text);
/// The shortest text that reads back the same number.
std::string exactNumber(double value);

} // namespace NBrenmark
