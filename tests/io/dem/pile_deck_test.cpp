// The sample deck of two kinds of grains. The expected numbers were taken out of its bytes by a
// script of its own, which shares nothing with this library.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_testing.h"
#include "support/text_lines.h"

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
    CCreatorData& creator = pile.frame.creator;
    // Steel is in no particle: what a 27.0.3 deck doesn't store, its type, follows from that.
    expectText(
        creator,
        "object/fileVersion \"27.0.3\"; object/buildRevision 28438; gravity (0, 0, -9.81); "
        "domain/min (-0.05, -0.05, -0.01); domain/max (0.05, 0.05, 0.21); domain/periodicX false; "
        "domain/periodicY false; domain/periodicZ false; title \"Pile\"; "
        "description \"Two kinds of grains fall into a box and settle. Positions, velocities and forces come from a "
        "granular solver.\"; "
        "physicsModels/sphereSphereModels/Hertz-Mindlin%20(no%20slip)/index 0; "
        "physicsModels/sphereGeometryModels/Hertz-Mindlin%20(no%20slip)/index 0; "
        "materials/glass/shearModulus 1923076.923076923; materials/seed/name \"seed\"; "
        "materials/steel/density 7850; materials/glass/type 1; materials/steel/type 0; "
        "interactions/seed~steel/staticFriction 0.4; particles/Glass%20bead/index 0; "
        "particles/Seed%20(oval)/index 1; particles/Seed%20(oval)/materialName \"seed\"; "
        "particles/Seed%20(oval)/rawMass 1.0133521263419233e-05; "
        "particles/Seed%20(oval)/rawInertia (5.836908247729478e-12, 7.296135309661846e-12, 7.296135309661846e-12); "
        "particles/Seed%20(oval)/spheres/2/name \"right\"; "
        "particles/Seed%20(oval)/spheres/2/position (0.00047999999999999996, 0, 0)");
    EXPECT_EQ(creator.materials.size(), 3);
    EXPECT_EQ(creator.interactions.entries.size(), 5);
    EXPECT_EQ(creator.particleTypes.types[1]->spheres.size(), 3u);
    EXPECT_FALSE(creator.modified);
}

TEST(PileDeck, timestepReadsToItsLastByte)
{
    CPile pile;
    pile.readCreator();
    EXPECT_EQ(pile.readTimestep(thirdTimestepAt), lastTimestepAt);
    CTimestepData& timestep = pile.frame.timestep;
    expectText(timestep,
               "isFull true; timestepMask 255; particleMask 47; geometryMask 41; time 0.24000000000000002; "
               "elapsedTime 37.5; runNumber 3; particles/maxId 2000; "
               "energy/cumulative/kinetic 5.1119078710679436e-05; energy/cumulative/lostThroughContacts 0.025; "
               "energy/total 0.0010459868541528583; energy/kinetic 5.1119078710679436e-05; "
               "removedParticles/Seed%20(oval) 4; removedParticles/Glass%20bead 2; "
               "properties/Fill%20level f64[1] 1.7; properties/Tilt f64[1,3] (2, 4, -1)");
    EXPECT_EQ(timestep.date, "17/03/18");
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
}

TEST(PileDeck, lastTimestepEndsWithTheFile)
{
    CPile pile;
    pile.readCreator();
    EXPECT_EQ(pile.readTimestep(lastTimestepAt), endOfDeck);
}

} // namespace NBrenmark
