// Particle factories: when they are complete, how their parameters are bound, counted and copied.
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/particle_types.h"
#include "model/size_distributions.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(DynamicFactory, isCompleteByNumberMassOrNever)
{
    struct SCase
    {
        bool unlimited, massCreation;
        quint32 creationCount;
        double massCreated;
        bool complete;
    };
    const SCase cases[] = {
        // 1000 particles or 100 kg are the goal
        {false, false, 999, 500.0, false}, {false, false, 1000, 0.0, true}, {false, false, 0xFFFFFFFFu, 0.0, true},
        {false, true, 5000, 99.9, false},  {false, true, 0, 100.0, true},   {true, false, 5000, 0.0, false},
        {true, true, 5000, 500.0, false},
    };
    int number = 0;
    for (const SCase& c : cases) {
        CDynamicParticleFactory factory;
        factory.unlimited = c.unlimited;
        factory.massCreation = c.massCreation;
        factory.creationCount = c.creationCount;
        factory.accounting.massCreated = c.massCreated;
        EXPECT_EQ(factory.isComplete(), c.complete) << number;
        EXPECT_EQ(factory.isMassCreation(), c.massCreation) << number++;
    }
}

TEST(Factories, areMadeByTheirWordsWithTheirDefaults)
{
    const std::unique_ptr<CParticleFactory> made = createFactory("dynamic", "feed");
    const auto* const dynamic = dynamic_cast<const CDynamicParticleFactory*>(made.get());
    ASSERT_NE(dynamic, nullptr);
    EXPECT_EQ(dynamic->name, "feed");
    EXPECT_EQ(dynamic->maxAttempts, 20u);
    EXPECT_EQ(dynamic->creationTime, 1e-12);
    EXPECT_EQ(dynamic->massToCreate, 100.0);
    EXPECT_EQ(dynamic->creationRate, 5000.0);
    EXPECT_FALSE(dynamic->isMassGeneration());
    EXPECT_TRUE(dynamic->velocity == nullptr && dynamic->type == nullptr && dynamic->position == nullptr);

    const std::unique_ptr<CParticleFactory> other = createFactory("static", "bed");
    auto* const filling = dynamic_cast<CStaticParticleFactory*>(other.get());
    ASSERT_NE(filling, nullptr);
    EXPECT_EQ(filling->massToCreate, 0.0);
    EXPECT_TRUE(filling->fillShape);
    EXPECT_FALSE(filling->isComplete());
    filling->completed = true;
    EXPECT_TRUE(filling->isComplete());
    for (const char* unknown : {"", "Dynamic", "library"})
        EXPECT_EQ(createFactory(unknown, "x"), nullptr) << unknown;
}

// ---------------------------------------------------------------- slots

/// Writes down the operations that are called.
class CSlotReader : public IFileVisitorReader
{
public:
#define STORED(operation, type, ...)                                                                                   \
    void read##operation(type&) override { heard += #operation " "; }
#define LEGACY(operation, type, column)                                                                                \
    void read##operation(NLegacySupport::type&) override { heard += #operation " "; }
#include "visitors/stored_classes.def"
    std::string heard;
};

class CSlotWriter : public IFileVisitorWriter
{
public:
#define STORED(operation, type, ...)                                                                                   \
    void write##operation(const type&) override { heard += #operation " "; }
#define STAMPED(operation, type, ...)                                                                                  \
    void write##operation(type&) override { heard += #operation " "; }
#include "visitors/stored_classes.def"
    std::string heard;
};

template <class TStored>
static void expectSlots(TStored& object, const std::string& operations)
{
    CSlotReader reader;
    CSlotWriter writer;
    object.read(reader);
    object.write(writer);
    EXPECT_EQ(reader.heard, operations);
    EXPECT_EQ(writer.heard, operations);
}

/// Every kind of a family by its word, and the slot it calls.
template <class TFamily>
static void expectKinds(const std::vector<std::pair<const char*, std::string>>& kinds)
{
    const CKindRegistry<TFamily>& registry = CKindRegistry<TFamily>::instance();
    EXPECT_EQ(static_cast<std::size_t>(registry.words().size()), kinds.size());
    for (const auto& [word, operation] : kinds) {
        SCOPED_TRACE(word);
        EXPECT_TRUE(registry.knows(word));
        const std::unique_ptr<TFamily> made = registry.create(word);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->kindWord(), word);
        EXPECT_EQ(made->clone()->kindWord(), word);
        expectSlots(*made, operation);
    }
    EXPECT_FALSE(registry.knows("unheard of"));
    EXPECT_EQ(registry.create("unheard of"), nullptr);
}

TEST(Factories, everyKindHasItsWordAndItsSlot)
{
    expectKinds<IFactoryVelocity>({{"fixed", "FixedFactoryVelocity "},
                                   {"linear", "LinearFactoryVelocity "},
                                   {"random", "RandomFactoryVelocity "},
                                   {"normal", "NormalFactoryVelocity "},
                                   {"spray", "SprayFactoryVelocity "}});
    expectKinds<IFactoryAngVel>({{"fixed", "FixedFactoryAngVel "},
                                 {"linear", "LinearFactoryAngVel "},
                                 {"random", "RandomFactoryAngVel "},
                                 {"normal", "NormalFactoryAngVel "}});
    expectKinds<IFactoryOrientation>({{"fixed", "FixedFactoryOrientation "}, {"random", ""}});
    expectKinds<IFactorySize>({{"fixed", "FixedFactorySize "},
                               {"random", "RandomFactorySize "},
                               {"normal", "NormalFactorySize "},
                               {"lognormal", "LogNormalFactorySize "},
                               {"user defined", "UserDefinedFactorySize "}});
    expectKinds<IFactoryPosition>({{"random", "RandomFactoryPosition "},
                                   {"cubic", "CubicFactoryPosition "},
                                   {"bcc", "BCCFactoryPosition "},
                                   {"fcc", "FCCFactoryPosition "}});
    expectKinds<IFactoryType>({{"fixed", "FixedFactoryType "}, {"binary", "BinaryFactoryType "}});
    expectKinds<IFactoryCustomPropertyParam>({{"initial", ""},
                                              {"fixed", "FixedValueCustomPropertyFactoryParam "},
                                              {"random", "RandomValueCustomPropertyFactoryParam "},
                                              {"normal", "NormalDistCustomPropertyFactoryParam "}});
    expectKinds<ISizeDistribution>({{"fixed", "FixedSizeDistribution "},
                                    {"random", "RandomSizeDistribution "},
                                    {"normal", "NormalSizeDistribution "},
                                    {"lognormal", "LogNormalSizeDistribution "},
                                    {"user defined", "UserDefinedSizeDistribution "}});
}

TEST(Factories, theSharedPartStandsBeforeTheOwn)
{
    CDynamicParticleFactory dynamic;
    expectSlots(dynamic, "ParticleFactory DynamicParticleFactory ");
    CStaticParticleFactory filling;
    expectSlots(filling, "ParticleFactory StaticParticleFactory ");
    CParticleFactoryList list;
    expectSlots(list, "ParticleFactoryList ");
    CFactoryAccounting accounting;
    expectSlots(accounting, "FactoryAccounting ");
    CSlotReader reader;
    dynamic.electrostatic.read(reader);
    EXPECT_EQ(reader.heard, "ParticleFactoryElectrostatic ");

    // What a form reaches by the name of the base: a lattice, a law, the part common to size laws.
    CSlotWriter writer;
    CFCCFactoryPosition().C3DLattice::write(writer);
    CNormalSizeDistribution().CNormalDistribution::write(writer);
    CNormalSizeDistribution().ISizeDistribution::write(writer);
    EXPECT_EQ(writer.heard, "3DLattice NormalDistribution SizeDistributionBase ");
}

// ---------------------------------------------------------------- parameters

TEST(Factory, aKindThatIsThereAlreadyKeepsItsData)
{
    CDynamicParticleFactory factory;
    factory.setVelocityKind("fixed");
    dynamic_cast<CFixedFactoryVelocity&>(*factory.velocity).value = C3DVector(1, 2, 3);
    factory.setVelocityKind("fixed");
    EXPECT_EQ(factory.velocity->sample(), C3DVector(1, 2, 3));
    factory.setVelocityKind("normal");
    EXPECT_EQ(factory.velocity->kindWord(), "normal");
    factory.setVelocityKind("unheard of");
    EXPECT_EQ(factory.velocity, nullptr);

    factory.setSizeKind("Ball", "fixed");
    dynamic_cast<CFixedFactorySize&>(*factory.sizes.at("Ball")).sizeDistribution.value = 3.0;
    factory.setSizeKind("Ball", "fixed");
    EXPECT_EQ(factory.sizes.at("Ball")->next(), 3.0);
    factory.typeAccounting["Ball"].massCreated = 1.0;
    factory.clearSizes();
    EXPECT_TRUE(factory.sizes.empty() && factory.typeAccounting.empty());
}

TEST(Factory, typeAndPositionKnowOneAnotherInWhateverOrderTheyCome)
{
    CParticleTypes types(nullptr);
    types.append().setName("Ball");
    CStaticParticleFactory factory;
    factory.setTypeKind("fixed", &types);
    const auto positionOfType = [&] { return dynamic_cast<const NNaryFactoryType&>(*factory.type).positionParam; };
    EXPECT_EQ(factory.type->typeNames(), std::vector<QString>{"Ball"});
    EXPECT_EQ(positionOfType(), nullptr);
    factory.setPositionKind("cubic");
    EXPECT_EQ(factory.position->factory, &factory);
    EXPECT_EQ(positionOfType(), factory.position.get());
    factory.setTypeKind("binary", &types);
    EXPECT_EQ(factory.type->typeNames(), (std::vector<QString>{"Ball", "Ball"}));
    EXPECT_EQ(positionOfType(), factory.position.get());
    factory.setPositionKind("unheard of");
    EXPECT_EQ(positionOfType(), nullptr);
    factory.setPosition(std::make_unique<CRandomFactoryPosition>());
    EXPECT_EQ(factory.position->factory, &factory);
    EXPECT_EQ(positionOfType(), factory.position.get());
}

// ---------------------------------------------------------------- particle types

TEST(Factory, sharesAndIndicesAreThoseOfTheLastTypeOfAName)
{
    CParticleTypes types(nullptr);
    for (const char* name : {"Ball", "Rod", "Ball"})
        types.append().setName(name);
    CParticleSizeDistributionMap distributions;
    std::unique_ptr<ISizeDistribution> none;
    distributions.add("Ball", 60.0, none);
    distributions.add("absent", 40.0, none);
    CDynamicParticleFactory factory;
    factory.typeShares[7] = 1.0;
    factory.typeIndices["stale"] = 7;
    factory.refreshTypes(types, distributions);
    EXPECT_TRUE(factory.typeShares.empty() && factory.typeIndices.empty()); // no type parameter yet

    factory.setType(std::make_unique<CBinaryFactoryType>());
    factory.type->setTypeNames({"Ball", "absent", "Rod"});
    factory.refreshTypes(types, distributions);
    EXPECT_EQ(factory.typeIndices, (std::map<QString, qint32>{{"Ball", 2}, {"Rod", 1}}));
    ASSERT_EQ(factory.typeShares.size(), 2u);
    EXPECT_DOUBLE_EQ(factory.typeShares[2], 0.6);
    EXPECT_EQ(factory.typeShares[1], 0.0); // without a share in the mix
}

TEST(Factory, aRenamedTypeTakesSizeAndAccountAlong)
{
    CDynamicParticleFactory factory;
    factory.setType(std::make_unique<CFixedFactoryType>());
    factory.type->setTypeNames({"old"});
    factory.setSizeKind("old", "random");
    factory.setSizeKind("new", "fixed");
    factory.typeAccounting["old"].massCreated = 4.0;
    factory.typeAccounting["other"].massCreated = 5.0;
    const IFactorySize* const size = factory.sizes.at("old").get();
    factory.renameType("old", "new");
    EXPECT_EQ(factory.type->typeNames(), std::vector<QString>{"new"});
    ASSERT_EQ(factory.sizes.size(), 1u);
    EXPECT_EQ(factory.sizes.at("new").get(), size);
    EXPECT_EQ(factory.typeAccounting.size(), 2u);
    EXPECT_EQ(factory.typeAccounting.at("new").massCreated, 4.0);
    factory.renameType("new", "new");
    factory.renameType("absent", "other");
    EXPECT_EQ(factory.sizes.at("new").get(), size);
    EXPECT_EQ(factory.typeAccounting.at("other").massCreated, 5.0);
}

TEST(DynamicFactory, aNewRateForgetsWhatWasCreatedByTheOldOneOnly)
{
    CDynamicParticleFactory factory;
    factory.createdSinceRateChange = 9;
    factory.creationCount = 90;
    factory.setSizeKind("Ball", "user defined");
    factory.setSizeKind("Rod", "unheard of"); // no parameter at all
    auto& bands = dynamic_cast<CUserDefinedFactorySize&>(*factory.sizes.at("Ball"));
    bands.sizeDistribution.bands = {{1.0, 50.0}, {2.0, 100.0}};
    CFactoryAccounting* const accounts[] = {&factory.accounting, &factory.typeAccounting["Ball"],
                                            &bands.bandAccountingFor(1.0, true)};
    double mass = 1.0;
    for (CFactoryAccounting* account : accounts) {
        account->massCreated = mass++;
        account->massSinceRateChange = mass++;
        account->massRemainder = mass++;
    }
    factory.changeCreationRate(12.5, 0.75);
    EXPECT_EQ(factory.creationRate, 12.5);
    EXPECT_EQ(factory.rateChangeTime, 0.75);
    EXPECT_EQ(factory.createdSinceRateChange, 0u);
    EXPECT_EQ(factory.creationCount, 90u);
    double created = 0.0;
    for (const CFactoryAccounting* account : accounts) {
        created += account->massCreated;
        EXPECT_EQ(account->massSinceRateChange, 0.0);
        EXPECT_EQ(account->massRemainder, 0.0);
    }
    EXPECT_EQ(created, 1.0 + 4.0 + 7.0);
    EXPECT_EQ(bands.bandAccounting.size(), 2u); // each band has one now
}

// ---------------------------------------------------------------- custom properties

static const CCustomPropertyMetaData* addProperty(CCustomPropertyManager& manager, const char* name, double value)
{
    auto metaData = std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, 1, 0, std::vector<double>{value});
    manager.addProperty(metaData);
    return manager.property(name);
}

TEST(Factory, hasAParameterForEachPropertyOfItsManager)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    CCustomPropertyManager other("Contact Properties", eContactOwner);
    const CCustomPropertyMetaData* const heat = addProperty(manager, "Heat", 3.0);
    CStaticParticleFactory factory;
    EXPECT_FALSE(factory.setCustomPropertyKind(heat, "random")); // not connected
    factory.connectCustomProperties(&manager);
    ASSERT_EQ(factory.customParams.size(), 1u);
    const auto& param = dynamic_cast<CFixedValueCustomPropertyFactoryParam&>(*factory.customParams.at(heat->id));
    EXPECT_EQ(param.property(), heat);
    EXPECT_EQ(param.values, std::vector<double>{3.0});

    const CCustomPropertyMetaData* const wear = addProperty(manager, "Wear", 0.0);
    ASSERT_EQ(factory.customParams.size(), 2u);
    EXPECT_EQ(factory.customParams.at(heat->id).get(), &param); // left alone
    EXPECT_TRUE(factory.setCustomPropertyKind(wear, "random"));
    EXPECT_EQ(factory.customParams.at(wear->id)->kindWord(), "random");
    EXPECT_EQ(factory.customParams.at(wear->id)->property(), wear);
    EXPECT_FALSE(factory.setCustomPropertyKind(wear, "unheard of"));
    EXPECT_EQ(factory.customParams.at(wear->id)->kindWord(), "random");
    const CCustomPropertyMetaData stranger("Wear", eDoubleProperty, 1, 0);
    EXPECT_FALSE(factory.setCustomPropertyKind(&stranger, "fixed"));
    EXPECT_FALSE(factory.setCustomPropertyKind(nullptr, "fixed"));

    addProperty(other, "Age", 1.0);
    factory.propertyAdded(other); // isn't its manager
    EXPECT_EQ(factory.customParams.size(), 2u);

    manager.lastFinalisedPropertyIndex = 0;
    manager.notifyChanged(0);
    EXPECT_EQ(factory.customParams.size(), 2u);
    const unsigned int heatId = heat->id;
    manager.clear(false);
    EXPECT_TRUE(factory.customParams.empty());
    addProperty(manager, "Heat", 5.0); // the name is back, the property isn't the same
    EXPECT_EQ(factory.customParams.size(), 1u);
    EXPECT_EQ(factory.customParams.count(heatId), 0u);

    factory.connectCustomProperties(&other);
    ASSERT_EQ(factory.customParams.size(), 1u);
    EXPECT_EQ(factory.customParams.begin()->second->property()->name, "Age");
    addProperty(manager, "Unheard", 0.0);
    EXPECT_EQ(factory.customParams.size(), 1u);
}

// ---------------------------------------------------------------- copies

TEST(Factory, aCopyIsDeepAndListensOnItsOwn)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    const CCustomPropertyMetaData* const heat = addProperty(manager, "Heat", 3.0);
    CDynamicParticleFactory factory;
    factory.name = "feed";
    factory.sectionName = "box";
    factory.creationCount = 7;
    factory.maxAttempts = 8;
    factory.counters = {1, 2, 3, 4};
    factory.massCreation = factory.massGeneration = factory.unlimited = true;
    factory.creationRate = 2.5;
    factory.rateChangeTime = 0.5;
    factory.createdSinceRateChange = 6;
    factory.accounting.massCreated = 9.0;
    factory.setVelocityKind("spray");
    factory.setOrientationKind("random");
    factory.setAngVelKind("linear");
    factory.setTypeKind("fixed", nullptr);
    factory.type->setTypeNames({"Ball"});
    factory.setPositionKind("fcc");
    factory.setSizeKind("Ball", "fixed");
    factory.connectCustomProperties(&manager);
    factory.setCustomPropertyKind(heat, "normal");

    const std::unique_ptr<CParticleFactory> made = factory.clone();
    const auto* const copy = dynamic_cast<const CDynamicParticleFactory*>(made.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->name, "feed");
    EXPECT_EQ(copy->sectionName, "box");
    EXPECT_EQ(copy->creationCount, 7u);
    EXPECT_EQ(copy->maxAttempts, 8u);
    EXPECT_EQ(copy->counters, factory.counters);
    EXPECT_TRUE(copy->massCreation && copy->massGeneration && copy->unlimited);
    EXPECT_EQ(copy->creationRate, 2.5);
    EXPECT_EQ(copy->rateChangeTime, 0.5);
    EXPECT_EQ(copy->createdSinceRateChange, 6u);
    EXPECT_EQ(copy->accounting.massCreated, 0.0); // its own account
    EXPECT_EQ(copy->velocity->kindWord(), "spray");
    EXPECT_EQ(copy->orientation->kindWord(), "random");
    EXPECT_EQ(copy->angVel->kindWord(), "linear");
    EXPECT_EQ(copy->type->typeNames(), std::vector<QString>{"Ball"});
    EXPECT_EQ(copy->position->kindWord(), "fcc");
    EXPECT_EQ(copy->position->factory, copy);
    EXPECT_EQ(factory.position->factory, &factory);
    EXPECT_EQ(dynamic_cast<const NNaryFactoryType&>(*copy->type).positionParam, copy->position.get());
    EXPECT_EQ(copy->customParams.at(heat->id)->kindWord(), "normal");

    factory.sizes.at("Ball")->setNext(5.0);
    EXPECT_EQ(copy->sizes.at("Ball")->next(), 1.0);
    addProperty(manager, "Wear", 0.0);
    EXPECT_EQ(copy->customParams.size(), 2u);
    EXPECT_EQ(CStaticParticleFactory().clone()->typeWord(), "static"); // without any parameter
}

TEST(FactoryList, findsTheFirstOfANameAndPassesOnWhatAllShare)
{
    CParticleFactoryList list;
    list.setSectionName("box");
    CParticleFactory& first = list.add(createFactory("static", "a"));
    CParticleFactory& second = list.add(createFactory("dynamic", "a"));
    EXPECT_EQ(list.find("a"), &first);
    EXPECT_EQ(list.find("b"), nullptr);
    EXPECT_EQ(second.sectionName, "box");
    list.setSectionName("funnel");
    EXPECT_EQ(list.sectionName, "funnel");
    EXPECT_EQ(first.sectionName, "funnel");
    int shape = 0; // never looked at
    list.setBoundingShape(reinterpret_cast<IFactoryBoundingShape*>(&shape));
    EXPECT_EQ(first.boundingShape, second.boundingShape);
    EXPECT_NE(first.boundingShape, nullptr);
    list.clear();
    EXPECT_TRUE(list.factories.empty());
    EXPECT_EQ(list.find("a"), nullptr);
}

} // namespace NBrenmark
