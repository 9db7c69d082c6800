#include "brenmark/tolerance.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace NBrenmark {

bool STolerance::allows(double a, double b) const
{
    if (a == b || (std::isnan(a) && std::isnan(b)))
        return true;
    const double by = std::abs(a - b);
    return std::isfinite(by) && (by <= absolute || by <= relative * std::max(std::abs(a), std::abs(b)));
}

/// Reads a number at the beginning of a text; "nan:7ff8000000000000" is one. \return whether there is one
static bool takeNumber(const char*& at, const char* end, double& number)
{
    const auto [rest, error] = std::from_chars(at, end, number);
    if (error != std::errc())
        return false;
    at = rest;
    if (std::isnan(number))
        at = std::find_if(at, end, [](char c) { return std::strchr(":0123456789abcdef", c) == nullptr; });
    return true;
}

bool STolerance::allows(const std::string& a, const std::string& b) const
{
    const char *first = a.data(), *second = b.data();
    const char *const firstEnd = first + a.size(), *const secondEnd = second + b.size();
    while (first != firstEnd && second != secondEnd) {
        double x = 0.0, y = 0.0;
        const bool isNumber = takeNumber(first, firstEnd, x);
        if (isNumber != takeNumber(second, secondEnd, y) || (isNumber && !allows(x, y)) ||
            (!isNumber && *first++ != *second++))
            return false;
    }
    return first == firstEnd && second == secondEnd;
}

const STolerance& STolerances::of(const std::string& place) const
{
    const std::string path = '/' + place + '/';
    const STolerance* found = &all;
    std::pair<size_t, size_t> deepest; // where a name ends, and its length
    for (const auto& [name, tolerance] : ofQuantities) {
        const size_t at = path.rfind('/' + name + '/');
        if (at == std::string::npos)
            continue;
        const std::pair<size_t, size_t> own{at + name.size(), name.size()};
        if (own > deepest) {
            found = &tolerance;
            deepest = own;
        }
    }
    return *found;
}

} // namespace NBrenmark
