// The forms of single values, names and arrays. Expected digests come from another program's SHA-256
// over bytes packed there; expected numbers are the 17 digits that the IEEE value is known by.
#include "io/text/text_output.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <set>

namespace NBrenmark {

using namespace NText;

static double fromBits(quint64 bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

TEST(TextNumbers, haveSeventeenDigitsAndKeepEveryBit)
{
    const std::pair<quint64, const char*> cases[] = {
        {0x3FB999999999999A, "0.10000000000000001"},
        {0x3FD5555555555555, "0.33333333333333331"},
        {0x40BEAA0000000000, "7850"},
        {0x4480F0CF064DD592, "1e+22"},
        {0x7FEFFFFFFFFFFFFF, "1.7976931348623157e+308"},
        {0x0000000000000001, "4.9406564584124654e-324"}, // the least subnormal
        {0x0000000000000000, "0"},
        {0x8000000000000000, "-0"},
        {0x7FF0000000000000, "inf"},
        {0xFFF0000000000000, "-inf"},
        {0x7FF8000000000000, "nan:7ff8000000000000"},
        {0xFFF8000000000001, "nan:fff8000000000001"}, // sign and payload are bits like others
    };
    for (const auto& [bits, expected] : cases)
        EXPECT_EQ(text(fromBits(bits)), expected);
}

TEST(TextNumbers, comeBackBitForBitFromTheirText)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const quint64 bits = random();
        const double value = fromBits(bits);
        if (std::isnan(value))
            continue;
        const double back = std::strtod(text(value).c_str(), nullptr);
        quint64 bitsBack = 0;
        std::memcpy(&bitsBack, &back, sizeof back);
        EXPECT_EQ(bitsBack, bits) << text(value);
    }
}

TEST(TextStrings, areQuotedSoThatOneLineHoldsAny)
{
    const std::pair<QString, const char*> cases[] = {
        {QString(), "\"\""},
        {QStringLiteral("Grains, 3 mm"), "\"Grains, 3 mm\""},
        {QStringLiteral("a \"b\" \\n"), "\"a \\\"b\\\" \\\\n\""},
        {QStringLiteral("two\nlines\r\tand\x01"), "\"two\\nlines\\r\\tand\\x01\""},
        {QStringLiteral("K\u00F6rner \u7C92 \U0001F33E"), "\"K\u00F6rner \u7C92 \U0001F33E\""},
        {QStringLiteral("\u0085\u2028\u007F"), "\"\\xc2\\x85\\xe2\\x80\\xa8\\x7f\""}, // ends of line elsewhere
        {QString(QChar(0xD800)), "\"\\xed\\xa0\\x80\""},                              // half a pair
    };
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(text(value), expected);
    EXPECT_EQ(text(std::string("\xFF\xC0\xAF")), "\"\\xff\\xc0\\xaf\"") << "bytes that are no UTF-8";
    EXPECT_EQ(text(std::string("a\0b", 3)), "\"a\\x00b\"");
}

TEST(TextSegments, holdNoBlankNoSlashAndAreTakenApartAgain)
{
    const std::pair<QString, const char*> cases[] = {
        {QStringLiteral("Ball"), "Ball"},
        {QStringLiteral("steel~glass"), "steel~glass"},
        {QStringLiteral("Hertz-Mindlin (no slip)"), "Hertz-Mindlin%20(no%20slip)"},
        {QStringLiteral("a/b"), "a%2fb"},
        {QStringLiteral("50%"), "50%25"},
        {QStringLiteral("Ball#2"), "Ball%232"}, // not the second of two balls
        {QStringLiteral("x\ny"), "x%0ay"},
        {QStringLiteral("K\u00F6rner"), "K\u00F6rner"},
        {QString(), ""},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(segment(name), expected);
}

TEST(TextSegments, differForDifferentNames)
{
    // All names of up to three characters over an alphabet of troublemakers, and their parents' paths.
    const QString alphabet = QStringLiteral("a/% #2\u00F6\u0085");
    std::set<std::string> met;
    std::vector<QString> names{QString()};
    for (size_t i = 0; names[i].size() < 3; ++i)
        for (const QChar c : alphabet)
            names.push_back(names[i] + c);
    for (const QString& name : names) {
        const std::string text = segment(name);
        EXPECT_TRUE(met.insert(text).second) << text;
        EXPECT_EQ(text.find_first_of("/ \n#"), std::string::npos) << text;
    }
}

TEST(TextSegments, numberTheEntriesThatShareAName)
{
    CListSegments segments;
    EXPECT_EQ(segments.next(QStringLiteral("Ball")), "Ball");
    EXPECT_EQ(segments.next(QStringLiteral("Rod")), "Rod");
    EXPECT_EQ(segments.next(QStringLiteral("Ball")), "Ball#2");
    EXPECT_EQ(segments.next(QStringLiteral("Ball")), "Ball#3");
}

namespace {

class CLines : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override { text += path + ' ' + value + '\n'; }
    std::string text;
};

template <class T>
std::string arrayText(const std::vector<T>& elements, bool full)
{
    CLines lines;
    CTextOutput out(lines, "root", full);
    out.array("a", elements);
    return lines.text;
}

} // namespace

TEST(TextArrays, showTheirShapeAndADigestOfTheirBytes)
{
    std::vector<C3DVector> rows;
    for (int i = 0; i < 4; ++i)
        rows.emplace_back(3 * i + 1, 3 * i + 2, 3 * i + 3); // 1 to 12
    EXPECT_EQ(arrayText(rows, false),
              "root/a f64[4,3] sha256:defe2a44f5b1a83ad564e9644f68ce22f29eda535aa7110adb879971a1902eaa\n");
    EXPECT_EQ(arrayText(std::vector<double>(9), false),
              "root/a f64[9] sha256:834a709ba2534ebe3ee1397fd4f7bd288b2acc1d20a08d6c862dcd99b6f04400\n");
    EXPECT_EQ(arrayText(std::vector<qint32>{3, 0, 0, 7, 8, 9, 10, 11, 12, 2147483647}, false),
              "root/a i32[10] sha256:ebb4b7db9918e76720fda8c5ac4165d0ecea64d83f2a16d291e0a165e9e7741f\n");
}

TEST(TextArrays, areShownAsTheyAreWhenFewOrWanted)
{
    EXPECT_EQ(arrayText(std::vector<double>{}, false), "root/a f64[0]\n");
    EXPECT_EQ(arrayText(std::vector<C3DPoint>{}, true), "root/a f64[0,3]\n");
    EXPECT_EQ(arrayText(std::vector<double>{0.5, -0.0}, false), "root/a f64[2] 0.5 -0\n");
    EXPECT_EQ(arrayText(std::vector<C3DPoint>{{1, 2, 3}, {4, 5, 6}}, false), "root/a f64[2,3] (1, 2, 3) (4, 5, 6)\n");
    EXPECT_EQ(arrayText(std::vector<qint32>{-1}, false), "root/a i32[1] -1\n");
    EXPECT_EQ(arrayText(std::vector<quint32>{4294967295u}, false), "root/a u32[1] 4294967295\n");

    const std::string full = arrayText(std::vector<C3DPoint>(3, C3DPoint(0.1, 0, 1)), true);
    EXPECT_EQ(full.substr(full.find('\n') + 1), "root/a/0 (0.10000000000000001, 0, 1)\n"
                                                "root/a/1 (0.10000000000000001, 0, 1)\n"
                                                "root/a/2 (0.10000000000000001, 0, 1)\n");
}

} // namespace NBrenmark
