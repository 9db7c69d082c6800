// Selections: every class in every layout, byte for byte; and those of other programs, of which nothing is lost.

#include "analysis/entry_stream.h"
#include "analysis/region_selections.h"
#include "analysis/selection_kinds.h"
#include "analysis/selection_map.h"
#include "core/progress.h"
#include "model/geometry/box.h"
#include "model/geometry_groups.h"
#include "support/log_capture.h"
#include "support/settings_entries.h"

#include <gtest/gtest.h>

namespace NBrenmark::NSelection {
namespace {

/// The map of a block, as the settings file hands it to be read.
class CReadMap
{
public:
    explicit CReadMap(const CBytes& block, quint32 version = current, quint32 edition = 0, int behind = 20)
    {
        SSource source(block + CBytes::garbage(behind), version);
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

/// A selection of each class in the layout that is written: its word and what stands behind colour and opacity.
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
    EXPECT_EQ(lattice.particleDisplay.texturePath, "steel.png");
    EXPECT_EQ(read.at<CManualSelection>("a").manualIds.ids, (std::set<qint32>{-4, 5, 60}));
    EXPECT_EQ(read.at<CPrimitiveSelection>("i").secondAxis, C3DPoint(7, 8, 9));

    for (qint64 length = 0; length < block.size(); ++length)
        EXPECT_THROW(CReadMap(block.first(length), current, 0, 0), std::exception) << length;
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
        const CBytes base = selectionBase(noQueries) + colourBytes(c.version);
        const CBytes oldLattice = CBytes()
                                      .text("hopper")
                                      .text("start")
                                      .text("end")
                                      .i32(3)
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

// ---------------------------------------------------------------- of other programs

/// Selections whose display options nobody here knows; the last one looks a little like two.
CBytes foreignBlock()
{
    return CBytes().i32(3) + selectionHead("Lattice Bin Group", "bins") + CBytes::garbage(300) +
           selectionHead("Manual Selection", "picked") + CBytes::garbage(50) + CBytes().text("Manual Selection") +
           CBytes::garbage(77) + selectionHead("Primitive Geometry Bin", "virtual") +
           CBytes().i32(0).text("a few bytes");
}

TEST(SelectionMap, carriesWhatOnlyAnotherProgramCanRead)
{
    CReadMap read(foreignBlock(), makeVersion(27, 0, 3), 1);
    ASSERT_TRUE(read.result) << read.logText;
    EXPECT_EQ(read.consumed, foreignBlock().size());
    ASSERT_EQ(read.map.count(true), 3);
    const auto& bins = read.at<CLatticeSelection>("bins");
    EXPECT_TRUE(bins.active);
    ASSERT_TRUE(bins.carried);
    EXPECT_EQ(CBytes(bins.carried->bytes), CBytes::garbage(300));
    EXPECT_EQ(CBytes(read.at<CPrimitiveSelection>("virtual").carried->bytes), CBytes().i32(0).text("a few bytes"));
    EXPECT_NE(read.logText.find("\"bins\" (Lattice Bin Group): the layout of its 300 bytes, of version 27.0.3"),
              std::string::npos)
        << read.logText;

    // A block of 30.0.20 must not hold them as they are: they go into records that say what they are.
    const CBytes record = CBytes().ascii("BSel").u32(makeVersion(27, 0, 3)).u32(1);
    const CBytes bytes = written(read.map);
    EXPECT_EQ(bytes.first(4 + 34 + 4 + 2 * 12 + 1), foreignBlock().first(4 + 34 + 4 + 2 * 12 + 1));
    EXPECT_TRUE(bytes.bytes().contains((record + CBytes().i32(300) + CBytes::garbage(300)).bytes()));
    CReadMap again(bytes);
    ASSERT_TRUE(again.result) << again.logText;
    EXPECT_EQ(again.logText, "") << "told when they were taken over";
    EXPECT_EQ(again.map.selection("picked")->carried->version, makeVersion(27, 0, 3));
    EXPECT_EQ(written(again.map), bytes);
}

TEST(SelectionMap, writesBytesOfTheCurrentVersionAsTheyWere)
{
    CReadMap read(foreignBlock());
    ASSERT_TRUE(read.result);
    EXPECT_EQ(written(read.map), foreignBlock());
    CReadMap otherEdition(foreignBlock(), current, 1);
    EXPECT_NE(written(otherEdition.map), foreignBlock());
}

TEST(SelectionMap, carriesNothingWhoseEndIsNotKnown)
{
    SSource source(foreignBlock());
    CSelectionMap map;
    EXPECT_THROW(map.read(source.stream, nullptr), std::exception);
}

// ---------------------------------------------------------------- the map

TEST(SelectionMap, refusesWhatItCannotTake)
{
    const CBytes good = selectionBase(noQueries) + colourBytes(current) + CBytes().i32(0);
    const std::pair<const char*, CBytes> cases[] = {
        {"Could not create selection (Unknown ID): manual selection",
         CBytes().i32(1) + selectionHead("manual selection", "a") + good},
        {"duplicate names): a", CBytes().i32(2) + selectionHead("Manual Selection", "a") + good +
                                    selectionHead("Manual Selection", "a") + good},
    };
    for (const auto& [told, block] : cases) {
        CReadMap read(block);
        EXPECT_FALSE(read.result) << told;
        EXPECT_NE(read.logText.find(told), std::string::npos) << read.logText;
    }
    EXPECT_THROW(CReadMap(CBytes().i32(0x7FFFFFFF) + good), std::length_error);
    CReadMap none(CBytes().i32(0));
    EXPECT_TRUE(none.result);
    EXPECT_FALSE(none.map.isModified());
    const CBytes filter = CBytes().i32(1).text("Colour Filter");
    EXPECT_THROW(CReadMap(CBytes().i32(1) + selectionHead("Manual Selection", "a") + displayBytes() + displayBytes() +
                          filter + good),
                 std::runtime_error);
}

TEST(SelectionMap, renamesAndRemovesARegionWithItsElements)
{
    CSelectionMap map;
    for (const char* name : {"a", "b"}) {
        auto made = map.createSelection("Lattice Bin Group", name);
        ASSERT_TRUE(map.add(made));
    }
    auto& region = dynamic_cast<CGeometricRegionSelection&>(*map.selection("a"));
    region.particleDisplay.texturePath = "mine";
    ASSERT_NE(map.createSubSelection(region, "a 1"), nullptr);
    EXPECT_EQ(map.count(true), 3);
    EXPECT_EQ(map.count(false), 2);
    CLogCapture log;
    EXPECT_EQ(map.createSubSelection(region, "b"), nullptr);
    EXPECT_FALSE(map.rename("a", "b"));
    EXPECT_NE(log.text().find("Cannot rename a. The name b is already in use."), std::string::npos);
    EXPECT_FALSE(map.rename("none", "c"));
    EXPECT_FALSE(map.rename("a", ""));
    map.setModified(false);
    ASSERT_TRUE(map.rename("a", "c"));
    EXPECT_TRUE(map.isModified());
    EXPECT_EQ(map.selection("c")->name, "c");
    EXPECT_EQ(map.selection("c")->particleDisplay.texturePath, "mine");

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
