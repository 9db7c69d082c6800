// The values of custom properties: they follow the definitions, and fit themselves to what is expected.
#include "properties/custom_property_data.h"

#include "support/log_capture.h"
#include <gtest/gtest.h>

namespace NBrenmark {

using CMetaData = CCustomPropertyMetaData;
using Values = std::vector<double>;

TEST(PropertyValues, newItemsGetTheInitialValuesOrZero)
{
    const CMetaData pair("Pair", 0, 2, 0, Values{1.5, -2});
    const CMetaData flag("Flag", 1, 2, 0, std::vector<bool>{true, false});
    struct SCase
    {
        const CMetaData& metaData;
        bool usesZeroDefault;
        Values three;
    };
    const SCase cases[] = {
        {pair, false, {9, 9, 1.5, -2, 1.5, -2}},
        {pair, true, {9, 9, 0, 0, 0, 0}},
        {flag, false, {9, 9, 1, 0, 1, 0}},
    };
    for (const SCase& c : cases) {
        CCustomPropertyValueList list(c.metaData, c.usesZeroDefault);
        EXPECT_EQ(list.item(0), nullptr);
        list.resize(1);
        list.values = {9, 9};
        list.resize(3);
        EXPECT_EQ(list.values, c.three);
        EXPECT_EQ(list.itemCount(), 3u);
        EXPECT_EQ(list.item(2), list.values.data() + 4);
        EXPECT_EQ(list.item(3), nullptr); // the first past the end
        EXPECT_EQ(static_cast<const CCustomPropertyValueList&>(list).item(0xFFFFFFFFu), nullptr);
        list.resetToInitial(0);
        EXPECT_EQ(Values(list.values.begin(), list.values.begin() + 2), Values(c.three.end() - 2, c.three.end()));
        list.resetToInitial(3); // no such item, no harm
        list.resize(2);
        EXPECT_EQ(list.values.size(), 4u);
    }
}

TEST(PropertyValues, fillsReachEveryItem)
{
    const CMetaData triple("Triple", 0, 3, 0);
    CCustomPropertyValueList list(triple, false);
    list.fill(1.0); // nothing there
    list.resize(10007);
    list.fill(2.5);
    list.fillElement(1, -1.0);
    list.fillElement(3, 8.0); // no such element
    for (unsigned int index = 0; index < list.itemCount(); ++index) {
        const double* const item = list.item(index);
        ASSERT_TRUE(item[0] == 2.5 && item[1] == -1.0 && item[2] == 2.5) << index;
    }
}

TEST(PropertyValues, whatAFileHeldIsBroughtToTheExpectedCount)
{
    const CMetaData metaData("Heat Flux", 0, 2, 0, Values{7, 8});
    const std::string few = "WARNING Custom properties: Not enough data in file for property: Heat Flux\n"
                            "Using default values for remainder.\n";
    const std::string much = "WARNING Custom properties: Too much data in file for property: Heat Flux\n"
                             "Discarding excess.\n";
    struct SCase
    {
        Values stored;
        unsigned int items;
        Values fitted;
        std::string told;
    };
    const SCase cases[] = {
        {{1, 2, 3, 4}, 2, {1, 2, 3, 4}, ""},
        {{}, 0, {}, ""},
        {{1, 2}, 2, {1, 2, 7, 8}, few + "2 values found, 4 expected.\n"},
        {{1, 2, 3}, 2, {1, 2, 3, 8}, few + "3 values found, 4 expected.\n"}, // cut within an item
        {{}, 1, {7, 8}, few + "0 values found, 2 expected.\n"},
        {{1, 2, 3, 4}, 1, {1, 2}, much + "4 values found, 2 expected.\n"},
        {{1}, 0, {}, much + "1 values found, 0 expected.\n"},
    };
    for (const SCase& c : cases) {
        CLogCapture log;
        CCustomPropertyValueList list(metaData, false);
        list.resize(5);
        list.values = c.stored;
        list.fitTo(c.items);
        EXPECT_EQ(list.values, c.fitted);
        EXPECT_EQ(list.itemCount(), c.items);
        EXPECT_EQ(log.text(), c.told);
    }
}

class PropertyData : public testing::Test
{
protected:
    PropertyData()
    {
        for (const auto& [name, value] : {std::pair<const char*, double>{"A", 1}, {"B", 2}, {"C", 3}}) {
            auto metaData = std::make_unique<CMetaData>(name, 0u, 1u, 0u, Values{value});
            manager.addProperty(metaData);
        }
    }

    void finalize(int last)
    {
        manager.lastFinalisedPropertyIndex = last;
        manager.notifyChanged(0);
    }

    CCustomPropertyManager manager{"Particle Properties", eParticleOwner};
};

TEST_F(PropertyData, hasAListForEachFinalizedProperty)
{
    CCustomPropertyData data(&manager);
    data.resize(2);
    EXPECT_TRUE(data.lists.empty());
    EXPECT_EQ(data.list("A"), nullptr);
    finalize(1);
    ASSERT_EQ(data.lists.size(), 2u);
    EXPECT_EQ(data.list("B")->values, (Values{2, 2}));
    EXPECT_EQ(data.list("C"), nullptr); // tentative
    EXPECT_EQ(data.list("D"), nullptr); // unknown
    data.list("A")->values = {5, 6};
    data.resize(3);
    EXPECT_EQ(data.list("A")->values, (Values{5, 6, 1}));
    data.resetToInitial(0);
    EXPECT_EQ(data.list("A")->values, (Values{1, 6, 1}));
    finalize(2);
    EXPECT_EQ(data.list("A")->values, (Values{1, 6, 1})); // what stands there stays
    EXPECT_EQ(data.list("C")->values, (Values{3, 3, 3}));
    finalize(0);
    EXPECT_EQ(data.lists.size(), 1u);
    data.resetAll();
    EXPECT_EQ(data.itemCount(), 0u);
    EXPECT_TRUE(data.list("A")->values.empty());
    data.resetToInitialValues(2);
    EXPECT_EQ(data.list("A")->values, (Values{1, 1}));
    data.list("A")->values = {5, 6};
    data.resetToInitialValues(3); // nothing of before is kept
    EXPECT_EQ(data.list("A")->values, (Values{1, 1, 1}));

    finalize(2);
    EXPECT_EQ(data.elementsTotal(), 3u);
    EXPECT_TRUE(data.setItem(1, {7, 8})); // C keeps its initial value
    EXPECT_TRUE(data.setValue(0, 2, 0, 9));
    EXPECT_EQ(data.list("A")->values, (Values{1, 7, 9}));
    EXPECT_EQ(data.list("C")->values, (Values{3, 3, 3}));
    EXPECT_EQ(*data.values(1, 1), 8);
    EXPECT_EQ(data.values(1, 3), nullptr);
    EXPECT_EQ(data.values(3, 1), nullptr);
    EXPECT_FALSE(data.setItem(3, {1}) || data.setValue(0, 3, 0, 1) || data.setValue(0, 0, 1, 1));
    data.fileNames["old A"] = 0;
    data.fileNames["B"] = 7; // there is no such list, and the manager isn't asked
    EXPECT_EQ(data.list("old A"), data.list("A"));
    EXPECT_EQ(data.list("B"), nullptr);
    finalize(0);
    finalize(2);
    EXPECT_EQ(data.list("B")->values, (Values{2, 2, 2})) << "its name in the file went with list 7";
    finalize(0);

    CCustomPropertyData late(&manager); // made when properties are finalized already
    EXPECT_EQ(late.lists.size(), 1u);
}

TEST_F(PropertyData, dropsItsListsWhenTheDefinitionsGo)
{
    CCustomPropertyData first(&manager);
    CCustomPropertyData second(&manager, true);
    first.resize(4);
    second.resize(1);
    finalize(2);
    EXPECT_EQ(second.list("C")->values, (Values{0})); // with zeros for initial values
    manager.clear(true);
    EXPECT_TRUE(first.lists.empty());
    EXPECT_TRUE(second.lists.empty());
    EXPECT_EQ(first.itemCount(), 4u);
}

TEST(PropertyDataWithoutManager, holdsNothingAndAnswersNull)
{
    CCustomPropertyData data(nullptr);
    data.resize(5);
    EXPECT_EQ(data.itemCount(), 5u);
    EXPECT_TRUE(data.lists.empty());
    EXPECT_EQ(data.list("A"), nullptr);
    data.resetAll();
    data.resetToInitialValues(2);
    data.resetToInitial(0);
    EXPECT_EQ(data.manager(), nullptr);
}

} // namespace NBrenmark
