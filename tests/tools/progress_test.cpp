// Progress: the arithmetic under a clock that the test winds on, and the bar on narrow terminals.
#include "brenmark/progress_estimate.h"
#include "brenmark/progress_line.h"

#include <gtest/gtest.h>

#include <cmath>

namespace NBrenmark {

/// Timesteps that grow 30-fold, and a machine whose speed wavers by a twentieth.
struct SGrowingDeck
{
    int timesteps;
    double fixedSeconds; ///< of each timestep, where the first one's bytes take 0.1 s
    bool byTraffic;      ///< whether what is read and written is known
};

class ProgressOf : public testing::TestWithParam<SGrowingDeck>
{
};

TEST_P(ProgressOf, aGrowingDeckIsKnownWithinAFifthAfterItsFirstTenth)
{
    const auto [timesteps, fixedSeconds, byTraffic] = GetParam();
    std::vector<double> sizes, times;
    double total = 0.0;
    unsigned random = 1;
    for (int i = 0; i < timesteps; ++i) {
        sizes.push_back(1e6 * std::pow(30.0, i / (timesteps - 1.0)));
        random = random * 1664525u + 1013904223u;
        times.push_back((fixedSeconds + 1e-7 * sizes.back()) * (0.95 + 0.1 * (random / 4294967296.0)));
        times.back() += i == 0 ? 0.05 : 0.0; // to set everything up
        total += times.back();
    }
    SProgressMoment now{5.0, 1e9};
    CProgressEstimate estimate(sizes, 2.0, now);
    double before = 0.0;
    for (size_t i = 0; i < sizes.size(); ++i) {
        for (int part = 1; part <= 20; ++part) {
            now.seconds += times[i] / 20;
            now.traffic += byTraffic ? 2.6 * sizes[i] / 20 : 0.0;
            if (part == 20)
                estimate.finish(i + 1, now);
            const double bytes = estimate.bytesDone(now);
            EXPECT_TRUE(bytes > before || (bytes == before && (!byTraffic || part > 15))) << i << ' ' << part;
            before = bytes;
            const double left = total - (now.seconds - 5.0);
            const double shown = estimate.secondsLeft(now).value_or(0.0);
            if (byTraffic && left < 0.9 * total) {
                EXPECT_NEAR(shown, left, 0.2 * left + 0.01 * total) << "timestep " << i << ", part " << part;
            }
        }
    }
    EXPECT_EQ(before, estimate.bytesTotal());
    EXPECT_EQ(*estimate.secondsLeft(now), 0.0);
}

INSTANTIATE_TEST_SUITE_P(Decks, ProgressOf,
                         testing::Values(SGrowingDeck{12, 0.0, true}, SGrowingDeck{40, 0.2, true},
                                         SGrowingDeck{200, 0.5, true}, SGrowingDeck{1000, 0.5, true},
                                         SGrowingDeck{40, 0.2, false}));

TEST(ProgressEstimate, ofTimestepsThatArePassedOverSaysNothingOfTheRate)
{
    CProgressEstimate estimate(std::vector<double>(10, 100.0), 0.0, {});
    estimate.pass(5, {1.0, 0.0});
    EXPECT_FALSE(estimate.secondsLeft({1.0, 0.0}));
    estimate.finish(6, {3.0, 0.0}); // 2 s each
    EXPECT_DOUBLE_EQ(*estimate.secondsLeft({3.0, 0.0}), 8.0);
    EXPECT_DOUBLE_EQ(estimate.bytesPerSecond({3.0, 0.0}), 50.0);
}

TEST(ProgressBar, fitsAnyTerminal)
{
    const SProgressState state{"converting", 299, 4000, 0.43e9, 1e9, 123e6, 3725.0};
    const std::pair<int, const char*> cases[] = {
        {99, "[################.......................] converting timestep 300 of 4000, 123 MB/s, 1:02:05 h left"},
        {79, "[########...........] converting timestep 300 of 4000, 123 MB/s, 1:02:05 h left"},
        {59, "[########............] timestep 300 of 4000, 1:02:05 h left"},
        {39, "[#####.......] 300/4000, 1:02:05 h left"},
        {19, "[#####.......] 43 %"},
    };
    for (const auto& [columns, shown] : cases)
        EXPECT_EQ(progressBar(state, columns, false), shown);
    for (int columns = 0; columns < 200; ++columns)
        EXPECT_LE(progressBar(state, columns, false).size(), static_cast<size_t>(columns));
}

} // namespace NBrenmark
