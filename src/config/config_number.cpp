// Numbers from and to text by the C locale's rules, whatever the process has set.
#include "config/config_number.h"

#include <array>
#include <charconv>
#include <limits>

namespace NBrenmark::NConfig {

bool isWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes white space and a sign off the front of a text; true for a minus.
static bool takeSign(std::string_view& text)
{
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return false;
    const bool negative = text.front() == '-';
    text.remove_prefix(1);
    return negative;
}

static bool parseMagnitude(std::string_view text, unsigned int& magnitude)
{
    if (text.empty() || !isDigit(text.front()))
        return false;
    return std::from_chars(text.data(), text.data() + text.size(), magnitude).ec == std::errc();
}

bool parseInt(std::string_view text, int& value)
{
    const bool negative = takeSign(text);
    unsigned int magnitude = 0;
    if (!parseMagnitude(text, magnitude))
        return false;
    const long long number = negative ? -static_cast<long long>(magnitude) : static_cast<long long>(magnitude);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        return false;
    value = static_cast<int>(number);
    return true;
}

bool parseUnsignedInt(std::string_view text, unsigned int& value)
{
    const bool negative = takeSign(text);
    unsigned int magnitude = 0;
    if (!parseMagnitude(text, magnitude))
        return false;
    value = negative ? 0u - magnitude : magnitude;
    return true;
}

bool parseDouble(std::string_view text, double& value)
{
    const bool negative = takeSign(text);
    // A second sign is none of ours, though from_chars would take it.
    if (text.empty() || text.front() == '-')
        return false;
    const char* const end = text.data() + text.size();
    double number = 0.0;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && text[2] != '-') {
        const auto hexadecimal = std::from_chars(text.data() + 2, end, number, std::chars_format::hex);
        if (hexadecimal.ec == std::errc::result_out_of_range)
            return false;
        if (hexadecimal.ec == std::errc()) {
            value = negative ? -number : number;
            return true;
        }
    }
    if (std::from_chars(text.data(), end, number).ec != std::errc())
        return false;
    value = negative ? -number : number;
    return true;
}

std::string generalText(double value)
{
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::general, 6).ptr;
    return std::string(buffer.begin(), end);
}

std::string fixedText(double value)
{
    std::array<char, 400> buffer; // the largest number has 309 digits before the point
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, 6).ptr;
    return std::string(buffer.begin(), end);
}

} // namespace NBrenmark::NConfig
