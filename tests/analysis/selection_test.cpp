// Selections: every class in every layout, byte for byte; and those of other programs, of which nothing is lost.

#include "analysis/entry_stream.h"
#include "analysis/region_selections.h"
#include "analysis/selection_kinds.h"
#include "analysis/selection_map.h"
#include "core/deck/simulation_settings.h"
#include "model/geometry/box.h"
#include "model/geometry_groups.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/old_deck.h"
#include "support/paths.h"
#include "support/settings_entries.h"

#include <gtest/gtest.h>

namespace NBrenmark::NSelection {
namespace {

/// The map of a block, as the settings file hands it to be read.
class CReadMap
{
public:
    explicit CReadMap(const CBytes& block, quint32 version = current, quint32 edition = 0, int after = 20)
    {
        SSource source(block + CBytes::garbage(after), version);
        source.stream.edition = edition;
        source.stream.setLimit(block.size());
        CLogCapture log;
        result = map.read(source.stream, nullptr);
        consumed = source.buffer.pos();
        logText = log.text();
    }

    template <class TSelection>
    TSelection& at(const char* name) const
    {
        return dynamic_cast<TSelection&>(*map.selection(name));
    }

    CSelectionMap map;
    bool result = false;
    qint64 consumed = 0;
    std::string logText;
};

const CBytes noQueries = CBytes().i32(0);
const CBytes oneQuery = queryMapBytes({{"S", {CBytes().text("Average") + queryBytes()}}});

CBytes boxBytes() { return CBytes().i32(2).i32(3).i32(4).f64s({1, 2, 3}).f64s({4, 6, 8}).f64s({0.1, 0.2, 0.3}); }
CBytes primitiveBytes()
{
    return CBytes().i32(2).f64s({1, 2, 3, 4, 5, 6, 7, 8, 9}).f64s({0.5, 0.25}).f64s({1, 1, 2, 3, 5, 8}).i32(48);
}

/// A selection of each class in the layout that is written: its word and what comes after colour and opacity.
const std::vector<std::pair<const char*, CBytes>> classes = {
    {"Manual Selection", CBytes().i32(3).i32(-4).i32(5).i32(60)},
    {"Lattice Bin Group", regionBytes() + boxBytes()},
    {"CAD Template Bin Group", regionBytes() + CBytes().f64s({1, 2, 3, 4, 5, 6})},
    {"Primitive Geometry Bin", regionBytes() + primitiveBytes()},
    {"Primitive Mass Flow Sensor", regionBytes() + primitiveBytes()},
    {"Primitive Total Mass Sensor", regionBytes() + primitiveBytes()},
    {"Primitive Velocity Profile Sensor", regionBytes() + primitiveBytes()},
    {"Primitive Segregation Sensor", regionBytes() + primitiveBytes()},
    {"Primitive Bulk Density Sensor", regionBytes() + primitiveBytes()},
};

TEST(SelectionMap, carriesEveryClassByteForByte)
{
    CBytes block = CBytes().i32(qint32(classes.size()));
    char name[] = "a";
    for (const auto& [typeId, added] : classes) {
        block += selectionHead(typeId, name) + selectionBase(oneQuery) + colourBytes(current) + added;
        ++name[0];
    }
    CReadMap read(block);
    EXPECT_TRUE(read.result);
    EXPECT_EQ(read.logText, "");
    EXPECT_EQ(read.consumed, block.size());
    EXPECT_FALSE(read.map.isModified());
    EXPECT_EQ(written(read.map), block);
    EXPECT_EQ(selectionTypeIds().size(), int(classes.size()));

    const auto& lattice = read.at<CLatticeSelection>("b");
    EXPECT_TRUE(lattice.active && lattice.isUpToDate);
    EXPECT_EQ(lattice.colour, QColor(200, 100, 50));
    EXPECT_EQ(lattice.opacity, 0.375);
    EXPECT_EQ(lattice.queries.queryCount(), 1);
    EXPECT_EQ(lattice.bins[2], 4);
    EXPECT_EQ(lattice.rotation, C3DPoint(0.1, 0.2, 0.3));
    EXPECT_EQ(CBytes(lattice.particleDisplay.bytes), displayBytes() + displayBytes());
    EXPECT_EQ(read.at<CManualSelection>("a").manualIds.ids, (std::set<qint32>{-4, 5, 60}));
    EXPECT_EQ(read.at<CPrimitiveSelection>("i").secondAxis, C3DPoint(7, 8, 9));

    // A block that ends elsewhere than its selections loses none of its bytes.
    for (qint64 length = 4; length < block.size(); length += 7) {
        CReadMap cut(block.first(length), current, 0, 0);
        ASSERT_EQ(cut.map.carried().selections().size(), 1u) << length;
        EXPECT_TRUE(block.first(length).bytes().endsWith(cut.map.carried().selections()[0].bytes)) << length;
    }
}

struct SLayoutCase
{
    quint32 version;
    quint32 edition;
    bool isTurned; ///< has a centre, a rotation and a second triple
};

TEST(SelectionMap, readsTheLayoutsOfBothEditions)
{
    const SLayoutCase cases[] = {
        {makeVersion(20, 0, 5), 0, false},  {makeVersion(26, 0, 9), 0, false},  {makeVersion(27, 0, 0), 0, false},
        {makeVersion(30, 0, 13), 0, false}, {makeVersion(30, 0, 14), 0, false}, {makeVersion(30, 0, 15), 0, true},
        {makeVersion(30, 0, 17), 0, true},  {makeVersion(30, 0, 18), 0, true},  {makeVersion(25, 0, 3), 1, false},
        {makeVersion(25, 0, 4), 1, true},   {makeVersion(30, 0, 14), 1, true},
    };
    for (const SLayoutCase& c : cases) {
        const std::string name = versionText(c.version).toStdString() + " edition " + std::to_string(c.edition);
        const CBytes base = selectionBase(oneQuery) + colourBytes(c.version);
        const CBytes oldLattice = CBytes()
                                      .text("hopper")
                                      .text("start")
                                      .text("end")
                                      .ascii("abc")
                                      .i32(12)
                                      .i32(2)
                                      .i32(3)
                                      .i32(4)
                                      .f64s({0, 0, 0})
                                      .f64s({2, 2, 2})
                                      .f64(0.5)
                                      .f64(1.5);
        const CBytes block = CBytes().i32(3) + selectionHead("CAD Template Bin Group", "cad") + base + regionBytes() +
                             (c.isTurned ? CBytes().f64s({1, 2, 3, 4, 5, 6}) : CBytes().f64s({1, 2, 3})) +
                             selectionHead("Lattice Bin Group", "lattice") + base +
                             (c.isTurned ? regionBytes() + boxBytes() : oldLattice) +
                             selectionHead("Manual Selection", "manual") + base + CBytes().i32(1).i32(9);
        const CReadMap read(block, c.version, c.edition);
        ASSERT_TRUE(read.result) << name << read.logText;
        EXPECT_EQ(read.consumed, block.size()) << name;
        const auto& lattice = read.at<CLatticeSelection>("lattice");
        EXPECT_EQ(lattice.centre, c.isTurned ? C3DPoint(1, 2, 3) : C3DPoint(1, 1, 1)) << name;
        EXPECT_EQ(lattice.bins[0], 2) << name;
        EXPECT_EQ(lattice.value2, 1.5) << name;
        EXPECT_EQ(lattice.sectionName, "hopper") << name;
        EXPECT_EQ(lattice.startPointName, c.version >= makeVersion(30, 0, 18) ? "start" : "") << name;
        EXPECT_EQ(lattice.colour.red(), c.version >= makeVersion(27, 0, 0) ? 200 : 0) << name;
        EXPECT_EQ(lattice.opacity, c.version >= makeVersion(30, 0, 14) ? 0.375 : 1.0) << name;
        EXPECT_EQ(read.at<CCadTemplateSelection>("cad").triple2, c.isTurned ? C3DPoint(4, 5, 6) : C3DPoint()) << name;
        EXPECT_EQ(read.at<CManualSelection>("manual").manualIds.ids.count(9), 1u) << name;
    }
}

TEST(SelectionMap, keepsTheGeometryOfARegion)
{
    CSelectionMap map;
    std::unique_ptr<CSelection> made = map.createSelection("Primitive Geometry Bin", "bin");
    auto& bin = dynamic_cast<CPrimitiveSelection&>(*made);
    bin.ownGeometry = std::make_shared<GeometryGroups>();
    auto box = std::make_unique<CBox>(nullptr);
    box->setName("Shell");
    box->setMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}, {0, 1, 3}});
    bin.ownGeometry->add(box.release(), true);
    bin.source = "behind it";
    ASSERT_TRUE(map.add(made));
    const quint32 nextId = GeometryGroups::nextUniqueId();

    const CBytes bytes = written(map);
    CReadMap again{bytes};
    ASSERT_TRUE(again.result) << again.logText;
    const auto& read = again.at<CPrimitiveSelection>("bin");
    ASSERT_NE(read.ownGeometry, nullptr);
    EXPECT_EQ(read.ownGeometry->at(0)->name, "Shell");
    EXPECT_EQ(read.ownGeometry->at(0)->coords[3], C3DPoint(0, 0, 1));
    EXPECT_EQ(read.source, "behind it");
    EXPECT_EQ(written(again.map), bytes);
    EXPECT_EQ(GeometryGroups::nextUniqueId(), nextId) << "the numbers of the deck's geometry stand still";
}

// Of the age of the settings file, whatever the deck's. Both builders have a "Drum" whose mesh has one corner at (0, 1, 0).
TEST(SelectionMap, readsTheGeometryOfRegionsOfEveryAge)
{
    std::vector<SDeckGroup> walls{sampleGroups()[1]};
    walls[0].index = 0;
    const auto wallsOf = [&](quint32 version) { return groupListBytes(version, walls); };
    const std::pair<quint32, CBytes> cases[] = {
        {makeVersion(2, 4, 2), oldGroupBytes(makeVersion(2, 4, 2))},
        {makeVersion(13, 0, 9), oldGroupBytes(makeVersion(13, 0, 9))},
        {makeVersion(20, 0, 9), oldGroupBytes(makeVersion(20, 0, 9))},
        {makeVersion(20, 0, 16), wallsOf(makeVersion(20, 0, 16))},
        {makeVersion(24, 0, 30), wallsOf(makeVersion(24, 0, 30))},
        {current, wallsOf(current)},
    };
    for (const auto& [version, groups] : cases) {
        const CBytes region = CBytes().i8(1) + groups + regionBytes().from(1);
        const CBytes block = CBytes().i32(1) + selectionHead("Primitive Geometry Bin", "bin") +
                             selectionBase(oneQuery) + colourBytes(version) + region + primitiveBytes();
        const CReadMap read(block, version);
        ASSERT_TRUE(read.result) << read.logText;
        EXPECT_EQ(read.consumed, block.size());
        const auto& bin = read.at<CPrimitiveSelection>("bin");
        ASSERT_NE(bin.ownGeometry, nullptr);
        EXPECT_EQ(bin.ownGeometry->at(0)->name, "Drum");
        EXPECT_EQ(bin.ownGeometry->at(0)->coords[2], C3DPoint(0, 1, 0)) << versionText(version).toStdString();
        EXPECT_EQ(bin.secondAxis, C3DPoint(7, 8, 9));
    }
}

// ---------------------------------------------------------------- what can't be read

const CBytes plain = selectionBase(oneQuery) + colourBytes(current) + CBytes().i32(0);

struct SOddCase
{
    const char* told;
    CBytes selection;
};

// Between two sound selections one that isn't; the display options of the first hold what looks like a selection.
TEST(SelectionMap, carriesAnOddSelectionWholeAndReadsTheOthers)
{
    const CBytes other = filterListBytes() + oneQuery + colourBytes(current) + CBytes().i32(0);
    const CBytes lookAlike = CBytes::garbage(9) + selectionHead("Manual Selection", "x") + CBytes::garbage(9);
    const CBytes median = queryMapBytes({{"S", {CBytes().text("Median") + queryBytes()}}});
    const SOddCase cases[] = {
        {"", selectionHead("Manual Selection", "b") + plain},
        {"", CBytes().text("Manual Selection").text("b").text("inner").i8(0) + plain},
        {"", CBytes().text("Manual Selection").text(QString()).text(QString()).i8(0) + plain},
        {"", selectionHead("Manual Selection", QString(3000, 'n')) + plain},
        {"where its display options end can't", selectionHead("Manual Selection", "b") + CBytes::garbage(90)},
        {"where it", selectionHead("Manual Selection", "b") + selectionBase(median) + CBytes::garbage(24)},
        {"is of a class that isn't known here", selectionHead("Odd Selection", "b") + plain},
        {"has the name of an earlier one", selectionHead("Manual Selection", "a") + plain},
    };
    for (const SOddCase& c : cases) {
        const bool isOdd = *c.told != 0;
        const CBytes block = CBytes().i32(3) + selectionHead("Manual Selection", "a") + lookAlike + other +
                             c.selection + selectionHead("Lattice Bin Group", "z") + selectionBase(oneQuery) +
                             colourBytes(current) + regionBytes() + boxBytes();
        for (const quint32 edition : {0u, 1u}) {
            CReadMap read(block, current, edition);
            ASSERT_TRUE(read.result);
            EXPECT_EQ(read.consumed, block.size());
            EXPECT_EQ(read.map.count(true), isOdd ? 2 : 3) << c.told << read.logText;
            EXPECT_EQ(read.map.carried().selections().size(), isOdd ? 1u : 0u) << c.told;
            EXPECT_NE(read.logText.find(c.told), std::string::npos) << read.logText;
            EXPECT_EQ(CBytes(read.at<CManualSelection>("a").particleDisplay.bytes), lookAlike);
            EXPECT_EQ(read.at<CLatticeSelection>("z").bins[2], 4);
            if (!isOdd)
                continue;
            SSource carried(written(read.map.carried()));
            CCarriedSelections again;
            EXPECT_TRUE(again.read(carried.stream, nullptr));
            const auto& one = read.map.carried().selections()[0];
            EXPECT_TRUE(c.selection.bytes().endsWith(one.bytes));
            EXPECT_EQ(again.selections().size(), one.isAtHome ? 0u : 1u) << "the others are in the block itself";
            EXPECT_TRUE(!one.isAtHome || written(read.map) == block);
            read.map.clear(true); // as where a later block of selections is damaged: none is written half
            EXPECT_EQ(written(read.map), CBytes().i32(0)) << c.told;
        }
    }
}

// Zeros read as lists of nothing wherever they begin; the work of trying them all has to stay in proportion.
TEST(SelectionMap, reportsNothingOfWhatReadsInManyWays)
{
    for (const int megabytes : {1, 4}) {
        const CBytes zeros(QByteArray(megabytes << 20, 0));
        const CReadMap read(CBytes().i32(1) + selectionHead("Primitive Geometry Bin", "a") + zeros);
        ASSERT_EQ(read.map.carried().selections().size(), 1u);
        EXPECT_TRUE(CBytes(read.map.carried().selections()[0].bytes) == CBytes().text("a").i8(1) + zeros);
    }
}

// Numbers and words as a dump of the sample's bytes shows them.
TEST(SelectionMap, readsWhatAnotherProgramLeft)
{
    CSimulationSettingsAndData settings;
    ASSERT_TRUE(settings.loadSettings(QString::fromStdString(sampleDeck("selections-24.ess")), nullptr));
    const CSelectionMap& map = settings.selectionMap();
    EXPECT_EQ(map.count(true), 9);
    EXPECT_FALSE(map.carried().hasContent());
    const auto& sensor = dynamic_cast<CPrimitiveSelection&>(*map.selection("Bulk density"));
    EXPECT_EQ(sensor.particleDisplay.bytes.size(), 0x253 - 0xa5);
    ASSERT_EQ(sensor.filters.filters.size(), 1u);
    EXPECT_EQ(dynamic_cast<CTypeFilter&>(*sensor.filters.filters[0]).words[0], 7);
    ASSERT_EQ(sensor.queries.sections()["Averages"].size(), 1);
    const CQuery& query = *sensor.queries.sections()["Averages"][0];
    EXPECT_EQ(query.name(), "Density");
    EXPECT_EQ(query.primaryAttribute, "Position");
    EXPECT_EQ(query.group, "Group B");
    EXPECT_EQ(sensor.sectionName, "Drum");
    EXPECT_EQ(sensor.elementCount, 0x31);
    EXPECT_EQ(sensor.source, "trichter.stl");
    EXPECT_EQ(sensor.facets, 4);
}

// ---------------------------------------------------------------- the map

TEST(SelectionMap, carriesABlockThatCannotBeCut)
{
    const CBytes one = selectionHead("Manual Selection", "a") + plain;
    for (const CBytes& block : {CBytes().i32(0x7FFFFFFF) + one, CBytes().i32(-1), CBytes().i32(2) + one,
                                CBytes().i32(0) + one, CBytes().i32(1).text("Manual").i32(7)}) {
        CReadMap read(block);
        EXPECT_TRUE(read.result);
        EXPECT_EQ(read.map.count(true), 0);
        ASSERT_EQ(read.map.carried().selections().size(), 1u);
        EXPECT_EQ(CBytes(read.map.carried().selections()[0].bytes), block);
        SSource endless(block);
        EXPECT_THROW(read.map.read(endless.stream, nullptr), std::length_error) << "its end isn't known";
    }
    const CReadMap none(CBytes().i32(0));
    EXPECT_TRUE(none.result && none.logText.empty());
}

TEST(SelectionMap, renamesAndRemovesARegionWithItsElements)
{
    CSelectionMap map;
    for (const char* name : {"a", "b"}) {
        auto made = map.createSelection("Lattice Bin Group", name);
        ASSERT_TRUE(map.add(made));
    }
    auto& region = dynamic_cast<CGeometricRegionSelection&>(*map.selection("a"));
    region.particleDisplay.bytes = "mine";
    ASSERT_NE(map.createSubSelection(region, "a 1", 0), nullptr);
    EXPECT_EQ(map.count(true), 3);
    EXPECT_EQ(map.count(false), 2);
    CLogCapture log;
    EXPECT_EQ(map.createSubSelection(region, "b", 1), nullptr);
    EXPECT_FALSE(map.rename("a", "b"));
    EXPECT_NE(log.text().find("Cannot rename a. The name b is already in use."), std::string::npos);
    EXPECT_FALSE(map.rename("none", "c"));
    EXPECT_FALSE(map.rename("a", ""));
    map.setModified(false);
    ASSERT_TRUE(map.rename("a", "c"));
    EXPECT_TRUE(map.isModified());
    EXPECT_EQ(map.selection("c")->name, "c");
    EXPECT_EQ(map.selection("c")->particleDisplay.bytes, QByteArray("mine"));

    EXPECT_EQ(CReadMap{written(map)}.map.count(true), 2) << "elements aren't stored";
    EXPECT_TRUE(map.remove("c"));
    EXPECT_EQ(map.count(true), 1);
    EXPECT_FALSE(map.remove("c"));
}

TEST(ManualSelection, isEditedAsItsIds)
{
    CDisplayOptions particle, contact;
    CManualSelection selection("a", particle, contact);
    CManualIdsParamData record;
    record.ids = {1, 2};
    EXPECT_TRUE(selection.setParamData(record));
    EXPECT_EQ(selection.manualIds.ids.size(), 2u);
    EXPECT_EQ(dynamic_cast<CManualIdsParamData&>(*selection.paramData()).ids, record.ids);
    for (qint32 kind = 0; kind < CSelection::idKinds; ++kind)
        EXPECT_EQ(selection.ids(kind).kind, kind);
}

} // namespace
} // namespace NBrenmark::NSelection
