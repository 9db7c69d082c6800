// What a factory gives to the custom properties of a new particle.
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_electrostatic.h"
#include "platform/random.h"
#include "properties/custom_property_data.h"

#include <gtest/gtest.h>

namespace NBrenmark {

using Values = std::vector<double>;

const CCustomPropertyMetaData heat("Heat", eDoubleProperty, 3, 21, Values{4.0, 5.0, 6.0});
const CCustomPropertyMetaData wet("Wet", eBooleanProperty, 2, 0, Values{1.0, 0.0});

/// Three items, filled with -1, of which the second is given its values.
static Values assigned(const IFactoryCustomPropertyParam& param, const CCustomPropertyMetaData& property,
                       quint32 item = 1)
{
    CCustomPropertyValueList list(property, false);
    list.resize(3);
    list.fill(-1.0);
    param.assign(item, &list);
    return list.values;
}

TEST(FactoryCustomProperty, fixedTakesTheInitialValuesOfItsProperty)
{
    CFixedValueCustomPropertyFactoryParam param;
    EXPECT_EQ(assigned(param, heat), Values(9, -1.0)); // not bound
    param.bind(&heat);
    EXPECT_EQ(param.property(), &heat);
    EXPECT_EQ(assigned(param, heat), (Values{-1, -1, -1, 4, 5, 6, -1, -1, -1}));
    param.values = {7.0}; // a file may hold fewer
    EXPECT_EQ(assigned(param, heat), (Values{-1, -1, -1, 7, 5, 6, -1, -1, -1}));
    param.values = Values(10, 8.0); // or more
    EXPECT_EQ(assigned(param, heat), (Values{-1, -1, -1, 8, 8, 8, -1, -1, -1}));
    EXPECT_EQ(assigned(param, heat, 3), Values(9, -1.0)); // no such item
    param.assign(0, nullptr);
    param.bind(&wet);
    EXPECT_EQ(param.values, (Values{1, 0}));
    const std::unique_ptr<IFactoryCustomPropertyParam> copy = param.clone();
    EXPECT_EQ(copy->property(), &wet);
    EXPECT_EQ(assigned(*copy, wet), (Values{-1, -1, 1, 0, -1, -1}));
}

TEST(FactoryCustomProperty, theOtherKindsFollowTheFirstInitialValue)
{
    CInitialValueCustomPropertyFactoryParam initial;
    initial.bind(&heat);
    EXPECT_EQ(assigned(initial, heat), Values(9, -1.0));

    CRandomValueCustomPropertyFactoryParam random;
    random.bind(&heat);
    EXPECT_EQ(random.distribution.min, 3.0);
    EXPECT_EQ(random.distribution.max, 5.0);
    seedRandom(1); // 16838, 5758, 10113: one draw for each element
    const Values drawn = assigned(random, heat);
    EXPECT_NEAR(drawn[3], 3.0 + 2.0 * 16838 / 32767, 1e-12);
    EXPECT_NEAR(drawn[4], 3.0 + 2.0 * 5758 / 32767, 1e-12);
    EXPECT_NEAR(drawn[5], 3.0 + 2.0 * 10113 / 32767, 1e-12);

    CNormalDistCustomPropertyFactoryParam normal;
    EXPECT_EQ(normal.distribution.deviation, 1.0);
    normal.distribution.capped = true;
    normal.bind(&heat);
    EXPECT_EQ(normal.distribution.mean, 4.0);
    EXPECT_EQ(normal.distribution.deviation, 2.0);
    EXPECT_FALSE(normal.distribution.capped);
    EXPECT_EQ(assigned(normal, heat), (Values{-1, -1, -1, 4, 4, 4, -1, -1, -1}));
}

TEST(FactoryCustomProperty, theRecordIsThatOfTheProperty)
{
    CFixedValueCustomPropertyFactoryParam param;
    param.bind(&heat);
    CMultipleFloatingPointNumberParamData numbers;
    ASSERT_TRUE(numbers.copyFrom(*param.paramData()));
    EXPECT_EQ(numbers.values, (Values{4, 5, 6}));
    EXPECT_EQ(numbers.elementNames, (QStringList{"Heat 1", "Heat 2", "Heat 3"}));
    EXPECT_EQ(numbers.unitsType, 21u);
    EXPECT_FALSE(param.setParamData(CMultipleBooleanParamData()));

    param.bind(&wet);
    CMultipleBooleanParamData bits;
    ASSERT_TRUE(bits.copyFrom(*param.paramData()));
    EXPECT_EQ(bits.values, (std::vector<bool>{true, false}));
    bits.values = {false, true};
    EXPECT_TRUE(param.setParamData(bits));
    EXPECT_EQ(param.values, (Values{0, 1}));
    EXPECT_FALSE(param.setParamData(numbers));
    EXPECT_EQ(param.paramDataType(), std::type_index(typeid(CMultipleBooleanParamData)));
}

/// The kind of the charge's parameter after the description of an old file has been applied.
static QString appliedKind(const char* kind, const char* property, bool withParam, Values& numbers)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    auto metaData = std::make_unique<CCustomPropertyMetaData>(property, eDoubleProperty, 1, 10, Values{0.0});
    manager.addProperty(metaData);
    const CCustomPropertyMetaData* const charge = manager.property(0u);
    FactoryCustomParams params;
    if (withParam) {
        params[charge->id] = std::make_unique<CInitialValueCustomPropertyFactoryParam>();
        params[charge->id]->bind(charge);
    }

    NLegacySupport::CParticleFactoryElectrostatic electrostatic;
    electrostatic.kind = kind;
    electrostatic.fixedValue = 1.0;
    electrostatic.randomMin = 2.0;
    electrostatic.randomMax = 3.0;
    electrostatic.normalMean = 4.0;
    electrostatic.normalDeviation = 5.0;
    electrostatic.applyTo(manager, params);
    if (params.empty())
        return "none";

    const IFactoryCustomPropertyParam* const param = params.begin()->second.get();
    EXPECT_EQ(param->property(), charge);
    if (const auto* const fixed = dynamic_cast<const CFixedValueCustomPropertyFactoryParam*>(param))
        numbers = fixed->values;
    if (const auto* const random = dynamic_cast<const CRandomValueCustomPropertyFactoryParam*>(param))
        numbers = {random->distribution.min, random->distribution.max};
    if (const auto* const normal = dynamic_cast<const CNormalDistCustomPropertyFactoryParam*>(param))
        numbers = {normal->distribution.mean, normal->distribution.deviation};
    return param->kindWord();
}

TEST(FactoryElectrostatic, becomesTheParameterOfTheCharge)
{
    struct SCase
    {
        const char* kind;
        const char* property;
        bool withParam;
        const char* becomes;
        Values numbers;
    };
    const SCase cases[] = {
        {"fixed", "Charge", true, "fixed", {1.0}},        {"random", "Charge", true, "random", {2.0, 3.0}},
        {"normal", "Charge", true, "normal", {4.0, 5.0}}, {"", "Charge", true, "initial", {}},
        {"Fixed", "Charge", true, "initial", {}},         {"fixed", "Heat", true, "initial", {}},
        {"fixed", "Charge", false, "none", {}},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.kind << ", " << c.property);
        Values numbers;
        EXPECT_EQ(appliedKind(c.kind, c.property, c.withParam, numbers), c.becomes);
        EXPECT_EQ(numbers, c.numbers);
    }
    const NLegacySupport::CParticleFactoryElectrostatic fresh;
    EXPECT_EQ(fresh.randomMax, 1.0);
}

} // namespace NBrenmark
