// brenmark law: the chain of a deck against the sum of its laws' formulas, and the history that a state goes on from.
#include "support/paths.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <cmath>

namespace NBrenmark {

TEST(Law, showsTheSumOfADecksChain)
{
    CTempFolder folder;
    const SToolResult result =
        runTool({"law", sampleDeck("physics-25.dem"), "--pair", "Ball", "Hopper", "--overlap", "0:1e-5:3",
                 "--load-unload", "--csv", argument(folder.path("a.csv")), "--svg", argument(folder.path("a.svg"))});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_NE(result.output.find("normal force [N]"), std::string::npos);
    EXPECT_EQ(folder.read("a.svg").left(4), "<svg");
    const QList<QByteArray> rows = folder.read("a.csv").trimmed().split('\n');
    ASSERT_EQ(rows.size(), 1 + 5);
    // Archard wear carries the force of Hertz, of a sphere of 10 mm; linear cohesion holds against it. Damping at 1 um/s is
    // lost in the digits.
    const double g1 = 2.6e10, nu1 = 0.23, g2 = 7.9e10, nu2 = 0.3;
    const double young = 2 * g1 * g2 / ((1 - nu1) * g2 + (1 - nu2) * g1);
    const double hertz = 4.0 / 3.0 * young * std::sqrt(0.01) * std::pow(1e-5, 1.5);
    const SToolResult archard =
        runTool({"law", sampleDeck("physics-25.dem"), "--pair", "Hopper", "Ball", "--overlap", "0:1e-5:3", "--only",
                 "Hertz-Mindlin with Archard Wear", "--csv", argument(folder.path("b.csv"))});
    EXPECT_EQ(archard.exitCode, 0) << archard.error;
    const double alone = folder.read("b.csv").trimmed().split('\n').last().split(',')[1].toDouble();
    EXPECT_NEAR(alone, hertz, 1e-5 * hertz);
    EXPECT_LT(rows[3].split(',')[1].toDouble(), alone);
}

TEST(Law, needsAllModelsOfTheChainAndDrawsAnyColumn)
{
    CTempFolder folder;
    for (const char* const suffix : {".dem", ".idx", ".dfg"})
        QFile::copy(QString::fromStdString(sampleDeck(std::string("physics-25") + suffix)), folder.path("a") + suffix);
    // Settings that define "Charge" of geometry with two elements, where the model needs one.
    QFile settings(QString::fromStdString(sampleDeck("properties-24.ess")));
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    folder.write("a.ess", settings.readAll().replace(QByteArray("\0I\0s\0-\0H\0o\0t", 12),
                                                     QByteArray("\0C\0h\0a\0r\0g\0e", 12)));
    const std::vector<std::string> clashing{
        "law", argument(folder.path("a.dem")), "--pair", "Ball", "Ball", "--overlap", "0:1e-5:3"};
    SToolResult result = runTool(clashing);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.error.find("contact model (Tribocharging) is left out"), std::string::npos) << result.error;

    std::vector<std::string> wear{"law",
                                  sampleDeck("physics-25.dem"),
                                  "--pair",
                                  "Ball",
                                  "Hopper",
                                  "--overlap",
                                  "0:1e-5:3",
                                  "--show",
                                  "Hopper: Normal Cumulative Contact Energy"};
    result = runTool(wear);
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output.find("Hopper: Normal Cumulative Contact Energy ["), 0u) << result.output;
    wear.back() = "Energy";
    result = runTool(wear);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.error.find("It has: normal force, tangential force, torque, Previous Normal Velocity, "),
              std::string::npos)
        << result.error;
}

TEST(Law, goesOnFromTheStateBefore)
{
    // Of two spheres that yield, loaded to 10 um with e of 0.6, 6.4 um are left: at 5 um nothing is borne.
    nlohmann::json state = {
        {"model", "Hysteretic Spring"},
        {"element1", {{"name", "A"}, {"mass", 1.0}, {"physicalRadius", 0.002}}},
        {"element2", {{"name", "A"}, {"mass", 1.0}, {"physicalRadius", 0.002}}},
        {"material1", {{"name", "m"}}},
        {"material2", {{"name", "m"}}},
        {"interaction", {{"restitution", 0.6}}},
        {"contactPoint", {0.002, 0, 0}},
        {"normalOverlap", 1e-5},
        {"contactProperties", {{"Residual Overlap", {0.0}}}},
        {"parameters",
         {{"yields", {{"A", 1e6}}}, {"pairs", {{{"pair", {"m", "m"}}, {"damping", 0}, {"stiffness", 1}}}}}}};
    nlohmann::json states = {state, state};
    states[1]["normalOverlap"] = 5e-6;
    states[1]["continue"] = true;
    CTempFolder folder;
    const QString file = folder.write("states.json", QByteArray::fromStdString(states.dump()));
    const SToolResult result = runTool({"law", "--states", argument(file)});
    ASSERT_EQ(result.exitCode, 0) << result.error;
    const auto results = nlohmann::json::parse(result.output);
    EXPECT_NEAR(results[0]["changes"]["contact"]["Residual Overlap"][0].get<double>(), 6.4e-6, 1e-18);
    EXPECT_NEAR(results[0]["normalForce"][0].get<double>(), -5.0 * 0.001 * 1e6 * 1e-5, 1e-12);
    EXPECT_EQ(results[1]["normalForce"][0].get<double>(), 0.0);
    EXPECT_NEAR(results[1]["changes"]["contact"]["Residual Overlap"][0].get<double>(), 5e-6 - 6.4e-6, 1e-18);
}

} // namespace NBrenmark
