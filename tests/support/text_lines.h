#pragma once
// The text of a model as a table, for tests that ask which of its lines a change moves.

#include "io/text/text_writer.h"

#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

using Lines = std::map<std::string, std::string>;

/// Takes every line; a path that comes twice fails the test.
class CLineMap : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override
    {
        EXPECT_TRUE(lines.emplace(path, value).second) << "a path met twice: " << path;
    }
    Lines lines;
};

/// Paths whose lines differ, are new or gone.
inline std::vector<std::string> changed(const Lines& before, const Lines& after)
{
    std::vector<std::string> paths;
    for (const auto& [path, value] : before)
        if (after.count(path) == 0 || after.at(path) != value)
            paths.push_back(path);
    for (const auto& [path, value] : after)
        if (before.count(path) == 0)
            paths.push_back(path);
    return paths;
}

/// Takes the lines in their order.
class CLineList : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override { all.push_back(path + " " + value); }
    std::vector<std::string> all;
};

template <class T>
std::vector<std::string> textLinesOf(T& object)
{
    CLineList found;
    CTextWriter writer(found, "object", true);
    object.write(writer);
    return found.all;
}

/// Numbers by their value, whatever their digits: "(0.1, 2)" is as good as "(0.10000000000000001, 2)".
inline QString withPlainNumbers(const QString& line)
{
    QStringList words = line.split(' ');
    for (QString& word : words) {
        QString digits = word;
        const QString before = digits.startsWith('(') ? "(" : "";
        digits.remove('(').remove(')').remove(',');
        bool isNumber = false;
        const double value = digits.toDouble(&isNumber);
        if (isNumber)
            word = before + QString::number(value, 'g', 17) + word.mid(before.size() + digits.size());
    }
    return words.join(' ');
}

/// Expects lines in the text of an object, each a path and its value: "title \"Kiste\"; spheres/0/contactRadius 0.002".
template <class T>
void expectText(T& object, const QString& expected, const std::string& where = "")
{
    QStringList lines; // without the object's own name
    for (const std::string& line : textLinesOf(object))
        lines << withPlainNumbers(QString::fromStdString(line.substr(line.find('/') + 1)));
    QStringList missing;
    for (const QString& line : expected.split("; "))
        if (!lines.contains(withPlainNumbers(line)))
            missing << line;
    EXPECT_EQ(missing.join('\n').toStdString(), "") << where << " is none of\n" << lines.join('\n').toStdString();
}

} // namespace NBrenmark
