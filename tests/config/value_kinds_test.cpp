// The twenty kinds of value and their text forms. The texts are written by hand from the rules of the file.

#include "config/config_node.h"
#include "config/config_number.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace NBrenmark::NConfig {
namespace {

bool isSame(const C3DPoint& a, const C3DPoint& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
bool isSame(const C3DVector& a, const C3DVector& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
template <class T>
bool isSame(const T& a, const T& b)
{
    return a == b;
}

/// Kind name, value, and the text that a writer makes of it and a reader takes for it.
template <class T>
void expectForm(const char* name, const T& value, const std::string& text)
{
    const SValueKind* const kind = valueKindOf(std::any(value));
    ASSERT_NE(kind, nullptr) << name;
    EXPECT_STREQ(kind->name, name);
    EXPECT_EQ(valueKindOfName(name), kind);
    EXPECT_EQ(kind->encode(value), text) << name;
    std::any decoded;
    ASSERT_TRUE(kind->decode(text, decoded)) << name << " " << text;
    EXPECT_TRUE(isSame(std::any_cast<T>(decoded), value)) << name << " " << text;
}

TEST(ValueKinds, haveTheirNamesAndTextForms)
{
    expectForm<bool>("BOOLEAN", true, "TRUE");
    expectForm<bool>("BOOLEAN", false, "FALSE");
    expectForm<int>("INT", -2147483647 - 1, "-2147483648");
    expectForm<unsigned int>("UNSIGNED INT", 4294967295u, "4294967295");
    expectForm<double>("DOUBLE", 0.05, "0.05");
    expectForm<double>("DOUBLE", 1e-05, "1e-05");
    expectForm<double>("DOUBLE", 1e20, "1e+20");
    expectForm<double>("DOUBLE", 123456, "123456");
    expectForm<double>("DOUBLE", INFINITY, "inf");
    expectForm<float>("FLOAT", -2.5f, "-2.5");
    expectForm<char>("CHAR", 'x', "x");
    expectForm<char>("CHAR", '\t', "\t");
    expectForm<char>("CHAR", '\0', std::string(1, '\0'));
    expectForm<C3DPoint>("3D POINT", C3DPoint(0, 0.5, -1e-05), "(0, 0.5, -1e-05)");
    expectForm<C3DPoint>("3D POINT", C3DPoint(1e20, -1e8, 0), "(1e20, -1e08, 0)");
    expectForm<C3DVector>("3D VECTOR", C3DVector(1, -2.5, 3e-06), "(1, -2.5, 3e-06)");
    expectForm<std::string>("STD STRING", "one\ntwo: a=b, \"c\"", "one\\ntwo: a=b, \"c\"");
    expectForm<std::set<int>>("STD INT SET", {250, -1, 5}, "-1,5,250");
    expectForm<std::set<unsigned int>>("STD UNSIGNED INT SET", {4294967295u, 1u}, "1,4294967295");
    expectForm<std::set<double>>("STD DOUBLE SET", {1.5, -0.25}, "-0.250000,1.500000");
    expectForm<std::set<std::string>>("STD STRING SET", {"b", "a"}, "\"a\",\"b\"");
    expectForm<std::vector<int>>("STD INT VECTOR", {3, 1, 3}, "3,1,3");
    expectForm<std::vector<int>>("STD INT VECTOR", {}, "");
    expectForm<std::vector<unsigned int>>("STD UNSIGNED INT VECTOR", {3u}, "3");
    expectForm<std::vector<double>>("STD DOUBLE VECTOR", {1e21, 0}, "1000000000000000000000.000000,0.000000");
    expectForm<std::vector<std::string>>("STD STRING VECTOR", {"", "x"}, "\"\",\"x\"");
    // A comma and a line feed are escaped, no backslash is.
    expectForm<std::vector<std::string>>("STD STRING VECTOR", {"x,y", "p\nq", "a\\,b", "C:\\t", "\\"},
                                         R"("x\,y","p\nq","a\\,b","C:\t","\")");
    expectForm<std::set<std::string>>("STD STRING SET", {",", "\n"}, R"("\n","\,")");
    expectForm<QStringList>("QT STRING LIST", {"a,b", "c\nd"}, R"("a\,b","c\nd")");
    expectForm<QString>("QT STRING", QString::fromUtf8("é\nü"), "é\\nü");
    expectForm<QString>("QT STRING", QString(QChar(0xFEFF)) + "x", "\uFEFFx");
    expectForm<QString>("QT STRING", QString(), "");
    expectForm<QColor>("QT COLOUR", QColor(1, 22, 255), "R:1 G:22 B:255");
    expectForm<QStringList>("QT STRING LIST", {"a", QString::fromUtf8("é")}, "\"a\",\"é\"");
}

TEST(ValueKinds, areTwentyInTheOrderOfTheirNumbers)
{
    const char* const names[] = {"BOOLEAN",
                                 "INT",
                                 "UNSIGNED INT",
                                 "DOUBLE",
                                 "FLOAT",
                                 "CHAR",
                                 "3D POINT",
                                 "3D VECTOR",
                                 "STD STRING",
                                 "STD INT SET",
                                 "STD UNSIGNED INT SET",
                                 "STD DOUBLE SET",
                                 "STD STRING SET",
                                 "STD INT VECTOR",
                                 "STD UNSIGNED INT VECTOR",
                                 "STD DOUBLE VECTOR",
                                 "STD STRING VECTOR",
                                 "QT STRING",
                                 "QT COLOUR",
                                 "QT STRING LIST"};
    ASSERT_EQ(std::size(names), valueKindCount);
    for (const char* const name : names)
        EXPECT_NE(valueKindOfName(name), nullptr) << name;
    EXPECT_EQ(valueKindOf(std::any(long(1))), nullptr);
    EXPECT_EQ(valueKindOf(std::any()), nullptr);
    EXPECT_EQ(valueKindOfName("int"), nullptr);
    EXPECT_EQ(valueKindOfName(""), nullptr);
}

template <class T>
struct STextCase
{
    const char* text;
    bool isTaken;
    T value;
};

template <class T>
void expectReadings(const std::vector<STextCase<T>>& cases)
{
    const SValueKind& kind = *valueKindOf(std::any(T()));
    for (const STextCase<T>& c : cases) {
        std::any decoded;
        EXPECT_EQ(kind.decode(c.text, decoded), c.isTaken) << kind.name << " '" << c.text << "'";
        EXPECT_EQ(decoded.has_value(), c.isTaken) << kind.name << " '" << c.text << "'";
        if (decoded.has_value()) {
            EXPECT_TRUE(isSame(std::any_cast<T>(decoded), c.value)) << kind.name << " '" << c.text << "'";
        }
    }
}

TEST(ValueKinds, readWhatOthersWrite)
{
    expectReadings<bool>({{"true", true, true},
                          {"YES", true, true},
                          {"1", true, true},
                          {"No", true, false},
                          {"fAlse", true, false},
                          {"0", true, false},
                          {"", false, false},
                          {" true", false, false},
                          {"TRUE ", false, false},
                          {"yess", false, false},
                          {"10", false, false}});
    expectReadings<int>({{"12abc", true, 12},
                         {"  -7 ", true, -7},
                         {"+3", true, 3},
                         {"2147483647", true, 2147483647},
                         {"-2147483648", true, -2147483647 - 1},
                         {"2147483648", false, 0},
                         {"-2147483649", false, 0},
                         {"99999999999999999999", false, 0},
                         {"", false, 0},
                         {"x1", false, 0},
                         {"- 1", false, 0},
                         {"0x10", true, 0}});
    expectReadings<unsigned int>(
        {{"12 34", true, 12}, {"-1", true, 4294967295u}, {"4294967296", false, 0}, {"--1", false, 0}, {"", false, 0}});
    expectReadings<double>({{" 1.5e3xyz", true, 1500},
                            {"-.5", true, -0.5},
                            {"+2", true, 2},
                            {"1e+20", true, 1e20},
                            {"1e", true, 1},
                            {"0x10", true, 16},
                            {"5e-324", true, 5e-324},
                            {"1e400", false, 0},
                            {"-1e400", false, 0},
                            {"1e-400", false, 0},
                            {"", false, 0},
                            {"e5", false, 0},
                            {"+-1", false, 0},
                            {"-INF", true, -INFINITY}});
    expectReadings<float>(
        {{"1e300", true, INFINITY}, {"-1e300", true, -INFINITY}, {"0.5", true, 0.5f}, {"?", false, 0}});
    expectReadings<char>({{"  xy", true, 'x'}, {"", true, '\0'}, {"   ", true, '\0'}, {" ", true, ' '}});
    expectReadings<std::string>({{"", true, ""}, {"a\\nb\\", true, "a\nb\\"}, {" kept ", true, " kept "}});
    expectReadings<std::vector<int>>({{"1, 2,3x", true, {1, 2, 3}}, {"1,,2", false, {}}, {"1,", false, {}}});
    expectReadings<std::set<double>>({{"2,1e1,2", true, {2, 10}}, {"nan,1,2", true, {1, 2}}, {",", false, {}}});
    // Commas of a program that escaped none, and backslashes that are no escapes, stay as they are.
    expectReadings<std::vector<std::string>>({{"", true, {}},
                                              {R"("a,b" , "..\x\\y\"x)", true, {"a,b", "..\\x\\\\y\\"}},
                                              {R"("a\,b" , "c\nd"x)", true, {"a,b", "c\nd"}},
                                              {"\"open", true, {}},
                                              {"\"a\"\"b\"\"", true, {"a", "b"}}});
    expectReadings<C3DPoint>({{"at (1 ,\t2e3,-0.5) or so", true, C3DPoint(1, 2000, -0.5)},
                              {"(1, 2) (1, 2, 3)", true, C3DPoint(1, 2, 3)},
                              {"((1,2,3)", true, C3DPoint(1, 2, 3)},
                              {"(1e+20, 0, 0)", false, {}},
                              {"( 1, 2, 3)", false, {}},
                              {"(1, 2, 3 )", false, {}},
                              {"(.5, 1, 2)", false, {}},
                              {"(1., 1, 2)", false, {}},
                              {"(1, 2, 1e400)", false, {}},
                              {"(1, 2, 3", false, {}},
                              {"(inf, 0, 0)", false, {}},
                              {"", false, {}}});
    expectReadings<QColor>({{"is R:1  G:2\tB:3.", true, QColor(1, 2, 3)},
                            {"R:R:1 G:2 B:3", true, QColor(1, 2, 3)},
                            {"R:1G:2 B:3", false, {}},
                            {"R:1 G:2", false, {}},
                            {"R:-1 G:2 B:3", false, {}},
                            {"R:300 G:0 B:0", true, QColor()},
                            {"", false, {}}});
}

TEST(ValueKinds, numbersLookTheSameInEveryLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* const locale : {"C", "de_DE.UTF-8", "C.UTF-8", "ar_EG.UTF-8"}) {
        std::setlocale(LC_ALL, locale); // one that the host doesn't have changes nothing
        expectForm<double>("DOUBLE", 1234.5, "1234.5");
        expectForm<std::vector<double>>("STD DOUBLE VECTOR", {0.5}, "0.500000");
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(ValueKinds, printSixDigitsLikeTheStandardFunctionDoes)
{
    for (const double value :
         {0.0, -0.0, 1.0 / 3, 999999.5, 9999995.0, 1e-5, 0.0001234567, 1.7976931348623157e308, 5e-324, -123456789.0}) {
        char expected[400];
        std::snprintf(expected, sizeof expected, "%g", value);
        EXPECT_EQ(generalText(value), expected);
        std::snprintf(expected, sizeof expected, "%f", value);
        EXPECT_EQ(fixedText(value), expected);
    }
}

} // namespace
} // namespace NBrenmark::NConfig
