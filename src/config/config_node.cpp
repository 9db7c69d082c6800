// The text form of each kind of value, in both directions.
#include "config/config_node.h"

#include "config/config_number.h"
#include "core/log.h"
#include "core/shortened.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace NBrenmark::NConfig {

// ---------------------------------------------------------------- the text forms, writing above reading

static std::string encodeBool(bool value) { return value ? "TRUE" : "FALSE"; }

static std::string lowerCase(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

static bool decodeBool(const std::string& text, bool& value)
{
    if (text.size() > 5) // "false" is the longest word
        return false;
    const std::string word = lowerCase(text);
    value = word == "true" || word == "yes" || word == "1";
    return value || word == "false" || word == "no" || word == "0";
}

static std::string encodeInt(int value) { return std::to_string(value); }

static bool decodeInt(const std::string& text, int& value) { return parseInt(text, value); }

static std::string encodeUnsignedInt(unsigned int value) { return std::to_string(value); }

static bool decodeUnsignedInt(const std::string& text, unsigned int& value) { return parseUnsignedInt(text, value); }

static std::string encodeDouble(double value) { return generalText(value); }

static bool decodeDouble(const std::string& text, double& value) { return parseDouble(text, value); }

static std::string encodeFloat(float value) { return generalText(double(value)); }

static bool decodeFloat(const std::string& text, float& value)
{
    double number = 0.0;
    if (!parseDouble(text, number))
        return false;
    // Beyond the range of the narrow type lies infinity; the language itself leaves it open.
    constexpr double largest = double(std::numeric_limits<float>::max());
    constexpr float infinity = std::numeric_limits<float>::infinity();
    value = number > largest ? infinity : number < -largest ? -infinity : static_cast<float>(number);
    return true;
}

/// The ends of a line have no form.
static std::string encodeChar(char value) { return std::string(1, value == '\n' || value == '\r' ? '\0' : value); }

static bool decodeChar(const std::string& text, char& value)
{
    value = '\0';
    if (text.size() == 1) {
        value = text[0]; // a blank or a tab, too: a delimiter may be one
        return true;
    }
    for (const char c : text) {
        if (!isWhiteSpace(c)) {
            value = c;
            break;
        }
    }
    return true;
}

/// No reader of a triple takes a plus: 1e20 is the same number.
static std::string textWithoutPlus(double value)
{
    std::string text = generalText(value);
    text.erase(std::remove(text.begin(), text.end(), '+'), text.end());
    return text;
}

template <class TTriple>
static std::string encodeTriple(const TTriple& value)
{
    return "(" + textWithoutPlus(value.x) + ", " + textWithoutPlus(value.y) + ", " + textWithoutPlus(value.z) + ")";
}

/// Takes -digits.digits e-digits off the front of a text, fraction and exponent being optional. What is
/// there is taken as far as it goes: nothing that may follow could be part of a number.
static std::optional<std::string_view> takePlainNumber(std::string_view& text)
{
    size_t end = 0;
    const auto takeDigits = [&](size_t start) {
        size_t after = start;
        while (after < text.size() && isDigit(text[after]))
            ++after;
        if (after == start)
            return false;
        end = after;
        return true;
    };
    if (!takeDigits(!text.empty() && text[0] == '-' ? 1 : 0))
        return std::nullopt;
    if (end < text.size() && text[end] == '.')
        takeDigits(end + 1);
    if (end < text.size() && text[end] == 'e')
        takeDigits(end + 1 < text.size() && text[end + 1] == '-' ? end + 2 : end + 1);
    const std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    return number;
}

static void skipWhiteSpace(std::string_view& text)
{
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
}

static bool takeCharacter(std::string_view& text, char c)
{
    if (text.empty() || text.front() != c)
        return false;
    text.remove_prefix(1);
    return true;
}

/// "(x, y, z)" anywhere in the text; blanks may be around the commas and before nothing else. The search is
/// linear, however long the text and whatever is in it: no attempt runs past the next bracket.
template <class TTriple>
static bool decodeTriple(const std::string& text, TTriple& value)
{
    for (size_t bracket = text.find('('); bracket != std::string::npos; bracket = text.find('(', bracket + 1)) {
        std::string_view rest = std::string_view(text).substr(bracket + 1);
        std::string_view numbers[3];
        bool matches = true;
        for (size_t i = 0; i < 3 && matches; ++i) {
            const auto number = takePlainNumber(rest);
            matches = number.has_value();
            if (!matches)
                break;
            numbers[i] = *number;
            if (i < 2) {
                skipWhiteSpace(rest);
                matches = takeCharacter(rest, ',');
                skipWhiteSpace(rest);
            }
        }
        if (matches && takeCharacter(rest, ')'))
            return parseDouble(numbers[0], value.x) && parseDouble(numbers[1], value.y) &&
                   parseDouble(numbers[2], value.z);
    }
    return false;
}

/// What a text is a part of decides what it must not hold.
enum class ETextPlace
{
    eWholeValue,
    eListItem ///< a comma is escaped, and a quote would end the item
};

/// A line can't hold a carriage return, nor an item of a list a quote: such a text ends lines by line feeds, and
/// quotes by apostrophes.
static std::string withEscapes(const std::string& text, ETextPlace place)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n' || (c == '\r' && text.compare(i + 1, 1, "\n") != 0))
            escaped += "\\n";
        else if (c == ',' && place == ETextPlace::eListItem)
            escaped += "\\,";
        else if (c == '"' && place == ETextPlace::eListItem)
            escaped += '\'';
        else if (c != '\r')
            escaped += c;
    }
    return escaped;
}

/// Undoes the two escapes and nothing else: a backslash before any other letter is one.
static std::string withoutEscapes(const std::string& text, ETextPlace place)
{
    std::string plain;
    plain.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == 'n' || (next == ',' && place == ETextPlace::eListItem)) {
            plain += next == 'n' ? '\n' : ',';
            ++i;
        }
        else {
            plain += text[i];
        }
    }
    return plain;
}

static std::string encodeString(const std::string& value) { return withEscapes(value, ETextPlace::eWholeValue); }

static bool decodeString(const std::string& text, std::string& value)
{
    value = withoutEscapes(text, ETextPlace::eWholeValue);
    return true;
}

static QString fromUtf8(const std::string& text)
{
    const QByteArray bytes = QByteArray::fromStdString(text);
    QString decoded = QString::fromUtf8(bytes);
    // Taken for a mark of the encoding at the front, and left out, is what is a letter of the text here.
    if (bytes.startsWith("\xEF\xBB\xBF"))
        decoded.prepend(QChar(QChar::ByteOrderMark));
    if (decoded.toUtf8() != bytes)
        report(eDefaulted, NLogTitle::configuration,
               "A text that isn't UTF-8 was read with substitutes for the letters that it can't have: " +
                   shortened(decoded));
    return decoded;
}

static std::string encodeQString(const QString& value) { return encodeString(value.toStdString()); }

static bool decodeQString(const std::string& text, QString& value)
{
    std::string bytes;
    decodeString(text, bytes);
    value = fromUtf8(bytes);
    return true;
}

static std::string encodeElement(int value) { return std::to_string(value); }
static std::string encodeElement(unsigned int value) { return std::to_string(value); }
static std::string encodeElement(double value) { return fixedText(value); }
static bool decodeElement(std::string_view text, int& value) { return parseInt(text, value); }
static bool decodeElement(std::string_view text, unsigned int& value) { return parseUnsignedInt(text, value); }
static bool decodeElement(std::string_view text, double& value) { return parseDouble(text, value); }

template <class TNumbers>
static std::string encodeNumbers(const TNumbers& value)
{
    std::string text;
    for (const auto& element : value) {
        if (!text.empty())
            text += ',';
        text += encodeElement(element);
    }
    return text;
}

template <class TNumber>
static void append(std::vector<TNumber>& numbers, TNumber number)
{
    numbers.push_back(number);
}
template <class TNumber>
static void append(std::set<TNumber>& numbers, TNumber number)
{
    if (number == number)
        numbers.insert(number);
    else // it has no place in an order, and would have others taken for its equals
        report(eLost, NLogTitle::configuration, "A set of numbers was read without the nan in it.");
}

template <class TNumbers>
static bool decodeNumbers(const std::string& text, TNumbers& value)
{
    value.clear();
    if (text.empty())
        return true;
    for (size_t start = 0; start <= text.size();) {
        const size_t comma = std::min(text.find(',', start), text.size());
        typename TNumbers::value_type element{};
        if (!decodeElement(std::string_view(text).substr(start, comma - start), element))
            return false;
        append(value, element);
        start = comma + 1;
    }
    return true;
}

static std::string toBytes(const std::string& item) { return item; }
static std::string toBytes(const QString& item) { return item.toStdString(); }
static void append(std::set<std::string>& items, std::string item) { items.insert(std::move(item)); }
static void append(std::vector<std::string>& items, std::string item) { items.push_back(std::move(item)); }
static void append(QStringList& items, const std::string& item) { items.append(fromUtf8(item)); }

template <class TStrings>
static std::string encodeStrings(const TStrings& value)
{
    std::string text;
    for (const auto& item : value) {
        if (!text.empty())
            text += ',';
        text += '"' + withEscapes(toBytes(item), ETextPlace::eListItem) + '"';
    }
    return text;
}

/// Each run between a pair of quotes is an item, an empty run too.
template <class TStrings>
static bool decodeStrings(const std::string& text, TStrings& value)
{
    value.clear();
    size_t open = text.find('"');
    while (open != std::string::npos) {
        const size_t close = text.find('"', open + 1);
        if (close == std::string::npos)
            break;
        append(value, withoutEscapes(text.substr(open + 1, close - open - 1), ETextPlace::eListItem));
        open = text.find('"', close + 1);
    }
    return true;
}

static std::string encodeColour(const QColor& value)
{
    return "R:" + std::to_string(value.red()) + " G:" + std::to_string(value.green()) +
           " B:" + std::to_string(value.blue());
}

static std::optional<unsigned int> takeComponent(std::string_view& text)
{
    size_t end = 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    unsigned int component = 0;
    if (!parseUnsignedInt(text.substr(0, end), component))
        return std::nullopt;
    text.remove_prefix(end);
    return component;
}

/// "R:1 G:22 B:255" anywhere in the text.
static bool decodeColour(const std::string& text, QColor& value)
{
    for (size_t start = text.find("R:"); start != std::string::npos; start = text.find("R:", start + 1)) {
        std::string_view rest = std::string_view(text).substr(start);
        unsigned int components[3] = {0, 0, 0};
        bool matches = true;
        for (int i = 0; i < 3 && matches; ++i) {
            if (i > 0) {
                matches = !rest.empty() && isWhiteSpace(rest.front());
                skipWhiteSpace(rest);
            }
            matches = matches && takeCharacter(rest, "RGB"[i]) && takeCharacter(rest, ':');
            const auto component = matches ? takeComponent(rest) : std::nullopt;
            matches = component.has_value();
            components[i] = component.value_or(0);
        }
        if (!matches)
            continue;
        const bool inRange = components[0] <= 255 && components[1] <= 255 && components[2] <= 255;
        if (inRange)
            value = QColor(int(components[0]), int(components[1]), int(components[2]));
        else
            report(eDefaulted, NLogTitle::configuration, "A colour with a component beyond 255 was taken for none.");
        return true;
    }
    return false;
}

// ---------------------------------------------------------------- equality, as far as a text shows it

template <class T>
static bool isSame(const T& a, const T& b)
{
    return a == b;
}
static bool isSame(float a, float b) { return a == b || (a != a && b != b); }
static bool isSame(double a, double b) { return a == b || (a != a && b != b); }
static bool isSame(const QColor& a, const QColor& b) { return a.isValid() == b.isValid() && a.rgb() == b.rgb(); }
static bool isSame(const C3DPoint& a, const C3DPoint& b)
{
    return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.z, b.z);
}
static bool isSame(const C3DVector& a, const C3DVector& b)
{
    return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.z, b.z);
}
static bool isSame(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) { return isSame(x, y); });
}

// ---------------------------------------------------------------- the table

template <class T, auto encodeValue>
static std::string encodeAny(const std::any& value)
{
    return encodeValue(std::any_cast<const T&>(value));
}

template <class T, auto decodeValue>
static bool decodeAny(const std::string& text, std::any& value)
{
    T decoded{};
    if (!decodeValue(text, decoded))
        return false;
    value = std::move(decoded);
    return true;
}

template <class T>
static bool isSameAny(const std::any& a, const std::any& b)
{
    return isSame(std::any_cast<const T&>(a), std::any_cast<const T&>(b));
}

template <class T, auto encodeValue, auto decodeValue>
static constexpr SValueKind makeKind(const char* name)
{
    return {name, typeid(T), encodeAny<T, encodeValue>, decodeAny<T, decodeValue>, isSameAny<T>};
}

template <class T>
static constexpr SValueKind makeTripleKind(const char* name)
{
    return makeKind<T, encodeTriple<T>, decodeTriple<T>>(name);
}

template <class T>
static constexpr SValueKind makeNumbersKind(const char* name)
{
    return makeKind<T, encodeNumbers<T>, decodeNumbers<T>>(name);
}

template <class T>
static constexpr SValueKind makeStringsKind(const char* name)
{
    return makeKind<T, encodeStrings<T>, decodeStrings<T>>(name);
}

static constexpr SValueKind valueKinds[] = {
    makeKind<bool, encodeBool, decodeBool>("BOOLEAN"),
    makeKind<int, encodeInt, decodeInt>("INT"),
    makeKind<unsigned int, encodeUnsignedInt, decodeUnsignedInt>("UNSIGNED INT"),
    makeKind<double, encodeDouble, decodeDouble>("DOUBLE"),
    makeKind<float, encodeFloat, decodeFloat>("FLOAT"),
    makeKind<char, encodeChar, decodeChar>("CHAR"),
    makeTripleKind<C3DPoint>("3D POINT"),
    makeTripleKind<C3DVector>("3D VECTOR"),
    makeKind<std::string, encodeString, decodeString>("STD STRING"),
    makeNumbersKind<std::set<int>>("STD INT SET"),
    makeNumbersKind<std::set<unsigned int>>("STD UNSIGNED INT SET"),
    makeNumbersKind<std::set<double>>("STD DOUBLE SET"),
    makeStringsKind<std::set<std::string>>("STD STRING SET"),
    makeNumbersKind<std::vector<int>>("STD INT VECTOR"),
    makeNumbersKind<std::vector<unsigned int>>("STD UNSIGNED INT VECTOR"),
    makeNumbersKind<std::vector<double>>("STD DOUBLE VECTOR"),
    makeStringsKind<std::vector<std::string>>("STD STRING VECTOR"),
    makeKind<QString, encodeQString, decodeQString>("QT STRING"),
    makeKind<QColor, encodeColour, decodeColour>("QT COLOUR"),
    makeStringsKind<QStringList>("QT STRING LIST"),
};
static_assert(std::size(valueKinds) == valueKindCount, "a row for each of the types of ValueTypes");

const SValueKind* valueKindOfName(const std::string& name)
{
    for (const SValueKind& kind : valueKinds)
        if (name == kind.name)
            return &kind;
    return nullptr;
}

const SValueKind* valueKindOf(const std::any& value)
{
    for (const SValueKind& kind : valueKinds)
        if (value.type() == kind.type)
            return &kind;
    return nullptr;
}

} // namespace NBrenmark::NConfig
