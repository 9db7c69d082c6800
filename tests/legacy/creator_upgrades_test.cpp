// What ends every read of a legacy model: materials and sizes go over from factories to particle types.
#include "legacy/creator_upgrades.h"

#include "core/memory_ceiling.h"
#include "core/version.h"
#include "legacy/shared_materials.h"
#include "legacy/size_distributions_of_factories.h"
#include "physics/cohesion.h"
#include "physics/heat_conduction.h"
#include "physics/jkr.h"
#include "support/log_capture.h"
#include "support/old_model.h"

#include <gtest/gtest.h>

namespace NBrenmark {

using namespace NLegacySupport;

static std::string typesOf(const CParticleFactory& factory)
{
    std::string text;
    for (const QString& name : factory.type->typeNames())
        text += (text.empty() ? "" : "+") + name.toStdString();
    return text;
}

// ---------------------------------------------------------------- materials that types share

TEST(SharedMaterials, aTypeFedByAFactoryOfItsOwnGetsAMaterial)
{
    SOldModel model;
    model.addType("A", "m").rawMass = 0.5;
    model.addType("B", "m");
    model.addType("C", "n");
    CGeometryGroup& box = model.addGroup("Box", "n");
    const CParticleFactory& first = model.addFactory(box, "first", {{"B", 1.0}});
    model.addFactory(box, "second", {{"A", 1.0}});
    model.addFactory(box, "third", {{"C", 1.0}});
    auto& byMaterials = model.addModel<CCohesionV2ContactModel>().energyDensity;
    byMaterials.set("m", "n", 4);
    auto& byTypes = model.addModel<CCohesionContactModel>().energyDensity;
    byTypes.set("A", "B", 5);
    const CLogCapture log;
    splitSharedMaterials(model.creator);
    EXPECT_EQ(model.types(), "A:m B:m(1) C:n") << "A is alone by then, as C always was";
    EXPECT_EQ(typesOf(first), "B");
    EXPECT_EQ(textOf(byMaterials), "m/n=4 m(1)/n=4 ");
    EXPECT_EQ(textOf(byTypes), "A/B=5 ");
    EXPECT_EQ(model.creator.materials.keys(), (QStringList{"m", "m(1)", "n"}));
    EXPECT_EQ(model.creator.materials.find("m(1)")->density, 2500);
    for (const auto& [a, b] : {std::pair("m(1)", "m"), std::pair("m(1)", "m(1)"), std::pair("m(1)", "n")}) {
        const CInteraction* const interaction = model.creator.interactions.find(a, b);
        ASSERT_NE(interaction, nullptr) << a << " and " << b;
        EXPECT_EQ(interaction->restitution, 0.875);
    }
    EXPECT_EQ(log.text(), "WARNING Conversion: Factory \"first\" feeds particle type \"B\" alone, which shares the "
                          "material \"m\": the type gets the new material \"m(1)\".\n");
}

TEST(SharedMaterials, besideAFactoryOfBothTheOthersGetTypesOfTheirOwn)
{
    SOldModel model;
    model.addType("A", "m").rawMass = 0.5;
    model.addType("B", "m").spheres.resize(2);
    CGeometryGroup& box = model.addGroup("Box", "n");
    const CParticleFactory& both = model.addFactory(box, "both", {{"A", 1.0}, {"B", 1.0}});
    CParticleFactory& a = model.addFactory(box, "a", {{"A", 2.0}});
    a.typeAccounting["A"].massCreated = 4.5;
    const CParticleFactory& b = model.addFactory(model.addGroup("Lid", "n"), "b", {{"B", 3.0}});
    auto& conductivities = model.addModel<CHeatConductionModel>().conductivities;
    conductivities.set("B", 6);
    auto& byTypes = model.addModel<CJkrContactModel>().surfaceEnergy;
    byTypes.set("A", "B", 7);
    const CLogCapture log;
    splitSharedMaterials(model.creator);
    EXPECT_EQ(model.types(), "A:m B:m A(1):m(1) B(1):m(2)");
    EXPECT_EQ(typesOf(both) + " " + typesOf(a) + " " + typesOf(b), "A+B A(1) B(1)");
    EXPECT_EQ(textOf(byTypes), "A/B=7 A/B(1)=7 A(1)/B=7 A(1)/B(1)=7 ");
    EXPECT_EQ(conductivities.valueOf("B(1)"), 6);
    EXPECT_EQ(conductivities.entries.size(), 2u);
    EXPECT_EQ(a.sizes.size(), 1u);
    EXPECT_EQ(a.sizes.at("A(1)")->minimum(), 2.0);
    EXPECT_EQ(a.typeAccounting.at("A(1)").massCreated, 4.5);
    EXPECT_EQ(model.creator.particleTypes.find("A(1)")->rawMass, 0.5);
    EXPECT_EQ(model.creator.particleTypes.find("B(1)")->spheres.size(), 2u);
    EXPECT_EQ(log.text(), "WARNING Conversion: Factory \"a\" feeds particle type \"A\" alone, which shares the "
                          "material \"m\": it feeds the new type \"A(1)\" of the new material \"m(1)\" from now on.\n"
                          "WARNING Conversion: Factory \"b\" feeds particle type \"B\" alone, which shares the "
                          "material \"m\": it feeds the new type \"B(1)\" of the new material \"m(2)\" from now on.\n");
}

TEST(SharedMaterials, aFactoryWithoutATypeIsLeftOutAndReported)
{
    SOldModel model;
    CGeometryGroup& box = model.addGroup("Box", "n");
    model.addFactory(box, "none", {});
    box.factories->add(createFactory("static", "bare")); // not even a parameter
    model.addFactory(box, "stranger", {{"X", 1.0}});
    model.addFactory(box, "a", {{"A", 1.0}});
    model.addType("A", "m");
    CLogCapture log;
    splitSharedMaterials(model.creator);
    EXPECT_EQ(log.text(), "") << "no material is shared, so that no one is left out";
    model.addType("B", "m");
    splitSharedMaterials(model.creator);
    EXPECT_EQ(model.types(), "A:m(1) B:m");
    EXPECT_EQ(log.text(),
              "WARNING Conversion: Factory \"none\" names no particle type: materials are split without it.\n"
              "WARNING Conversion: Factory \"bare\" names no particle type: materials are split without it.\n"
              "WARNING Conversion: Factory \"a\" feeds particle type \"A\" alone, which shares the "
              "material \"m\": the type gets the new material \"m(1)\".\n");
}

// Sixty types of one material that touches a thousand others, each type with a factory: sixty thousand interactions.
TEST(SharedMaterials, areSplitWithinTheMemoryThatAModelMayTake)
{
    SOldModel model;
    for (int i = 0; i < 1000; ++i)
        model.creator.interactions.set("m", QString("x%1").arg(i), new CInteraction);
    CGeometryGroup& box = model.addGroup("Box", "n");
    for (int i = 0; i < 60; ++i) {
        const QByteArray name = QByteArray::number(i);
        model.addType(name.constData(), "m");
        model.addFactory(box, name.constData(), {{name.constData(), 1.0}});
    }
    setMemoryCeiling(4 << 20);
    beginMemoryCount(eMemoryOfModel);
    EXPECT_THROW(splitSharedMaterials(model.creator), memory_ceiling_error);
    setMemoryCeiling(0);
    beginMemoryCount(eMemoryOfModel);
    EXPECT_LT(model.creator.interactions.entries.size(), 20000);
}

TEST(FactoryMaterials, theFirstFactoryOfAGroupThatMixesMaterialsIsReported)
{
    SOldModel model;
    for (const auto& [type, material] : {std::pair("A", "m"), std::pair("%3", "n"), std::pair("C", "m")})
        model.addType(type, material);
    CGeometryGroup& box = model.addGroup("Box", "n");
    model.addFactory(box, "one", {{"A", 1.0}, {"C", 1.0}, {"unknown", 1.0}});
    model.addFactory(box, "two", {{"A", 1.0}, {"%3", 1.0}, {"C", 1.0}});
    model.addFactory(box, "three", {{"A", 1.0}, {"%3", 1.0}});
    model.addFactory(model.addGroup("Lid", "n"), "four", {{"%3", 1.0}, {"A", 1.0}});
    const CLogCapture log;
    checkFactoryMaterials(model.creator);
    const auto told = [](const char* factory, const char* types, const char* materials) {
        return std::string("WARNING CONVERSION: Problem with conversion. Factory ") + factory +
               " uses particle types belonging to different materials. You should delete and recreate this "
               "factory.\nParticle Types: " +
               types + "\nMaterials: " + materials + "\n\n";
    };
    EXPECT_EQ(log.text(), told("two", "A, %3, C", "m, n") + told("four", "%3, A", "n, m"));
    EXPECT_EQ(model.types(), "A:m %3:n C:m");
}

// ---------------------------------------------------------------- size laws

TEST(SizeDistributionsOfFactories, eachTypeGetsTheLawOfItsFirstFactoryAndItsShareOfTheMaterial)
{
    SOldModel model;
    for (const auto& [type, material] :
         {std::pair("A", "m"), std::pair("B", "m"), std::pair("C", "m"), std::pair("D", "n"), std::pair("E", "gone")})
        model.addType(type, material);
    std::unique_ptr<ISizeDistribution> stale = std::make_unique<CFixedSizeDistribution>();
    model.creator.sizeDistributions.add("of another deck", 1.0, stale);
    CGeometryGroup& box = model.addGroup("Box", "n");
    model.addFactory(box, "one", {{"A", 2.0}, {"B", 3.0}});
    model.addFactory(box, "two", {{"A", 2.0}, {"B", 0.0}});
    model.addFactory(box, "three", {{"X", 5.0}});
    const CLogCapture log;
    buildSizeDistributions(model.creator);
    struct SExpected
    {
        const char* type;
        double percentage, size;
    };
    const SExpected expected[] = {{"A", 100.0 / 3, 2.0}, {"B", 100.0 / 3, 3.0}, {"C", 100.0 / 3, 1.0},
                                  {"D", 100.0, 1.0},     {"E", 100.0, 1.0},     {"X", 100.0, 5.0}};
    const auto& entries = model.creator.sizeDistributions.entries;
    EXPECT_EQ(entries.size(), std::size(expected));
    for (const SExpected& e : expected) {
        ASSERT_EQ(entries.count(e.type), 1u) << e.type;
        EXPECT_EQ(entries.at(e.type).percentage, e.percentage) << e.type;
        EXPECT_EQ(entries.at(e.type).distribution->kindWord(), "fixed") << e.type;
        EXPECT_EQ(entries.at(e.type).distribution->minimum(), e.size) << e.type;
    }
    EXPECT_EQ(log.text(),
              "WARNING Conversion: Factory \"two\" has no size for particle type \"B\": the size law of the "
              "type comes without it.\n");
}

TEST(SizeDistributionsOfFactories, factoriesThatDisagreeAreReportedWithTheirKinds)
{
    SOldModel model;
    model.addType("A", "m");
    CGeometryGroup& box = model.addGroup("Box", "n");
    model.addFactory(box, "one", {{"A", 2.0}});
    model.addFactory(box, "two", {{"A", 2.5}});
    model.addFactory(box, "three", {{"A", 2.0}}).setSize("A", std::make_unique<CNormalFactorySize>());
    const CLogCapture log;
    buildSizeDistributions(model.creator);
    EXPECT_EQ(model.creator.sizeDistributions.findDistribution("A")->maximum(), 2.0);
    EXPECT_EQ(log.text(), "WARNING CONVERSION: Conflict with size distributions for Particle A. This was used by "
                          "multiple factories with different Size parameters: fixed, fixed, normal. \n"
                          "Zorv advises recreating simulation with latest version!\n");
}

// ---------------------------------------------------------------- all of them

TEST(CreatorUpgrades, runInTheirOrderAtEveryVersion)
{
    for (const quint32 version : {makeVersion(2, 4, 39), makeVersion(30, 0, 3), makeVersion(30, 0, 4)}) {
        SOldModel model;
        model.addType("A", "m");
        model.addType("B", "m");
        CGeometryGroup& box = model.addGroup("Box", "m");
        model.addFactory(box, "a", {{"A", 2.0}});
        model.addModel<CCohesionContactModel>().energyDensity.set("A", "B", 0.5);
        model.addModel<CCohesionContactModel>(eSphereGeometryModel).energyDensity.set("Box", "A", 0.25);
        upgradeCreatorData(model.creator, version);
        // The types part first, so the pair of them is one of two materials. Then the walls leave the grains' material,
        // before a pair of a grain and a wall is looked for.
        const bool rule = version < makeVersion(30, 0, 4);
        EXPECT_EQ(model.types(), "A:m(1) B:m");
        EXPECT_EQ(model.creator.geometryGroupByName("Box")->materialName, rule ? "m(2)" : "m");
        EXPECT_EQ(model.creator.materials.find("n")->isBulk(), !rule) << "which no type uses";
        const auto table = [&](const CPhysicsModels::Chain& chain) {
            return dynamic_cast<const CCohesionContactModel&>(*chain.front()).parameters.energyDensity;
        };
        const auto between = table(model.creator.physicsModels.sphereSphereModels);
        const auto walls = table(model.creator.physicsModels.sphereGeometryModels);
        EXPECT_NE(between.find("m", "m(1)"), nullptr);
        EXPECT_NE(walls.find("m(1)", rule ? "m(2)" : "m"), nullptr);
        EXPECT_EQ(between.entries.size() + walls.entries.size(), 2u);
        EXPECT_EQ(model.creator.sizeDistributions.percentageOf("A"), 100.0) << "alone in its material";
        EXPECT_EQ(model.creator.sizeDistributions.percentageOf("B"), 100.0);
    }
}

} // namespace NBrenmark
