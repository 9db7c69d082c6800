// The list of particle types: by name, and from a particle's id to its slot.
#include "model/particle_types.h"

#include "model/domain.h"

#include <gtest/gtest.h>
#include <limits>

namespace NBrenmark {

static CParticleType& addType(CParticleTypes& types, const QString& name, const std::vector<qint32>& ids)
{
    CParticleType& type = types.append();
    type.setName(name);
    type.materialName = "of " + name;
    type.ids = ids;
    type.resizeSlots(static_cast<quint32>(ids.size()));
    for (std::size_t slot = 0; slot < ids.size(); ++slot)
        type.scale[slot] = 0.5 * ids[slot];
    type.rebuildFreeList();
    return type;
}

TEST(ParticleTypes, aNameMetTwice)
{
    CParticleTypes types(nullptr);
    EXPECT_EQ(types.find("Ball"), nullptr);
    addType(types, "Ball", {1, 2, -1});
    addType(types, "Rod", {3});
    addType(types, "Ball", {4}).spheres.resize(1);
    EXPECT_EQ(types.find("Ball"), types.types[2].get()); // the later one
    EXPECT_EQ(types.particleCount("Ball"), 2u);          // the first one
    EXPECT_EQ(types.particleCount("ball"), 0u);
    EXPECT_EQ(types.particleCount(), 4u);
    EXPECT_EQ(types.names(), QStringList({"Ball", "Rod"}));
    EXPECT_EQ(types.typesOfMaterial("of Ball"), (std::vector<std::string>{"Ball", "Ball"}));
    EXPECT_TRUE(types.typesOfMaterial("of ball").empty());
    EXPECT_EQ(types.maxExtentOfType("Ball"), 0.001); // the radius that a new sphere has
    EXPECT_EQ(types.maxExtentOfType("Rod"), 0.0);
    EXPECT_EQ(types.maxExtentOfType("Cone"), 0.0);

    quint32 typeIndex = 9;
    quint32 slot = 9;
    EXPECT_TRUE(types.allocateParticle("Ball", typeIndex, slot));
    EXPECT_EQ(typeIndex, 2u);
    EXPECT_EQ(slot, 1u);
    EXPECT_FALSE(types.allocateParticle("Cone", typeIndex, slot));
}

TEST(ParticleTypes, radiiOfAllTypesTogether)
{
    CParticleTypes types(nullptr);
    double least = 0.0;
    double greatest = 0.0;
    addType(types, "None", {});
    EXPECT_FALSE(types.radiusRange(least, greatest, true));
    for (const double radius : {2.0, 0.5, 1.0}) {
        CParticleType& type = addType(types, "Ball", {});
        type.spheres.resize(1);
        type.spheres[0].setRadii(radius + 1, radius);
    }
    EXPECT_TRUE(types.radiusRange(least, greatest, true));
    EXPECT_EQ(least, 0.5);
    EXPECT_EQ(greatest, 2.0);
    EXPECT_TRUE(types.radiusRange(least, greatest, false));
    EXPECT_EQ(least, 1.5);
    EXPECT_EQ(greatest, 3.0);
}

TEST(ParticleTypes, emptyListsOfTypes)
{
    CParticleTypes types(nullptr);
    EXPECT_GE(types.types.capacity(), 100u);
    addType(types, "Ball", {1});
    types.maxId = 1;
    types.recreate(3);
    EXPECT_EQ(types.count(), 3u);
    EXPECT_EQ(types.maxId, 1u); // a file gives the greatest id before the number of types
    EXPECT_EQ(types.particleCount(), 0u);
    types.clear();
    EXPECT_EQ(types.count(), 0u);
    EXPECT_EQ(types.maxId, 0u);
}

TEST(ParticleIds, leadToTypeAndSlot)
{
    CParticleTypes types(nullptr);
    addType(types, "Ball", {3, -1, 1});
    addType(types, "Rod", {5, 0, 9});
    types.recomputeMaxId(true);
    EXPECT_EQ(types.maxId, 9u);
    types.maxId = 20;
    types.recomputeMaxId(false); // only ever raised
    EXPECT_EQ(types.maxId, 20u);
    types.rebuildIdLookup();

    struct SCase
    {
        quint32 id;
        bool found;
        quint32 typeIndex;
        quint32 slot;
    };
    const SCase cases[] = {
        {1, true, 0, 2},
        {3, true, 0, 0},
        {5, true, 1, 0},
        {9, true, 1, 2},
        {0, false, 0, 0},
        {2, false, 0, 0},
        {4, false, 0, 0},
        {10, false, 0, 0},
        {20, false, 0, 0},
        {0xFFFFFFFFu, false, 0, 0},
        {0x80000000u, false, 0, 0},
    };
    for (const SCase& c : cases) {
        quint32 typeIndex = 0;
        quint32 slot = 0;
        EXPECT_EQ(types.locate(c.id, typeIndex, slot), c.found) << c.id;
        EXPECT_EQ(types.scaleOf(c.id), c.found ? 0.5 * c.id : 0.0) << c.id;
        EXPECT_EQ(types.setScaleOf(c.id, 0.5 * c.id), c.found) << c.id;
        if (c.found) {
            EXPECT_EQ(typeIndex, c.typeIndex) << c.id;
            EXPECT_EQ(slot, c.slot) << c.id;
        }
    }
    EXPECT_TRUE(types.setScaleOf(9, 7.0));
    EXPECT_EQ(types.types[1]->scale[2], 7.0);

    // What the store lost since is not found either.
    quint32 typeIndex = 0;
    quint32 slot = 0;
    types.types[0]->releaseSlot(0, false);
    EXPECT_FALSE(types.locate(3, typeIndex, slot));
    types.types[1]->resizeSlots(1);
    EXPECT_FALSE(types.locate(9, typeIndex, slot));
    types.types.pop_back();
    EXPECT_FALSE(types.locate(5, typeIndex, slot));
    types.clear();
    EXPECT_FALSE(types.locate(1, typeIndex, slot));
}

TEST(ParticleIds, ofADamagedFileNeitherCrashNorTakeMemory)
{
    constexpr qint32 greatest = std::numeric_limits<qint32>::max();
    constexpr qint32 least = std::numeric_limits<qint32>::min();
    struct SCase
    {
        quint32 maxId;
        std::vector<qint32> ids;
        std::vector<quint32> found;
        std::vector<quint32> absent;
    };
    const SCase cases[] = {
        // a table by id would take 16 GB for each of these
        {0x7FFFFFFFu, {1, greatest, 1000000}, {1, 0x7FFFFFFFu, 1000000}, {2, 0x7FFFFFFEu, 999999}},
        {0xFFFFFFFFu, {7, 2000000000}, {7, 2000000000}, {6, 8, 0xFFFFFFFFu}},
        {0xFFFFFFFFu, {1, 2}, {1, 2}, {3, 0xFFFFFFFFu}},    // the greatest id alone is wrong
        {5, {4, 6, greatest, 5}, {4, 5}, {6, 0x7FFFFFFFu}}, // ids beyond what the file calls the greatest
        {0, {1, 2}, {}, {0, 1, 2}},
        {9, {least, -1, 0, 9}, {9}, {0, 1, 0x80000000u, 0xFFFFFFFFu}},
        {9, {3, 3, 3}, {3}, {1, 9}}, // one id in three slots
    };
    for (const SCase& c : cases) {
        CParticleTypes types(nullptr);
        types.append().ids = c.ids; // as read: no other array, no free list
        types.maxId = c.maxId;
        types.rebuildIdLookup();
        quint32 typeIndex = 0;
        quint32 slot = 0;
        for (const quint32 id : c.found) {
            ASSERT_TRUE(types.locate(id, typeIndex, slot)) << id;
            ASSERT_LT(slot, c.ids.size());
            EXPECT_EQ(static_cast<quint32>(c.ids[slot]), id);
            EXPECT_EQ(types.scaleOf(id), 0.0); // there is no such array
            EXPECT_FALSE(types.setScaleOf(id, 1.0));
        }
        for (const quint32 id : c.absent)
            EXPECT_FALSE(types.locate(id, typeIndex, slot)) << id;
        const quint32 before = types.maxId;
        types.recomputeMaxId(false);
        EXPECT_GE(types.maxId, before);
        types.updateAllSpherePositions();
    }
}

TEST(ParticleIds, tableAndListGiveTheSameAnswer)
{
    // The same particles twice; the second time one far id makes a table too large for them.
    constexpr qint32 count = 5000;
    std::vector<qint32> ids;
    for (qint32 slot = 0; slot < count; ++slot)
        ids.push_back((slot * 1237) % count + 1); // each of 1 to 5000 once, for 1237 is prime to 5000
    CParticleTypes near(nullptr);
    CParticleTypes far(nullptr);
    addType(near, "Ball", ids);
    addType(far, "Ball", ids);
    addType(far, "Stray", {2000000000});
    for (CParticleTypes* types : {&near, &far}) {
        types->recomputeMaxId(true);
        types->rebuildIdLookup();
        for (qint32 slot = 0; slot < count; ++slot) {
            quint32 typeIndex = 9;
            quint32 found = 0;
            ASSERT_TRUE(types->locate(static_cast<quint32>(ids[static_cast<std::size_t>(slot)]), typeIndex, found));
            ASSERT_EQ(found, static_cast<quint32>(slot));
            ASSERT_EQ(typeIndex, 0u);
        }
        EXPECT_EQ(types->scaleOf(5001), 0.0);
        addType(*types, "Copy", {8, 7}); // ids that are there already: the later type has them
        types->rebuildIdLookup();
        quint32 typeIndex = 0;
        quint32 found = 0;
        EXPECT_TRUE(types->locate(7, typeIndex, found));
        EXPECT_EQ(typeIndex, types->count() - 1);
        EXPECT_EQ(found, 1u);
    }
}

TEST(ParticleTypes, placeTheSpheresInTheirDomain)
{
    CDomain domain;
    domain.max = C3DPoint(4, 4, 4);
    domain.periodicX = true;
    for (const bool inDomain : {true, false}) {
        CParticleTypes types(nullptr);
        types.domain = inDomain ? &domain : nullptr;
        CParticleType& type = addType(types, "Pair", {2});
        type.spheres.resize(2);
        type.spheres[1].position = C3DPoint(3, 0, 0);
        type.position[0] = C3DPoint(2, 1, 1);
        type.orientation[0] = CQuaternion();
        types.updateAllSpherePositions();
        ASSERT_EQ(type.spherePositions.size(), 2u);
        EXPECT_EQ(type.spherePositions[0], C3DPoint(2, 1, 1));
        EXPECT_EQ(type.spherePositions[1], C3DPoint(inDomain ? 1 : 5, 1, 1)); // scale 1: half of its id
    }
}

} // namespace NBrenmark
