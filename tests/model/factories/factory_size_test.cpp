// Sizes of new particles.
#include "model/factories/factory_size.h"
#include "platform/random.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(FactorySize, aSizeThatIsSetIsGivenOnce)
{
    for (const QString& word : CFactorySizeRegistry::instance().words()) {
        const std::unique_ptr<IFactorySize> size = CFactorySizeRegistry::instance().create(word);
        seedRandom(1);
        size->setNext(0.0); // taken as it is, though no law would give it
        EXPECT_EQ(size->next(), 0.0) << word.toStdString();
        EXPECT_GT(size->next(), 0.0) << word.toStdString();
        size->setNext(42.0);
        EXPECT_EQ(size->clone()->next(), 42.0) << word.toStdString();
        EXPECT_EQ(size->next(), 42.0) << word.toStdString();
        EXPECT_NE(size->next(), 42.0) << word.toStdString();
    }
}

TEST(FactorySize, aRandomSizeIsPositive)
{
    CRandomFactorySize size;
    size.sizeDistribution.min = -1.0;
    size.sizeDistribution.max = 1.0;
    seedRandom(5);
    double sum = 0.0;
    constexpr int draws = 20000;
    for (int i = 0; i < draws; ++i) {
        const double next = size.next();
        ASSERT_GT(next, 1e-25);
        sum += next;
    }
    EXPECT_NEAR(sum / draws, 0.5, 0.01); // uniform on what is left of the range
    EXPECT_EQ(size.minimum(), -1.0);
    EXPECT_EQ(size.maximum(), 1.0);
}

TEST(FactorySize, aLawWithoutAnyPositiveNumberComesToAnEnd)
{
    CNormalFactorySize normal;
    normal.sizeDistribution.mean = -2.0;
    EXPECT_EQ(normal.next(), -2.0);
    CFixedFactorySize fixed; // asked once
    fixed.sizeDistribution.value = -3.0;
    EXPECT_EQ(fixed.next(), -3.0);
}

TEST(FactorySize, takesALawOfItsOwnKindOnly)
{
    CFixedFactorySize size;
    CFixedSizeDistribution law;
    law.value = 8.0;
    law.radiusScaling = false;
    EXPECT_TRUE(size.setDistribution(law));
    EXPECT_EQ(size.next(), 2.0);
    EXPECT_FALSE(size.setDistribution(CRandomSizeDistribution()));
    EXPECT_EQ(size.next(), 2.0);
    EXPECT_EQ(&static_cast<IFactorySize&>(size).distribution(), &size.sizeDistribution);
}

TEST(FactorySize, accountsForEachBandOfAUserDefinedSize)
{
    CUserDefinedFactorySize size;
    size.bandAccountingFor(2.0, true).massCreated = 1.0;
    size.bandAccountingFor(2.0 + 1e-13, false).massCreated += 2.0; // the same band
    ASSERT_EQ(size.bandAccounting.size(), 1u);
    EXPECT_EQ(size.bandAccounting.at(2.0).massCreated, 3.0);

    size.sizeDistribution.radiusScaling = false; // bands are volumes now
    size.bandAccountingFor(2.0, true).massCreated = 5.0;
    size.bandAccountingFor(8.0, false).massCreated += 7.0;
    ASSERT_EQ(size.bandAccounting.size(), 2u);
    EXPECT_EQ(size.bandAccounting.at(8.0).massCreated, 12.0);
    EXPECT_EQ(size.bandAccounting.at(2.0).massCreated, 3.0);
}

TEST(FactorySize, isEditedAsARecordOfItsKind)
{
    CLogNormalFactorySize size;
    const std::unique_ptr<IParamData> data = size.paramData();
    auto* const record = dynamic_cast<CLogNormalSizeParamData*>(data.get());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->lowerCap, -10.0);
    EXPECT_TRUE(record->logMean);
    EXPECT_FALSE(record->radiusScaling);
    record->mean = 0.5;
    record->lowerCap = 6.0; // on the wrong side of the other
    record->upperCap = 4.0;
    record->capped = record->radiusScaling = true;
    record->logMean = false;
    EXPECT_TRUE(size.setParamData(*record));
    EXPECT_EQ(size.sizeDistribution.mean, 0.5);
    EXPECT_EQ(size.sizeDistribution.lowerCap, 4.0);
    EXPECT_EQ(size.sizeDistribution.upperCap, 6.0);
    EXPECT_TRUE(size.sizeDistribution.capped && size.sizeDistribution.radiusScaling);
    EXPECT_FALSE(size.sizeDistribution.logMean);
    EXPECT_FALSE(size.setParamData(CNormalSizeParamData()));

    CUserDefinedFactorySize bands;
    CUserDefinedSizeParamData shares;
    shares.radiusScaling = false;
    shares.percentages = {{1.0, 25.0}, {3.0, 75.0}};
    EXPECT_TRUE(bands.setParamData(shares));
    EXPECT_EQ(bands.sizeDistribution.bands, (FuzzyMap<double>{{1.0, 25.0}, {3.0, 100.0}}));
    EXPECT_EQ(dynamic_cast<const CUserDefinedSizeParamData&>(*bands.paramData()).percentages, shares.percentages);
}

} // namespace NBrenmark
