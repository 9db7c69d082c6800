#include "brenmark/array_diff.h"

#include "brenmark/units_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace NBrenmark {

namespace {

double valueAt(const SArrayView& array, size_t number)
{
    const char* const at = static_cast<const char*>(array.data) + number * array.elementBytes();
    if (array.kind[0] == 'f') {
        double value = 0.0;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    quint32 word = 0;
    std::memcpy(&word, at, sizeof word);
    return array.kind[0] == 'i' ? double(static_cast<qint32>(word)) : double(word);
}

/// What is found in the rows that both have.
struct SComparedRows
{
    size_t rows = 0;
    size_t values = 0; ///< that differ
    size_t first = 0;  ///< row that differs
    double largest = 0.0;
    bool anyNumber = false; ///< whose difference is one
};

SComparedRows compared(const SArrayView& a, const SArrayView& b, const STolerance& tolerance)
{
    SComparedRows result;
    const size_t bytes = a.elementBytes();
    const auto* const first = static_cast<const char*>(a.data);
    const auto* const second = static_cast<const char*>(b.data);
    for (size_t row = 0; row < std::min(a.rows, b.rows); ++row) {
        const size_t before = result.values;
        for (size_t i = row * a.columns; i < (row + 1) * a.columns; ++i) {
            if (std::memcmp(first + i * bytes, second + i * bytes, bytes) == 0)
                continue;
            const double x = valueAt(a, i), y = valueAt(b, i);
            if (a.kind[0] == 'f' && tolerance.isGiven() && tolerance.allows(x, y))
                continue;
            ++result.values;
            const double by = std::abs(x - y);
            if (!std::isnan(by)) {
                result.largest = std::max(result.largest, by);
                result.anyNumber = true;
            }
        }
        if (result.values > before && ++result.rows == 1)
            result.first = row;
    }
    return result;
}

} // namespace

void CKeptArrays::keep(const std::string& path, const SArrayView& values)
{
    SKept& kept = arrays[path];
    if (bytesKept + values.bytes() > mostBytes)
        return;
    bytesKept += values.bytes();
    const auto* const begin = static_cast<const char*>(values.data);
    kept.bytes.assign(begin, begin + values.bytes());
    kept.view = values;
    kept.view.data = kept.bytes.data();
    kept.isKept = true;
}

void CKeptArrays::describe(SDifference& difference, const SArrayView& converted) const
{
    const auto found = arrays.find(difference.place);
    if (found == arrays.end() || !found->second.isKept) {
        difference.detail += "; too many to keep beside those of other arrays, so that only their digests are compared";
        return;
    }
    const SArrayView& source = found->second.view;
    const SComparedRows rows = compared(source, converted, tolerances.of(difference.place));
    const bool isSameLength = source.rows == converted.rows;
    if (rows.values == 0 && isSameLength) {
        difference.kind = eWithinTolerance;
        return;
    }
    if (rows.values == 0) {
        difference.detail += "; the rows that both have are equal";
        difference.source = std::to_string(source.rows);
        difference.converted = std::to_string(converted.rows);
        return;
    }
    std::string text = std::to_string(rows.values) + " of " +
                       countText(std::min(source.rows, converted.rows) * source.columns, "value") +
                       (rows.values == 1 ? " differs" : " differ");
    if (rows.values > 1)
        text += ", in " + countText(rows.rows, "row");
    if (rows.anyNumber)
        text += ", by " + NText::text(rows.largest) + (rows.values > 1 ? " at most" : "");
    text += (rows.values > 1 ? "; the first in row " : "; in row ") + std::to_string(rows.first);
    difference.detail = isSameLength ? text : difference.detail + "; " + text;
    difference.source = source.row(rows.first);
    difference.converted = converted.row(rows.first);
}

} // namespace NBrenmark
