// Numbers with as many digits as tell any two apart; not-a-numbers with their bits.
#include "io/text/text_values.h"

#include "core/control_characters.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace NBrenmark::NText {

static constexpr int significantDigits = 17; // enough to tell any two doubles apart

template <class TInteger>
static std::string decimal(TInteger value)
{
    return std::to_string(value);
}

static std::string hexadecimal(std::uint64_t bits, int digits)
{
    static const char digit[] = "0123456789abcdef";
    std::string out;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += digit[(bits >> shift) & 0xF];
    return out;
}

/// The name in UTF-8. Half a surrogate pair becomes three bytes that no UTF-8 holds, so that it is
/// neither lost nor taken for another character.
static std::string bytesOf(const QString& name)
{
    std::string out;
    for (int i = 0; i < name.size(); ++i) {
        char32_t c = name[i].unicode();
        if (name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(name[i], name[i + 1]);
            ++i;
        }
        if (c < 0x80) {
            out += static_cast<char>(c);
            continue;
        }
        const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        const unsigned lead[] = {0xC0, 0xE0, 0xF0};
        out += static_cast<char>(lead[more - 1] | (c >> (6 * more)));
        for (int k = more - 1; k >= 0; --k)
            out += static_cast<char>(0x80 | ((c >> (6 * k)) & 0x3F));
    }
    return out;
}

/// Bytes of the character at a position if it may be in a line as it is, else 0: no ASCII, which
/// the callers judge, no control character, nothing that isn't the shortest UTF-8 of a character.
static size_t printableLength(const std::string& bytes, size_t at)
{
    const auto byte = [&](size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u; };
    const unsigned lead = byte(at);
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    char32_t c = lead & (0xFF >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return 0;
        c = (c << 6) | (byte(at + i) & 0x3F);
    }
    const char32_t least[] = {0xA0, 0x800, 0x10000}; // 0x80 to 0x9F are control characters
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    const bool separator = c == 0x2028 || c == 0x2029; // some programs end a line there
    return c < least[length - 2] || c > 0x10FFFF || surrogate || separator || isDirectionControl(c) ? 0 : length;
}

/// The bytes with what may not be in a line escaped; ascii appends each character below 0x7F.
template <class TAscii>
static std::string escaped(const std::string& bytes, const char* escape, TAscii&& ascii)
{
    std::string out;
    for (size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x7F) {
            ascii(out, bytes[i++]);
            continue;
        }
        const size_t length = printableLength(bytes, i);
        if (length == 0)
            out += escape + hexadecimal(static_cast<unsigned char>(bytes[i++]), 2);
        out.append(bytes, i, length);
        i += length;
    }
    return out;
}

static std::string quoted(const std::string& bytes)
{
    return '"' +
           escaped(bytes, "\\x",
                   [](std::string& out, char c) {
                       switch (c) {
                       case '"': out += "\\\""; break;
                       case '\\': out += "\\\\"; break;
                       case '\n': out += "\\n"; break;
                       case '\r': out += "\\r"; break;
                       case '\t': out += "\\t"; break;
                       default:
                           if (c >= 0x20)
                               out += c;
                           else
                               out += "\\x" + hexadecimal(static_cast<unsigned char>(c), 2);
                       }
                   }) +
           '"';
}

void append(std::string& out, double value)
{
    if (std::isnan(value)) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        out += "nan:" + hexadecimal(bits, 16);
        return;
    }
    char digits[40];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, significantDigits);
    out.append(digits, end.ptr);
}

std::string text(double value)
{
    std::string out;
    append(out, value);
    return out;
}

std::string text(bool value) { return value ? "true" : "false"; }
std::string text(qint32 value) { return decimal(value); }
std::string text(quint32 value) { return decimal(value); }
std::string text(quint64 value) { return decimal(value); }
std::string text(const std::string& value) { return quoted(value); }
std::string text(const QString& value) { return quoted(bytesOf(value)); }
std::string text(const char* value) { return quoted(value); }

std::string tuple(const double* values, size_t count)
{
    std::string out = "(";
    for (size_t i = 0; i < count; ++i) {
        if (i > 0)
            out += ", ";
        out += text(values[i]);
    }
    return out + ')';
}

std::string text(const C3DVector& value) { return tuple(&value.x, 3); }
std::string text(const C3DPoint& value) { return tuple(&value.x, 3); }
std::string text(const CQuaternion& value) { return tuple(&value.w, 4); }
std::string text(const C3DMatrix& value) { return tuple(value.data(), 9); }
std::string text(const C3DTransform& value) { return tuple(value.data(), 16); }

std::string segment(const std::string& name)
{
    return escaped(name, "%", [](std::string& out, char c) {
        if (c <= ' ' || c == '/' || c == '%' || c == '#')
            out += '%' + hexadecimal(static_cast<unsigned char>(c), 2);
        else
            out += c;
    });
}

std::string segment(const QString& name) { return segment(bytesOf(name)); }

} // namespace NBrenmark::NText
