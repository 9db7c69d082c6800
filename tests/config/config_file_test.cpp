// The configuration file: every result, every line form, and the bytes that a writer leaves.

#include "config/config_file.h"

#include "config/config_manager.h"
#include "config/file_replacer.h"
#include "core/log.h"
#include "support/paths.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <cmath>
#include <iterator>
#include <random>
#include <utility>

namespace NBrenmark::NConfig {
namespace {

const QByteArray header = "!format=KEYPATHVALUE\n!format-version=2.4.0.1\n!file-version=27.0.3\n";

CKeyPath path(const char* text) { return CKeyPath::fromString(text); }

/// A file, read into a tree of its own, with what the log was told.
class CReadFile
{
public:
    explicit CReadFile(const QByteArray& bytes, const std::set<std::string>& excluded = {})
    {
        CPersistentLogger logger(eWarning);
        addLogModule(&logger);
        result = readConfigurationFile(folder.write("a.dfg", bytes).toStdString(), *manager.rootHandle(), excluded);
        clearLogModules();
        messages = logger.messages();
    }

    std::string logText() const
    {
        std::string text;
        for (const SLogMessage& message : messages)
            text += std::get<2>(message) + "\n";
        return text;
    }

    CTempFolder folder;
    CConfigManager manager;
    int result = -1;
    std::vector<SLogMessage> messages;
};

QByteArray written(CConfigManager& manager, const char* base = "")
{
    const CTempFolder folder;
    EXPECT_EQ(writeConfigurationFile(folder.path("b.dfg").toStdString(), *manager.handle(path(base), true)),
              eConfigDone);
    EXPECT_TRUE(waitForCopies().empty());
    return folder.read("b.dfg");
}

struct SResultCase
{
    const char* name;
    QByteArray bytes;
    int result;
    const char* logged; ///< a part of what the log says; null if it says nothing
};

TEST(ConfigFile, endsWithTheResultOfItsFirstFault)
{
    const char* const noFormat = "format line missing or invalid";
    const char* const noVersion = "version line missing or invalid";
    const SResultCase cases[] = {
        {"three header lines", header, eConfigDone, nullptr},
        {"two header lines", header.left(header.indexOf("!file")), eConfigDone, nullptr},
        {"no line feed at the end", header.chopped(1), eConfigDone, nullptr},
        {"carriage returns", QByteArray(header + "A=INT:1\n \t\nB=INT:2").replace("\n", "\r\n"), eConfigDone, nullptr},
        {"blanks round the format", "  !format=KEYPATHVALUE \t\n!format-version=2.4.0.1\n", eConfigDone, nullptr},
        {"text after versions", "!format=KEYPATHVALUE\n!format-version=2.4.0.1.9 x\n !file-version=1.2.3.4\n",
         eConfigDone, nullptr},
        {"older format", "!format=KEYPATHVALUE\n!format-version=2.3.9.99999999999999999999\n", eConfigDone, nullptr},
        {"a line that starts with NUL", header + QByteArray("\0A=INT:x\n", 9) + "B=INT:1\n", eConfigDone, nullptr},
        {"empty file", "", eConfigNoFormatLine, noFormat},
        {"text after the format", "!format=KEYPATHVALUE x\n!format-version=2.4.0.1\n", eConfigNoFormatLine, noFormat},
        {"another format", "!format=XML\n!format-version=2.4.0.1\n", eConfigNoFormatLine, noFormat},
        {"format alone", "!format=KEYPATHVALUE\n", eConfigInvalidLine, noVersion},
        {"version too short", "!format=KEYPATHVALUE\n!format-version=2.4.0\n", eConfigInvalidLine, noVersion},
        {"version after text", "!format=KEYPATHVALUE\nx!format-version=2.4.0.1\n", eConfigInvalidLine, noVersion},
        {"later format", "!format=KEYPATHVALUE\n!format-version=2.4.0.2\n", eConfigLaterFormat,
         "later version\nof the"},
        {"later by number, not by letter", "!format=KEYPATHVALUE\n!format-version=10.0.0.0\n", eConfigLaterFormat,
         nullptr},
        {"no equals sign", header + "A:INT\n", eConfigInvalidLine, "invalid data found in file on line: 4"},
        {"no key", header + "\n=INT:1\n", eConfigInvalidLine, "invalid data found in file on line: 5"},
        {"no colon", header + "A=INT\n", eConfigInvalidLine, "invalid data"},
        {"escaped equals sign only", header + "A\\=INT:1\n", eConfigInvalidLine, "invalid data"},
        {"unknown kind", header + "A=INTEGER:1\n", eConfigInvalidLine, "unsupported format on line: 4"},
        {"invalid value", header + "A:B=INT:x\n", eConfigInvalidValue,
         "Value is in invalid format (Key: A:B) (line: 4)"},
        {"key of colons", header + "::=INT:1\n", eConfigInvalidValue, "Key path not valid (Key: ) (line: 4)"},
        {"vector with a plus", header + "V=3D VECTOR:(1e+20, 0, 0)\n", eConfigInvalidValue, "invalid format"},
        {"key too deep", header + QByteArray("A:").repeated(500000) + "=INT:1\n", eConfigInvalidValue, "not valid"},
    };
    for (const SResultCase& c : cases) {
        const CReadFile file(c.bytes);
        EXPECT_EQ(file.result, c.result) << c.name;
        if (c.logged) {
            EXPECT_NE(file.logText().find(c.logged), std::string::npos) << c.name << ": " << file.logText();
            EXPECT_NE(file.logText().find("a.dfg: "), std::string::npos) << c.name;
        }
        else if (c.result == eConfigDone) {
            EXPECT_EQ(file.logText(), "") << c.name;
        }
    }
}

TEST(ConfigFile, cannotReadWhatIsNotThere)
{
    CConfigManager manager;
    const CTempFolder folder;
    const auto root = manager.rootHandle();
    EXPECT_EQ(readConfigurationFile("", *root, {}), eConfigNotOpened);
    EXPECT_EQ(readConfigurationFile(folder.path("none.dfg").toStdString(), *root, {}), eConfigNotOpened);
    EXPECT_EQ(readConfigurationFile(folder.path().toStdString(), *root, {}), eConfigNotOpened) << "a folder";
    EXPECT_EQ(writeConfigurationFile("", *root), eConfigNotOpened);
}

TEST(ConfigFile, remembersWhatTheFileSaysOfItself)
{
    CReadFile file(header);
    EXPECT_EQ(file.manager.formatVersion(), "2.4.0.1");
    EXPECT_EQ(file.manager.fileVersion(), "27.0.3");

    // Without a line for it the version is the last that wrote none, and the line is an entry.
    CReadFile old("!format=KEYPATHVALUE\n!format-version=2.3.9.9\nA:B=INT:12abc\n");
    EXPECT_EQ(old.result, eConfigDone);
    EXPECT_EQ(old.manager.formatVersion(), "2.3.9.9");
    EXPECT_EQ(old.manager.fileVersion(), "24.0.0");
    EXPECT_EQ(old.manager.value<int>(path("A:B")), 12);

    const CReadFile later("!format=KEYPATHVALUE\n!format-version=2.4.0.1\n!file-version=30.0.3\nA=INT:1\n");
    EXPECT_EQ(later.result, eConfigDone);
    ASSERT_EQ(later.messages.size(), 1u);
    EXPECT_EQ(later.messages[0],
              SLogMessage(eWarning, "Configuration",
                          "a.dfg: This file was generated by a later version and may not load correctly. ."));
}

TEST(ConfigFile, splitsALineAtTheFirstSignThatCounts)
{
    CReadFile file(header + "A\\=B:C=STD STRING:x=y: z\n"
                            "K=INT:1\nK=STD STRING:later wins\n"
                            " S =STD STRING:\n"
                            "CUT=STD STRING:kept\rlost\n"
                            "BROKEN\r=STD STRING:v\n");
    ASSERT_EQ(file.result, eConfigDone) << file.logText();
    EXPECT_EQ(file.manager.value<std::string>(path("A=B:C")), "x=y: z");
    EXPECT_EQ(file.manager.value<std::string>(path("K")), "later wins");
    EXPECT_EQ(file.manager.value<std::string>(path(" S ")), "");
    EXPECT_EQ(file.manager.value<std::string>(path("CUT")), "kept");
    EXPECT_EQ(file.manager.value<std::string>(path("BROKEN\r")), "v");
    ASSERT_EQ(file.messages.size(), 1u);
    EXPECT_NE(file.logText().find("carriage return was dropped (line: 8)"), std::string::npos);
}

TEST(ConfigFile, keepsWhatStoodBeforeAFault)
{
    CReadFile file(header + "A=INT:1\nB=INT:x\nC=INT:3\n");
    EXPECT_EQ(file.result, eConfigInvalidValue);
    EXPECT_EQ(file.manager.value<int>(path("A")), 1);
    EXPECT_EQ(file.manager.findNode(path("C"), false), nullptr);
}

TEST(ConfigFile, passesOverExcludedElements)
{
    CReadFile file(header + "A:SKIP:B=NO KIND:1\nSKIPPED=INT:2\nA:C=INT:3\n", {"SKIP"});
    EXPECT_EQ(file.result, eConfigDone);
    EXPECT_EQ(file.manager.childKeys(path("A")), std::set<CKeyPath>{path("C")});
    EXPECT_EQ(file.manager.value<int>(path("SKIPPED")), 2);
}

TEST(ConfigFile, readsBelowTheHandleAndReportsEachHundredLines)
{
    CTempFolder folder;
    QByteArray bytes = header;
    for (int i = 0; i < 250; ++i)
        bytes += "\nK" + QByteArray::number(i) + "=INT:" + QByteArray::number(i) + "\n";
    CConfigManager manager;
    std::vector<int> told;
    EXPECT_EQ(readConfigurationFile(folder.write("a.dfg", bytes).toStdString(), *manager.handle(path("BASE:X"), true),
                                    {}, [&](int lines) { told.push_back(lines); }),
              eConfigDone);
    EXPECT_EQ(told, (std::vector<int>{100, 200}));
    EXPECT_EQ(manager.value<int>(path("BASE:X:K249")), 249);
}

// Patterns that try every way through a line would take hours, or the whole stack, for any of these.
TEST(ConfigFile, takesLinesOfMegabytesInItsStride)
{
    constexpr int size = 2 * 1024 * 1024;
    const std::pair<QByteArray, int> cases[] = {
        {"A=STD STRING:" + QByteArray(5 * size, 'x'), eConfigDone},
        {QByteArray(size, 'x') + "=INT:1", eConfigDone},
        {QByteArray(size, 'x'), eConfigInvalidLine},
        {QByteArray("a=").repeated(size / 2), eConfigInvalidLine},
        {QByteArray("a=\r").repeated(size / 3), eConfigInvalidLine},
        {QByteArray("\\=").repeated(size / 2) + ":", eConfigInvalidLine},
        {"A=3D POINT:" + QByteArray("(1, 2, ").repeated(size / 7), eConfigInvalidValue},
        {"A=3D POINT:(" + QByteArray(size, '1'), eConfigInvalidValue},
        {"A=QT COLOUR:" + QByteArray("R:1 G:1 ").repeated(size / 8), eConfigInvalidValue},
        {"A=DOUBLE:" + QByteArray(size, '9'), eConfigInvalidValue},
        {"A=BOOLEAN:" + QByteArray(size, 'T'), eConfigInvalidValue},
        {"A=STD INT VECTOR:" + QByteArray("1,").repeated(size / 2) + "1", eConfigDone},
        {QByteArray(size, ' '), eConfigDone},
    };
    for (const auto& [line, result] : cases) {
        CReadFile file(header + line + "\n");
        EXPECT_EQ(file.result, result) << line.left(20).toStdString();
        EXPECT_LT(file.logText().size(), 1000u);
    }
}

TEST(ConfigFile, isWrittenByteForByte)
{
    CConfigManager manager;
    manager.value<int>(path("B:Z"), -7);
    manager.value<QString>(path("B"), QString::fromUtf8("é: =\nx"));
    manager.value<std::string>(path("B:A=B"), "");
    manager.value<double>(path("A:LONGER:DOWN"), 1.0 / 3);
    manager.value<std::set<int>>(path("a"), {500, 100});
    manager.value<QColor>(path("A0"), QColor(255, 0, 128));
    manager.value<std::vector<std::string>>(path("A"), {"x,y", "p\nq"});
    manager.findNode(path("NO:VALUE"), true);

    EXPECT_EQ(written(manager), "!format=KEYPATHVALUE\n"
                                "!format-version=2.4.0.1\n"
                                "!file-version=30.0.2\n"
                                "A=STD STRING VECTOR:\"x\\,y\",\"p\\nq\"\n"
                                "A:LONGER:DOWN=DOUBLE:0.333333\n"
                                "A0=QT COLOUR:R:255 G:0 B:128\n"
                                "B=QT STRING:\xC3\xA9: =\\nx\n"
                                "B:A\\=B=STD STRING:\n"
                                "B:Z=INT:-7\n"
                                "a=STD INT SET:100,500\n");
    EXPECT_EQ(written(manager, "A:LONGER"), "!format=KEYPATHVALUE\n"
                                            "!format-version=2.4.0.1\n"
                                            "!file-version=30.0.2\n"
                                            "A:LONGER:DOWN=DOUBLE:0.333333\n");
}

TEST(ConfigFile, refusesAValueOfNoKind)
{
    CConfigManager manager;
    manager.value<int>(path("A"), 1);
    manager.findNode(path("B:C"), true)->value = 1L;
    const CTempFolder folder;
    CPersistentLogger logger(eError);
    addLogModule(&logger);
    EXPECT_EQ(writeConfigurationFile(folder.path("b.dfg").toStdString(), *manager.rootHandle()), eConfigInvalidValue);
    clearLogModules();
    EXPECT_TRUE(waitForCopies().empty());
    ASSERT_EQ(logger.messages().size(), 1u);
    EXPECT_NE(std::get<2>(logger.messages()[0]).find("unsupported data type in tree for key: B:C"), std::string::npos);
}

QByteArray textOf(CConfigManager& manager)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_EQ(writeConfiguration(buffer, *manager.rootHandle()), eConfigDone);
    return buffer.data();
}

/// What the log says while a tree is written.
std::string reportedWhileWriting(CConfigManager& manager, QByteArray& bytes)
{
    CPersistentLogger logger(eWarning);
    addLogModule(&logger);
    bytes = textOf(manager);
    clearLogModules();
    std::string text;
    for (const SLogMessage& message : logger.messages())
        text += std::get<2>(message) + "\n";
    return text;
}

struct SMendedCase
{
    const char* name;
    std::any value;
    const char* entry; ///< without the key; null if the entry is left out
};

TEST(ConfigFile, reportsAValueThatItCannotHold)
{
    const SMendedCase cases[] = {
        {"more than six digits", 0.12345678, "DOUBLE:0.123457"},
        {"more than six decimals", std::vector<double>{1e-9, 1}, "STD DOUBLE VECTOR:0.000000,1.000000"},
        {"numbers that become one", std::set<double>{-1e-9, 1e-9}, "STD DOUBLE SET:-0.000000"},
        {"carriage returns", std::string("a\r\nb\rc"), "STD STRING:a\\nb\\nc"},
        {"items that become one", std::set<std::string>{"a\rb", "a\nb"}, "STD STRING SET:\"a\\nb\""},
        {"a quote in an item", QStringList{"say \"x\"", "y"}, "QT STRING LIST:\"say 'x'\",\"y\""},
        {"what looks like an escape", std::string("C:\\new"), "STD STRING:C:\\new"},
        {"half of a letter", QString(QChar(0xD800)), "QT STRING:?"},
        {"a colour that is none", QColor(), "QT COLOUR:R:0 G:0 B:0"},
        {"no number in a triple", C3DVector(INFINITY, 0, 0), nullptr},
    };
    for (const SMendedCase& c : cases) {
        CConfigManager manager;
        manager.findNode(path("K:V"), true)->value = c.value;
        manager.value<int>(path("Z"), 1);
        QByteArray bytes;
        const std::string told = reportedWhileWriting(manager, bytes);
        EXPECT_NE(told.find("key K:V"), std::string::npos) << c.name << told;
        EXPECT_TRUE(bytes.endsWith("\nZ=INT:1\n")) << c.name;
        const QByteArray entry = c.entry ? QByteArray("\nK:V=") + c.entry + "\n" : QByteArray();
        EXPECT_EQ(bytes.contains("K:V="), c.entry != nullptr) << c.name;
        EXPECT_TRUE(bytes.contains(entry)) << c.name << bytes.toStdString();
    }
}

TEST(ConfigFile, leavesOutAKeyThatWouldReadAsAnother)
{
    for (const char* const element : {"a:b", "", "line\nfeed", "return\rinside", "backslash\\"}) {
        CConfigManager manager;
        manager.value<int>(CKeyPath(std::vector<std::string>{"K", element}), 1);
        manager.value<int>(path("Z"), 1);
        QByteArray bytes;
        EXPECT_NE(reportedWhileWriting(manager, bytes).find("key K:"), std::string::npos) << element;
        EXPECT_TRUE(bytes.endsWith("!file-version=30.0.2\nZ=INT:1\n")) << element;
    }
}

/// Values of every kind, the odd ones oftener than not.
class COddValues
{
public:
    explicit COddValues(unsigned int seed) : random(seed) {}

    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }

    std::string text(std::vector<std::string> parts)
    {
        std::string result;
        for (int i = below(5); i > 0; --i)
            result += parts[size_t(below(int(parts.size())))];
        return result;
    }
    std::string text()
    {
        return text({"a",
                     "é",
                     " ",
                     "\t",
                     ",",
                     "\"",
                     "\\",
                     "n",
                     "\\n",
                     "\\,",
                     "\n",
                     "\r",
                     "\r\n",
                     "=",
                     ":",
                     "\xFF",
                     std::string(1, '\0'),
                     "\xEF\xBB\xBF",
                     "R:1 G:2 B:3",
                     "(1, 2, 3)"});
    }
    double number()
    {
        const double odd[] = {0,   -0.0, 1e-9,   -2e-9,    1.0 / 3, 1e20,     -1e300, 5e-324,
                              100, 1e-5, 999999, 999999.5, 0.5,     INFINITY, NAN,    1.7976931348623157e308};
        return odd[below(int(std::size(odd)))];
    }
    std::any value()
    {
        const int kind = below(int(valueKindCount));
        return valueOf(kind, std::make_index_sequence<valueKindCount>());
    }

private:
    template <size_t... kinds>
    std::any valueOf(int kind, std::index_sequence<kinds...>)
    {
        std::any result;
        ((int(kinds) == kind ? (void)(result = make(std::tuple_element_t<kinds, ValueTypes>())) : (void)0), ...);
        return result;
    }
    bool make(bool) { return below(2) == 0; }
    int make(int) { return below(2) == 0 ? -2147483647 - 1 : below(2000) - 1000; }
    unsigned int make(unsigned int) { return below(2) == 0 ? 4294967295u : unsigned(below(2000)); }
    double make(double) { return number(); }
    float make(float) { return static_cast<float>(below(2) == 0 ? number() : 1.0 / (1 + below(99))); }
    char make(char) { return static_cast<char>(below(256)); }
    C3DPoint make(const C3DPoint&) { return C3DPoint(number(), number(), number()); }
    C3DVector make(const C3DVector&) { return C3DVector(number(), number(), number()); }
    std::string make(const std::string&) { return text(); }
    QString make(const QString&)
    {
        return QString::fromStdString(text()) + (below(9) == 0 ? QString(QChar(0xD800)) : QString());
    }
    QColor make(const QColor&) { return below(5) == 0 ? QColor() : QColor(below(256), below(256), below(256)); }
    QStringList make(const QStringList&)
    {
        QStringList list;
        for (int i = below(4); i > 0; --i)
            list.append(make(QString()));
        return list;
    }
    template <class T>
    std::set<T> make(const std::set<T>&)
    {
        std::set<T> set;
        for (int i = below(4); i > 0; --i)
            if (T element = make(T()); element == element)
                set.insert(element);
        return set;
    }
    template <class T>
    std::vector<T> make(const std::vector<T>&)
    {
        std::vector<T> vector;
        for (int i = below(4); i > 0; --i)
            vector.push_back(make(T()));
        return vector;
    }

    std::mt19937 random;
};

/// The paths of all nodes that have a value.
void valuedPaths(CConfigManager& manager, const CKeyPath& base, std::vector<CKeyPath>& found)
{
    if (manager.findNode(base, false)->value.has_value())
        found.push_back(base);
    for (const CKeyPath& child : manager.childKeys(base))
        valuedPaths(manager, CKeyPath(base, child), found);
}

TEST(ConfigFile, readAndWrittenAgainIsTheSameAndNothingIsLostUntold)
{
    constexpr int trees = 400;
    for (unsigned int seed = 0; seed < trees; ++seed) {
        COddValues odd(seed);
        CConfigManager manager;
        for (int i = 0; i < 12; ++i) {
            std::vector<std::string> elements;
            for (int depth = odd.below(3); depth >= 0; --depth)
                elements.push_back(odd.text({"A", "b", "=", "\\", "\\=", " ", "é", "!", "\"", "1"}));
            manager.findNode(CKeyPath(elements), true)->value = odd.value();
        }
        QByteArray first;
        const std::string told = reportedWhileWriting(manager, first);
        CReadFile again(first);
        ASSERT_EQ(again.result, eConfigDone) << seed << again.logText();
        ASSERT_EQ(again.logText(), "") << seed;
        ASSERT_EQ(textOf(again.manager), first) << seed;

        std::vector<CKeyPath> paths;
        valuedPaths(manager, CKeyPath(), paths);
        for (const CKeyPath& key : paths) {
            const std::any& value = manager.findNode(key, false)->value;
            const SConfigNode* const node = again.manager.findNode(key, false);
            const bool isSame = node && valueKindOf(node->value) == valueKindOf(value) &&
                                valueKindOf(value)->isSame(value, node->value);
            ASSERT_TRUE(isSame || told.find("The value of key " + key.toString()) != std::string::npos)
                << seed << ": " << key.toString();
        }
    }
}

// The sample's entries in the order of their keys. Its numbers have few digits, its texts no list: what comes
// back is the same text.
TEST(ConfigFile, ofARealDeckKeepsEveryKey)
{
    CConfigManager manager;
    ASSERT_EQ(readConfigurationFile(sampleDeck("pile-27.dfg"), *manager.rootHandle(), {}), eConfigDone);
    QFile source(QString::fromStdString(sampleDeck("pile-27.dfg")));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    QList<QByteArray> lines = source.readAll().replace("27.0.3", "30.0.2").split('\n');
    ASSERT_GT(lines.size(), 8);
    std::sort(lines.begin() + 3, lines.end() - 1);
    EXPECT_EQ(written(manager), lines.join('\n'));
    EXPECT_EQ(manager.value<std::string>(path("SITE NOTES:OWNER")), "line one\nline two: kept = yes");
    EXPECT_EQ(manager.value<C3DPoint>(path("SITE NOTES:ORIGIN")).z, -1e-05);
}

} // namespace
} // namespace NBrenmark::NConfig
