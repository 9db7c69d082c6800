// The laws of sizes, magnitudes and values against closed formulas, with draws of a known sequence.
#include "model/factories/size_distribution_kinds.h"
#include "platform/random.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace NBrenmark {

// The first number of the sequence after these seeds, by the inverse of the generator's step.
constexpr unsigned int seedOfZero = 4235699843u;
constexpr unsigned int seedOfGreatest = 2433918595u;

/// Mean and variance of so many draws.
struct SMoments
{
    SMoments(const IDistribution& law, int draws)
    {
        double sum = 0.0;
        double squares = 0.0;
        for (int i = 0; i < draws; ++i) {
            const double x = law.sample();
            sum += x;
            squares += x * x;
        }
        mean = sum / draws;
        variance = squares / draws - mean * mean;
    }
    double mean = 0.0;
    double variance = 0.0;
};

TEST(Distributions, theSeedsOfTheEndsGiveTheEnds)
{
    seedRandom(seedOfZero);
    EXPECT_EQ(uniform(), 0.0);
    seedRandom(seedOfGreatest);
    EXPECT_EQ(uniform(), 1.0);
}

TEST(Distributions, aRandomLawHasTheMomentsOfARectangle)
{
    const double limits[][2] = {{0, 1}, {-3, 5}, {2, 2}, {7, 4}};
    for (const auto& [min, max] : limits) {
        SCOPED_TRACE(testing::Message() << min << " to " << max);
        const CRandomDistribution law(min, max);
        seedRandom(7);
        const SMoments moments(law, 200000);
        const double width = max - min;
        EXPECT_NEAR(moments.mean, (min + max) / 2, 0.01 * (1 + std::abs(width)));
        EXPECT_NEAR(moments.variance, width * width / 12, 0.02 * (1 + width * width));
        seedRandom(seedOfZero);
        EXPECT_EQ(law.sample(), min);
        seedRandom(seedOfGreatest);
        EXPECT_EQ(law.sample(), max);
        EXPECT_EQ(law.minimum(), min);
        EXPECT_EQ(law.maximum(), max);
    }
}

TEST(Distributions, theBoundsOfANormalLawAreThreeDeviationsOrTheNearerCap)
{
    struct SCase
    {
        double mean, deviation, lowerCap, upperCap;
        bool capped;
        double minimum, maximum, sample;
    };
    const SCase cases[] = {
        {10, 2, 9, 11, false, 4, 16, 10}, // caps that aren't in force
        {10, 2, 9, 11, true, 9, 11, 10},
        {10, 2, 1, 30, true, 4, 16, 10}, // caps outside of the three deviations
        {10, 2, 9, 30, true, 9, 16, 10},
        {10, 2, 20, 30, true, 16, 16, 16}, // a cap beyond the far end: both bounds meet there
        {10, 2, 1, 3, true, 4, 4, 4},
        {10, 0, 20, 30, true, 10, 10, 10}, // no spread: the mean whatever the caps
        {10, 0, 1, 3, true, 10, 10, 10},
        {10, 0, 1, 3, false, 10, 10, 10},
        {0, 1e-41, -5, 5, true, -3e-41, 3e-41, -3e-41}, // both bounds count as zero
    };
    int number = 0;
    for (const SCase& c : cases) {
        SCOPED_TRACE(number++);
        CNormalDistribution law(c.mean, c.deviation, c.lowerCap, c.upperCap);
        law.capped = c.capped;
        EXPECT_DOUBLE_EQ(law.minimum(), c.minimum);
        EXPECT_DOUBLE_EQ(law.maximum(), c.maximum);
        EXPECT_DOUBLE_EQ(law.boundInUserSpace(false), c.minimum);
        EXPECT_DOUBLE_EQ(law.boundInUserSpace(true), c.maximum);
        EXPECT_DOUBLE_EQ(law.sample(), c.sample);
    }
}

TEST(Distributions, aNormalLawTakesNoRandomNumber)
{
    CNormalDistribution normal;
    const CLogNormalDistribution logNormal;
    seedRandom(1);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(normal.sample(), 1.0);
        EXPECT_EQ(logNormal.sample(), 1.0); // exp(0)
    }
    EXPECT_EQ(randomNumber(), 16838); // still the first of the sequence of seed 1
}

TEST(Distributions, capsThatCrossChangePlaces)
{
    CNormalDistribution law(1, 0.05, 0.8, 1.2);
    law.setLowerCap(1.5);
    EXPECT_EQ(law.lowerCap, 1.2);
    EXPECT_EQ(law.upperCap, 1.5);
    law.setUpperCap(0.5);
    EXPECT_EQ(law.lowerCap, 0.5);
    EXPECT_EQ(law.upperCap, 1.2);
    law.setLowerCap(1.2);
    EXPECT_EQ(law.lowerCap, 1.2);
    EXPECT_EQ(law.upperCap, 1.2);
}

TEST(Distributions, aLogNormalLawShowsTheMomentsOfTheNumberItself)
{
    CLogNormalDistribution law(0.2, 0.3);
    EXPECT_DOUBLE_EQ(law.lowerCap, -0.7);
    EXPECT_DOUBLE_EQ(law.upperCap, 1.1);
    EXPECT_DOUBLE_EQ(law.sample(), 1.2214027581601699); // exp(0.2)
    law.logMean = true;
    EXPECT_DOUBLE_EQ(law.boundInUserSpace(false), -0.7);
    EXPECT_DOUBLE_EQ(law.boundInUserSpace(true), 1.1);
    // Mean exp(0.2 + 0.045) = 1.27762..., deviation sqrt(exp(0.09) - 1) times that = 0.39207...
    law.logMean = false;
    EXPECT_NEAR(law.boundInUserSpace(false), 0.10139858890805908, 1e-12);
    EXPECT_NEAR(law.boundInUserSpace(true), 2.453844037501714, 1e-12);
    law.capped = true;
    law.lowerCap = -0.1;
    law.upperCap = 0.5;
    EXPECT_NEAR(law.boundInUserSpace(false), 0.9048374180359595, 1e-15); // exp(-0.1)
    EXPECT_NEAR(law.boundInUserSpace(true), 1.6487212707001282, 1e-15);  // exp(0.5)
}

// ---------------------------------------------------------------- user defined

TEST(UserDefined, bandsAreDrawnByTheirShares)
{
    CUserDefinedDistribution law;
    law.setPercentages({{0.5, 20}, {1.0, 50}, {2.0, 30}});
    EXPECT_EQ(law.bands, (FuzzyMap<double>{{0.5, 20}, {1.0, 70}, {2.0, 100}}));
    EXPECT_EQ(law.percentages(), (FuzzyMap<double>{{0.5, 20}, {1.0, 50}, {2.0, 30}}));
    EXPECT_EQ(law.minimum(), 0.5);
    EXPECT_EQ(law.maximum(), 2.0);

    seedRandom(11);
    std::map<double, int> counts;
    constexpr int draws = 100000;
    for (int i = 0; i < draws; ++i)
        ++counts[law.sample()];
    EXPECT_NEAR(counts[0.5], 0.2 * draws, 0.01 * draws);
    EXPECT_NEAR(counts[1.0], 0.5 * draws, 0.01 * draws);
    EXPECT_NEAR(counts[2.0], 0.3 * draws, 0.01 * draws);
    EXPECT_LT(counts[0.0], 20); // a draw of exactly 0: 3 in 100000 on average
}

TEST(UserDefined, theEndsOfTheDraws)
{
    CUserDefinedDistribution law;
    seedRandom(seedOfGreatest);
    EXPECT_EQ(law.sample(), 1.0); // one band at 100 takes every draw above 0
    seedRandom(seedOfZero);
    EXPECT_EQ(law.sample(), 0.0);
    law.bands = {{3.0, 99.0}};
    seedRandom(seedOfGreatest);
    EXPECT_EQ(law.sample(), 0.0); // beyond the last band
    law.bands = {{2.0, 100.0}, {3.0, 100.0}};
    seedRandom(seedOfGreatest);
    EXPECT_EQ(law.sample(), 2.0); // a band without a share is never drawn
    law.bands.clear();
    EXPECT_EQ(law.sample(), 0.0);
    EXPECT_EQ(law.minimum(), 0.0);
    EXPECT_EQ(law.maximum(), 0.0);
    EXPECT_TRUE(law.percentages().empty());
}

TEST(UserDefined, nearlyEqualSizesAreOneBand)
{
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    FuzzyMap<double> bands;
    bands[1.0] = 10;
    bands[1.0 + 1e-13] = 20;
    EXPECT_EQ(bands, (FuzzyMap<double>{{1.0, 20}}));
    bands[1.0 + 1e-11] = 30;
    bands[1e-41] = 1;
    bands[-1e-41] = 2;
    bands[1e-39] = 3;
    bands[notANumber] = 4; // a key of its own, after all others
    bands[notANumber] = 5;
    ASSERT_EQ(bands.size(), 5u);
    EXPECT_EQ(bands[0.0], 2);
    EXPECT_EQ(bands[1e-39], 3);
    EXPECT_EQ(bands[1.0], 20);
    EXPECT_EQ(bands.rbegin()->second, 5);
    EXPECT_EQ(bands.count(2.0), 0u);
}

// ---------------------------------------------------------------- comparison

TEST(Distributions, areEqualWithTheSameClassAndExactlyTheSameNumbers)
{
    // Each differs from its neighbours in one number, class or flag.
    std::vector<std::unique_ptr<IDistribution>> laws;
    const auto add = [&](auto law) { laws.push_back(std::make_unique<decltype(law)>(law)); };
    add(CFixedDistribution(1.0));
    add(CFixedDistribution(std::nextafter(1.0, 2.0)));
    add(CRandomDistribution(0, 1));
    add(CRandomDistribution(0, 2));
    add(CRandomDistribution(1, 1));
    for (int field = 0; field < 6; ++field) {
        CNormalDistribution normal;
        double* const numbers[] = {&normal.mean, &normal.deviation, &normal.lowerCap, &normal.upperCap};
        if (field < 4)
            *numbers[field] = 0.5;
        normal.capped = field == 4;
        add(normal);
    }
    CLogNormalDistribution logNormal;
    add(logNormal);
    logNormal.logMean = false;
    add(logNormal);
    CUserDefinedDistribution bands;
    add(bands);
    bands.bands = {{1.0 + 1e-13, 100.0}}; // one key with 1.0, but another number
    add(bands);
    CNormalSizeDistribution size;
    add(size);
    size.radiusScaling = false;
    add(size);

    for (std::size_t a = 0; a < laws.size(); ++a)
        for (std::size_t b = 0; b < laws.size(); ++b)
            EXPECT_EQ(laws[a]->equals(*laws[b]), a == b) << a << ", " << b;
    EXPECT_TRUE(CFixedDistribution(1.0).equals(*laws[0]));
    EXPECT_TRUE(CNormalDistribution().equals(*laws[10]));
    EXPECT_TRUE(CUserDefinedDistribution().equals(*laws[13]));
}

// ---------------------------------------------------------------- size laws

TEST(SizeLaws, aVolumeIsGivenAsTheScaleOfTheRadius)
{
    CFixedSizeDistribution fixed;
    fixed.value = 8.0;
    EXPECT_EQ(fixed.sample(), 8.0);
    fixed.radiusScaling = false;
    EXPECT_EQ(fixed.sample(), 2.0);
    EXPECT_EQ(fixed.maximum(), 2.0);

    CUserDefinedSizeDistribution bands;
    bands.radiusScaling = false;
    bands.bands = {{1.0, 50.0}, {27.0, 100.0}};
    EXPECT_DOUBLE_EQ(bands.minimum(), 1.0);
    EXPECT_DOUBLE_EQ(bands.maximum(), 3.0);
    seedRandom(seedOfGreatest);
    EXPECT_DOUBLE_EQ(bands.sample(), 3.0);

    CNormalSizeDistribution normal;
    normal.mean = 64.0;
    normal.deviation = 1.0;
    normal.radiusScaling = false;
    EXPECT_DOUBLE_EQ(normal.sample(), 4.0);
    EXPECT_DOUBLE_EQ(normal.minimum(), std::cbrt(61.0));

    CLogNormalSizeDistribution logNormal;
    logNormal.mean = std::log(125.0);
    logNormal.radiusScaling = false;
    EXPECT_DOUBLE_EQ(logNormal.sample(), 5.0);

    // The cube root of a uniform volume: mean 3/4, variance 3/5 - 9/16.
    CRandomSizeDistribution random;
    random.min = 0.0;
    random.max = 1.0;
    random.radiusScaling = false;
    seedRandom(3);
    const SMoments moments(random, 200000);
    EXPECT_NEAR(moments.mean, 0.75, 0.005);
    EXPECT_NEAR(moments.variance, 0.0375, 0.002);
}

TEST(SizeLaws, areCopiedWhole)
{
    const CSizeDistributionRegistry& registry = CSizeDistributionRegistry::instance();
    for (const QString& word : registry.words()) {
        const std::unique_ptr<ISizeDistribution> law = registry.create(word);
        law->radiusScaling = false;
        const std::unique_ptr<ISizeDistribution> copy = law->clone();
        EXPECT_TRUE(copy->equals(*law)) << word.toStdString();
        EXPECT_FALSE(copy->equals(*registry.create(word))) << word.toStdString();
    }
}

} // namespace NBrenmark
