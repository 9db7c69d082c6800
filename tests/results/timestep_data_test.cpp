// The state of a simulation at one saved time.
#include "model/creator_data.h"
#include "results/timestep_data.h"

#include <gtest/gtest.h>

namespace NBrenmark {

class TimestepData : public testing::Test
{
protected:
    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    SPropertyManagers managers{&particle, &contact, nullptr, &simulation};
    CCreatorData creator{managers};
    CTimestepData timestep{managers, creator};
};

TEST_F(TimestepData, aNewOneIsFullAndHoldsEverything)
{
    EXPECT_TRUE(timestep.isFull);
    EXPECT_EQ(timestep.timestepMask, 255u);
    EXPECT_EQ(timestep.particleMask, 47u);
    EXPECT_EQ(timestep.geometryMask, 41u);
    EXPECT_EQ(timestep.timestepIndex, 0xFFFFFFFFu);
    EXPECT_EQ(timestep.particleTypes.domain, &creator.domain);
    EXPECT_EQ(timestep.simulationProperties.manager(), &simulation);
    EXPECT_EQ(timestep.contacts.surfaceGeometry.customProperties.manager(), &contact);
    EXPECT_EQ(timestep.particleTypes.append().customProperties.manager(), &particle);
    // The bits of the timestep's mask that stand for the four families.
    EXPECT_EQ(timestep.contacts.surfaceSurface.familyMask(), 4u);
    EXPECT_EQ(timestep.contacts.surfaceGeometry.familyMask(), 8u);
    EXPECT_EQ(timestep.collisions.surfaceSurface.familyMask(), 16u);
    EXPECT_EQ(timestep.collisions.surfaceGeometry.familyMask(), 32u);
    EXPECT_EQ(timestep.contacts.surfaceSurface.activeCollisions.familyMask(), 16u);
    EXPECT_EQ(timestep.contacts.surfaceGeometry.activeCollisions.familyMask(), 32u);
}

TEST_F(TimestepData, alwaysHasOneItemOfSimulationProperties)
{
    EXPECT_EQ(timestep.simulationProperties.itemCount(), 1u);
    auto metaData = std::make_unique<CCustomPropertyMetaData>("Power", 0u, 2u, 0u, std::vector<double>{3, 4});
    simulation.addProperty(metaData);
    simulation.lastFinalisedPropertyIndex = 0;
    simulation.notifyChanged(0);
    EXPECT_EQ(timestep.simulationProperties.list("Power")->values, (std::vector<double>{3, 4}));
    timestep.clear();
    EXPECT_EQ(timestep.simulationProperties.itemCount(), 1u);
}

TEST_F(TimestepData, clearLeavesTheModelAndWhatAReadOverwrites)
{
    creator.particleTypes.append();
    timestep.particleTypes.append();
    timestep.particleTypes.maxId = 4;
    timestep.removedParticles["of a type that is nowhere"] = 3;
    timestep.systemEnergy.total = 1;
    timestep.systemEnergy.cumulative.lostThroughCapping = 2;
    timestep.contacts.surfaceSurface.collisionsActive = true;
    timestep.contacts.surfaceSurface.customProperties.resize(6);
    timestep.isFull = false;
    timestep.timestepMask = 1;
    timestep.time = 0.5;
    timestep.date = "24/11/25";

    timestep.clear();
    EXPECT_EQ(timestep.particleTypes.count(), 0u);
    EXPECT_EQ(timestep.particleTypes.maxId, 0u);
    EXPECT_EQ(creator.particleTypes.count(), 1u);
    EXPECT_TRUE(timestep.removedParticles.isEmpty());
    EXPECT_EQ(timestep.systemEnergy.total, 0.0);
    EXPECT_EQ(timestep.systemEnergy.cumulative.lostThroughCapping, 0.0);
    EXPECT_TRUE(timestep.contacts.surfaceSurface.collisionsActive);
    EXPECT_EQ(timestep.contacts.surfaceSurface.customProperties.itemCount(), 0u);
    EXPECT_FALSE(timestep.isFull);
    EXPECT_EQ(timestep.timestepMask, 1u);
    EXPECT_EQ(timestep.time, 0.5);
    EXPECT_EQ(timestep.date, QString("24/11/25"));
}

} // namespace NBrenmark
