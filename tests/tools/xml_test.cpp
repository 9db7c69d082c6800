// brenmark xml: samples as documents and back, and what may not be overwritten or half made.
#include "support/paths.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"
#include "support/xml_losses.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include <map>

namespace NBrenmark {

static SToolResult xml(const std::string& action, const QString& from, const QString& to,
                       std::vector<std::string> options = {})
{
    options.insert(options.begin(), {"xml", action, argument(from), argument(to)});
    return runTool(options);
}

static QString sample(const QString& name) { return QString::fromStdString(sampleDeck(name.toStdString() + ".dem")); }

/// Of all that are in the tree.
static std::vector<std::string> sampleNames()
{
    std::vector<std::string> names;
    for (const QString& file : QDir(QString::fromStdString(projectFolder()) + "/samples").entryList({"*.dem"}))
        names.push_back(file.chopped(4).toStdString());
    return names;
}

using DumpedLines = std::map<QString, QString>;

/// What dump shows of the definition that a deck or a document begins with, by its paths.
static DumpedLines definitionOf(const QString& path)
{
    DumpedLines lines;
    for (const QString& line : QString::fromStdString(runTool({"dump", argument(path)}).output).split('\n'))
        if (line.startsWith("creator/"))
            lines[line.section(' ', 0, 0).mid(8)] = line.section(' ', 1);
    return lines;
}

/// What samples lose beyond that.
static const SXmlLoss sampleLosses[] = {
    {"geometryGroups/[^/]*/factories/[^/]*/position/(seed.*|separation)", "how far its random walk is"},
    {"geometryGroups/[^/]*/factories/[^/]*/sizes/[^/]*/(bands|radiusScaling)", "size bands by radius"},
    {"geometryGroups/[^/]*/import/.*", "how its import was placed"},
    {"geometryGroups/[^/]*/import/importedCoords", "vertices with more than six significant digits"},
    {"geometryGroups/[^/]*/(original)?([pP]ointOfAction|[cC]entreOfMass)", "the centre of mass is that of the mesh"},
};

/// Lines that differ though the messages name no loss that changes them.
static std::string unnamedLosses(const DumpedLines& before, const DumpedLines& after, const std::string& messages)
{
    std::set<QString> changed;
    for (const auto& [one, other] : {std::pair(&before, &after), std::pair(&after, &before)})
        for (const auto& [path, value] : *one)
            if (other->count(path) == 0 || other->at(path) != value)
                changed.insert(path);
    std::string unnamed;
    for (const QString& path : changed) {
        const auto explains = [&](const SXmlLoss& loss) {
            const QRegularExpression lines(QRegularExpression::anchoredPattern(loss.lines));
            return lines.match(path).hasMatch() && messages.find(loss.reported) != std::string::npos;
        };
        const bool isNamed = std::any_of(std::begin(definitionLosses), std::end(definitionLosses), explains) ||
                             std::any_of(std::begin(sampleLosses), std::end(sampleLosses), explains);
        if (!isNamed)
            unnamed += path.toStdString() + '\n';
    }
    return unnamed;
}

class XmlSamples : public testing::TestWithParam<std::string>
{
protected:
    CTempFolder folder;
};

/// What a document holds comes in and goes out again: after the first time nothing changes any more.
TEST_P(XmlSamples, comeBackAsTheDocumentThatTheyCameFrom)
{
    QString deck = sample(QString::fromStdString(GetParam()));
    QStringList documents;
    std::string messages;
    for (const char* const name : {"1", "2", "3"}) {
        const QString document = folder.path(QString(name) + ".xml");
        SToolResult result = xml("export", deck, document);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        messages += result.error;
        deck = folder.path(QString(name) + ".dem");
        result = xml("import", document, deck);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        messages += result.error;
        documents << QString::fromUtf8(folder.read(QString(name) + ".xml"));
    }
    EXPECT_EQ(documents[1].toStdString(), documents[2].toStdString());
    EXPECT_EQ(messages.find("isn't known and is left out"), std::string::npos) << messages;
    const DumpedLines stored = definitionOf(sample(QString::fromStdString(GetParam())));
    EXPECT_EQ(unnamedLosses(stored, definitionOf(folder.path("1.dem")), messages), "") << messages;
    const DumpedLines made = definitionOf(deck);
    for (const auto& [path, value] : definitionOf(folder.path("3.xml"))) // a deck adds accounts of size bands
        EXPECT_TRUE(made.count(path) > 0 && made.at(path) == value) << path.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Each, XmlSamples, testing::ValuesIn(sampleNames()));

/// Whether two lines of dump hold one turn, within what a matrix in place of a quaternion costs: that doesn't tell a
/// quaternion from its negative.
static bool isSameTurn(const QString& a, const QString& b)
{
    static const QRegularExpression separators("[ (),]+");
    const QStringList left = a.split(separators), right = b.split(separators);
    double same = 0.0, negative = 0.0;
    for (int i = 1; i < std::min(left.size(), right.size()); ++i) {
        same += std::abs(left[i].toDouble() - right[i].toDouble());
        negative += std::abs(left[i].toDouble() + right[i].toDouble());
    }
    return left.size() == right.size() && std::min(same, negative) < 1e-12;
}

/// Whether a document has no place for a line of a timestep. What the samples have of bonds at geometry is at none.
static bool isWithoutPlace(const QString& line)
{
    static const QRegularExpression noPlace("^stored/|/elapsedTime|/removedParticles|orceTorque|/geometryGroups|"
                                            "^timestep/0/collisions|activeCollisions|/orientation sha256|"
                                            "/orientation f64|/creationTime|/bonds/surfaceGeometry");
    return noPlace.match(line).hasMatch();
}

static QStringList stateOf(const QString& deck)
{
    QStringList lines;
    for (const QString& line :
         QString::fromStdString(runTool({"dump", "--full", "--timestep", "0", argument(deck)}).output).split('\n'))
        if (!isWithoutPlace(line))
            lines << line;
    return lines;
}

TEST(XmlTimesteps, comeBackWithParticlesContactsAndBonds)
{
    for (const std::string& each : sampleNames()) {
        const QString name = QString::fromStdString(each);
        const CTempFolder folder;
        const QString model = folder.path("model.xml"), state = folder.path("state.xml"), out = folder.path("out.dem");
        EXPECT_EQ(xml("export", sample(name), model).exitCode, 0);
        const SToolResult exported =
            xml("export", sample(name), state, {"--timestep", "0", "--contacts", "--bonds", "--collisions"});
        EXPECT_EQ(exported.exitCode, 0) << exported.error;
        const SToolResult imported = xml("import", model, out, {"--timestep", argument(state)});
        EXPECT_EQ(imported.exitCode, 0) << imported.error;
        EXPECT_EQ(imported.error.find("isn't known and is left out"), std::string::npos) << imported.error;
        const QStringList before = stateOf(sample(name)), after = stateOf(out);
        ASSERT_EQ(before.size(), after.size()) << each;
        for (int i = 0; i < before.size(); ++i)
            EXPECT_TRUE(before[i] == after[i] ||
                        (before[i].contains("/orientation/") && isSameTurn(before[i], after[i])))
                << each << ": " << before[i].toStdString() << " became " << after[i].toStdString();
        const SToolResult shown = runTool({"dump", "--full", argument(model), "--timestep", argument(state)});
        for (const QString& line : QString::fromStdString(shown.output).split('\n'))
            EXPECT_TRUE(line.isEmpty() || line.startsWith("stored/") || after.contains(line) || isWithoutPlace(line))
                << each << ": " << line.toStdString();
        const QString again = folder.path("again.xml");
        EXPECT_EQ(
            xml("export", sample(name), again, {"--timestep", "0", "--contacts", "--bonds", "--collisions"}).error,
            exported.error);
        EXPECT_EQ(folder.read("state.xml"), folder.read("again.xml"));
    }
}

TEST(XmlCommand, overwritesAndHalfMakesNothing)
{
    const CTempFolder folder;
    const QString document = folder.path("pile.xml"), deck = folder.path("pile.dem");
    ASSERT_EQ(xml("export", sample("pile-27"), document).exitCode, 0);
    ASSERT_EQ(xml("import", document, deck).exitCode, 0);
    const QString broken = folder.write("broken.xml", folder.read("pile.xml").replace("</simulation>", ""));
    const QString old = folder.write("old.xml", "<simulation version='2.3.9'/>");
    const QString state = folder.write("state.xml", "<simulation runs='1' time='x'/>");
    const CSnapshot before = folder.snapshot();
    struct SRefused
    {
        SToolResult result;
        int exitCode;
        const char* error;
    };
    const QString none = folder.path("none.dem");
    const SRefused refused[] = {
        {xml("export", sample("pile-27"), document), 4, "pile.xml exists already"},
        {xml("export", deck, folder.path("pile_data/0.h5"), {"--force"}), 4, "is a file of the deck itself"},
        {xml("export", sample("pile-27"), folder.path("no/pile.xml")), 4, "can't be written: No such file"},
        {xml("export", sample("pile-27"), none, {"--timestep", "9"}), 2, "has no timestep 9"},
        {xml("export", sample("pile-27"), none, {"--contacts"}), 2, "are for a timestep's export"},
        {xml("turn", sample("pile-27"), none), 2, "The actions are export and import."},
        {xml("import", document, deck), 4, "pile.dem exists already"},
        {xml("import", folder.path("absent.xml"), none), 3, "Could not open file: "},
        {xml("import", broken, none), 3, "broken.xml: XML import failed, please check input deck for validity: Line "},
        {xml("import", old, none), 5, "XML versions older than 2.4.0 are no longer supported"},
        {xml("import", state, none), 3, "The document is that of a timestep"},
        {xml("import", document, none, {"--timestep", argument(document)}), 3, "The document is that of a definition"},
        {runTool({"dump", "--timestep", "0", argument(document)}), 3, "Could not open file: "},
        {runTool({"dump", argument(state)}), 2, "is the document of a timestep"},
        {xml("export", sample("pile-27"), none, {"--definition", "1", "--timestep", "1"}), 2, "Give either"},
    };
    for (const SRefused& row : refused) {
        EXPECT_EQ(row.result.exitCode, row.exitCode) << row.result.error;
        EXPECT_NE(row.result.error.find(row.error), std::string::npos) << row.result.error;
    }
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");
    // A text for a number is damage: the deck is there, and the exit status says so.
    const SToolResult damaged = xml("import", document, none, {"--timestep", argument(state)});
    EXPECT_EQ(damaged.exitCode, 3);
    EXPECT_NE(damaged.error.find("\"x\" isn't a number: \"time\" of \"simulation\" is read as 0."), std::string::npos);
    EXPECT_TRUE(folder.has("none.dem"));
    EXPECT_EQ(xml("import", document, deck, {"--force"}).exitCode, 0);
}

} // namespace NBrenmark
