// The six entries of a deck's settings file, in the forms that decks hold them.

#include "core/deck/simulation_settings.h"

#include "config/file_replacer.h"
#include "core/log.h"
#include "core/version.h"
#include "support/paths.h"
#include "support/settings_entries.h"
#include "support/settings_file.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

/// Loads a file, and keeps what the log was told.
class CLoaded
{
public:
    explicit CLoaded(const CBytes& bytes)
    {
        CPersistentLogger logger(eWarning);
        addLogModule(&logger);
        result = settings.loadSettings(folder.write("a.ess", bytes.bytes()), nullptr);
        clearLogModules();
        for (const SLogMessage& message : logger.messages())
            logText += std::get<2>(message) + "\n";
    }

    CTempFolder folder;
    CSimulationSettingsAndData settings;
    bool result = false;
    std::string logText;
};

const std::vector<SSettingsProperty> particleProperties = {
    {"Temperature", 0, 1, 20, {293.15}}, {"Is wet (film)", 1, 3, 0, {1, 0, 1}}, {"Not-used", 0, 2, 1, {1.0, 2.0}}};
const std::vector<SSettingsProperty> simulationProperties = {{"Run", 0, 1, 0, {4.5}}};

CBytes settingsWithAllEntries()
{
    const quint32 version = makeVersion(30, 0, 20);
    const CBytes selections = CBytes().i32(2) + selectionHead("Manual Selection", "picked") +
                              selectionBase(queryMapBytes({})) + colourBytes(version) + CBytes().i32(1).i32(9) +
                              selectionHead("Primitive Geometry Bin", "unread") + CBytes::garbage(90);
    const CBytes fields = CBytes().i32(1) + fieldBytes(version, "air", 4, 3, {{1, 2, 3}}, {{5}});
    const CBytes head = settingsHeader(version);
    const qint64 properties = head.size() + 2 * settingsBlock(1, CBytes().i32(0)).size();
    return head + settingsBlock(eSelectionBlock, selections) + settingsBlock(eFieldBlock, fields) +
           emptySettings(version).from(properties);
}

TEST(SimulationSettings, areCarriedByteForByteFromEveryVersion)
{
    const quint32 today = makeVersion(30, 0, 20);
    struct SCase
    {
        CBytes file;
        CBytes saved;
        const char* told;
    };
    std::vector<SCase> cases = {
        {settingsWith(makeVersion(27, 0, 3), 1, particleProperties, 0, simulationProperties),
         settingsWith(today, 1, particleProperties, 0, simulationProperties), ""},
        {settingsWithAllEntries(), settingsWithAllEntries(),
         "Selection \"unread\" (Primitive Geometry Bin): where its display options end can't be found out."},
    };
    for (const quint32 version :
         {makeVersion(3, 0, 15), makeVersion(21, 0, 4), makeVersion(27, 0, 1), makeVersion(27, 0, 2), today})
        cases.push_back({emptySettings(version), emptySettings(today), ""});
    for (const SCase& c : cases) {
        CLoaded loaded(c.file);
        EXPECT_TRUE(loaded.result);
        EXPECT_NE(loaded.logText.find(c.told), std::string::npos) << loaded.logText;
        EXPECT_EQ(loaded.logText.empty(), *c.told == 0) << loaded.logText;
        EXPECT_FALSE(loaded.settings.isDirty());
        EXPECT_TRUE(loaded.settings.saveSettings(loaded.folder.path("b.ess"), nullptr, true, true));
        EXPECT_TRUE(waitForCopies().empty());
        EXPECT_EQ(CBytes(loaded.folder.read("b.ess")), c.saved);
    }
}

// The entry that is damaged, and after it one that survives whatever happens to the first.
TEST(SimulationSettings, damageCostsItsEntryAloneAndIsReportedWithItsSize)
{
    struct SCase
    {
        const char* name;
        qint32 block;
        CBytes payload;
    };
    const quint32 version = makeVersion(27, 0, 3);
    const CBytes room = CBytes::garbage(100);
    const CBytes good = propertyPayload(version, 1, particleProperties);
    const CBytes twice = propertyPayload(version, 1, {particleProperties[0], particleProperties[0]});
    const SCase cases[] = {
        {"a field that is none", eFieldBlock, CBytes().i32(2).text("air_flow").i32(3).i32(3).i32(9) + room},
        {"2^31 fields", eFieldBlock, CBytes().i32(0x7FFFFFFF).text("air_flow").i32(3).i32(3) + room},
        {"a block of no one's", 77, room},
        {"a value cut short: the end marker begins in it", eParticlePropertyBlock, good.first(good.size() - 1)},
        {"2^31 properties", eParticlePropertyBlock, good.with(4, CBytes().i32(0x7FFFFFFF))},
        {"properties below zero", eParticlePropertyBlock, good.with(4, CBytes().i32(-1))},
        {"a name of 2^31 bytes", eParticlePropertyBlock, good.with(8, CBytes().i32(0x7FFFFFFE))},
        {"a letter that no name has", eParticlePropertyBlock, good.with(8, CBytes().text("Temp_rature"))},
        {"a name that is there twice", eParticlePropertyBlock, twice},
    };
    for (const SCase& c : cases) {
        CLoaded loaded(settingsHeader(version) + settingsBlock(eGeometryPropertyBlock, good) +
                       settingsBlock(c.block, c.payload) + settingsBlock(eSimulationPropertyBlock, good));
        EXPECT_TRUE(loaded.result) << c.name;
        EXPECT_NE(loaded.logText.find(std::to_string(c.payload.size()) + " bytes"), std::string::npos)
            << c.name << loaded.logText;
        EXPECT_EQ(loaded.logText.find("identifier 77") != std::string::npos, c.block == 77) << c.name;
        EXPECT_EQ(loaded.settings.selectionMap().count(true), 0) << c.name;
        EXPECT_TRUE(loaded.settings.fieldManager().fields().empty()) << c.name;
        const SPropertyManagers managers = loaded.settings.propertyManagers();
        EXPECT_EQ(managers.particle->propertyCount(), 0u) << c.name;
        EXPECT_EQ(managers.geometry->propertyCount(), 3u) << c.name;
        EXPECT_EQ(managers.simulation->propertyCount(), 3u) << c.name;
        EXPECT_TRUE(loaded.settings.isDirty()) << c.name;
    }
}

// The definitions as they stand in the sample's bytes.
TEST(SimulationSettings, ofARealDeck)
{
    CSimulationSettingsAndData settings;
    ASSERT_TRUE(settings.loadSettings(QString::fromStdString(sampleDeck("pile-27.ess")), nullptr));
    const CCustomPropertyManager& particle = settings.particleProperties();
    ASSERT_EQ(particle.propertyCount(), 3u);
    EXPECT_EQ(particle.finalizedCount(), 2u);
    EXPECT_EQ(particle.property("Temperature")->initialValue(0), 293.15);
    EXPECT_EQ(particle.property("Wear Depth")->numberOfElements, 3u);
    EXPECT_EQ(particle.property("Not yet used")->initialValue(1), 2.0);
    EXPECT_FALSE(settings.isDirty());
}

// The first and the last number of the points as they stand in the sample's bytes.
TEST(SimulationSettings, ofARealDeckWithFields)
{
    CSimulationSettingsAndData settings;
    ASSERT_TRUE(settings.loadSettings(QString::fromStdString(sampleDeck("settings-27.ess")), nullptr));
    EXPECT_FALSE(settings.isDirty());
    ASSERT_EQ(settings.fieldManager().fields().size(), 2u);
    const NField::CFieldData* const air = settings.fieldManager().getField("air_flow");
    ASSERT_NE(air, nullptr);
    EXPECT_EQ(settings.fieldManager().getField(3), air);
    EXPECT_EQ(air->getValueDimension(), 3u);
    ASSERT_EQ(air->positions().size(), 9u);
    EXPECT_EQ(air->positions()[0][0], 0.47298583148997897);
    EXPECT_EQ(air->values()[0][0], -1.7880942510621582);
    EXPECT_EQ(air->displayOptions.scale.chart.title, "chart");
    const NField::CFieldData* const heat = settings.fieldManager().getField("heat");
    ASSERT_NE(heat, nullptr);
    EXPECT_EQ(heat->plane, NField::ePlaneXZ);
    EXPECT_EQ(heat->positions().back().size(), 2u);
}

} // namespace
} // namespace NBrenmark
