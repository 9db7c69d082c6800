// The page of the HDF5 family against decks: what is in a file is on the page, with its type, and what is on the page is
// in a file, or marked as met in none.
#include "io/hdf5/hdf5_writer.h"

#include "core/left_behind.h"
#include "core/log_titles.h"
#include "support/h5_tree.h"
#include "support/paths.h"
#include "support/samples.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace NBrenmark {

namespace {

/// A row of a table: what it says is in a file, as a pattern for lines of treeOf.
struct SPageRow
{
    QRegularExpression pattern;
    QString text;
    bool isMarked = false;
};

QString codeOf(const QString& cell) { return cell.section('`', 1, 1); }

QString patternOf(const QString& text)
{
    QString pattern = QRegularExpression::escape(text);
    pattern.replace(QRegularExpression(R"(\\<\w+\\>)"), "[^/]+");
    return pattern.replace(QRegularExpression(R"(\b[nw]\b)"), R"(\d+)");
}

/// Tables of compound types come after those that name them: two passes.
std::vector<SPageRow> rowsOfPage()
{
    QFile page(QString::fromStdString(projectFolder() + "/docs/formats/hdf5.md"));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(page.readAll()).split('\n');
    std::map<QString, QString> compounds;
    std::vector<SPageRow> rows;
    for (const bool isFirst : {true, false}) {
        QString heading;
        for (const QString& line : lines) {
            const QStringList cells = line.split('|');
            if (line.startsWith("### "))
                heading = line.mid(4);
            else if (!line.startsWith("| `"))
                continue;
            else if (isFirst && heading.endsWith(" bytes")) {
                QString& type = compounds[heading.section(',', 0, 0)];
                type = type.isEmpty() ? "{" : type.chopped(type.size() - type.lastIndexOf('}')) + ", ";
                type += codeOf(cells[1]) + "@" + cells[2].trimmed() + " " + codeOf(cells[3]) + "} " +
                        heading.section(' ', 1, 1);
            }
            else if (!isFirst && heading.startsWith("`/"))
                for (int base = 1; !heading.section('`', base, base).isEmpty(); base += 2) {
                    const QString name = codeOf(cells[1]);
                    const QStringList type = codeOf(cells[2]).split(' ');
                    const auto compound = compounds.find(type[0]);
                    QString text = patternOf(heading.section('`', base, base) + (name == "/" ? "" : name));
                    if (!name.endsWith('/'))
                        text += " " + (compound == compounds.end() ? patternOf(type[0])
                                                                   : QRegularExpression::escape(compound->second));
                    if (type.size() > 1)
                        text += " " + patternOf(type[1]);
                    rows.push_back(
                        {QRegularExpression("^" + text + "$"), heading + ": " + name, cells[3].contains("†")});
                }
        }
    }
    return rows;
}

/// The lines of all files of a deck, without values and layouts, which aren't the page's.
void addLines(const QString& folder, std::set<QString>& lines)
{
    static const QRegularExpression values("( chunks .*| deflate .*| =.*)$");
    QDirIterator files(folder, {"*.h5", "*.dem"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        for (QString line : QString::fromStdString(treeOf(files.next())).split('\n', Qt::SkipEmptyParts))
            lines.insert(line.remove(values));
}

} // namespace

/// One of everything that a model and a timestep can hold.
static void writeAll(const QString& path)
{
    SModel model;
    fill(model.creator);
    model.creator.description.clear(); // has lines
    model.creator.setStorageIndex(0);
    fill(model.timestep);
    SSaveOptions options;
    H5::H5File file(path.toStdString(), H5F_ACC_TRUNC);
    file.createGroup("/CreatorData/");
    file.createGroup("/TimestepData/");
    CHdf5CreatorDataWriter(file, options).writeCreatorData(model.creator);
    CHdf5TimestepDataWriter(file, options).writeTimestepData(model.timestep);
    reportLeftBehind(NLogTitle::hdf5Write); // here, and not in the next test that closes a deck
}

TEST(FormatPage, namesWhatDecksHoldAndDecksHoldWhatItNames)
{
    CTempFolder folder;
    for (const QString& deck : QDir(QString::fromStdString(projectFolder() + "/samples")).entryList({"*.dem"}))
        ASSERT_EQ(runTool({"convert", sampleDeck(deck.toStdString()), argument(folder.path(deck))}).exitCode, 0)
            << deck.toStdString();
    writeAll(folder.path("all.h5"));
    std::set<QString> lines;
    addLines(folder.path(""), lines);

    std::vector<SPageRow> rows = rowsOfPage();
    ASSERT_GT(rows.size(), 300u);
    std::map<QString, bool> met; // a row with several headings needs to be met below one of them
    for (const QString& line : lines) {
        bool isOnPage = false;
        for (SPageRow& row : rows)
            if (row.pattern.match(line).hasMatch()) {
                isOnPage = true;
                met[row.text] = true;
            }
        EXPECT_TRUE(isOnPage) << line.toStdString() << " is not on the page";
    }
    for (const SPageRow& row : rows)
        EXPECT_NE(row.isMarked, met[row.text])
            << row.text.toStdString() << (row.isMarked ? " is in a deck" : " is in no deck");
}

} // namespace NBrenmark
