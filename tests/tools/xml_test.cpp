// brenmark xml: samples as documents and back, and what may not be overwritten or half made.
#include "support/paths.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace NBrenmark {

static SToolResult xml(const std::string& action, const QString& from, const QString& to,
                       std::vector<std::string> options = {})
{
    options.insert(options.begin(), {"xml", action, argument(from), argument(to)});
    return runTool(options);
}

static QString sample(const QString& name) { return QString::fromStdString(sampleDeck(name.toStdString() + ".dem")); }

class XmlSamples : public testing::TestWithParam<const char*>
{
protected:
    CTempFolder folder;
};

/// What a document holds comes in and goes out again: after the first time nothing changes any more.
TEST_P(XmlSamples, comeBackAsTheDocumentThatTheyCameFrom)
{
    QString deck = sample(GetParam());
    QStringList documents;
    for (const char* const name : {"1", "2", "3"}) {
        const QString document = folder.path(QString(name) + ".xml");
        SToolResult result = xml("export", deck, document);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        deck = folder.path(QString(name) + ".dem");
        result = xml("import", document, deck);
        EXPECT_EQ(result.exitCode, 0) << result.error;
        documents << QString::fromUtf8(folder.read(QString(name) + ".xml"));
    }
    EXPECT_EQ(documents[1].toStdString(), documents[2].toStdString());
    const SToolResult read = runTool({"dump", argument(folder.path("3.xml"))});
    const SToolResult made = runTool({"dump", argument(deck)});
    for (const QString& line : QString::fromStdString(read.output).split('\n'))
        EXPECT_TRUE(line.startsWith("stored/") || line.isEmpty() ||
                    made.output.find(line.toStdString() + "\n") != std::string::npos)
            << line.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Each, XmlSamples,
                         testing::Values("bonds-24", "factories-25", "moving-walls-26", "old-22.0.0", "physics-25",
                                         "plugins-24", "properties-24", "ppf-21"));

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

/// The lines of a timestep for which a document has a place. What the samples have of bonds at geometry is at none.
static QStringList stateOf(const QString& deck)
{
    static const QRegularExpression noPlace("^stored/|/elapsedTime|/removedParticles|orceTorque|/geometryGroups|"
                                            "^timestep/0/collisions|activeCollisions|/orientation sha256|"
                                            "/orientation f64|/creationTime|/bonds/surfaceGeometry");
    QStringList lines;
    for (const QString& line :
         QString::fromStdString(runTool({"dump", "--full", "--timestep", "0", argument(deck)}).output).split('\n'))
        if (!noPlace.match(line).hasMatch())
            lines << line;
    return lines;
}

TEST(XmlTimesteps, comeBackWithParticlesContactsAndBonds)
{
    for (const char* const name : {"bonds-24", "collisions-24", "properties-24", "pile-27"}) {
        const CTempFolder folder;
        const QString model = folder.path("model.xml"), state = folder.path("state.xml"), out = folder.path("out.dem");
        EXPECT_EQ(xml("export", sample(name), model).exitCode, 0);
        const SToolResult exported =
            xml("export", sample(name), state, {"--timestep", "0", "--contacts", "--bonds", "--collisions"});
        EXPECT_EQ(exported.exitCode, 0) << exported.error;
        const SToolResult imported = xml("import", model, out, {"--timestep", argument(state)});
        EXPECT_EQ(imported.exitCode, 0) << imported.error;
        const QStringList before = stateOf(sample(name)), after = stateOf(out);
        ASSERT_EQ(before.size(), after.size()) << name;
        for (int i = 0; i < before.size(); ++i)
            EXPECT_TRUE(before[i] == after[i] ||
                        (before[i].contains("/orientation/") && isSameTurn(before[i], after[i])))
                << name << ": " << before[i].toStdString() << " became " << after[i].toStdString();
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
        {runTool({"dump", "--timestep", "0", argument(document)}), 2, "is a document"},
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
