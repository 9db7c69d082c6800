// Collision families have the arrays of their masks, no others.
#include "results/collisions.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(Collisions, aTriangleHasNeitherRadiusNorRotation)
{
    CCollisions collisions;
    for (CCollisionsBase* family : {static_cast<CCollisionsBase*>(&collisions.surfaceSurface),
                                    static_cast<CCollisionsBase*>(&collisions.surfaceGeometry)}) {
        const std::size_t rotations = family == &collisions.surfaceSurface ? 4u : 0u;
        family->resizeRecords(4);
        EXPECT_EQ(family->recordCount(), 4u);
        EXPECT_EQ(family->liveCount(), 0u) << "an id of 0 is no collision";
        EXPECT_EQ(family->first.orientation.size(), 4u);
        EXPECT_EQ(family->second.position.size(), 4u);
        EXPECT_EQ(family->second.radius.size(), rotations);
        EXPECT_EQ(family->second.angularVelocity.size(), rotations);
        EXPECT_EQ(family->second.orientation.size(), rotations);
    }
    collisions.clear();
    EXPECT_EQ(collisions.surfaceGeometry.recordCount(), 0u);
    EXPECT_TRUE(collisions.surfaceSurface.totalTangentialForce.empty());
}

TEST(Collisions, copiesTheArraysOfTheWord)
{
    CSurfaceGeometryCollisions family;
    const auto renew = [&family] {
        family.resizeRecords(2);
        family.ids = {7, 0};
        family.endTime = {1.5, 0.0};
        family.second.ids = {9, 0};
    };
    renew();
    family.copyRecord(0, 1, eCollisionEndTime | eEndIds << secondEndShift);
    EXPECT_EQ(family.ids[1], 0u);
    EXPECT_EQ(family.endTime[1], 1.5);
    EXPECT_EQ(family.second.ids[1], 9u);
    renew();
    family.copyRecord(0, 1, eOwnCollisionFields);
    EXPECT_EQ(family.liveCount(), 2u);
    EXPECT_EQ(family.second.ids[1], 9u);
}

} // namespace NBrenmark
