#include "brenmark/units_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace NBrenmark {

std::string sizeText(double bytes)
{
    const char* const units[] = {"bytes", "kB", "MB", "GB", "TB"};
    int unit = 0;
    // 999.5 and more would be printed as 1000 of the smaller unit
    while (unit < 4 && bytes >= (unit == 0 ? 1000 : 999.5)) {
        bytes /= 1000;
        ++unit;
    }
    char text[40];
    std::snprintf(text, sizeof text, "%.*f %s",
                  unit == 0 || bytes >= 99.95 ? 0
                  : bytes >= 9.995            ? 1
                                              : 2,
                  bytes, unit == 0 && bytes == 1 ? "byte" : units[unit]);
    return text;
}

std::string durationText(double seconds)
{
    char text[40];
    const auto whole = static_cast<long long>(std::llround(seconds));
    if (whole < 60)
        std::snprintf(text, sizeof text, seconds < 9.95 ? "%.1f s" : "%.0f s", seconds);
    else if (whole < 3600)
        std::snprintf(text, sizeof text, "%lld:%02lld min", whole / 60, whole % 60);
    else
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld h", whole / 3600, whole / 60 % 60, whole % 60);
    return text;
}

std::string countText(quint64 count, const std::string& noun) { return countText(count, noun, noun + 's'); }

std::string countText(quint64 count, const std::string& noun, const std::string& plural)
{
    return std::to_string(count) + ' ' + (count == 1 ? noun : plural);
}

std::string shortNumber(double value)
{
    char text[40];
    return std::string(text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 12).ptr);
}

} // namespace NBrenmark
