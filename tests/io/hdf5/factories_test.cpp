// Particle factories, their parameters and size laws in files: what each looks like, and what becomes of names and
// words that can't be taken.
#include "io/hdf5/storable.h"
#include "model/creator_data.h"
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
#include "model/geometry/box.h"

#include "hdf5_sample.h"
#include "support/log_capture.h"
#include "support/text_lines.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace NBrenmark {

using CreatorReader = CHdf5CreatorDataReader;
using CreatorWriter = CHdf5CreatorDataWriter;
using TimestepReader = CHdf5TimestepDataReader;
using TimestepWriter = CHdf5TimestepDataWriter;
using Values = std::vector<double>;
using testing::HasSubstr;

static const std::string point = " {xyz@0 f64[3]} 24\n";

static CDynamicParticleFactory& addedFeeder(CParticleFactoryList& list)
{
    auto feeder = std::make_unique<CDynamicParticleFactory>();
    feeder->name = "Feeder";
    feeder->creationCount = 7;
    feeder->createdSinceRateChange = 3;
    feeder->counters = {1, 2, 3, 4};
    feeder->setVelocityKind("fixed");
    feeder->setSizeKind("Ball", "user defined");
    feeder->setOrientationKind("random");
    feeder->setAngVelKind("fixed");
    feeder->setTypeKind("binary", nullptr);
    feeder->type->setTypeNames({"Ball", "Rod"});
    feeder->setPositionKind("cubic");
    auto& size = dynamic_cast<CUserDefinedFactorySize&>(*feeder->sizes.at("Ball"));
    size.sizeDistribution.bands = {{0.25, 40.0}, {1.0 / 3.0, 100.0}};
    size.bandAccounting[1.0 / 3.0].massCreated = 5.0;
    feeder->typeAccounting["Ball"].massRemainder = 6.0;
    CDynamicParticleFactory& reference = *feeder;
    list.add(std::move(feeder));
    return reference;
}

static std::string account(const std::string& group, const char* created, const char* remainder)
{
    return group + "\n" + group + "@mass created f64 = " + created + "\n" + group +
           "@mass remainder f64 = " + remainder + "\n" + group + "@mass created since rate change f64 = 0\n";
}

TEST(FactoriesInHdf5, holdInATimestepHowFarTheyHaveCome)
{
    CParticleFactoryList list;
    addedFeeder(list).accounting.massCreated = 8.0;
    CHdf5Sample sample;
    const std::string f = "/Factories/Feeder/";
    const auto expected = [&](const char* all, const char* band, const char* type) {
        return "/\n/Factories/\n" + under(f, {"", "@creation count i32 = 7", "@created since rate change i32 = 3"}) +
               account(f + "Accounting/", all, "0") +
               under(f, {"Counters u32 {4} = 1 2 3 4", "FactAngVel/", "FactOrientation/", "FactPosition/",
                         "FactPosition/data f64 {4,3}", "FactSize/", "FactSize/Ball/"}) +
               account(f + "FactSize/Ball/0.333333/", band, "0") +
               under(f, {"FactType/", "FactType/@next i32 = 0", "FactVelocity/", "TypeAccounting/"}) +
               account(f + "TypeAccounting/Ball/", "0", type);
    };
    EXPECT_EQ(sample.tree<TimestepWriter>(list), expected("8", "5", "6"));
    // A time that is set anew begins with empty accounts.
    sample.options.overrideTime = true;
    EXPECT_EQ(sample.tree<TimestepWriter>(list), expected("0", "0", "0"));
}

TEST(FactoriesFromHdf5, comeBackWithTheAccountsOfTheTimestepAlone)
{
    CParticleFactoryList list;
    CDynamicParticleFactory& feeder = addedFeeder(list);
    CHdf5Sample creator, timestep;
    creator.tree<CreatorWriter>(list);
    timestep.tree<TimestepWriter>(list);
    CParticleFactoryList back;
    creator.read<CreatorReader>(back);
    auto& read = dynamic_cast<CDynamicParticleFactory&>(*back.find("Feeder"));
    EXPECT_EQ(read.createdSinceRateChange, 0u); // a definition starts a new rate
    read.typeAccounting["Rod"].massCreated = 1.0;
    timestep.read<TimestepReader>(back);
    EXPECT_EQ(read.createdSinceRateChange, 3u);
    EXPECT_EQ(read.typeAccounting.size(), 1u);
    EXPECT_EQ(read.typeAccounting.at("Ball").massRemainder, 6.0);
    // The name holds six digits of a band's size; the law knows them all.
    const auto& size = dynamic_cast<const CUserDefinedFactorySize&>(*read.sizes.at("Ball"));
    ASSERT_EQ(size.bandAccounting.size(), 1u);
    EXPECT_EQ(size.bandAccounting.begin()->first, 1.0 / 3.0);
    EXPECT_EQ(size.bandAccounting.begin()->second.massCreated, 5.0);
    EXPECT_EQ(read.counters, feeder.counters);
}

/// Rows of the nine vectors of a lattice: three edges, start, rotation, then the cursors 1, 0, 2 and 3.
TEST(FactoriesFromHdf5, walkOnThroughTheirLattice)
{
    double rows[9][3];
    for (int i = 0; i < 27; ++i)
        rows[i / 3][i % 3] = i;
    CBCCFactoryPosition lattice;
    CHdf5Sample creator;
    creator.write<CreatorWriter>([](CreatorWriter&) {});
    creator.change().dataset("/", "data", H5T_NATIVE_DOUBLE, {9, 3}, rows);
    creator.read<CreatorReader>(lattice);
    expectText(lattice, "axisC (6, 7, 8); start (9, 10, 11); rotation (12, 13, 14); cursor1 (15, 16, 17); "
                        "cursor0 (18, 19, 20); cursor3 (24, 25, 26)");

    CHdf5Sample timestep; // cursors 2, 3, 1 and 0
    timestep.write<TimestepWriter>([](TimestepWriter&) {});
    timestep.change().dataset("/", "data", H5T_NATIVE_DOUBLE, {4, 3}, rows);
    timestep.read<TimestepReader>(currentFileVersion(), [&](TimestepReader& reader) { reader.read3DLattice(lattice); });
    expectText(lattice, "cursor2 (0, 1, 2); cursor3 (3, 4, 5); cursor1 (6, 7, 8); cursor0 (9, 10, 11)");
}

// ---------------------------------------------------------------- single parameters

template <class TParameter>
static std::string treeOfParameter()
{
    return CHdf5Sample().tree<CreatorWriter>(TParameter());
}

TEST(ParametersInHdf5, ofCustomPropertiesStandByTheirNames)
{
    CCustomPropertyManager properties("Particle Properties", eParticleOwner);
    for (const char* name : {"Heat", "Wear"}) {
        auto property = std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, 2u, 0u, Values{3, 4});
        properties.addProperty(property);
    }
    CParticleFactoryList list;
    CDynamicParticleFactory& feeder = addedFeeder(list);
    feeder.connectCustomProperties(&properties);
    feeder.setCustomPropertyKind(properties.property("Wear"), "random");
    CHdf5Sample sample;
    const std::string c = "/Factories/Feeder/FactCustomParams/";
    EXPECT_THAT(sample.tree<CreatorWriter>(list),
                HasSubstr(under(c, {"", "0/", "0/@type string[6] = \"fixed\"", "0/@name string[5] = \"Heat\"",
                                    "0/data f64 {2} = 3 4", "1/", "1/@type string[7] = \"random\"",
                                    "1/@name string[5] = \"Wear\"", "1/@min f64 = 2", "1/@max f64 = 4"})));

    // Values that are missing stay initial, others are discarded.
    CParticleFactoryList back;
    back.customProperties = &properties;
    const auto paramOf = [&](const char* name) {
        return back.find("Feeder")->customParams.at(properties.property(name)->id).get();
    };
    const double values[] = {0.5, 0.25, 0.125};
    for (const hsize_t count : {1, 3}) {
        sample.change().without(c + "0/data").dataset(c + "0", "data", H5T_NATIVE_DOUBLE, {count}, values);
        CLogCapture log;
        sample.read<CreatorReader>(back);
        EXPECT_EQ(dynamic_cast<const CFixedValueCustomPropertyFactoryParam&>(*paramOf("Heat")).values,
                  (Values{0.5, count == 1 ? 4.0 : 0.25}));
        EXPECT_THAT(log.text(), HasSubstr("to the custom property \"Heat\", which has 2 elements"));
    }

    // One that the deck doesn't define costs itself.
    sample.change().text(c + "0", "name", "Age").attribute(c + "1", "max", H5T_NATIVE_DOUBLE, &values[0]);
    CLogCapture log;
    sample.read<CreatorReader>(back);
    EXPECT_THAT(log.text(), HasSubstr("custom property \"Age\" is skipped: no such property is known"));
    EXPECT_EQ(dynamic_cast<const CRandomValueCustomPropertyFactoryParam&>(*paramOf("Wear")).distribution.max, 0.5);
}

// ---------------------------------------------------------------- words and names

TEST(DamagedFactoriesOfHdf5, loseWhatIsNotKnown)
{
    CParticleFactoryList list;
    addedFeeder(list);
    auto pile = std::make_unique<CStaticParticleFactory>();
    pile->name = "Pile";
    list.add(std::move(pile));
    CHdf5Sample sample, timestep;
    sample.tree<CreatorWriter>(list);
    timestep.tree<TimestepWriter>(list);
    sample.change()
        .text("/Factories/Pile", "type", "conjured")
        .text("/Factories/Feeder/FactSize/Ball", "type", "huge")
        .text("/Factories/Feeder/FactVelocity", "type", "sideways")
        .withoutAttribute("/Factories/Feeder/FactAngVel", "type");
    CParticleFactoryList back;
    CLogCapture log;
    sample.read<CreatorReader>(back);
    ASSERT_EQ(back.factories.size(), 1u);
    EXPECT_EQ(back.factories[0]->velocity, nullptr);
    EXPECT_EQ(back.factories[0]->angVel, nullptr);
    EXPECT_NE(back.factories[0]->position, nullptr);
    EXPECT_THAT(log.text(), HasSubstr("factory \"Pile\" is skipped: no factory \"conjured\" is known"));
    EXPECT_THAT(log.text(), HasSubstr("no kind \"sideways\" is known"));
    EXPECT_THAT(log.text(), HasSubstr("no kind \"huge\" is known"));

    // What is known of the factory goes on, here and when both are written anew.
    const auto readState = [&] {
        back.factories[0]->creationCount = 0;
        timestep.read<TimestepReader>(back);
        EXPECT_EQ(back.factories[0]->creationCount, 7u);
    };
    readState();
    sample.tree<CreatorWriter>(back);
    timestep.tree<TimestepWriter>(back);
    sample.read<CreatorReader>(back);
    readState();
}

TEST(DamagedFactoriesOfHdf5, loseTheAccountOfABandThatHasTheNameOfAnother)
{
    CUserDefinedFactorySize size;
    size.bandAccounting[1.0].massCreated = 5.0;
    size.bandAccounting[1.0 + 1e-9].massCreated = 6.0;
    size.bandAccounting[2.0].massCreated = 7.0;
    CLogCapture log;
    EXPECT_EQ(CHdf5Sample().tree<TimestepWriter>(size), "/\n" + account("/1/", "5", "0") + account("/2/", "7", "0"));
    EXPECT_THAT(log.text(), HasSubstr("size band 1.0000000010000001 of a particle factory is dropped"));
}

TEST(DamagedFactoriesOfHdf5, endATimestepThatSizesATypeWithoutSize)
{
    CParticleFactoryList list;
    addedFeeder(list);
    CHdf5Sample sample;
    sample.tree<TimestepWriter>(list);
    sample.change().group("/Factories/Feeder/FactSize/Cube");
    EXPECT_EQ(sample.failure<TimestepReader>(list), "invalid map<K, T> key");

    CLogCapture log; // a factory that the model doesn't have costs its own state
    sample.tree<TimestepWriter>(list);
    CParticleFactoryList empty;
    sample.read<TimestepReader>(empty);
    EXPECT_THAT(log.text(), HasSubstr("factory \"Feeder\" is skipped: the model has no such factory"));
}

TEST(NamesInHdf5, thatNoGroupCanHaveAreRefusedBeforeAnythingIsWritten)
{
    struct SCase
    {
        std::function<void(CCreatorData&, CParticleFactoryList&)> make;
        const char* told; ///< empty if the name can be had
    };
    const auto named = [](const char* name) {
        return [name](CCreatorData&, CParticleFactoryList& list) {
            list.add(std::make_unique<CStaticParticleFactory>()).name = name;
        };
    };
    const SCase cases[] = {
        {named("Pile \xc3\xb8 (2)"), ""},
        {named(".."), ""},
        {named("a/b"), "A particle factory is named \"a/b\" in geometry group \"Kiste\""},
        {named("."), "A particle factory is named \".\""},
        {named(""), "A particle factory is named \"\""},
        {[](CCreatorData&, CParticleFactoryList& list) {
             for (int i = 0; i < 2; ++i)
                 list.add(std::make_unique<CStaticParticleFactory>()).name = "Pile";
         },
         "A particle factory is named \"Pile\" in geometry group \"Kiste\", and so is another one"},
        {[](CCreatorData&, CParticleFactoryList& list) {
             list.add(std::make_unique<CStaticParticleFactory>()).name = "Pile";
             list.factories[0]->setSizeKind("50/50", "fixed");
         },
         "A particle type with a size is named \"50/50\" in factory \"Pile\""},
        {[](CCreatorData& creator, CParticleFactoryList&) { creator.sizeDistributions.entries["50/50"]; },
         "A particle type with a size law is named \"50/50\""},
    };
    for (const SCase& c : cases) {
        CCreatorData creator{SPropertyManagers()};
        auto* const box = new CBox(nullptr);
        box->setName("Kiste");
        creator.geometryGroups.add(box, true);
        c.make(creator, *box->factories);
        std::string told;
        try {
            checkStorable(creator, {});
        }
        catch (const unstorable_error& error) {
            told = error.what();
        }
        EXPECT_EQ(told.empty(), *c.told == '\0') << told;
        EXPECT_THAT(told, HasSubstr(c.told));
    }
}

TEST(PluginFactoriesOfHdf5, keepTheirNames)
{
    CHdf5Sample sample;
    CPluginParticleFactoryList list;
    EXPECT_EQ(sample.tree<CreatorWriter>(list), "/\n/PluginFactories/\n");
    sample.change()
        .text("/PluginFactories/Regen", "type", "library")
        .text("/PluginFactories/Regen", "source", "rain")
        .text("/PluginFactories/Alt", "type", "built in");
    CLogCapture log;
    sample.read<CreatorReader>(list);
    EXPECT_EQ(log.count(), 2u);
    EXPECT_THAT(log.text(), HasSubstr("\"Alt\" of the kind \"built in\" isn't a plug-in: left out."));
    EXPECT_THAT(log.text(),
                HasSubstr("plug-in factory \"Regen\" of the library \"rain\" isn't known here; both names are kept."));

    // Written again they are there, but for names that no group can have, and for a second one of a name.
    for (const char* name : {"a/b", ".", "Regen"})
        list.keepUnbound("snow", name);
    clearLogOnceMemory();
    CHdf5Sample again;
    EXPECT_EQ(again.tree<CreatorWriter>(list), "/\n/PluginFactories/\n/PluginFactories/Regen/\n"
                                               "/PluginFactories/Regen/@type string[8] = \"library\"\n"
                                               "/PluginFactories/Regen/@source string[5] = \"rain\"\n");
    EXPECT_EQ(log.count(), 5u);
}

} // namespace NBrenmark
