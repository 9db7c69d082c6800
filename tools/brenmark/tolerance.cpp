#include "brenmark/tolerance.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace NBrenmark {

bool STolerance::allows(double a, double b) const
{
    if (a == b || (std::isnan(a) && std::isnan(b)))
        return true;
    const double by = std::abs(a - b);
    return by <= absolute || by <= relative * std::max(std::abs(a), std::abs(b)); // false for a NaN
}

bool STolerance::allows(const std::string& a, const std::string& b) const
{
    const char *first = a.data(), *second = b.data();
    const char *const firstEnd = first + a.size(), *const secondEnd = second + b.size();
    if (a.empty() || b.empty() || a.front() == '"' || b.front() == '"') // texts
        return a == b;
    while (first != firstEnd && second != secondEnd) {
        double x = 0.0, y = 0.0;
        const auto [firstRest, firstError] = std::from_chars(first, firstEnd, x);
        const auto [secondRest, secondError] = std::from_chars(second, secondEnd, y);
        if (firstError == std::errc() && secondError == std::errc()) {
            if (!allows(x, y))
                return false;
            first = firstRest;
            second = secondRest;
        }
        else if (*first++ != *second++) {
            return false;
        }
    }
    return first == firstEnd && second == secondEnd;
}

} // namespace NBrenmark
