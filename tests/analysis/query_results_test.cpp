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
        {"Distribution", {1, 1, 0, 1, 0}}, // 1 in [1, 2), 2 in [2, 3), 4 in [4, 5)
        {"Time Distribution", {4, 4}},     // the maximum, at 0.25 and at 0.75 of 0 to 1
        {"Two Attribute", {7, 40}},        // the total of the first, the maximum of the second
        {"Mass Flow Rate", {}},
    };
    for (const auto& [identifier, expected] : cases) {
        const std::unique_ptr<CQuery> query = createQuery(QLatin1String(identifier), 0);
        query->useRange = true;
        query->minimum = 1;
        query->maximum = 6;
        if (auto* const distribution = dynamic_cast<CDistributionQuery*>(query.get()))
            distribution->intervals = 5;
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

} // namespace NBrenmark
