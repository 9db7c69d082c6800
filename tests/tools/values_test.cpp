// brenmark values: what is stored of the sample pile, and the same rows from a deck and from its conversion.
#include "support/paths.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <cmath>

namespace NBrenmark {

TEST(Values, areTheSameInBothFamiliesAndInAnyUnit)
{
    CTempFolder folder;
    const std::string deck = sampleDeck("pile-27.dem");
    ASSERT_EQ(runTool({"convert", "-q", deck, argument(folder.path("new"))}).exitCode, 0);
    const std::string converted = argument(folder.path("new.dem"));
    for (const char* const attribute : {"Position", "Total Energy", "ID", "Pressure"}) {
        const std::vector<std::string> rest{"--attribute", attribute, "--timestep", "1:3"};
        std::vector<std::string> first{"values", deck}, second{"values", converted};
        first.insert(first.end(), rest.begin(), rest.end());
        second.insert(second.end(), rest.begin(), rest.end());
        const SToolResult legacy = runTool(first), current = runTool(second);
        EXPECT_EQ(legacy.exitCode, current.exitCode) << attribute << legacy.error;
        EXPECT_EQ(legacy.output, current.output) << attribute;
    }
    const auto column = [&](const std::vector<std::string>& more) {
        std::vector<std::string> words{"values", deck, "--attribute", "Position Z", "--timestep", "3"};
        words.insert(words.end(), more.begin(), more.end());
        const QList<QByteArray> lines = QByteArray::fromStdString(runTool(words).output).trimmed().split('\n');
        QList<QByteArray> cells;
        for (const QByteArray& line : lines)
            cells += line.split(',').last();
        return cells;
    };
    const QList<QByteArray> metres = column({}), millimetres = column({"--units", "length=mm"});
    ASSERT_EQ(metres.size(), 1 + 2000);
    EXPECT_EQ(metres[0], "\"Position Z [m]\"");
    EXPECT_EQ(millimetres[0], "\"Position Z [mm]\"");
    double sum = 0;
    for (int i = 1; i < metres.size(); ++i) {
        EXPECT_NEAR(millimetres[i].toDouble(), 1000 * metres[i].toDouble(), 1e-9);
        sum += metres[i].toDouble();
    }
    const SToolResult summary = runTool({"values", deck, "--attribute", "Position Z", "--timestep", "3", "--summary"});
    const std::size_t at = summary.output.find("sum");
    ASSERT_NE(at, std::string::npos) << summary.output << summary.error;
    EXPECT_NEAR(std::stod(summary.output.substr(at + 3)), sum, 1e-9);
}

/// The last cell of the second line of a table.
static double firstValueOf(const SToolResult& result)
{
    const QList<QByteArray> lines = QByteArray::fromStdString(result.output).split('\n');
    EXPECT_GT(lines.size(), 1) << result.error;
    return lines.size() > 1 ? lines[1].split(',').last().toDouble() : 0.0;
}

TEST(Values, agreeWithWhatWasWorkedOutByHand)
{
    // Particle 1 at the last timestep: m = 4.2893212e-5 x 0.94372472^3 kg, at a height of 3.28673291e-3 m, with
    // 2.88944e-3 m/s and 0.79606 rad/s; I = 4.3922649e-11 x 0.94372472^5 kg m^2, the same about all axes.
    const double mass = 4.2893211697e-5 * std::pow(0.94372471571, 3);
    const double inertia = 4.39226487777e-11 * std::pow(0.94372471571, 5);
    const double speeds = 2.88473835e-3 * 2.88473835e-3 + 1.38496566e-4 * 1.38496566e-4 + 8.92891161e-5 * 8.92891161e-5;
    const double spins = 0.684233849 * 0.684233849 + 0.378047312 * 0.378047312 + 0.150324236 * 0.150324236;
    const double energy = mass * speeds / 2 + inertia * spins / 2 + mass * 9.81 * 3.2867329058e-3;
    const std::string deck = sampleDeck("pile-27.dem");
    const double value = firstValueOf(runTool({"values", deck, "--attribute", "Total Energy", "--timestep", "3"}));
    EXPECT_NEAR(value, energy, 1e-7 * energy);
}

TEST(Values, answerTheQueriesOfADeckAndKeepToItsSelections)
{
    CTempFolder folder;
    for (const char* const suffix : {".dem", ".idx", ".ess"})
        QFile::copy(QString::fromStdString(sampleDeck(std::string("pile-27") + suffix)), folder.path("a") + suffix);
    const std::string queries = "ANALYST:DATA EXPORT:1:DATA MINER:QUERIES:";
    const std::string place = queries + "00001:", bulk = queries + "00002:", turn = queries + "00003:",
                      wide = queries + "00004:";
    configurationFile(
        "27.0.0",
        {place + "SECTION=QT STRING:S", place + "QUERY TYPE=QT STRING:Maximum", place + "ID=QT STRING:top",
         place + "ATTR=QT STRING:Position", place + "PRIMARY COMPONENT=QT STRING:Z", bulk + "SECTION=QT STRING:S",
         bulk + "QUERY TYPE=QT STRING:Density", bulk + "ID=QT STRING:bulk", turn + "SECTION=QT STRING:S",
         turn + "QUERY TYPE=QT STRING:Maximum", turn + "ID=QT STRING:turn", turn + "ATTR=QT STRING:Orientation",
         turn + "PRIMARY COMPONENT=QT STRING:W", wide + "SECTION=QT STRING:S", wide + "QUERY TYPE=QT STRING:Minimum",
         wide + "ID=QT STRING:width", wide + "ATTR=QT STRING:Diameter", wide + "PRIMARY COMPONENT=QT STRING:Magnitude"})
        .toFile(folder.path("a.dfg"));
    const std::string deck = argument(folder.path("a.dem"));
    const SToolResult summary = runTool({"values", deck, "--attribute", "Position Z", "--timestep", "2", "--summary"});
    const double top = std::stod(summary.output.substr(summary.output.find("maximum") + 7));
    EXPECT_EQ(firstValueOf(runTool({"values", deck, "--query", "top", "--timestep", "2"})), top);
    const SToolResult inMillimetres =
        runTool({"values", deck, "--query", "top", "--timestep", "2", "--units", "length=mm"});
    EXPECT_NEAR(firstValueOf(inMillimetres), 1000 * top, 1e-9);
    EXPECT_NE(inMillimetres.output.find("\"Maximum Position Z [mm]\""), std::string::npos) << inMillimetres.output;
    EXPECT_LE(firstValueOf(runTool({"values", deck, "--query", "turn", "--timestep", "2"})),
              1.0); // of a unit quaternion
    const SToolResult masses = runTool({"values", deck, "--attribute", "Mass", "--timestep", "2", "--summary"});
    const double mass = std::stod(masses.output.substr(masses.output.find("sum") + 3));
    const SToolResult density =
        runTool({"values", deck, "--query", "S/bulk", "--timestep", "2", "--units", "density=g/cm3"});
    EXPECT_NEAR(firstValueOf(density), mass / 0.0022 / 1000, 1e-12) << density.error; // 0.1 m x 0.1 m x 0.22 m
    // A diameter has no components, though the query was saved with one.
    EXPECT_GT(firstValueOf(runTool({"values", deck, "--query", "width", "--timestep", "2"})), 0.0);
    EXPECT_EQ(runTool({"values", deck, "--query", "tip"}).exitCode, 2);

    const std::string selections = sampleDeck("selections-27.dem");
    const auto exitCode = [&](const char* selection) {
        return runTool({"values", selections, "--attribute", "Mass", "--selection", selection}).exitCode;
    };
    EXPECT_EQ(exitCode("Picked by hand"), 0);
    EXPECT_EQ(exitCode("Picked"), 2);
    EXPECT_EQ(exitCode("Tower bins:1"), 0);
    EXPECT_EQ(exitCode("Tower bins:1000"), 2);
    // A query of a selection goes by its class and attribute; this one measures from a reference.
    const SToolResult refused = runTool({"values", selections, "--selection", "Picked by hand", "--query", "CoG"});
    EXPECT_EQ(refused.exitCode, 5);
    EXPECT_NE(refused.error.find("a distance from a reference"), std::string::npos) << refused.error;
}

TEST(Values, answerForEachBinUnlessAQueryWantsOneForAll)
{
    CTempFolder folder;
    for (const char* const suffix : {".dem", ".idx", ".ess"})
        QFile::copy(QString::fromStdString(sampleDeck(std::string("selections-27") + suffix)),
                    folder.path("a") + suffix);
    std::vector<std::string> entries;
    for (const char* const name : {"each", "whole"}) {
        std::string query("ANALYST:DATA EXPORT:1:DATA MINER:QUERIES:");
        query.append(name).append(":");
        for (const char* const entry : {"SECTION=QT STRING:S", "QUERY TYPE=QT STRING:Total", "ATTR=QT STRING:Mass"})
            entries.push_back(query + entry);
        entries.push_back(query + "ID=QT STRING:" + name);
    }
    entries.emplace_back("ANALYST:DATA EXPORT:1:DATA MINER:QUERIES:whole:COLLATE=BOOLEAN:TRUE");
    configurationFile("27.0.0", entries).toFile(folder.path("a.dfg"));
    const auto answer = [&](const char* query) {
        return runTool({"values", argument(folder.path("a.dem")), "--query", query, "--selection", "Tower bins",
                        "--timestep", "0"});
    };
    const double whole = firstValueOf(answer("whole"));
    EXPECT_GT(whole, 0.0);
    const QList<QByteArray> lines = QByteArray::fromStdString(answer("each").output).trimmed().split('\n');
    ASSERT_EQ(lines.size(), 1 + 6 * 1 * 5); // bins along x, y and z
    EXPECT_EQ(lines[0], "\"timestep\",\"time [s]\",\"element\",\"number\",\"Total Mass [kg]\"");
    double sum = 0.0;
    for (int bin = 1; bin <= 30; ++bin) {
        EXPECT_TRUE(lines[bin].startsWith("0,0," + QByteArray::number(bin) + ",0,")) << lines[bin].toStdString();
        sum += lines[bin].split(',').last().toDouble();
    }
    EXPECT_DOUBLE_EQ(sum, whole);
}

} // namespace NBrenmark
