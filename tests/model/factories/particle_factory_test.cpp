// Particle factories: when they are complete, how their parameters are bound, counted and copied.
#include "support/samples.h"
#include "support/text_lines.h"

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

/// Every kind of a family by its word. \return the words, as they stand in the registry
template <class TFamily>
static std::string kindsOf()
{
    const CKindRegistry<TFamily>& registry = CKindRegistry<TFamily>::instance();
    std::string words;
    for (const QString& word : registry.words()) {
        words += (words.empty() ? "" : ", ") + word.toStdString();
        EXPECT_TRUE(registry.knows(word));
        const std::unique_ptr<TFamily> made = registry.create(word);
        const std::unique_ptr<TFamily> copy = made->clone();
        EXPECT_EQ(made->kindWord(), word);
        EXPECT_EQ(copy->kindWord(), word);
        EXPECT_EQ(textLinesOf(*copy), textLinesOf(*made));
    }
    EXPECT_FALSE(registry.knows("unheard of"));
    EXPECT_EQ(registry.create("unheard of"), nullptr);
    return words;
}

TEST(Factories, everyKindIsMadeByItsWord)
{
    EXPECT_EQ(kindsOf<IFactoryVelocity>(), "fixed, linear, normal, random, spray");
    EXPECT_EQ(kindsOf<IFactoryAngVel>(), "fixed, linear, normal, random");
    EXPECT_EQ(kindsOf<IFactoryOrientation>(), "fixed, random");
    EXPECT_EQ(kindsOf<IFactorySize>(), "fixed, lognormal, normal, random, user defined");
    EXPECT_EQ(kindsOf<IFactoryPosition>(), "bcc, cubic, fcc, random");
    EXPECT_EQ(kindsOf<IFactoryType>(), "binary, fixed");
    EXPECT_EQ(kindsOf<IFactoryCustomPropertyParam>(), "fixed, initial, normal, random");
    EXPECT_EQ(kindsOf<ISizeDistribution>(), "fixed, lognormal, normal, random, user defined");
    for (const char* word : {"dynamic", "static"}) {
        const std::unique_ptr<CParticleFactory> made = createFactory(word, "feed");
        EXPECT_EQ(made->name, "feed");
        EXPECT_EQ(made->typeWord(), word);
        EXPECT_FALSE(made->isComplete());
    }
    for (const char* unknown : {"", "Dynamic", "library"})
        EXPECT_EQ(createFactory(unknown, "x"), nullptr) << unknown;
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
    SModel model;
    const auto factory = sample<CDynamicParticleFactory>(model);
    const std::unique_ptr<CParticleFactory> made = factory->clone();
    auto& copy = dynamic_cast<CDynamicParticleFactory&>(*made);
    // All that is told of it, but that its accounts are its own, and empty.
    factory->accounting = {};
    factory->typeAccounting.clear();
    EXPECT_EQ(textLinesOf(copy), textLinesOf(*factory));
    EXPECT_EQ(copy.createdSinceRateChange, factory->createdSinceRateChange);
    EXPECT_TRUE(copy.isMassGeneration());

    EXPECT_EQ(copy.position->factory, &copy);
    EXPECT_EQ(factory->position->factory, factory.get());
    EXPECT_EQ(dynamic_cast<const NNaryFactoryType&>(*copy.type).positionParam, copy.position.get());
    factory->sizes.at("Ball")->setNext(5.0);
    EXPECT_NE(copy.sizes.at("Ball")->next(), 5.0);
    addProperty(model.particle, "Wear", 0.0);
    EXPECT_EQ(copy.customParams.size(), model.particle.propertyCount());
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
