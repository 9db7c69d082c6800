// Answers of queries over a handful of numbers.
#include "analysis/query_kinds.h"

#include <gtest/gtest.h>

namespace NBrenmark {

using Values = std::vector<double>;

TEST(QueryResults, areReductionsOfTheRowsInRange)
{
    SQueryValues values;
    values.primary = {4, 1, 2, 9}; // the last is out of range
    values.secondary = {10, 20, 40, 80};
    values.mass = {1, 3, 0, 5};
    values.force = {4, 6, 0, 9};
    values.area = {1, 1, 0, 9};
    values.velocity.resize(4);
    values.volume = 2;
    values.position = {C3DPoint(0, 0, 8), C3DPoint(4, 0, 0), C3DPoint(1, 1, 1), C3DPoint(9, 9, 9)};
    const std::pair<const char*, Values> cases[] = {
        {"Standard", {4, 1, 2}},
        {"Total", {7}},
        {"Total Over Time", {14}}, // collected twice
        {"CoG", {3, 0, 2}},        // (0 + 12) / 4, 8 / 4
        {"Average", {7.0 / 3}},
        {"Maximum", {4}},
        {"Minimum", {1}},
        {"Maximum & Minimum", {4, 1}},
        {"Distribution", {1, 1, 0, 1, 0}},         // 1 in [1, 2), 2 in [2, 3), 4 in [4, 5)
        {"Contact Distribution", {2, 1, 0, 0, 1}}, // with 9 too: 1.6 wide from 1
        {"Time Distribution", {4, 4}},             // the maximum, at 0.25 and at 0.75 of 0 to 1
        {"Two Attribute", {7, 40}},                // the total of the first, the maximum of the second
        {"Density", {2}},                          // 4 kg in 2 m^3
        {"Total Pressure", {5}},                   // 10 N on 2 m^2
        {"Mass Flow Rate", {}},                    // along which axis?
    };
    for (const auto& [identifier, expected] : cases) {
        const std::unique_ptr<CQuery> query = createQuery(QLatin1String(identifier), 0);
        query->useRange = true;
        query->minimum = 1;
        query->maximum = 6;
        if (auto* const distribution = dynamic_cast<CDistributionQuery*>(query.get()))
            distribution->intervals = 5;
        if (auto* const frequency = dynamic_cast<CContactFrequency*>(query.get()))
            frequency->autoRange = true;
        if (auto* const overTime = dynamic_cast<CTimeDistributionQuery*>(query.get())) {
            overTime->intervals = 2;
            overTime->endTime = 1;
            overTime->queryType = QStringLiteral("Maximum");
        }
        if (auto* const two = dynamic_cast<CTwoAttribQuery*>(query.get())) {
            two->queryType1 = QStringLiteral("Total");
            two->queryType2 = QStringLiteral("Maximum");
        }
        for (const double time : {0.25, 0.75}) {
            values.time = time;
            query->collect(values);
        }
        Values result;
        EXPECT_EQ(query->calculate(result), !expected.empty()) << identifier;
        EXPECT_EQ(result, expected) << identifier;
    }
}

TEST(QueryResults, alongAnAxisTakeTheirPartInItsDirection)
{
    SQueryValues values;
    values.width = 3;
    values.primary = {1, 2, 3, 4, 5, 6};
    values.mass = {2, 3};
    values.velocity = {C3DVector(0, 1, 9), C3DVector(9, -2, 0)};
    const auto answer = [&values](const char* identifier, bool arePlaces) {
        const std::unique_ptr<CQuery> query = createQuery(QLatin1String(identifier), 0);
        query->useAxis = true;
        query->axisStart = C3DPoint(0, 10, 0); // down y, 4 m
        query->axisEnd = C3DPoint(0, 6, 0);
        values.arePlaces = arePlaces;
        query->collect(values);
        Values result;
        query->calculate(result);
        return result;
    };
    EXPECT_EQ(answer("Standard", false), Values({-2, -5}));
    EXPECT_EQ(answer("Standard", true), Values({8, 5}));       // from the start, at 10
    EXPECT_EQ(answer("Mass Flow Rate", false), Values({1.0})); // (2 x -1 + 3 x 2) / 4

    struct SObstacle
    {
        const char* identifier;
        void (*set)(CQuery&);
        const char* obstacle; ///< null for none
    };
    const SObstacle cases[] = {
        {"Total", [](CQuery& query) { query.reference1.type = 1; }, nullptr}, // of what isn't measured from one
        {"Total",
         [](CQuery& query) {
             query.reference1.type = 1;
             query.primaryAttribute = QStringLiteral("Position");
         },
         "a distance from a reference"},
        {"CoG", [](CQuery& query) { query.reference2.type = 1; }, "a distance from a reference"},
        {"Total", [](CQuery& query) { query.useAxis = true; }, "an axis without a length"},
        {"Total", [](CQuery& query) { query.axisLinksGeometry = true; }, nullptr}, // no axis is in use
        {"Mass Flow Rate", [](CQuery&) {}, "a flow without an axis"},
        {"Density", [](CQuery& query) { dynamic_cast<CDensityQuery&>(query).densityKind = 1; },
         "a density of this kind"},
    };
    for (const SObstacle& row : cases) {
        const std::unique_ptr<CQuery> query = createQuery(QLatin1String(row.identifier), 0);
        row.set(*query);
        EXPECT_STREQ(query->obstacle(), row.obstacle) << row.identifier;
    }
}

} // namespace NBrenmark
