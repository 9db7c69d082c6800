// The sample deck of two kinds of grains. The expected numbers were taken out of its bytes by a
// script of its own, which shares nothing with this library.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_testing.h"

#include <gtest/gtest.h>
#include <numeric>

namespace NBrenmark {

static constexpr qint64 thirdTimestepAt = 641933;
static constexpr qint64 lastTimestepAt = 1081631;
static constexpr qint64 endOfDeck = 1555414;

/// The pile, with the properties that its settings define.
class CPile : public CSampleDeck
{
public:
    CPile() : CSampleDeck("pile-27.dem")
    {
        finalizeProperty(particle, "Temperature", {293.15});
        finalizeProperty(particle, "Wear", {0.0, 0.0, 0.0});
        finalizeProperty(simulation, "Fill level", {0.0});
        finalizeProperty(simulation, "Tilt", {0.0, 0.0, 0.0});
    }
};

template <class TPoints>
static double sumOf(const TPoints& points)
{
    double sum = 0.0;
    for (const auto& point : points)
        sum = ((sum + point.x) + point.y) + point.z;
    return sum;
}

TEST(PileDeck, creatorDataReadsToItsLastByte)
{
    CPile pile;
    EXPECT_EQ(pile.readCreator(), 1464); // where the first timestep begins
    const CCreatorData& creator = pile.frame.creator;
    EXPECT_EQ(creator.fileVersion, makeVersion(27, 0, 3));
    EXPECT_EQ(creator.buildRevision, 28438u);
    EXPECT_EQ(creator.gravity.z, -9.81);
    EXPECT_EQ(creator.domain.min.x, -0.05);
    EXPECT_EQ(creator.domain.max.z, 0.21);
    EXPECT_FALSE(creator.domain.periodicX || creator.domain.periodicY || creator.domain.periodicZ);
    EXPECT_EQ(creator.title, "Pile");
    EXPECT_EQ(creator.description, "Two kinds of grains fall into a box and settle. Positions, velocities and forces "
                                   "come from a granular solver.");
    ASSERT_EQ(creator.physicsModels.sphereSphereModels.size(), 1u);
    ASSERT_EQ(creator.physicsModels.sphereGeometryModels.size(), 1u);
    EXPECT_EQ(creator.physicsModels.sphereGeometryModels[0]->modelName(), "Hertz-Mindlin (no slip)");
    EXPECT_EQ(QStringList(creator.materials.keys()), (QStringList{"glass", "seed", "steel"}));
    EXPECT_EQ(creator.materials.find("glass")->shearModulus, 1923076.923076923);
    EXPECT_EQ(creator.materials.find("steel")->density, 7850.0);
    EXPECT_EQ(creator.interactions.entries.size(), 5);
    EXPECT_EQ(creator.interactions.find("steel", "seed")->staticFriction, 0.4);
    EXPECT_EQ(creator.particleTypes.names(), (QStringList{"Glass bead", "Seed (oval)"}));
    const CParticleType& seed = *creator.particleTypes.types[1];
    EXPECT_EQ(seed.materialName, "seed");
    EXPECT_EQ(seed.rawMass, 1.0133521263419233e-05);
    EXPECT_EQ(seed.rawInertia.y, 7.296135309661846e-12);
    ASSERT_EQ(seed.spheres.size(), 3u);
    EXPECT_EQ(seed.spheres[2].name, "right");
    EXPECT_EQ(seed.spheres[2].position.x, 0.00047999999999999996);
    EXPECT_TRUE(seed.spheres[2].radiiDiffer);
    EXPECT_FALSE(seed.spheres[0].radiiDiffer);
    EXPECT_FALSE(creator.modified);
    // Steel is in no particle: what a 27.0.3 deck doesn't store follows from that.
    EXPECT_TRUE(creator.materials.find("glass")->isBulk());
    EXPECT_FALSE(creator.materials.find("steel")->isBulk());
}

TEST(PileDeck, timestepReadsToItsLastByte)
{
    CPile pile;
    pile.readCreator();
    EXPECT_EQ(pile.readTimestep(thirdTimestepAt), lastTimestepAt);
    const CTimestepData& timestep = pile.frame.timestep;
    EXPECT_TRUE(timestep.isFull);
    EXPECT_EQ(timestep.timestepMask, 255u);
    EXPECT_EQ(timestep.particleMask, 47u);
    EXPECT_EQ(timestep.geometryMask, 41u);
    EXPECT_EQ(timestep.time, 0.24000000000000002);
    EXPECT_EQ(timestep.elapsedTime, 37.5);
    EXPECT_EQ(timestep.runNumber, 3);
    EXPECT_EQ(timestep.date, "17/03/18");
    EXPECT_EQ(timestep.particleTypes.maxId, 2000u);
    ASSERT_EQ(timestep.particleTypes.count(), 2u);
    EXPECT_EQ(timestep.particleTypes.particleCount(), 2000u);

    const CParticleType& bead = *timestep.particleTypes.types[0];
    EXPECT_EQ(bead.slotCount(), 523u);
    EXPECT_EQ(bead.dataMask, 0x21FFu);
    EXPECT_EQ(bead.gravity.z, -9.81);
    EXPECT_EQ(std::accumulate(bead.ids.begin(), bead.ids.end(), 0), 137026);
    EXPECT_EQ(bead.velocity[0].x, -0.006324669509462155);
    EXPECT_DOUBLE_EQ(sumOf(bead.velocity), -7.0491876858901);
    EXPECT_EQ(bead.position.back().z, 0.004538899127801582);
    EXPECT_DOUBLE_EQ(sumOf(bead.position), 2.045915950439936);
    EXPECT_EQ(bead.orientation[0].w, -0.755503455697775);
    EXPECT_EQ(bead.orientation.back().z, -0.3075882569338536);
    EXPECT_EQ(bead.angularVelocity[0].y, -0.7978095787744703);
    EXPECT_DOUBLE_EQ(std::accumulate(bead.scale.begin(), bead.scale.end(), 0.0), 443.44396459460256);
    EXPECT_EQ(bead.forceTorque[0][2], 0.0006443645733808201);
    EXPECT_EQ(bead.externalForceTorque[0][2], -0.0003536662038260799);
    EXPECT_EQ(bead.creationTime, std::vector<double>(523, 0.0));

    const CParticleType& seed = *timestep.particleTypes.types[1];
    EXPECT_EQ(seed.slotCount(), 1477u);
    EXPECT_EQ(seed.unscaledForceTorque.back()[6], 0.0007592495324636699);
    ASSERT_EQ(seed.customProperties.lists.size(), 2u);
    EXPECT_EQ(seed.customProperties.lists[0]->values[3], 295.78753162789496);
    EXPECT_DOUBLE_EQ(std::accumulate(seed.customProperties.lists[0]->values.begin(),
                                     seed.customProperties.lists[0]->values.end(), 0.0),
                     434222.7597679734);
    EXPECT_EQ(seed.customProperties.lists[1]->values.size(), 3u * 1477);
    EXPECT_EQ(seed.customProperties.lists[1]->values[2], 3.872046903280166e-13);

    EXPECT_EQ(timestep.systemEnergy.cumulative.kinetic, 5.1119078710679436e-05);
    EXPECT_EQ(timestep.systemEnergy.cumulative.lostThroughContacts, 0.025);
    EXPECT_EQ(timestep.systemEnergy.total, 0.0010459868541528583);
    EXPECT_EQ(timestep.systemEnergy.kinetic, 5.1119078710679436e-05);
    EXPECT_EQ(timestep.removedParticles, (QMap<QString, quint32>{{"Seed (oval)", 4}, {"Glass bead", 2}}));
    ASSERT_EQ(timestep.simulationProperties.lists.size(), 2u);
    EXPECT_EQ(timestep.simulationProperties.lists[0]->values, std::vector<double>{1.7});
    EXPECT_EQ(timestep.simulationProperties.lists[1]->values, (std::vector<double>{2.0, 4.0, -1.0}));
}

TEST(PileDeck, lastTimestepEndsWithTheFile)
{
    CPile pile;
    pile.readCreator();
    EXPECT_EQ(pile.readTimestep(lastTimestepAt), endOfDeck);
}

} // namespace NBrenmark
