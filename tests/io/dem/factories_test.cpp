// Particle factories and their parameters, in a creator block and in a timestep: what each version stores,
// words that no one knows, and what is written.
#include "io/dem/dem_testing.h"
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
#include "model/geometry/geometry_group.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

namespace NBrenmark {

static constexpr quint32 current = makeVersion(30, 0, 20);

/// A deck's frame with one group, whose factories these are.
class CFactoryDeck : public COwnFrame
{
public:
    void read(const std::vector<SDeckFactory>& factories, quint32 version)
    {
        group = sampleGroups()[1];
        group.index = 0;
        group.enclosed = 0.0;
        group.factories = factories;
        const CBytes bytes = groupListBytes(version, {group});
        EXPECT_EQ(consumedBy<CDemCreatorDataReader>(groups(), bytes + CBytes::garbage(64), version), bytes.size())
            << versionText(version).toStdString();
    }
    void readState(quint32 version)
    {
        const CBytes bytes = groupStateBytes(version, group);
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(groups(), bytes + CBytes::garbage(64), version), bytes.size())
            << versionText(version).toStdString();
    }
    GeometryGroups& groups() { return frame.creator.geometryGroups; }
    template <class TFactory = CParticleFactory>
    TFactory& factory(std::size_t number = 0)
    {
        return dynamic_cast<TFactory&>(*groups().at(0)->factories->factories.at(number));
    }

    SDeckGroup group;
};

// ---------------------------------------------------------------- factories

TEST(DemFactories, keepFourCountersOfAnyNumber)
{
    for (const int counters : {0, 2, 4, 6}) {
        SDeckFactory stored = deckFactory("A", "Ball");
        stored.counters.clear();
        for (int i = 0; i < counters; ++i)
            stored.counters.push_back(10 + i);
        CFactoryDeck deck;
        deck.read({stored}, makeVersion(27, 0, 3));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(deck.factory().counters[static_cast<std::size_t>(i)], i < counters ? 10u + i : 0u) << counters;
    }
}

TEST(DemFactories, areWrittenAsTheBuilderHasThem)
{
    std::vector<SDeckFactory> stored{deckFactory("A", "Ball"), deckFactory("B", "Oval")};
    stored[1].kind = "static";
    CFactoryDeck deck;
    deck.read(stored, current);
    deck.group.uniqueId = static_cast<int>(deck.groups().at(0)->uniqueId);
    EXPECT_EQ(firstDifference(groupListBytes(current, {deck.group}), writtenBy<CDemCreatorDataWriter>(deck.groups())),
              "");
    deck.readState(current);
    EXPECT_EQ(firstDifference(groupStateBytes(current, deck.group), writtenBy<CDemTimestepDataWriter>(deck.groups())),
              "");

    // With another time the accounts start anew.
    CByteStream target;
    target.stream.options.overrideTime = true;
    CDemTimestepDataWriter writer(target.stream);
    deck.groups().write(writer);
    for (SDeckFactory& factory : deck.group.factories)
        factory.account = {};
    EXPECT_EQ(firstDifference(groupStateBytes(current, deck.group), target.written()), "");
    EXPECT_EQ(deck.factory().accounting.massCreated, 1.5);
}

TEST(DemFactories, keepTheAccountsOfTypes)
{
    CDynamicParticleFactory factory;
    factory.typeAccounting["left from before"];
    const CBytes stored = CBytes().i32(9).i32(2).text("Ball").f64s({1, 2, 3}).text("Oval").f64s({4, 5, 6});
    CByteStream source(stored, makeVersion(30, 0, 0));
    CDemTimestepDataReader(source.stream).readDynamicParticleFactory(factory);
    EXPECT_EQ(source.stream.position(), stored.size());
    ASSERT_EQ(factory.typeAccounting.size(), 2u);
    EXPECT_EQ(factory.typeAccounting["Oval"].massCreated, 4.0);
    EXPECT_EQ(factory.typeAccounting["Oval"].massRemainder, 5.0);
    EXPECT_EQ(factory.typeAccounting["Oval"].massSinceRateChange, 6.0);
    CByteStream target;
    CDemTimestepDataWriter(target.stream).writeDynamicParticleFactory(factory);
    EXPECT_EQ(target.written(), stored);
}

// ---------------------------------------------------------------- parameters

/// Reads the bytes of a parameter alone. \return them written anew, at the current version
template <class TParam>
static CBytes throughReader(TParam& param, const CBytes& stored, quint32 version)
{
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(param, stored + CBytes::garbage(64), version), stored.size())
        << param.kindWord().toStdString() << ' ' << versionText(version).toStdString();
    return writtenBy<CDemCreatorDataWriter>(param);
}

template <class TParam>
static void expectTwins(const CBytes& stored, quint32 version = makeVersion(27, 0, 3))
{
    TParam param;
    EXPECT_EQ(firstDifference(stored, throughReader(param, stored, version)), "") << param.kindWord().toStdString();
}

TEST(DemFactoryParameters, haveTheSameBytesInBothDirections)
{
    expectTwins<CFixedFactoryVelocity>(CBytes().f64s({1, 2, 3}));
    expectTwins<CFixedFactoryAngVel>(CBytes().f64s({1, 2, 3}));
    expectTwins<CLinearFactoryVelocity>(CBytes().f64s({1, 2, 3, 4, 5, 6}));
    expectTwins<CLinearFactoryAngVel>(CBytes().f64s({1, 2, 3, 4, 5, 6}));
    expectTwins<CRandomFactoryVelocity>(CBytes().f64s({0.25, 0.75}));
    expectTwins<CRandomFactoryAngVel>(CBytes().f64s({0.25, 0.75}));
    expectTwins<CNormalFactoryVelocity>(CBytes().f64s({2, 0.125, 0, 0, -1}));
    expectTwins<CNormalFactoryAngVel>(CBytes().f64s({2, 0.125, 0, 0, -3}));
    expectTwins<CSprayFactoryVelocity>(CBytes().f64s({3, 0.25, 0.5, 0, 2, 0}));
    expectTwins<CFixedFactoryOrientation>(CBytes().f64s({0.5, 0.5, 0.5, 0.5}));
    expectTwins<CFixedFactoryType>(CBytes().text("Ball"));
    expectTwins<CBinaryFactoryType>(CBytes().i32(1).i32(3).text("a").text("b").text("c"));
    expectTwins<CRandomFactoryPosition>(CBytes().i32(1).f64s({0.4, 1.25, 1.5, 0.0625, 7, 8, 9, 0, 0, 1}));
    expectTwins<CFixedFactorySize>(CBytes().f64(1.25));
    expectTwins<CRandomFactorySize>(CBytes().f64s({0.5, 2}).i32(0));
    expectTwins<CNormalFactorySize>(CBytes().f64s({1, 0.0625, 0.75, 1.25}).i32(1).i32(0));
    expectTwins<CLogNormalFactorySize>(CBytes().f64s({0.5, 0.25, -1, 1.5}).i32(1).i32(1).i32(1));
    expectTwins<CUserDefinedFactorySize>(CBytes().i32(0).i32(2).f64s({0.5, 25, 1.5, 100}));
    expectTwins<CFixedValueCustomPropertyFactoryParam>(CBytes().i32(2).f64s({1, 2}));
    expectTwins<CRandomValueCustomPropertyFactoryParam>(CBytes().f64s({1, 2}));
    expectTwins<CNormalDistCustomPropertyFactoryParam>(CBytes().f64s({1, 2}));
    CBytes lattice;
    for (int i = 1; i <= 27; ++i)
        lattice.f64(i);
    expectTwins<CCubicFactoryPosition>(lattice);
    expectTwins<CBCCFactoryPosition>(lattice);
    expectTwins<CFCCFactoryPosition>(lattice);
}

template <class TParam>
static void expectNumbers(const CBytes& stored, const QString& text)
{
    TParam param;
    throughReader(param, stored, makeVersion(27, 0, 3));
    expectText(param, text);
}

TEST(DemFactoryParameters, keepEachNumberInItsPlace)
{
    expectNumbers<CSprayFactoryVelocity>(CBytes().f64s({3, 0.25, 0.5, 0, 2, 0}),
                                         "mean 3; deviation 0.25; sprayAngle 0.5; direction (0, 2, 0)");
    // The direction of a velocity is normalised, that of an angular velocity isn't.
    const CBytes normal = CBytes().f64s({2, 0.125, 0, 3, -4});
    expectNumbers<CNormalFactoryVelocity>(normal, "mean 2; deviation 0.125; direction (0, 0.6, -0.8)");
    expectNumbers<CNormalFactoryAngVel>(normal, "mean 2; deviation 0.125; direction (0, 3, -4)");
    // What is stored for the second number, 0.9, is dropped.
    expectNumbers<CRandomFactoryPosition>(CBytes().i32(1).f64s({0.9, 1.25, 1.5, 0.0625, 7, 8, 9, 0, 0, 1}),
                                          "style 1; densityFactor 0.4; multiFactor 1.25; maxAngle 1.5; separation "
                                          "0.0625; seedPosition (7, 8, 9); seedVector (0, 0, 1)");
    CBytes numbers;
    for (int i = 1; i <= 27; ++i)
        numbers.f64(i);
    expectNumbers<CCubicFactoryPosition>(
        numbers, "axisA (1, 2, 3); axisB (4, 5, 6); axisC (7, 8, 9); start (10, 11, 12); rotation (13, 14, 15); "
                 "cursor1 (16, 17, 18); cursor0 (19, 20, 21); cursor2 (22, 23, 24); cursor3 (25, 26, 27)");
    // By a third of a turn about the diagonal: x becomes y, y becomes z.
    expectNumbers<CFixedFactoryOrientation>(CBytes().f64s({0.5, 0.5, 0.5, 0.5}),
                                            "orientation (0, 0, 1, 1, 0, 0, 0, 1, 0)");
    expectNumbers<CLogNormalFactorySize>(
        CBytes().f64s({0.5, 0.25, -1, 1.5}).i32(0).i32(0).i32(1),
        "mean 0.5; deviation 0.25; lowerCap -1; upperCap 1.5; capped false; logMean false; radiusScaling true");
    // Equal sizes are one band, whose share is the later.
    expectNumbers<CUserDefinedFactorySize>(CBytes().i32(1).i32(3).f64s({1.5, 100, 0.5, 25, 0.5 * (1 + 1e-14), 30}),
                                           "bands f64[2,2] (0.5, 30) (1.5, 100)");
}

/// Bytes of a parameter in the version that has them first, and in the one before; and what comes of them.
struct SGateCase
{
    quint32 version;
    qint64 bytes;
    const char* text;
};

template <class TParam>
static void expectGates(const CBytes& whole, std::initializer_list<SGateCase> cases)
{
    for (const SGateCase& c : cases) {
        TParam param;
        throughReader(param, whole.first(c.bytes), c.version);
        expectText(param, c.text, versionText(c.version).toStdString());
    }
}

TEST(DemFactoryParameters, readWhatTheVersionStores)
{
    const CBytes numbers = CBytes().f64s({1, 0.5, 0.25, 0.75}).i32(1).i32(0);
    expectGates<CNormalFactorySize>(
        numbers, {{makeVersion(2, 4, 27), 16, "lowerCap 1e-05; upperCap 1; capped false; radiusScaling true"},
                  {makeVersion(2, 4, 28), 36, "lowerCap 0.25; upperCap 0.75; capped true; radiusScaling true"},
                  {makeVersion(2, 4, 48), 36, "lowerCap 0.25; upperCap 0.75; capped true; radiusScaling true"},
                  {makeVersion(2, 4, 49), 40, "mean 1; deviation 0.5; capped true; radiusScaling false"}});
    expectGates<CRandomFactorySize>(CBytes().f64s({1, 2}).i32(0), {{makeVersion(26, 255, 0), 16, "radiusScaling true"},
                                                                   {makeVersion(27, 0, 0), 20, "radiusScaling false"}});
    const CBytes direction = CBytes().f64s({1, 2, 0, 0, 1});
    for (const auto expectDirections : {expectGates<CNormalFactoryVelocity>, expectGates<CNormalFactoryAngVel>})
        expectDirections(direction, {{makeVersion(2, 4, 21), 16, "direction (1, 0, 0)"},
                                     {makeVersion(2, 4, 22), 40, "direction (0, 0, 1)"}});
    const char* const one = "values f64[1] 1";
    expectGates<CFixedValueCustomPropertyFactoryParam>(CBytes().f64(1), {{makeVersion(25, 0, 0), 8, one}});
    expectGates<CFixedValueCustomPropertyFactoryParam>(CBytes().i32(1).f64(1), {{makeVersion(25, 0, 1), 12, one}});
    expectGates<CBinaryFactoryType>(CBytes().i32(1).text("a").text("b"),
                                    {{makeVersion(24, 0, 27), 16, "names/1 \"b\""}});
    expectGates<CBinaryFactoryType>(CBytes().i32(1).i32(1).text("a"), {{makeVersion(24, 0, 28), 14, "names/0 \"a\""}});
    CBytes many;
    for (int i = 0; i < 30; ++i)
        many.f64(i);
    expectGates<CRandomFactoryPosition>(
        CBytes().i32(0) + many,
        {{makeVersion(2, 4, 21), 28,
          "separation 0; seedPosition (nan:7ff8000020000000, nan:7ff8000020000000, nan:7ff8000020000000); seedVector "
          "(1, 0, 0)"},
         {makeVersion(2, 4, 22), 76, "separation 0; seedPosition (3, 4, 5); seedVector (6, 7, 8)"},
         {makeVersion(2, 4, 32), 76, "separation 0; seedPosition (3, 4, 5); seedVector (6, 7, 8)"},
         {makeVersion(2, 4, 33), 84, "separation 3; seedPosition (4, 5, 6); seedVector (7, 8, 9)"}});
    expectGates<CFCCFactoryPosition>(
        many, {{makeVersion(2, 4, 20), 96,
                "rotation (0, 0, 0); cursor1 (0, 0, 0); cursor0 (nan:7ff8000020000000, nan:7ff8000020000000, "
                "nan:7ff8000020000000)"},
               {makeVersion(2, 4, 21), 168, "rotation (12, 13, 14); cursor0 (18, 19, 20); cursor2 (0, 0, 0)"},
               {makeVersion(2, 4, 30), 168, "rotation (12, 13, 14); cursor0 (18, 19, 20); cursor2 (0, 0, 0)"},
               {makeVersion(2, 4, 31), 216, "cursor1 (15, 16, 17); cursor2 (21, 22, 23); cursor3 (24, 25, 26)"}});
    CNormalFactorySize empty; // caps that would leave no size
    throughReader(empty, CBytes().f64s({1, 0.5, 0, 1e-26}).i32(1).i32(1), makeVersion(27, 0, 3));
    EXPECT_EQ(empty.sizeDistribution.lowerCap, 1e-5);
    EXPECT_EQ(empty.sizeDistribution.upperCap, 1.0);
}

TEST(DemFactories, shareOneSizeBefore30)
{
    SDeckFactory stored = deckFactory("A", "Ball");
    stored.type = {"binary", CBytes().i32(1).i32(2).text("Ball").text("Oval"), CBytes().i32(0)};
    stored.typeNames = {"Ball", "Oval"};
    // Two bands; in a timestep three numbers for each.
    stored.size = {"user defined", CBytes().i32(1).i32(2).f64s({0.5, 25, 1.5, 100}),
                   CBytes().i32(6).f64s({1, 2, 3, 4, 5, 6})};
    for (const quint32 version : {makeVersion(27, 0, 3), current}) {
        CFactoryDeck deck;
        deck.read({stored}, version);
        deck.readState(version);
        const CParticleFactory& factory = deck.factory();
        EXPECT_EQ(factory.sizes.size(), 2u);
        EXPECT_NE(factory.sizes.at("Ball"), factory.sizes.at("Oval"));
        for (const char* name : {"Ball", "Oval"}) {
            auto& size = dynamic_cast<CUserDefinedFactorySize&>(*factory.sizes.at(name));
            EXPECT_EQ(size.sizeDistribution.bands.at(0.5), 25.0);
            ASSERT_EQ(size.bandAccounting.size(), 2u);
            EXPECT_EQ(size.bandAccounting.at(1.5).massCreated, 4.0);
            EXPECT_EQ(size.bandAccounting.at(1.5).massRemainder, 5.0);
            EXPECT_EQ(size.bandAccounting.at(0.5).massSinceRateChange, 3.0);
        }
        EXPECT_EQ(dynamic_cast<const CBinaryFactoryType&>(*factory.type).next, 0);
        if (version == current) {
            EXPECT_EQ(
                firstDifference(groupStateBytes(current, deck.group), writtenBy<CDemTimestepDataWriter>(deck.groups())),
                "");
        }
    }
}

TEST(DemFactories, takeWhatNumbersTheBandsHave)
{
    for (const auto& [stored, created, messages] : {std::tuple(CBytes().i32(0), 0.0, 0u),
                                                    {CBytes().i32(2).f64s({1, 2}), 2.0, 0u},
                                                    {CBytes().i32(3).f64s({1, 2, 3}), 0.0, 1u},
                                                    {CBytes().i32(8).f64s({1, 2, 3, 4, 5, 6, 7, 8}), 0.0, 1u}}) {
        CUserDefinedFactorySize size;
        size.sizeDistribution.bands = {{0.5, 25.0}, {1.5, 100.0}};
        size.bandAccounting[1.5].massCreated = 99.0; // of another timestep
        const CLogCapture log;
        EXPECT_EQ(consumedBy<CDemTimestepDataReader>(size, stored), stored.size());
        EXPECT_EQ(size.bandAccounting.at(1.5).massCreated, created);
        EXPECT_EQ(log.count(), messages) << log.text();
    }
}

TEST(DemFactories, keepTheWalkThroughALattice)
{
    CBytes numbers;
    for (int i = 1; i <= 27; ++i)
        numbers.f64(i);
    for (const char* kind : {"cubic", "bcc", "fcc"}) {
        SDeckFactory stored = deckFactory("A", "Ball");
        stored.position = {kind, numbers, CBytes().f64s({31, 32, 33, 34, 35, 36, 37, 38, 39})};
        CFactoryDeck deck;
        deck.read({stored}, makeVersion(27, 0, 3));
        deck.readState(makeVersion(27, 0, 3));
        auto& lattice = dynamic_cast<C3DLattice&>(*deck.factory().position);
        expectText(lattice, "cursor2 (31, 32, 33); cursor3 (34, 35, 36); cursor1 (37, 38, 39); cursor0 (19, 20, 21)",
                   kind);
        EXPECT_EQ(lattice.factory, &deck.factory());
    }
}

// ---------------------------------------------------------------- custom properties

TEST(DemFactories, giveCustomPropertiesTheirValues)
{
    SDeckFactory stored = deckFactory("A", "Ball");
    stored.customParams = {{"Temperature", "random", CBytes().f64s({280, 300})},
                           {"Wear", "fixed", CBytes().i32(2).f64s({4, 5})}};
    CFactoryDeck deck;
    finalizeProperty(deck.particle, "Temperature", {293.0});
    finalizeProperty(deck.particle, "Wear", {1.0, 2.0});
    finalizeProperty(deck.particle, "Wet", {6.0});
    deck.read({stored}, makeVersion(27, 0, 3));
    ASSERT_EQ(deck.factory().customParams.size(), 3u);
    // Of the factory that was read last.
    const auto paramOf = [&](const char* name) {
        return deck.factory().customParams.at(deck.particle.property(name)->id).get();
    };
    const auto* const temperature = dynamic_cast<CRandomValueCustomPropertyFactoryParam*>(paramOf("Temperature"));
    ASSERT_NE(temperature, nullptr);
    EXPECT_EQ(temperature->distribution.max, 300.0);
    const auto valuesOf = [&](const char* name) {
        return dynamic_cast<CFixedValueCustomPropertyFactoryParam&>(*paramOf(name)).values;
    };
    EXPECT_EQ(valuesOf("Wear"), (std::vector<double>{4, 5}));
    EXPECT_EQ(valuesOf("Wet"), std::vector<double>{6}); // its initial value

    // One number for all elements before 25.0.1; "initial" is the word of a fixed one before 25.0.0.
    stored.customParams = {{"Wear", "fixed", CBytes().f64(8)}, {"Temperature", "initial", CBytes().f64(300)}};
    deck.read({stored}, makeVersion(24, 255, 0));
    EXPECT_EQ(valuesOf("Wear"), (std::vector<double>{8, 8}));
    EXPECT_EQ(valuesOf("Temperature"), std::vector<double>{300});
    stored.customParams[1].stored = {};
    deck.read({stored}, makeVersion(25, 0, 0));
    EXPECT_EQ(paramOf("Temperature")->kindWord(), "initial");

    // Values that the definition has no place for, or that are missing.
    for (const int count : {1, 3}) {
        stored.customParams = {{"Wear", "fixed", CBytes().i32(count).f64s({4, 5, 6}).first(4 + 8 * count)}};
        const CLogCapture log;
        deck.read({stored}, makeVersion(27, 0, 3));
        EXPECT_EQ(valuesOf("Wear"), (std::vector<double>{4, count == 1 ? 2.0 : 5.0}));
        EXPECT_EQ(log.count(), 1u) << log.text();
    }
}

TEST(DemFactories, endTheirListAtAnUndefinedProperty)
{
    SDeckFactory stored = deckFactory("A", "Ball");
    stored.customParams = {{"Wear", "normal", CBytes().f64s({4, 5})},
                           {"Lost", "fixed", CBytes().i32(2).f64s({4, 5})},
                           {"Wear", "initial", {}},
                           {"Wear", "random", CBytes().f64s({4, 5})}};
    CFactoryDeck deck;
    finalizeProperty(deck.particle, "Wear", {1.0});
    const CLogCapture log;
    deck.read({stored, deckFactory("B", "Ball")}, makeVersion(27, 0, 3));
    EXPECT_EQ(deck.factory().customParams.begin()->second->kindWord(), "normal");
    EXPECT_EQ(deck.factory().counters[0], 4u);
    EXPECT_EQ(deck.factory(1).name, "B");
    EXPECT_EQ(log.count(), 1u);
    EXPECT_NE(log.text().find("factory \"A\": custom parameters from the one of the undefined property \"Lost\" on"),
              std::string::npos)
        << log.text();
}

TEST(DemFactories, turnTheOldChargeIntoAParameter)
{
    struct SChargeCase
    {
        const char* kind;
        CBytes stored;
        std::array<double, 5> numbers; ///< fixed, least, greatest, mean, deviation
    };
    const SChargeCase cases[] = {{"fixed", CBytes().f64(6), {6, 0, 1, 0, 0}},
                                 {"random", CBytes().f64s({7, 8}), {0, 7, 8, 0, 0}},
                                 {"normal", CBytes().f64s({9, 10}), {0, 0, 1, 9, 10}},
                                 {"", {}, {0, 0, 1, 0, 0}}};
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(26, 0, 0), makeVersion(26, 0, 1)})
        for (const SChargeCase& c : cases) {
            SDeckFactory stored = deckFactory("A", "Ball");
            stored.charge = CBytes().text(c.kind) + c.stored;
            CFactoryDeck deck;
            finalizeProperty(deck.particle, "Charge", {0.0});
            deck.read({stored}, version);
            const bool isStored = version <= makeVersion(26, 0, 0);
            const auto& charge = deck.factory().electrostatic;
            EXPECT_EQ((std::array{charge.fixedValue, charge.randomMin, charge.randomMax, charge.normalMean,
                                  charge.normalDeviation}),
                      isStored ? c.numbers : cases[3].numbers)
                << c.kind << ' ' << versionText(version).toStdString();
            EXPECT_EQ(deck.factory().customParams.begin()->second->kindWord(),
                      isStored && *c.kind != '\0' ? c.kind : "fixed");
        }
}

// ---------------------------------------------------------------- damage

TEST(DemFactories, thatNoOneKnowsAreSkippedAndReported)
{
    const CBytes stored =
        CBytes().i32(2).text("plug-in").text("P") + factoryBytes(makeVersion(27, 0, 3), deckFactory("", "Ball"));
    CParticleFactoryList list;
    const CLogCapture log;
    EXPECT_EQ(consumedBy<CDemCreatorDataReader>(list, stored, makeVersion(27, 0, 3)), stored.size());
    ASSERT_EQ(list.factories.size(), 1u);
    EXPECT_EQ(list.factories[0]->name, "Unnamed Factory");
    EXPECT_NE(log.text().find("factory \"P\" of the unknown kind \"plug-in\" skipped"), std::string::npos);
}

TEST(DemFactories, skipParametersOfUnknownKind)
{
    SDeckFactory stored = deckFactory("A", "Ball");
    stored.velocity = {"chaotic", {}, {}};
    stored.size = {"huge", {}, {}};
    stored.orientation = {"upside down", {}, {}};
    stored.position = {"elsewhere", {}, {}};
    CFactoryDeck deck;
    const CLogCapture log;
    deck.read({stored}, makeVersion(27, 0, 3));
    deck.readState(makeVersion(27, 0, 3));
    EXPECT_EQ(deck.factory().velocity, nullptr);
    EXPECT_EQ(deck.factory().position, nullptr);
    EXPECT_TRUE(deck.factory().sizes.empty());
    EXPECT_EQ(deck.factory().creationCount, 7u);
    EXPECT_EQ(log.count(), 4u) << log.text();
    EXPECT_NE(log.text().find("factory \"A\": velocity of the unknown kind \"chaotic\" skipped"), std::string::npos);
    EXPECT_GT(writtenBy<CDemCreatorDataWriter>(deck.groups()).size(), 0);
}

TEST(DemFactories, reportTypesThatArentThere)
{
    SDeckCreator creator = sampleCreator();
    creator.groups = {sampleGroups()[1]};
    creator.groups[0].factories = {deckFactory("A", "Ball"), deckFactory("B", "Cube")};
    COwnFrame own;
    const CLogCapture log;
    consumedBy<CDemCreatorDataReader>(own.frame.creator, creatorBytes(makeVersion(27, 0, 3), creator));
    EXPECT_EQ(own.frame.creator.geometryGroups.count(), 1u);
    EXPECT_NE(log.text().find("factory \"B\" creates particles of the type \"Cube\", which isn't there"),
              std::string::npos)
        << log.text();
    EXPECT_EQ(log.text().find("factory \"A\""), std::string::npos);
}

TEST(DemFactories, refuseASizeOfAnUnknownTypeInATimestep)
{
    CFactoryDeck deck;
    deck.read({deckFactory("A", "Ball")}, current);
    deck.group.factories[0].typeNames = {"Cube"};
    const CBytes bytes = groupStateBytes(current, deck.group);
    try {
        consumedBy<CDemTimestepDataReader>(deck.groups(), bytes, current);
        FAIL() << "the size was taken";
    }
    catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid map<K, T> key");
    }
}

// ---------------------------------------------------------------- plug-in factories

TEST(DemPluginFactories, thatCantBeBoundKeepTheirNames)
{
    const std::vector<SDeckPluginFactory> stored{{"library", "Feeder", "libfeeder"}, {"", "Grid", "none"}};
    for (const quint32 version : {makeVersion(20, 0, 16), makeVersion(22, 255, 0), makeVersion(23, 0, 0), current}) {
        const CBytes bytes = pluginFactoryBytes(version, stored);
        CPluginParticleFactoryList list;
        clearLogOnceMemory();
        const CLogCapture log;
        for (int timestep = 0; timestep < 2; ++timestep)
            EXPECT_EQ(consumedBy<CDemTimestepDataReader>(list, bytes + CBytes::garbage(16), version), bytes.size());
        EXPECT_EQ(list.count(), 0u);
        EXPECT_EQ(log.count(), 2u) << log.text();
        const std::string library = version < makeVersion(23, 0, 0) ? "Feeder" : "libfeeder";
        const std::vector<SPluginFactoryEntry> kept{{"Feeder", QString::fromStdString(library)}};
        EXPECT_EQ(list.entries(), kept);
        for (const std::string& told :
             {"plug-in factory \"Feeder\" of the library \"" + library + "\" isn't known here",
              std::string("factory \"Grid\" of the kind \"\"")})
            EXPECT_NE(log.text().find(told), std::string::npos) << log.text();
    }
    CPluginParticleFactoryList list;
    EXPECT_THROW(consumedBy<CDemTimestepDataReader>(list, CBytes().i32(2).text("").text("")), std::length_error);
}

} // namespace NBrenmark
