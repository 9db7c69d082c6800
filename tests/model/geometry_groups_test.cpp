// The list of geometry groups: places, names, the chains of element ids, numbering anew, and the materials of groups
// in decks from before there were two kinds of them.
#include "model/geometry_groups.h"

#include "model/creator_data.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "physics/jkr.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <numeric>

namespace NBrenmark {

using Ids = std::vector<quint32>;

static CGeometryGroup* named(const QString& name, quint32 index = CGeometryGroup::notSet)
{
    auto* group = new CGeometryGroup(nullptr);
    group->setName(name);
    group->index = index;
    return group;
}

/// A strip of so many triangles, with two vertices more.
static void setStrip(CGeometryGroup& group, quint32 triangles)
{
    std::vector<C3DPoint> coords;
    std::vector<TriangleNodes> nodes;
    for (quint32 i = 0; i < triangles + 2; ++i)
        coords.emplace_back(0.5 * i, i % 2, 0);
    for (quint32 i = 0; i < triangles; ++i)
        nodes.push_back({i, i + 1, i + 2});
    group.setMesh(std::move(coords), std::move(nodes));
}

static Ids range(quint32 first, quint32 count)
{
    Ids ids(count);
    std::iota(ids.begin(), ids.end(), first);
    return ids;
}

// ---------------------------------------------------------------- places and names

TEST(GeometryGroups, aGroupGoesToItsPlaceOrTheFirstGap)
{
    CLogCapture log;
    GeometryGroups groups;
    groups.add(nullptr, false);
    groups.add(named("c", 2), false); // leaves gaps at 0 and 1
    EXPECT_EQ(groups.count(), 1u);
    EXPECT_EQ(groups.groups().size(), 3u);
    EXPECT_EQ(groups.at(0), nullptr);
    EXPECT_EQ(groups.at(3), nullptr);
    EXPECT_TRUE(groups.nameOf(1).isNull());
    EXPECT_EQ(log.count(), 0u);

    groups.add(named("again", 2), false); // taken
    EXPECT_EQ(groups.nameOf(0), "again");
    EXPECT_NE(log.text().find("\"again\" can't have index 2, which \"c\" has; it gets 0."), std::string::npos)
        << log.text();
    groups.add(named("b"), false);
    groups.add(named("d"), false);
    EXPECT_EQ(groups.indexOf("b"), 1u);
    EXPECT_EQ(groups.indexOf("d"), 3u);
    EXPECT_EQ(groups.count(), 4u);

    groups.add(named("far", 0xFFFFFF00u), false); // four damaged bytes: no table of thirty gigabytes
    EXPECT_EQ(groups.indexOf("far"), 4u);
    EXPECT_EQ(log.count(), 2u);
}

TEST(GeometryGroups, namesFollowRenaming)
{
    GeometryGroups groups;
    groups.add(named("a"), false);
    groups.add(named("b"), false);
    groups.at(0)->setName("x");
    EXPECT_EQ(groups.indexOf("a"), GeometryGroups::notFound);
    EXPECT_EQ(groups.indexOf("x"), 0u);
    EXPECT_EQ(groups.at(0)->name, "x");
    EXPECT_EQ(groups.at(0)->factories->sectionName, "x");

    groups.add(named("b"), false); // a namesake, the later: renaming the earlier leaves it be
    groups.at(1)->setName("y");
    EXPECT_EQ(groups.indexOf("b"), 2u);
    EXPECT_EQ(groups.indexOf("y"), 1u);
    groups.clear();
    EXPECT_EQ(groups.count(), 0u);
    EXPECT_EQ(groups.indexOf("y"), GeometryGroups::notFound);
}

TEST(GeometryGroups, groupsThatAreNotOwnedSurviveTheList)
{
    CGeometryGroup mine(nullptr);
    {
        GeometryGroups groups;
        groups.ownsGroups = false;
        groups.add(&mine, false);
    }
    EXPECT_EQ(mine.index, 0u);
    EXPECT_EQ(mine.owner, nullptr); // and don't point to it
    mine.clearMesh();
}

TEST(GeometryGroups, theTotalBoxHoldsAllGroups)
{
    GeometryGroups groups;
    for (const double x : {-3.0, 8.0}) {
        auto* box = new CBox(nullptr);
        box->centre = C3DPoint(x, x, 0);
        box->index = x < 0 ? 1 : 3;
        box->rebuildMesh();
        groups.add(box, true);
    }
    groups.updateTotalBounds();
    EXPECT_TRUE(groups.totalBounds.lower == C3DPoint(-3.5, -3.5, -0.5));
    EXPECT_TRUE(groups.totalBounds.upper == C3DPoint(8.5, 8.5, 0.5));
}

TEST(GeometryGroups, uniqueIdsAreCountedForAllGroupsAndKeptByThoseThatBringOne)
{
    GeometryGroups::setNextUniqueId(10);
    GeometryGroups groups;
    groups.add(named("a"), false);
    auto* b = named("b");
    b->uniqueId = 99;
    groups.add(b, false);
    auto* c = named("c");
    c->uniqueId = 0xFFFFFFFEu;
    groups.add(c, false);
    EXPECT_EQ(groups.at(0)->uniqueId, 10u);
    EXPECT_EQ(b->uniqueId, 99u);
    EXPECT_EQ(c->uniqueId, 12u);
    GeometryGroups::syncUniqueIds(groups);
    EXPECT_EQ(GeometryGroups::nextUniqueId(), 100u);
    GeometryGroups::syncUniqueIds(GeometryGroups());
    EXPECT_EQ(GeometryGroups::nextUniqueId(), 0u);
}

// ---------------------------------------------------------------- ids

TEST(ElementIds, idsAreUniqueOverAllGroupsAndReusedInTheirOrder)
{
    GeometryGroups groups;
    groups.add(named("a"), true);
    groups.add(named("b"), true);
    CGeometryGroup& a = *groups.at(0);
    CGeometryGroup& b = *groups.at(1);
    setStrip(a, 4);
    setStrip(b, 3);
    EXPECT_EQ(a.vertexIds, range(0, 6));
    EXPECT_EQ(b.vertexIds, range(6, 5));
    EXPECT_EQ(b.triangleIds, range(4, 3));

    setStrip(a, 4); // the same ids for the same mesh
    EXPECT_EQ(a.vertexIds, range(0, 6));
    setStrip(a, 2); // some are free now
    EXPECT_EQ(a.triangleIds, range(0, 2));
    setStrip(b, 6); // its own first, then those, then new ones
    EXPECT_EQ(b.triangleIds, (Ids{4, 5, 6, 2, 3, 7}));

    quint32 group = 0;
    quint32 element = 0;
    ASSERT_TRUE(groups.triangleIds.locate(2, group, element));
    EXPECT_EQ(group, 1u);
    EXPECT_EQ(element, 3u);
    a.clearMesh();
    EXPECT_FALSE(groups.triangleIds.locate(0, group, element));
    EXPECT_FALSE(groups.triangleIds.locate(8, group, element));
}

TEST(ElementIds, idsOfAFileAreEnteredAndTheGapsChainedFromTheHighestDown)
{
    GeometryGroups groups;
    auto* group = named("a");
    setStrip(*group, 2); // no one gives it ids yet
    EXPECT_TRUE(group->vertexIds.empty());
    group->vertexIds = {9, 2, 5, 3000000};
    group->triangleIds = {1000000, 4};
    groups.add(group, false);
    ASSERT_TRUE(groups.rebuildElementIds());
    EXPECT_EQ(group->vertexIds, (Ids{9, 2, 5, 3000000}));

    groups.add(named("b"), false);
    setStrip(*groups.at(1), 1);
    EXPECT_EQ(groups.at(1)->vertexIds, (Ids{2999999, 2999998, 2999997}));
    EXPECT_EQ(groups.at(1)->triangleIds, (Ids{999999}));
}

TEST(ElementIds, aConflictNumbersAllGroupsAnew)
{
    const struct
    {
        const char* what;
        Ids vertexIds, triangleIds;
    } cases[] = {
        {"a vertex id beyond the limit", {0, 1, 3000001}, {7}},
        {"a triangle id beyond the limit", {20, 21, 22}, {1000001}},
        {"no id at all", {20, 21, 0xFFFFFFFFu}, {7}},
        {"an id of its own twice", {20, 21, 20}, {7}},
        {"an id of another group", {20, 21, 11}, {7}},
        {"too few ids", {20, 21}, {7}},
        {"too many ids", {20, 21, 22}, {7, 8}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        CLogCapture log;
        GeometryGroups groups;
        for (const char* name : {"a", "b"}) {
            auto* group = named(name);
            setStrip(*group, 1);
            groups.add(group, false);
        }
        groups.at(0)->vertexIds = {10, 11, 12};
        groups.at(0)->triangleIds = {5};
        groups.at(1)->vertexIds = c.vertexIds;
        groups.at(1)->triangleIds = c.triangleIds;
        EXPECT_FALSE(groups.rebuildElementIds());
        EXPECT_EQ(groups.at(0)->vertexIds, range(0, 3));
        EXPECT_EQ(groups.at(0)->triangleIds, range(0, 1));
        EXPECT_EQ(groups.at(1)->vertexIds, range(3, 3));
        EXPECT_EQ(groups.at(1)->triangleIds, range(1, 1));
        EXPECT_EQ(log.count(), 1u) << log.text();
    }
}

// ---------------------------------------------------------------- groups in the creator model

TEST(GeometryGroups, theCreatorModelFindsAGroupByItsName)
{
    CCreatorData creator{SPropertyManagers()};
    creator.geometryGroups.add(named("chute", 3), false);
    EXPECT_EQ(creator.geometryGroupByName("chute"), creator.geometryGroups.at(3));
    EXPECT_EQ(creator.geometryGroupByName("Chute"), nullptr);
    creator.clear();
    EXPECT_EQ(creator.geometryGroupByName("chute"), nullptr);
}

TEST(MaterialRule, groupsGetOneEquipmentCopyOfAMaterialThatParticlesUse)
{
    clearLogOnceMemory();
    CLogCapture log;
    CCreatorData creator{SPropertyManagers()};
    auto made = std::make_unique<CJkrContactModel>(quint32(eSphereGeometryModel));
    CPairTable<double>& energies = made->parameters.surfaceEnergy;
    energies.set("glass", "steel", 2);
    energies.set("steel", "steel", 3);
    creator.physicsModels.addContactModel(std::move(made), CPhysicsModels::atEnd);
    for (const char* name : {"glass", "steel"})
        creator.materials.set(name, new CMaterial(name, 0.3, 1e9, 7850, 4.5, eBulkMaterial));
    creator.interactions.set("glass", "steel", new CInteraction);
    creator.particleTypes.append().materialName = "glass";
    for (const char* material : {"glass", "steel", "glass", "absent"})
        creator.geometryGroups.add(named(QString("of ") + material), false);
    for (CGeometryGroup* group : creator.geometryGroups.groups())
        group->materialName = group->displayedName.mid(3);

    applyMaterialRule(creator, [](const IContactModel&) { return true; });
    EXPECT_TRUE(creator.materials.find("glass")->isBulk());
    ASSERT_NE(creator.materials.find("glass(1)"), nullptr);
    EXPECT_FALSE(creator.materials.find("glass(1)")->isBulk());
    EXPECT_FALSE(creator.materials.find("steel")->isBulk());
    EXPECT_EQ(creator.materials.size(), 3);
    QStringList used;
    for (const CGeometryGroup* group : creator.geometryGroups.groups())
        used << group->materialName;
    EXPECT_EQ(used.join(","), "glass(1),steel,glass(1),absent");
    EXPECT_EQ(energies.valueOf("glass(1)", "steel"), 2) << "as the material that it was made from";
    EXPECT_EQ(energies.entries.size(), 3u);
    EXPECT_EQ(log.count(), 2u) << log.text();
}

} // namespace NBrenmark
