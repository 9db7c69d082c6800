// The state of a simulation at one saved time.
#include "model/creator_data.h"
#include "physics/parallel_bond.h"
#include "results/timestep_data.h"
#include "support/log_capture.h"

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

TEST_F(TimestepData, bondsHaveTheParametersOfTheMaterialsOfTheirTypes)
{
    for (const auto& [name, material] : {std::pair("A", "m"), std::pair("B", "m(1)"), std::pair("C", "n")}) {
        CParticleType& type = timestep.particleTypes.append();
        type.setName(name);
        type.materialName = material;
    }
    auto model = std::make_unique<CParallelBondContactModel>(eSphereSphereModel);
    CBondParametersMap& parameters = model->parameters.bondParameters;
    for (const char* key : {"m <> m(1)", "m <> n"})
        parameters.set(key, CBondParameters());
    creator.physicsModels.addContactModel(std::move(model), CPhysicsModels::atEnd);
    CSurfaceSurfaceBonds& bonds = timestep.bonds.surfaceSurface;
    bonds.resizeRows(3);
    bonds.rows = {{0, 0, 1, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}};
    bonds.state.assign(3, eIntactBond);
    const CLogCapture log;
    timestep.settle(NLogTitle::legacyRead);
    EXPECT_NE(log.text().find("1 intact bond broken now"), std::string::npos) << "A has none with itself" << log.text();
    EXPECT_EQ(bonds.parameters[0], parameters.find("m <> m(1)"));
    EXPECT_EQ(bonds.parameters[1], parameters.find("m <> n"));
    EXPECT_EQ(bonds.parameters[2], nullptr);
}

} // namespace NBrenmark
