// The definition of a simulation as a whole.
#include "model/creator_data.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(CreatorData, aFreshOneHasNoPlaceInAFile)
{
    const CCreatorData creator{SPropertyManagers()};
    EXPECT_EQ(creator.storageIndex(), 0xFFFFFFFFu);
    EXPECT_EQ(creator.previousStorageIndex(), 0xFFFFFFFFu);
    EXPECT_EQ(creator.storageOffset(), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(creator.previousStorageOffset(), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_TRUE(creator.materialBlocks.isEmpty());
    EXPECT_EQ(creator.velocityRestricted, 0);
    EXPECT_EQ(creator.angularVelocityRestricted, 0);
    EXPECT_FALSE(creator.modified);
    EXPECT_EQ(creator.particleTypes.domain, &creator.domain);
    EXPECT_EQ(creator.physicsModels.sphereSphereModels.size(), 1u);
}

TEST(CreatorData, aSettersOldValueIsRemembered)
{
    CCreatorData creator{SPropertyManagers()};
    creator.setStorageIndex(3);
    creator.setStorageIndex(5);
    EXPECT_EQ(creator.storageIndex(), 5u);
    EXPECT_EQ(creator.previousStorageIndex(), 3u);
    creator.setStorageOffset(1000);
    EXPECT_EQ(creator.previousStorageOffset(), 0xFFFFFFFFFFFFFFFFu);
    creator.setStorageOffset(2000);
    EXPECT_EQ(creator.previousStorageOffset(), 1000u);
    EXPECT_FALSE(creator.modified);
    creator.changeTitle("Silo");
    EXPECT_EQ(creator.title, QString("Silo"));
    EXPECT_TRUE(creator.modified);
}

TEST(CreatorData, clearEmptiesTheListsAndKeepsTitleGravityAndDomain)
{
    CCreatorData creator{SPropertyManagers()};
    creator.title = "Silo";
    creator.description = "with rocks";
    creator.damping = 0.1;
    creator.gravity = C3DPoint(0, 0, -9.81);
    creator.domain.max = C3DPoint(1, 1, 1);
    creator.cylindricalPeriodicBoundaryConditions.enabled = true;
    creator.materials.set("rock", new CMaterial);
    creator.interactions.set("rock", "rock", new CInteraction);
    creator.materialBlocks["bed"] = std::make_shared<CMaterialBlock>();
    creator.particleTypes.append().ids = {1, 2};
    creator.particleTypes.recomputeMaxId(true);
    creator.velocityRestricted = creator.angularVelocityRestricted = 1;
    creator.velocityLimit = creator.angularVelocityLimit = 5.0;
    creator.legacyStreamFlag = true;
    std::unique_ptr<ISizeDistribution> none;
    creator.sizeDistributions.add("Ball", 100, none);
    creator.setStorageIndex(4);
    creator.setStorageOffset(44);

    creator.clear();
    EXPECT_TRUE(creator.modified);
    EXPECT_TRUE(creator.description.isEmpty());
    EXPECT_TRUE(creator.materials.isEmpty() && creator.interactions.entries.isEmpty());
    EXPECT_TRUE(creator.materialBlocks.isEmpty() && creator.sizeDistributions.entries.empty());
    EXPECT_EQ(creator.particleTypes.count(), 0u);
    EXPECT_EQ(creator.particleTypes.maxId, 0u);
    EXPECT_EQ(creator.velocityRestricted + creator.angularVelocityRestricted, 0);
    EXPECT_EQ(creator.velocityLimit + creator.angularVelocityLimit, 0.0);
    EXPECT_TRUE(creator.physicsModels.sphereSphereModels.empty());
    EXPECT_TRUE(creator.physicsModels.sphereGeometryModels.empty());
    EXPECT_FALSE(creator.legacyStreamFlag);
    EXPECT_EQ(creator.storageIndex(), CCreatorData::noStorageIndex);
    EXPECT_EQ(creator.storageOffset(), CCreatorData::noStorageOffset);
    EXPECT_EQ(creator.title, QString("Silo"));
    EXPECT_EQ(creator.damping, 0.1);
    EXPECT_EQ(creator.gravity, C3DPoint(0, 0, -9.81));
    EXPECT_EQ(creator.domain.max, C3DPoint(1, 1, 1));
    EXPECT_TRUE(creator.cylindricalPeriodicBoundaryConditions.enabled);
}

} // namespace NBrenmark
