// Which share of a mix gets which size law.
#include "model/size_distributions.h"

#include <gtest/gtest.h>

namespace NBrenmark {

class CSizeLaw : public CFixedSizeDistribution
{
public:
    explicit CSizeLaw(int& alive) : alive(alive) { ++alive; }
    ~CSizeLaw() override { --alive; }

    int& alive;
};

TEST(SizeDistributions, theFirstOfANameStaysAndTheOfferedOneIsNotTaken)
{
    int alive = 0;
    {
        CParticleSizeDistributionMap map;
        std::unique_ptr<ISizeDistribution> first = std::make_unique<CSizeLaw>(alive);
        std::unique_ptr<ISizeDistribution> second = std::make_unique<CSizeLaw>(alive);
        const ISizeDistribution* const law = first.get();
        EXPECT_TRUE(map.add("Ball", 30.0, first));
        EXPECT_FALSE(map.add("Ball", 70.0, second));
        EXPECT_EQ(first, nullptr);
        EXPECT_NE(second, nullptr);
        EXPECT_EQ(map.findDistribution("Ball"), law);
        EXPECT_EQ(map.percentageOf("Ball"), 30.0);
        EXPECT_EQ(map.findDistribution("ball"), nullptr);
        EXPECT_EQ(map.percentageOf("ball"), 0.0);
        map.clear();
        EXPECT_EQ(alive, 1);
        EXPECT_TRUE(map.add("Ball", 70.0, second));
    }
    EXPECT_EQ(alive, 0);
}

TEST(SizeDistributions, equalSharesAreAHundredByTheNumberOfNames)
{
    CParticleSizeDistributionMap map;
    std::unique_ptr<ISizeDistribution> none;
    for (const char* name : {"a", "b", "c", "other"})
        map.add(name, 1.0, none);
    map.setEqualShares({"a", "b", "c", "absent"}); // an absent name counts in the divisor
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(map.percentageOf(name), 25.0) << name;
    EXPECT_EQ(map.percentageOf("other"), 1.0);
    EXPECT_EQ(map.entries.count("absent"), 0u);
    map.setEqualShares({});
    EXPECT_EQ(map.percentageOf("a"), 25.0);
}

} // namespace NBrenmark
