// verify finds every difference that is seeded into a deck, and names it by its path: first in a
// second legacy deck, then in a converted one, whose files are changed behind the library's back.
#include "support/legacy_deck.h"
#include "support/settings_entries.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <H5Cpp.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <functional>

namespace NBrenmark {

namespace {

using Json = nlohmann::json;

constexpr quint32 version = makeVersion(27, 0, 3);

/// All that a seed may change before the deck is written.
struct SSeededDeck
{
    SDeckCreator creator = sampleCreator();
    std::vector<SDeckTimestep> timesteps;
    std::vector<SSettingsProperty> particleProperties{{"Heat", 0, 2, 0, {1, 2}}};
    QString queryAttribute = "Velocity";
    qint32 pickedId = 9;
    CBytes unreadSelection = CBytes::garbage(60);
    SampleVectors fieldPoints{{0, 0, 0}, {1, 2, 3}};
    QString fieldName = "air";
    std::vector<std::string> configuration{"PROCESSOR:STEP=DOUBLE:1e-05", "SITE:NOTE=STD STRING:kept"};
    QByteArray companion = "anything";

    SSeededDeck()
    {
        for (const double time : {0.1, 0.2, 0.3})
            timesteps.push_back(sampleTimestep(time));
        for (SDeckTimestep& t : timesteps)
            for (SDeckParticleType& type : t.particles.types)
                type.properties = {{makeDeckValues(t.time, type.rows.count, 2)}, type.rows.count};
        creator.particles.types[0].properties = {{makeDeckValues(0, 0, 2)}, 0};
        creator.particles.types[1].properties = creator.particles.types[0].properties;
    }

    std::string write(const CTempFolder& folder, const QString& name) const
    {
        CLegacyDeck deck(version);
        deck.creator(creator);
        for (const SDeckTimestep& t : timesteps)
            deck.timestep(t);
        settings().toFile(folder.path(name + ".ess"));
        configurationFile("27.0.0", configuration).toFile(folder.path(name + ".dfg"));
        if (!companion.isNull())
            folder.write(name + ".ptf", companion);
        return argument(deck.write(folder.path(), name));
    }

    CBytes settings() const
    {
        const CBytes queries = queryMapBytes({{"S", {CBytes().text("Average") + queryBytes(queryAttribute)}}});
        const CBytes selections = CBytes().i32(2) + selectionHead("Manual Selection", "picked") +
                                  selectionBase(queries) + colourBytes(version) + CBytes().i32(1).i32(pickedId) +
                                  selectionHead("Lattice Bin Group", "unread") + unreadSelection;
        const CBytes fields = CBytes().i32(1) + fieldBytes(version, fieldName, 4, 3, fieldPoints, {{5}, {6}});
        // After the header and two blocks of nothing come the properties.
        const qint64 properties = settingsHeader(version).size() + 2 * settingsBlock(1, CBytes().i32(0)).size();
        return settingsHeader(version) + settingsBlock(eSelectionBlock, selections) +
               settingsBlock(eFieldBlock, fields) +
               settingsWith(version, 0, particleProperties, -1, {}).from(properties);
    }

    SDeckParticleType& ball() { return timesteps[1].particles.types[0]; }
};

/// Where the array of a fields bit begins among the rows of a type that aren't deflated.
qint64 arrayStart(const SDeckRows& rows, int bit)
{
    qint64 start = 0;
    for (int before = 0; before < bit; ++before)
        if (rows.fields >> before & 1)
            start += qint64(deckRowBytes(before)) * rows.count;
    return start;
}

/// Flips the lowest bit of one byte of an array.
void flip(SDeckParticleType& type, int bit, int byte)
{
    const qint64 place = arrayStart(type.rows, bit) + byte;
    QByteArray bytes = type.rows.arrays.bytes();
    bytes[static_cast<int>(place)] = static_cast<char>(bytes[static_cast<int>(place)] ^ 1);
    type.rows.arrays = CBytes(bytes);
}

struct SSeed
{
    const char* path;
    std::function<void(SSeededDeck&)> change;
};

const SSeed seeds[] = {
    {"timestep/1/particles/Ball/velocity", [](SSeededDeck& d) { flip(d.ball(), 1, 0); }},
    {"timestep/1/particles/Ball/position", [](SSeededDeck& d) { flip(d.ball(), 2, 24 * 60 - 8); }},
    {"timestep/1/particles/Ball/orientation", [](SSeededDeck& d) { flip(d.ball(), 3, 77); }},
    {"timestep/1/particles/Ball/angularVelocity", [](SSeededDeck& d) { flip(d.ball(), 4, 100); }},
    {"timestep/1/particles/Ball/scale", [](SSeededDeck& d) { flip(d.ball(), 5, 3); }},
    {"timestep/1/particles/Ball/forceTorque", [](SSeededDeck& d) { flip(d.ball(), 6, 56 * 60 - 1); }},
    {"timestep/1/particles/Ball/unscaledForceTorque", [](SSeededDeck& d) { flip(d.ball(), 7, 8); }},
    {"timestep/1/particles/Ball/externalForceTorque", [](SSeededDeck& d) { flip(d.ball(), 8, 56); }},
    {"timestep/1/particles/Ball/ids", [](SSeededDeck& d) { flip(d.ball(), 0, 1); }}, // + or - 256
    {"timestep/1/particles/Ball/properties/Heat", [](SSeededDeck& d) { d.ball().properties.lists[0].values[7] += 1; }},
    {"timestep/1/particles/Ball/materialName", [](SSeededDeck& d) { d.ball().materialName = "seed"; }},
    {"timestep/1/particles/Ball/rawMass", [](SSeededDeck& d) { d.ball().rawMass *= 1 + 1e-15; }},
    {"timestep/1/particles/Ball/rawVolume", [](SSeededDeck& d) { d.ball().rawVolume = 0; }},
    {"timestep/1/particles/Ball/rawInertia", [](SSeededDeck& d) { d.ball().rawInertia[2] = 0; }},
    {"timestep/1/particles/Ball/calculateProperties", [](SSeededDeck& d) { d.ball().calcProps = 0; }},
    {"timestep/1/particles/Ball/spheres/0/name", [](SSeededDeck& d) { d.ball().spheres[0].name = "x"; }},
    {"timestep/1/particles/Ball/spheres/0/position", [](SSeededDeck& d) { d.ball().spheres[0].position[0] = 1; }},
    {"timestep/1/particles/Ball/spheres/0/contactRadius",
     [](SSeededDeck& d) { d.ball().spheres[0].contactRadius = 1; }},
    {"timestep/1/particles/Ball/spheres/0/physicalRadius",
     [](SSeededDeck& d) { d.ball().spheres[0].physicalRadius = 1; }},
    {"timestep/1/particles/Ball", [](SSeededDeck& d) { d.ball().name = "Bull"; }},
    {"timestep/1/particles/maxId", [](SSeededDeck& d) { d.timesteps[1].particles.maxId = 99; }},

    {"timestep/1/time", [](SSeededDeck& d) { d.timesteps[1].time = 0.2000000001; }},
    {"timestep/1/elapsedTime", [](SSeededDeck& d) { d.timesteps[1].elapsedTime = 0; }},
    {"timestep/1/runNumber", [](SSeededDeck& d) { d.timesteps[1].runNumber = 0; }},
    {"timestep/1/isFull", [](SSeededDeck& d) { d.timesteps[1].isFull = 0; }},
    {"timestep/1/timestepMask", [](SSeededDeck& d) { d.timesteps[1].timestepMask = 127; }},
    {"timestep/1/geometryMask", [](SSeededDeck& d) { d.timesteps[1].geometryMask = 33; }},
    {"timestep/1/energy/total", [](SSeededDeck& d) { d.timesteps[1].energy.totals[0] = 0; }},
    {"timestep/1/energy/cumulative/kinetic", [](SSeededDeck& d) { d.timesteps[1].energy.kinetic = 0; }},
    {"timestep/1/energy/cumulative/lostThroughCapping",
     [](SSeededDeck& d) { d.timesteps[1].energy.lostThroughCapping = -0.0; }},
    {"timestep/1/removedParticles/Ball", [](SSeededDeck& d) { d.timesteps[1].removed[1].second = 3; }},
    {"timestep/1/removedParticles/Ball", [](SSeededDeck& d) { d.timesteps[1].removed.pop_back(); }},
    {"timestep/0", [](SSeededDeck& d) { d.timesteps.erase(d.timesteps.begin()); }},
    {"timestep/1", [](SSeededDeck& d) { d.timesteps.erase(d.timesteps.begin() + 1); }},
    {"timestep/2", [](SSeededDeck& d) { d.timesteps.pop_back(); }},
    {"timestep/3", [](SSeededDeck& d) { d.timesteps.push_back(sampleTimestep(0.4)); }},

    {"creator/title", [](SSeededDeck& d) { d.creator.title = "Kiste "; }},
    {"creator/description", [](SSeededDeck& d) { d.creator.description = ""; }},
    {"creator/damping", [](SSeededDeck& d) { d.creator.damping = 0; }},
    {"creator/gravity", [](SSeededDeck& d) { d.creator.gravity[2] = -9.8100000000000023; }}, // the next double
    {"creator/domain/max", [](SSeededDeck& d) { d.creator.domainMax[0] = 1; }},
    {"creator/domain/periodicX", [](SSeededDeck& d) { d.creator.periodic[0] = 1; }},
    {"creator/velocityLimit", [](SSeededDeck& d) { d.creator.limits.velocityLimit = 1; }},
    {"creator/materials/glass/density", [](SSeededDeck& d) { d.creator.materials[0].density = 2499; }},
    {"creator/materials/glass/workFunction", [](SSeededDeck& d) { d.creator.materials[0].workFunction = 0; }},
    {"creator/interactions/glass~seed/staticFriction",
     [](SSeededDeck& d) { d.creator.interactions[1].staticFriction = 0; }},
    {"creator/interactions/seed~seed", [](SSeededDeck& d) { d.creator.interactions.pop_back(); }},

    {"deck/settings/selections/picked/queries/0/0/primaryAttribute",
     [](SSeededDeck& d) { d.queryAttribute = "Torque"; }},
    {"deck/settings/selections/picked/manualIds/ids", [](SSeededDeck& d) { d.pickedId = 10; }},
    {"deck/settings/selectionsCarried/0/bytes",
     [](SSeededDeck& d) { d.unreadSelection = d.unreadSelection.with(30, CBytes().i8(0)); }},
    {"deck/settings/fields/air/positions/components", [](SSeededDeck& d) { d.fieldPoints[1][2] = 4; }},
    {"deck/settings/fields/air", [](SSeededDeck& d) { d.fieldName = "heir"; }},
    {"deck/settings/particleProperties/Heat/initialValues",
     [](SSeededDeck& d) { d.particleProperties[0].initialValues[1] = 3; }},
    {"deck/settings/particleProperties/Heat/unitsType", [](SSeededDeck& d) { d.particleProperties[0].units = 3; }},
    {"deck/settings/particleProperties/Wear",
     [](SSeededDeck& d) {
         d.particleProperties.push_back({"Wear", 0, 1, 0, {0}});
     }},
    {"deck/configuration/SITE/NOTE", [](SSeededDeck& d) { d.configuration[1] += "!"; }},
    {"deck/configuration/SITE/NOTE", [](SSeededDeck& d) { d.configuration.pop_back(); }},
    {"deck/configuration/PROCESSOR/STEP", [](SSeededDeck& d) { d.configuration[0] = "PROCESSOR:STEP=FLOAT:1e-05"; }},
    {"deck/companion/ptf", [](SSeededDeck& d) { d.companion[0] = 'A'; }},
    {"deck/companion", [](SSeededDeck& d) { d.companion = QByteArray(); }},
};

/// There is one difference, and it is at a path or right below it.
void expectFound(const SToolResult& result, const std::string& path)
{
    EXPECT_EQ(result.exitCode, 1) << result.error;
    const Json found = Json::parse(result.output);
    EXPECT_EQ(found["verdict"], "different");
    const Json& differences = found["differences"];
    EXPECT_EQ(differences.size(), 1u) << differences.dump(1);
    for (const Json& difference : differences) {
        const auto place = difference["place"].get<std::string>();
        EXPECT_TRUE(place == path || place.rfind(path + '/', 0) == 0) << difference.dump(1);
    }
}

} // namespace

class Seed : public testing::TestWithParam<SSeed>
{
};

TEST_P(Seed, isFoundAndNamedByItsPath)
{
    CTempFolder folder;
    SSeededDeck deck;
    for (SDeckTimestep& t : deck.timesteps) { // so that single bytes can be found again
        SDeckParticleType& ball = t.particles.types[0];
        ball.rows = makeDeckRows(1, ball.rows.count);
    }
    const std::string original = deck.write(folder, "original");
    GetParam().change(deck);
    const std::string seeded = deck.write(folder, "seeded");
    expectFound(runTool({"verify", "--json", original, seeded}), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(Table, Seed, testing::ValuesIn(seeds));

// ---------------------------------------------------------------- seeds in a converted deck

namespace {

/// A numbered file of a converted deck, opened to be changed behind the library's back.
class CStoredTimestep
{
public:
    explicit CStoredTimestep(const QString& path) : file(path.toStdString(), H5F_ACC_RDWR)
    {
        const H5::Group all = file.openGroup("/TimestepData");
        root = all.openGroup(all.getObjnameByIdx(0));
    }

    template <class TChange>
    void change(const std::string& path, TChange&& change)
    {
        H5::DataSet data = root.openDataSet(path);
        std::vector<char> bytes(data.getInMemDataSize());
        data.read(bytes.data(), data.getDataType());
        change(bytes);
        data.write(bytes.data(), data.getDataType());
    }
    template <class T>
    void attribute(const std::string& group, const char* name, T value)
    {
        H5::Attribute attribute = (group.empty() ? root : root.openGroup(group)).openAttribute(name);
        attribute.write(attribute.getDataType(), &value);
    }
    void remove(const std::string& path) { root.unlink(path); }

    H5::H5File file;
    H5::Group root;
};

void flipOneBit(std::vector<char>& bytes) { bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1); }

struct SStoredSeed
{
    const char* path;
    std::function<void(CStoredTimestep&)> change;
};

const SStoredSeed storedSeeds[] = {
    {"timestep/1/particles/Ball/velocity",
     [](CStoredTimestep& t) { t.change("ParticleTypes/0/velocity", flipOneBit); }},
    {"timestep/1/particles/Ball/ids", [](CStoredTimestep& t) { t.change("ParticleTypes/0/ids", flipOneBit); }},
    {"timestep/1/particles/Ball/forceTorque",
     [](CStoredTimestep& t) { t.change("ParticleTypes/0/force torque", flipOneBit); }},
    {"timestep/1/particles/Ball/creationTime",
     [](CStoredTimestep& t) { t.change("ParticleTypes/0/creation time", flipOneBit); }},
    {"timestep/1/particles/Ball/properties/Heat",
     [](CStoredTimestep& t) { t.change("ParticleTypes/0/CustomProperties/0/data", flipOneBit); }},
    {"timestep/1/particles/Ball/properties/Heat", // initial values in its place
     [](CStoredTimestep& t) { t.remove("ParticleTypes/0/CustomProperties/0"); }},
    {"timestep/1/particles/Ball/rawMass", [](CStoredTimestep& t) { t.attribute("ParticleTypes/0", "raw mass", 1.0); }},
    {"timestep/1/particles/Ball/surfaceBased",
     [](CStoredTimestep& t) { t.attribute("ParticleTypes/0", "surface based", 0); }},
    {"timestep/1/particles/maxId", [](CStoredTimestep& t) { t.attribute("ParticleTypes", "max id", 99); }},
    {"timestep/1/time", [](CStoredTimestep& t) { t.attribute("", "time", 0.2000000001); }},
    {"timestep/1/runNumber", [](CStoredTimestep& t) { t.attribute("", "run number", 4); }},
    {"timestep/1/particleMask", [](CStoredTimestep& t) { t.attribute("", "particle mask", 15); }},
    {"timestep/1/energy/kinetic", [](CStoredTimestep& t) { t.attribute("SystemEnergy", "kinetic energy", 0.0); }},
};

} // namespace

class StoredSeed : public testing::TestWithParam<SStoredSeed>
{
};

TEST_P(StoredSeed, isFoundInAConvertedDeck)
{
    CTempFolder folder;
    const std::string source = SSeededDeck().write(folder, "source");
    const std::string target = argument(folder.path("target.dem"));
    ASSERT_EQ(runTool({"convert", "--quiet", "--verify", source, target}).exitCode, 0);
    {
        CStoredTimestep stored(folder.path("target_data/1.h5"));
        GetParam().change(stored);
    }
    expectFound(runTool({"verify", "--json", source, target}), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(Table, StoredSeed, testing::ValuesIn(storedSeeds));

TEST(Verify, findsNothingBetweenADeckAndItselfAndIgnoresWhatBelongsToTheStoring)
{
    CTempFolder folder;
    SSeededDeck deck;
    const std::string original = deck.write(folder, "original");
    deck.creator.stamp.buildBranch = "elsewhere";
    for (SDeckTimestep& t : deck.timesteps) {
        t.date = "01/01/01";
        t.stamp.buildRevision = 1;
        t.particles.types[0].rows.deflated = false;
        t.particles.types[0].rows = makeDeckRows(1, t.particles.types[0].rows.count, deckFields, true);
    }
    const SToolResult result = runTool({"verify", original, deck.write(folder, "other")});
    EXPECT_EQ(result.exitCode, 0) << result.output;
    EXPECT_NE(result.output.find("3 timesteps compared"), std::string::npos);
    EXPECT_NE(result.output.find("no difference"), std::string::npos);
}

TEST(Verify, namesDifferencesUpToItsLimit)
{
    CTempFolder folder;
    SSeededDeck deck;
    const std::string original = deck.write(folder, "original");
    for (SDeckTimestep& t : deck.timesteps) {
        t.runNumber = 9;
        t.elapsedTime = 9;
    }
    const std::string other = deck.write(folder, "other");
    const auto run = [&](const char* limit) {
        return Json::parse(runTool({"verify", "--json", "--limit", limit, original, other}).output);
    };
    EXPECT_EQ(run("4")["differences"].size(), 4u);
    EXPECT_EQ(run("4")["more"], true);
    EXPECT_EQ(run("6")["differences"].size(), 6u);
    EXPECT_EQ(run("6")["more"], false);
    EXPECT_EQ(run("0")["differences"].size(), 6u);
}

TEST(Verify, saysWhichOfTheTwoCannotBeRead)
{
    CTempFolder folder;
    const std::string deck = SSeededDeck().write(folder, "deck");
    EXPECT_EQ(runTool({"verify", argument(folder.path("none.dem")), deck}).exitCode, 3);
    EXPECT_EQ(runTool({"verify", deck, argument(folder.path("none.dem"))}).exitCode, 4);
}

/// Where timesteps are large enough, another process reads those of the new deck while the next ones are converted, and the
/// converted deck while the source is read: what is said is the same as without, of a damaged deck too.
TEST(Verify, saysTheSameOfWhatAnotherProcessReadMeanwhile)
{
    const CTempFolder folder;
    SSeededDeck seeded;
    for (SDeckTimestep& t : seeded.timesteps) {
        t.particles.types[0].rows = makeDeckRows(1000, 100000);
        t.particles.types[0].properties = {{makeDeckValues(t.time, 100000, 2)}, 100000};
    }
    const std::string source = seeded.write(folder, "large");
    std::map<std::string, Json> said;
    for (const char* threads : {"1", "2"}) {
        const std::string target = argument(folder.path(threads));
        const SToolResult run =
            runTool({"convert", "--verify", "--json", "--verbose", "--threads", threads, source, target + ".dem"});
        ASSERT_EQ(run.exitCode, 0) << run.error;
        EXPECT_EQ(run.error.find(" read back meanwhile") != std::string::npos, threads[0] == '2') << run.error;
        said[threads] = Json::parse(run.output)["verification"];
        said[threads].erase("seconds");
        EXPECT_FALSE(QDir(folder.path(QString(threads) + ".dem.partial")).exists());
    }
    EXPECT_EQ(said["1"], said["2"]);
    EXPECT_EQ(said["1"]["verdict"], "equal");

    const auto verified = [&](const char* threads) {
        const SToolResult run =
            runTool({"verify", "--json", "--threads", threads, source, argument(folder.path("2.dem"))});
        Json result = Json::parse(run.output);
        result.erase("seconds");
        return result;
    };
    const Json equal = verified("2");
    EXPECT_EQ(equal["result"], "equal");
    EXPECT_EQ(equal, verified("1"));
    ASSERT_TRUE(QFile(folder.path("2_data/1.h5")).resize(5000)); // of which the other process gives no answer
    const Json different = verified("2");
    EXPECT_EQ(different["result"], "different");
    EXPECT_EQ(different, verified("1"));
}

} // namespace NBrenmark
