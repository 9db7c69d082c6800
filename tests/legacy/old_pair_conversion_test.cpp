// Contacts, bonds and collisions that name particles and triangles by their ids become rows that name them by their
// places. Places are counted by hand: a slot times the spheres of its type, and the sphere.
#include "legacy/old_pair_conversion.h"

#include "legacy/old_collisions.h"
#include "legacy/old_contacts.h"
#include "model/geometry/geometry_group.h"
#include "results/bonds.h"
#include "results/collisions.h"
#include "results/contacts.h"
#include "support/log_capture.h"
#include "support/old_model.h"

#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

using namespace NLegacySupport;

/// Type 0 of one sphere holds the particles 1 and 4, type 1 of three spheres 3 and 2. Triangle 7 is the second of group 0.
struct SOldStep : SOldModel
{
    SOldStep()
    {
        addType("A", "m").spheres.resize(1);
        addType("B", "m").spheres.resize(3);
        for (const auto& [type, id] : {std::pair(0u, 1), std::pair(0u, 4), std::pair(1u, 3), std::pair(1u, 2)}) {
            SParticleState state;
            state.id = id;
            types.types[type]->addParticle(state);
        }
        types.recomputeMaxId(true);
        types.rebuildIdLookup();
        CGeometryGroup& wall = addGroup("Wall", "n");
        wall.setMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}, {0, 1, 3}});
        wall.triangleIds = {6, 7};
        creator.geometryGroups.settle();
    }
    CParticleTypes& types = creator.particleTypes;
};

/// Ends of a pair as a record has them, and what becomes of it.
struct SEndsCase
{
    int firstId, firstSphere, secondId, secondSphere;
    const char* contact; ///< its row, and "-" before it where the forces change sign; empty if it is left out
    const char* bond;
};

const SEndsCase endsCases[] = {
    {1, 0, 4, 0, "0/0 0/1", "0/0 0/1"},
    {4, 0, 1, 0, "-0/0 0/1", "-0/0 0/1"},
    {2, 1, 3, 2, "1/4 1/2", "1/4 1/2"}, // in the other order of the slots
    {3, 2, 1, 0, "-0/0 1/2", "-0/0 1/2"},
    {4, 0, 4, 0, "-0/1 0/1", "0/1 0/1"}, // a contact with itself changes sides, a bond doesn't
    {1, 0, 5, 0, "", ""},                // no particle
    {0, 0, 1, 0, "", ""},
    {-1, 0, 1, 0, "", ""},
    {1, 1, 4, 0, "", ""}, // no sphere
    {1, 0, 2, -1, "", ""},
};

std::string rowText(const PairRow& row, const C3DVector& force)
{
    const auto end = [&](int at) { return std::to_string(row[at]) + "/" + std::to_string(row[at + 1]); };
    return (force.x < 0 ? "-" : "") + end(0) + " " + end(2);
}

template <class TRecord>
TRecord recordOf(const SEndsCase& c)
{
    TRecord record;
    record.firstParticleId = c.firstId;
    record.firstElement = c.firstSphere;
    record.secondParticleId = c.secondId;
    record.secondElement = c.secondSphere;
    record.normalForce = C3DVector(1, 2, 3);
    return record;
}

} // namespace

TEST(OldPairs, findTheirEndsOrAreLeftOutAndReported)
{
    for (const SEndsCase& c : endsCases) {
        SOldStep step;
        SLegacyContactLists old;
        old.surfaceSurface = {recordOf<SLegacyContact>(c)};
        old.surfaceSurface[0].contactVector1 = C3DVector(4, 0, 0);
        CContacts contacts(nullptr);
        CBondList oldBonds;
        oldBonds.push_back(recordOf<CSurfSurfBond>(c));
        oldBonds[0].tangentialTorque = C3DVector(5, 0, 0);
        CBonds bonds;
        const CLogCapture log;
        linkLegacyRows(contacts, old, step.types, step.creator.geometryGroups);
        linkLegacyRows(bonds, oldBonds, step.types);
        const CSurfaceSurfaceContacts& family = contacts.surfaceSurface;
        EXPECT_EQ(family.liveCount() == 1 ? rowText(family.rows[0], family.normalForce[0]) : "", c.contact);
        const CSurfaceSurfaceBonds& kept = bonds.surfaceSurface;
        EXPECT_EQ(kept.rowCount() == 1 ? rowText(kept.rows[0], kept.normalForce[0]) : "", c.bond);
        const bool isLost = *c.bond == '\0';
        if (!isLost) {
            EXPECT_EQ(family.contactVector1[0].x, *c.contact == '-' ? 0.0 : 4.0) << c.contact;
            EXPECT_EQ(kept.tangentialTorque[0].x, *c.bond == '-' ? -5.0 : 5.0) << c.bond;
        }
        EXPECT_EQ(log.text(),
                  !isLost
                      ? ""
                      : "WARNING Legacy read: 1 contact left out: a particle, sphere or triangle of them is missing\n"
                        "WARNING Legacy read: 1 bond left out: a particle, sphere or triangle of them is missing\n");
    }
}

TEST(OldPairs, findTrianglesByTheirIds)
{
    for (const auto& [triangle, row] : {std::pair(7, "1/2 0/1"), {6, "1/2 0/0"}, {5, ""}, {-1, ""}}) {
        SOldStep step;
        SLegacyContactLists old;
        old.surfaceGeometry.resize(1);
        old.surfaceGeometry[0].firstParticleId = 3;
        old.surfaceGeometry[0].firstElement = 2;
        old.surfaceGeometry[0].triangleId = triangle;
        CContacts contacts(nullptr);
        linkLegacyRows(contacts, old, step.types, step.creator.geometryGroups);
        const CSurfaceGeometryContacts& family = contacts.surfaceGeometry;
        EXPECT_EQ(family.liveCount() == 1 ? rowText(family.rows[0], C3DVector()) : "", row) << triangle;
    }
}

// Of three collisions one has ended, one belongs to the contact of 1 and 4, and one to none.
TEST(OldPairs, collisionsAreRecordsOfTheirOwnOrOfTheirContacts)
{
    SOldStep step;
    SLegacyContactLists old;
    old.surfaceSurface = {recordOf<SLegacyContact>({3, 0, 2, 0, "", ""}),
                          recordOf<SLegacyContact>({1, 0, 4, 0, "", ""})};
    CContacts contacts(nullptr);
    linkLegacyRows(contacts, old, step.types, step.creator.geometryGroups);
    CActiveCollisions collisions;
    for (const auto& [id, first, second, end] : {std::tuple(7u, 2, 3, 0.5), {8u, 4, 1, 0.0}, {9u, 1, 3, 0.0}}) {
        auto collision = std::make_unique<CSurfSurfCollision>();
        collision->id = id;
        collision->endTime = end;
        collision->first.particleId = first;
        collision->first.radius = 0.25;
        collision->second.particleId = second;
        collision->second.element = 0;
        collision->first.element = first == 2 ? 1 : 0;
        for (C3DVector* const v : {&collision->maxNormalForce, &collision->maxTangentialForce,
                                   &collision->relativeVelocity, &collision->totalNormalForce})
            *v = C3DVector(id, 0, 0);
        collisions.surfaceSurface.push_back(std::move(collision));
    }
    CCollisions finished;
    clearLogOnceMemory();
    const CLogCapture log;
    linkLegacyRows(finished, contacts, collisions, step.types, step.creator.geometryGroups);
    const CCollisionsBase& ended = finished.surfaceSurface;
    ASSERT_EQ(ended.recordCount(), 1u);
    EXPECT_EQ(ended.ids[0], 7u);
    EXPECT_EQ(ended.first.ids[0], 1u) << "the number of the sphere";
    EXPECT_EQ(ended.first.radius[0], 0.25);
    EXPECT_EQ(ended.maxNormalForce[0].x, 7.0) << "its sides are as they are stored";
    const CCollisionsBase& active = contacts.surfaceSurface.activeCollisions;
    ASSERT_EQ(active.recordCount(), 2u);
    EXPECT_EQ(active.ids, (std::vector<quint32>{0, 8}));
    EXPECT_EQ(active.maxNormalForce[1].x, -8.0);
    EXPECT_EQ(active.maxTangentialForce[1].x, -8.0);
    EXPECT_EQ(active.relativeVelocity[1].x, -8.0);
    EXPECT_EQ(active.totalNormalForce[1].x, 8.0) << "totals keep their sign";
    EXPECT_FALSE(contacts.surfaceGeometry.collisionsActive) << "without a collision of them";
    EXPECT_NE(log.text().find("1 collision that goes on left out: without a contact"), std::string::npos) << log.text();
}

} // namespace NBrenmark
