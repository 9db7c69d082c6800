// A particle type: the template of spheres, and the slots of its particles.
#include "model/domain.h"
#include "model/particle_type.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <set>

namespace NBrenmark {

static CSphere sphereOf(const QString& name, const C3DPoint& position, double contact, double physical)
{
    CSphere sphere;
    sphere.name = name;
    sphere.position = position;
    sphere.setRadii(contact, physical);
    return sphere;
}

TEST(StoredFields, theParticleMaskTakesOutItsArrays)
{
    struct SCase
    {
        quint32 mask;
        quint32 fields; // of 0x21FF, worked out bit by bit
    };
    const SCase cases[] = {
        {47, 0x21FF},       // the default: velocity, angular velocity, forces, properties
        {47 & ~2, 0x21FD},  // no velocity: bit 1
        {47 & ~4, 0x21EF},  // no angular velocity: bit 4
        {47 & ~8, 0x203F},  // no forces: bits 6, 7 and 8
        {47 & ~32, 0x21FF}, // properties are no array of this word
        {47 & ~1, 0x21FF},  // bit 0 is tested by no one
        {0, 0x202D},
    };
    for (const SCase& c : cases)
        EXPECT_EQ(reduceParticleFields(allParticleFields, c.mask), c.fields) << c.mask;
    EXPECT_EQ(reduceParticleFields(0x80001801u, 0), 0x80001801u); // the legacy family's own arrays stay
}

TEST(Sphere, radiiDifferBeyondTheFuzzyTest)
{
    struct SCase
    {
        double contact;
        double physical;
        bool differ;
    };
    const SCase cases[] = {
        {1.0, 1.0, false}, {1.0, 1.0 + 1e-13, false}, {1.0, 1.0 + 1e-11, true},
        {0.0, 0.0, false}, {1e-41, -1e-41, false},    {0.0, 1e-39, true},
        {1.0, 0.0, true},  {0.002, 0.001, true},      {1e300, 1e300 * (1 + 1e-14), false},
    };
    for (const SCase& c : cases) {
        CSphere sphere;
        sphere.setRadii(c.contact, c.physical);
        EXPECT_EQ(sphere.radiiDiffer, c.differ) << c.contact << " " << c.physical;
        EXPECT_EQ(sphere.contactRadius, c.contact);
        EXPECT_EQ(sphere.physicalRadius, c.physical);
    }
}

TEST(ParticleTemplate, extentsAndRadiiOfTheClump)
{
    CParticleType type(nullptr);
    double least = 0.0;
    double greatest = 0.0;
    C3DPoint min(9, 9, 9);
    C3DPoint max(9, 9, 9);
    EXPECT_EQ(type.maxExtent(2.0), 0.0);
    EXPECT_FALSE(type.radiusRange(least, greatest, true));
    type.localBounds(min, max);
    EXPECT_EQ(min, C3DPoint());
    EXPECT_EQ(max, C3DPoint());

    type.spheres = {sphereOf("a", C3DPoint(3, 4, 0), 9, 1), sphereOf("b", C3DPoint(-1, 0, 0), 0.25, 4)};
    EXPECT_EQ(type.maxExtent(1.0), 6.0); // |(3, 4, 0)| + 1, with the physical radius
    EXPECT_EQ(type.maxExtent(0.5), 3.0);
    EXPECT_TRUE(type.radiusRange(least, greatest, true));
    EXPECT_EQ(least, 1.0);
    EXPECT_EQ(greatest, 4.0);
    EXPECT_TRUE(type.radiusRange(least, greatest, false));
    EXPECT_EQ(least, 0.25);
    EXPECT_EQ(greatest, 9.0);
    type.localBounds(min, max);
    EXPECT_EQ(min, C3DPoint(-5, -4, -4));
    EXPECT_EQ(max, C3DPoint(4, 5, 4));
}

TEST(ParticleTemplate, spheresOfANameMetBeforeGo)
{
    CParticleType type(nullptr);
    EXPECT_FALSE(type.removeDuplicateSpheres());
    double radius = 0.0;
    for (const char* name : {"a", "b", "a", "c", "b", "A"})
        type.spheres.push_back(sphereOf(name, C3DPoint(), radius += 1.0, 1.0));
    EXPECT_TRUE(type.removeDuplicateSpheres());
    std::string left;
    for (const CSphere& sphere : type.spheres)
        left += sphere.name.toStdString() + std::to_string(static_cast<int>(sphere.contactRadius));
    EXPECT_EQ(left, "a1b2c4A6");
    EXPECT_FALSE(type.removeDuplicateSpheres());
}

TEST(ParticleTemplate, everyPartOfADefinitionIsCompared)
{
    const auto define = [](CParticleType& type) {
        type.setName("Ball");
        type.materialName = "rock";
        type.rawMass = 2.0;
        type.rawVolume = 0.001;
        type.rawInertia = C3DPoint(1, 2, 3);
        type.spheres = {sphereOf("a", C3DPoint(1, 0, 0), 0.2, 0.1), sphereOf("b", C3DPoint(), 0.2, 0.1)};
    };
    using SChange = void (*)(CParticleType&);
    const std::pair<SChange, bool> changes[] = {
        {[](CParticleType&) {}, true},
        {[](CParticleType& type) { type.rawMass *= 1 + 1e-13; }, true},
        {[](CParticleType& type) { type.templateName = "other"; }, true},
        {[](CParticleType& type) {
             type.ids = {1, 2};
         },
         true},
        {[](CParticleType& type) { type.setName("ball"); }, false},
        {[](CParticleType& type) { type.materialName = "steel"; }, false},
        {[](CParticleType& type) { type.rawMass *= 1 + 1e-11; }, false},
        {[](CParticleType& type) { type.rawVolume = 0.002; }, false},
        {[](CParticleType& type) { type.rawInertia.z = 4; }, false},
        {[](CParticleType& type) { type.surfaceBased = 0; }, false},
        {[](CParticleType& type) { type.autoCenterParticle = false; }, false},
        {[](CParticleType& type) { type.autoProperties = true; }, false},
        {[](CParticleType& type) { type.calculateProperties = false; }, false},
        {[](CParticleType& type) { type.spheres.pop_back(); }, false},
        {[](CParticleType& type) { std::swap(type.spheres[0], type.spheres[1]); }, false},
        {[](CParticleType& type) { type.spheres[0].name = "c"; }, false},
        {[](CParticleType& type) { type.spheres[0].position.x = 2; }, false},
        {[](CParticleType& type) { type.spheres[1].setRadii(0.3, 0.1); }, false},
        {[](CParticleType& type) { type.spheres[1].setRadii(0.2, 0.11); }, false},
    };
    int number = 0;
    for (const auto& [change, same] : changes) {
        CParticleType a(nullptr);
        CParticleType b(nullptr);
        define(a);
        define(b);
        change(b);
        EXPECT_EQ(a.sameDefinition(b), same) << "change " << number;
        EXPECT_EQ(b.sameDefinition(a), same) << "change " << number;
        ++number;
    }
}

TEST(SpherePositions, areScaledTurnedMovedAndWrapped)
{
    CDomain domain;
    domain.min = C3DPoint(0, 0, 0);
    domain.max = C3DPoint(10, 10, 10);
    domain.periodicY = true;

    CParticleType type(nullptr);
    type.spheres = {sphereOf("a", C3DPoint(1, 0, 0), 0.5, 0.25), sphereOf("b", C3DPoint(0, 0, -1), 0.5, 0.5)};
    type.resizeSlots(3);
    EXPECT_TRUE(type.spherePositions.empty());
    type.ids = {-1, 7, 8};
    type.scale = {1, 2, 1};
    type.position = {C3DPoint(), C3DPoint(1, 9, 5), C3DPoint(2, 2, 2)};
    const double half = std::sqrt(0.5); // a quarter turn about z
    type.orientation = {CQuaternion(), CQuaternion(half, 0, 0, half), CQuaternion()};

    C3DPoint centre;
    double radius = 0.0;
    EXPECT_TRUE(type.sphereCentreAndRadius(1, 1, centre, radius)); // before they are placed: the particle's place
    EXPECT_EQ(centre, C3DPoint(1, 9, 5));

    for (quint32 slot = 0; slot < 4; ++slot) // slot 0 is free, 3 doesn't exist
        type.updateSpherePositions(slot, domain);
    ASSERT_EQ(type.spherePositions.size(), 6u);
    EXPECT_TRUE(type.sphereCentreAndRadius(1, 0, centre, radius));
    EXPECT_NEAR(centre.x, 1, 1e-12);
    EXPECT_NEAR(centre.y, 1, 1e-12); // 9 + 2 leaves through the side that is joined at 10
    EXPECT_NEAR(centre.z, 5, 1e-12);
    EXPECT_EQ(radius, 0.5);
    EXPECT_TRUE(type.sphereCentreAndRadius(1, 1, centre, radius));
    EXPECT_NEAR(centre.z, 3, 1e-12);
    EXPECT_EQ(radius, 1.0);
    EXPECT_TRUE(type.sphereCentreAndRadius(2, 0, centre, radius));
    EXPECT_EQ(centre, C3DPoint(3, 2, 2));
    EXPECT_FALSE(type.sphereCentreAndRadius(0, 0, centre, radius)); // free
    EXPECT_FALSE(type.sphereCentreAndRadius(3, 0, centre, radius)); // past the end
    EXPECT_FALSE(type.sphereCentreAndRadius(1, 2, centre, radius)); // no such sphere
}

TEST(SpherePositions, aSingleSphereIsWhereItsParticleIs)
{
    CDomain domain;
    CParticleType type(nullptr);
    type.spheres = {sphereOf("a", C3DPoint(5, 5, 5), 0.5, 0.25)};
    type.resizeSlots(1);
    type.ids = {1};
    type.scale = {4};
    type.position = {C3DPoint(1, 2, 3)};
    type.updateSpherePositions(0, domain);
    EXPECT_TRUE(type.spherePositions.empty());
    C3DPoint centre;
    double radius = 0.0;
    EXPECT_TRUE(type.sphereCentreAndRadius(0, 0, centre, radius));
    EXPECT_EQ(centre, C3DPoint(1, 2, 3));
    EXPECT_EQ(radius, 1.0);
}

// ---------------------------------------------------------------- slots

/// The sizes of all arrays with one element per slot, which must be one number.
static std::set<std::size_t> slotArraySizes(const CParticleType& type)
{
    return {type.ids.size(),
            type.scale.size(),
            type.velocity.size(),
            type.position.size(),
            type.orientation.size(),
            type.angularVelocity.size(),
            type.forceTorque.size(),
            type.unscaledForceTorque.size(),
            type.externalForceTorque.size(),
            type.creationTime.size(),
            type.activeFlags.size()};
}

TEST(ParticleSlots, resizeGivesZerosAndLeavesFullArraysAlone)
{
    CParticleType type(nullptr);
    type.ids = {4, 5, 6}; // as a reader leaves it: three rows, of which the file holds ids and velocities
    type.velocity = {C3DVector(1, 1, 1), C3DVector(2, 2, 2), C3DVector(3, 3, 3)};
    const void* const place = type.velocity.data();
    type.electrostatic.charge = {1e-9, 2e-9};
    type.resizeSlots(3);
    EXPECT_EQ(slotArraySizes(type), std::set<std::size_t>{3});
    EXPECT_EQ(type.velocity.data(), place);
    EXPECT_EQ(type.velocity[2], C3DVector(3, 3, 3));
    EXPECT_EQ(type.ids, (std::vector<qint32>{4, 5, 6}));
    EXPECT_EQ(type.scale[1], 0.0);
    EXPECT_EQ(type.forceTorque[2], ForceTorque{});
    const CQuaternion& turn = type.orientation[2];
    EXPECT_TRUE(turn.w == 0.0 && turn.x == 0.0 && turn.y == 0.0 && turn.z == 0.0);
    EXPECT_EQ(type.electrostatic.charge, (std::vector<double>{1e-9, 2e-9, 0.0}));
    EXPECT_TRUE(type.electrostatic.electrostaticForce.empty());
    type.resizeSlots(1);
    EXPECT_EQ(slotArraySizes(type), std::set<std::size_t>{1});
    type.clear();
    EXPECT_EQ(slotArraySizes(type), std::set<std::size_t>{0});
    EXPECT_EQ(type.liveCount(), 0u);
}

TEST(ParticleSlots, theSlotReleasedLastIsTheFirstReused)
{
    CParticleType type(nullptr);
    for (qint32 id = 1; id <= 5; ++id) {
        const quint32 slot = type.allocateSlot();
        EXPECT_EQ(slot, static_cast<quint32>(id - 1));
        EXPECT_EQ(type.ids[slot], 0);
        EXPECT_EQ(type.scale[slot], 1.0);
        type.ids[slot] = id;
        type.activeFlags[slot] = 1;
    }
    EXPECT_EQ(slotArraySizes(type), std::set<std::size_t>{5});
    for (const quint32 slot : {1u, 3u, 0u})
        type.releaseSlot(slot, false);
    // Complements of the slots, each link in the slot released after it: ~0 = -1, ~3 = -4, ~1 = -2.
    EXPECT_EQ(type.firstFree, -1);
    EXPECT_EQ(type.ids, (std::vector<qint32>{-4, 0, 3, -2, 5}));
    EXPECT_EQ(type.activeFlags, (std::vector<unsigned char>{0, 0, 1, 0, 1}));
    EXPECT_EQ(type.liveCount(), 2u);
    type.scale.assign(5, 7.0); // of the particles that were there
    type.velocity.assign(5, C3DVector(1, 2, 3));
    type.externalForceTorque.assign(5, ForceTorque{1.0});
    type.electrostatic.words.assign(5, 9);
    for (const quint32 expected : {0u, 3u, 1u, 5u}) {
        const quint32 slot = type.allocateSlot();
        EXPECT_EQ(slot, expected);
        EXPECT_EQ(type.ids[slot], 0);
        EXPECT_EQ(type.scale[slot], 1.0);
        EXPECT_EQ(type.velocity[slot], C3DVector());
        EXPECT_EQ(type.externalForceTorque[slot], ForceTorque{});
        EXPECT_EQ(type.electrostatic.words[slot], 0);
        type.ids[slot] = 100;
    }
    EXPECT_EQ(type.firstFree, 0);
    EXPECT_EQ(type.liveCount(), 6u);
}

TEST(ParticleSlots, aParticleFillsItsSlot)
{
    CParticleType type(nullptr);
    SParticleState state;
    state.id = 12;
    state.velocity = C3DVector(1, 2, 3);
    state.scale = 0.5;
    state.unscaledForceTorque[6] = 4.0;
    EXPECT_EQ(type.addParticle(state), 0u);
    EXPECT_TRUE(type.isLive(0));
    EXPECT_EQ(type.velocity[0], state.velocity);
    EXPECT_EQ(type.orientation[0].w, 1.0);
    EXPECT_EQ(type.scale[0], 0.5);
    EXPECT_EQ(type.unscaledForceTorque[0][6], 4.0);
}

TEST(ParticleSlots, takingTheLastSlotOffLeavesTheFreeListAlone)
{
    CParticleType type(nullptr);
    type.resizeSlots(4);
    type.ids = {1, 2, 3, 4};
    type.releaseSlot(1, true); // not the last: it joins the list
    type.releaseSlot(0, true); // by whose order 0 is the next one given
    type.releaseSlot(3, true);
    EXPECT_EQ(slotArraySizes(type), std::set<std::size_t>{3});
    EXPECT_EQ(type.freeCount, 2u);
    EXPECT_EQ(type.firstFree, -1);
    EXPECT_EQ(type.ids, (std::vector<qint32>{-2, 0, 3}));
    type.releaseSlot(9, true); // no such slot
    EXPECT_EQ(type.freeCount, 2u);
    type.resizeSlots(1); // cuts a free slot off: no link may lead there
    EXPECT_EQ(type.freeCount, 1u);
    EXPECT_EQ(type.allocateSlot(), 0u);
    EXPECT_EQ(type.allocateSlot(), 1u);
}

TEST(ParticleSlots, afterAReadEverySlotWithAnIdBelowOneIsFree)
{
    struct SCase
    {
        std::vector<qint32> stored;
        std::vector<qint32> links; // live ids and, in free slots, complements of the free slot before
        std::vector<quint32> given;
    };
    constexpr qint32 least = std::numeric_limits<qint32>::min();
    const SCase cases[] = {
        {{}, {}, {0, 1}},
        {{3, 1, 2}, {3, 1, 2}, {3, 4}},
        {{-5, 7, -5, 8, -1}, {0, 7, -1, 8, -3}, {4, 2, 0, 5}},
        {{0, 7, 0}, {0, 7, -1}, {2, 0, 3}}, // 0 is no particle either
        {{least, 2147483647, -1}, {0, 2147483647, -1}, {2, 0, 3}},
    };
    for (const SCase& c : cases) {
        CParticleType type(nullptr);
        type.ids = c.stored;
        type.resizeSlots(static_cast<quint32>(c.stored.size()));
        type.rebuildFreeList();
        EXPECT_EQ(type.ids, c.links);
        const auto live = std::count_if(c.stored.begin(), c.stored.end(), [](qint32 id) { return id >= 1; });
        EXPECT_EQ(type.liveCount(), static_cast<quint32>(live));
        type.rebuildFreeList(); // once more makes no difference
        EXPECT_EQ(type.ids, c.links);
        for (const quint32 slot : c.given)
            EXPECT_EQ(type.allocateSlot(), slot);
    }
}

TEST(ParticleSlots, swapExchangesDefinitionStoreAndProperties)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    auto heat = std::make_unique<CCustomPropertyMetaData>("Heat", 0u, 1u, 0u, std::vector<double>{5.0});
    manager.addProperty(heat);
    manager.lastFinalisedPropertyIndex = 0;
    {
        CParticleType a(&manager);
        CParticleType b(&manager);
        a.setName("A");
        a.spheres.resize(2);
        a.rawMass = 1.5;
        a.dataMask = 7;
        a.resizeSlots(2);
        a.ids = {9, -1};
        a.rebuildFreeList();
        a.customProperties.list("Heat")->values = {6.0, 7.0};
        b.setName("B");
        a.swapContents(b);
        EXPECT_EQ(a.name, "B");
        EXPECT_EQ(a.slotCount(), 0u);
        EXPECT_EQ(a.freeCount, 0u);
        EXPECT_EQ(a.customProperties.itemCount(), 0u);
        EXPECT_EQ(b.name, "A");
        EXPECT_EQ(b.displayName, QString("A"));
        EXPECT_EQ(b.spheres.size(), 2u);
        EXPECT_EQ(b.rawMass, 1.5);
        EXPECT_EQ(b.dataMask, 7u);
        EXPECT_EQ(b.freeCount, 1u);
        EXPECT_EQ(slotArraySizes(b), std::set<std::size_t>{2});
        EXPECT_EQ(b.customProperties.list("Heat")->values, (std::vector<double>{6.0, 7.0}));
        b.resizeSlots(3); // a property's new item has its initial value
        EXPECT_EQ(b.customProperties.list("Heat")->values, (std::vector<double>{6.0, 7.0, 5.0}));
    }
}

} // namespace NBrenmark
