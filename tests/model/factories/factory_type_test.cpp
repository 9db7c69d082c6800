// Which type comes next.
#include "model/factories/factory_type.h"
#include "model/particle_types.h"

#include <gtest/gtest.h>

namespace NBrenmark {

static void addType(CParticleTypes& types, const char* name, double radius = 0.001)
{
    CParticleType& type = types.append();
    type.setName(name);
    type.spheres.resize(1);
    type.spheres[0].setRadii(radius, radius);
}

TEST(FactoryType, aBinaryTypeAlternatesAndAnOverrideStandsBeside)
{
    CBinaryFactoryType type;
    type.setTypeNames({"A", "B"});
    QString given;
    for (int i = 0; i < 4; ++i)
        given += type.nextTypeName();
    EXPECT_EQ(given, "ABAB");
    EXPECT_EQ(type.nextTypeName(), "A");
    type.setNextName("C");
    EXPECT_EQ(type.nextTypeName(), "C");
    EXPECT_EQ(type.nextTypeName(), "B");
    type.stepBack();
    EXPECT_EQ(type.nextTypeName(), "B");
    type.stepBack();
    type.stepBack();
    EXPECT_EQ(type.nextTypeName(), "A");
    type.setNextName("C");
    type.setTypeNames({"X"}); // the override stays in place
    EXPECT_EQ(type.nextTypeName(), "C");
}

TEST(FactoryType, anIndexIsGivenOnlyForATypeThatIsThere)
{
    CParticleTypes types(nullptr);
    for (const char* name : {"A", "B", "A"})
        addType(types, name);
    CBinaryFactoryType type;
    type.setTypeNames({"A", "absent"});
    quint32 index = 99;
    EXPECT_TRUE(type.nextTypeIndex(index, types));
    EXPECT_EQ(index, 2u); // the last of the name
    EXPECT_EQ(type.next, 1);
    index = 99;
    EXPECT_FALSE(type.nextTypeIndex(index, types));
    EXPECT_EQ(index, 99u);
    EXPECT_EQ(type.next, 1); // waits
    type.setNextName("B");
    EXPECT_TRUE(type.nextTypeIndex(index, types));
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(type.next, 1);
    type.setNextName("absent");
    EXPECT_FALSE(type.nextTypeIndex(index, types));
    EXPECT_FALSE(type.hasOverride);
}

TEST(FactoryType, namesFollowTheTypesThereAre)
{
    CParticleTypes types(nullptr);
    CBinaryFactoryType type;
    type.setTypeNames({"old", "older"});
    type.setParticleTypes(&types);
    EXPECT_EQ(type.names, (std::vector<QString>{"old", "older"})); // no types: nothing to choose
    addType(types, "A");
    type.setParticleTypes(&types);
    EXPECT_EQ(type.names, (std::vector<QString>{"A", "A"}));
    addType(types, "B");
    addType(types, "C");
    type.setParticleTypes(&types);
    EXPECT_EQ(type.names, (std::vector<QString>{"A", "B"}));
    CParticleTypes others(nullptr);
    type.attachParticleTypes(&others);
    EXPECT_EQ(type.particleTypes, &others);
    EXPECT_EQ(type.names, (std::vector<QString>{"A", "B"}));
}

TEST(FactoryType, theGreatestRadiusIsThatOfItsOwnTypes)
{
    CParticleTypes types(nullptr);
    addType(types, "small", 0.002);
    addType(types, "large", 0.005);
    addType(types, "other", 0.100);
    types.types[0]->spheres[0].position = C3DPoint(0.004, 0, 0); // reaches to 6 mm
    CBinaryFactoryType type;
    type.setTypeNames({"small", "large"});
    EXPECT_DOUBLE_EQ(type.maxRadius(types), 0.006);
    type.setTypeNames({"absent"});
    EXPECT_EQ(type.maxRadius(types), 0.0);
    type.setTypeNames({});
    EXPECT_EQ(type.maxRadius(types), 0.0);
}

TEST(FactoryType, whateverAFileHoldsThereIsNoStepOutside)
{
    for (const qint32 next : {-2147483647 - 1, -3, 2, 7, 2147483647}) {
        CBinaryFactoryType type;
        type.setTypeNames({"A", "B"});
        type.next = next;
        const QString first = type.nextTypeName();
        EXPECT_NE(first, type.nextTypeName()) << next;
        type.next = next;
        type.stepBack();
        EXPECT_TRUE(type.next == 0 || type.next == 1) << next;
    }
    CFixedFactoryType type;
    type.setTypeNames({});
    CParticleTypes types(nullptr);
    quint32 index = 0;
    EXPECT_FALSE(type.nextTypeIndex(index, types));
    EXPECT_EQ(type.nextTypeName(), "");
    type.stepBack();
}

TEST(FactoryType, isRenamedAndEdited)
{
    CBinaryFactoryType type;
    type.setTypeNames({"A", "A"});
    EXPECT_FALSE(type.renameType("A", "B"));
    EXPECT_EQ(type.typeNames(), (std::vector<QString>{"B", "B"}));
    CBinaryTypeParamData record;
    EXPECT_TRUE(record.copyFrom(*type.paramData()));
    record.names = QStringList{"X", "Y"};
    EXPECT_TRUE(type.setParamData(record));
    EXPECT_EQ(type.names, (std::vector<QString>{"X", "Y"}));
    EXPECT_FALSE(type.setParamData(CFixedTypeParamData()));

    CParticleTypes types(nullptr);
    CParticleTypesParamData choice;
    choice.particleTypes = &types;
    CFixedFactoryType fixed;
    EXPECT_TRUE(fixed.setParamData(choice));
    EXPECT_EQ(fixed.particleTypes, &types);
    CFixedTypeParamData one;
    one.name = "Z";
    EXPECT_TRUE(fixed.setParamData(one));
    EXPECT_EQ(dynamic_cast<const CFixedTypeParamData&>(*fixed.paramData()).name, "Z");
}

} // namespace NBrenmark
