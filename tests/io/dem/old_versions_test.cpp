// Every file version below 20.0.16 that reads differently from the one before it, and that one: the smallest deck with one
// of everything is read to its last byte, and what each version stores or leaves out has its value. The values are counted
// by hand from what support/old_deck.cpp stores.
#include "io/dem/dem_testing.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"
#include "physics/cohesion.h"
#include "support/legacy_deck_geometry.h"
#include "support/old_deck.h"

namespace NBrenmark {
namespace {

class OldVersion : public testing::TestWithParam<quint32>
{
protected:
    bool from(quint32 major, quint32 minor, quint32 build) const { return since(GetParam(), major, minor, build); }
    bool in13(quint32 build) const { return from(13, 0, build) && !from(20, 0, 0); }
    /// Reads both blocks to their last bytes.
    void SetUp() override
    {
        finalizeProperty(own.particle, "Heat", {293.0});
        const CBytes model = oldCreatorBytes(GetParam());
        const CBytes timestep = oldTimestepBytes(GetParam());
        ASSERT_EQ(consumedBy<CDemCreatorDataReader>(own.frame.creator, model), model.size());
        ASSERT_EQ(consumedBy<CDemTimestepDataReader>(own.frame.timestep, timestep), timestep.size());
    }

    COwnFrame own;
    CCreatorData& creator = own.frame.creator;
    CTimestepData& timestep = own.frame.timestep;
};

std::string numbersOf(const C3DVector& v)
{
    return QStringLiteral("%1 %2 %3").arg(v.x).arg(v.y).arg(v.z).toStdString();
}

} // namespace

TEST_P(OldVersion, hasTheValuesOfItsModel)
{
    EXPECT_EQ(creator.description, from(2, 4, 8) ? "Description" : "");
    EXPECT_EQ(creator.damping, 0.25);
    EXPECT_EQ(creator.velocityLimit, in13(3) || from(20, 0, 13) ? 12.5 : 0.0);
    EXPECT_EQ(creator.angularVelocityLimit, in13(3) || from(20, 0, 13) ? 80.0 : 0.0);
    ASSERT_EQ(creator.particleTypes.count(), 1u);
    const CParticleType& type = *creator.particleTypes.types[0];
    EXPECT_EQ(type.name, "Ball");
    EXPECT_EQ(type.rawMass, 1.0);
    EXPECT_EQ(type.rawVolume, 0.5);
    EXPECT_EQ(type.calculateProperties, !from(20, 0, 4));
    EXPECT_EQ(type.spheres.at(0).physicalRadius, from(2, 4, 3) ? 0.375 : 0.5);
    ASSERT_EQ(creator.materials.contains("Glass"), from(2, 4, 39));
    if (from(2, 4, 39)) {
        EXPECT_EQ(creator.materials.find("Glass")->workFunction, in13(1) ? 4.5 : 0.0);
    }
    const bool hasModels = in13(6) || from(20, 0, 14);
    const auto* const cohesion = dynamic_cast<const CCohesionContactModel*>(
        CPhysicsModels::findModel(creator.physicsModels.sphereSphereModels, "Linear Cohesion"));
    ASSERT_EQ(cohesion != nullptr, hasModels);
    if (hasModels) { // keyed by materials now
        EXPECT_EQ(cohesion->parameters.energyDensity.valueOf("Glass", "Glass"), 0.875);
    }
}

TEST_P(OldVersion, hasTheValuesOfItsWalls)
{
    ASSERT_EQ(creator.geometryGroups.count(), 2u);
    const CGeometryGroup& drum = *creator.geometryGroups.at(0);
    EXPECT_EQ(drum.name, "Drum");
    EXPECT_EQ(drum.materialName, "Steel");
    EXPECT_EQ(numbersOf(drum.desiredForce), from(2, 4, 31) ? "7 8 9" : "0 0 0");
    EXPECT_EQ(numbersOf(drum.velocity), "0 0 3");
    EXPECT_EQ(drum.time, from(20, 0, 10) && !from(20, 0, 21) ? 0.25 : from(2, 4, 4) ? 0.625 : 0.0);
    EXPECT_EQ(drum.gain, from(2, 4, 31) ? 0.75 : 0.0);
    EXPECT_EQ(drum.resetVelocities, from(20, 0, 0) || !from(2, 4, 34));
    EXPECT_EQ(numbersOf(drum.centreOfMass.toVector()), from(2, 4, 59) ? "1 2 3" : "0 0 0");
    EXPECT_EQ(drum.geometryType, in13(3) ? eVirtualGeometry : eRealGeometry);
    EXPECT_EQ(drum.electrostatic.startCharge, in13(1) ? 2e-9 : 0.0);
    ASSERT_EQ(drum.triangleNodes.size(), from(2, 4, 2) ? 1u : 0u);
    if (from(2, 4, 2)) {
        EXPECT_EQ(drum.triangleIds.at(0), 5u);
        EXPECT_EQ(drum.triangleAreas.at(0), 0.5);
        EXPECT_EQ(drum.triangleForces.at(0)[6], from(2, 4, 9) ? 106.0 : 0.0);
    }
    EXPECT_EQ(drum.kinematics.actions.size(), from(20, 0, 0) ? 1u : 2u);
    const auto* const cylinder = dynamic_cast<const CCylinder*>(&drum);
    const auto* const plate = dynamic_cast<const CPolygon*>(creator.geometryGroups.at(1));
    ASSERT_EQ(cylinder != nullptr && plate != nullptr, from(2, 4, 5));
    if (plate != nullptr) {
        EXPECT_EQ(cylinder->radiusEnd, from(2, 4, 15) ? 0.375 : 0.25);
        EXPECT_EQ(plate->lengthSide1, from(2, 4, 26) ? 2.0 : 1.0);
    }
}

TEST_P(OldVersion, hasTheValuesOfItsFactories)
{
    const auto factoryOf = [&](quint32 group) -> CParticleFactory& {
        return *creator.geometryGroups.at(group)->factories->factories.at(0);
    };
    auto& feed = dynamic_cast<CDynamicParticleFactory&>(factoryOf(0));
    EXPECT_EQ(feed.creationCount, from(20, 0, 12) ? 4u : 3u);
    EXPECT_EQ(feed.maxAttempts, from(2, 4, 27) ? 30u : from(2, 4, 20) ? 40u : 20u);
    EXPECT_EQ(feed.massToCreate, from(2, 4, 52) ? 12.5 : 100.0);
    EXPECT_EQ(feed.createdSinceRateChange, from(20, 0, 12) ? 5u : 0u);
    EXPECT_EQ(feed.electrostatic.fixedValue, in13(1) ? 1e-9 : 0.0);
    const auto& filler = dynamic_cast<CStaticParticleFactory&>(factoryOf(1));
    EXPECT_EQ(filler.completed, !from(20, 0, 12));
    EXPECT_EQ(filler.fillShape, !from(2, 4, 50));
    EXPECT_EQ(filler.numToCreate, from(2, 4, 50) ? 250u : 1000u);
}

TEST_P(OldVersion, hasTheValuesOfItsParticles)
{
    ASSERT_EQ(timestep.particleTypes.count(), 1u) << "two sizes of one template";
    const CParticleType& type = *timestep.particleTypes.types[0];
    ASSERT_EQ(type.liveCount(), 2u);
    EXPECT_EQ(timestep.particleTypes.maxId, 2u);
    EXPECT_EQ(type.rawMass, 1.0);
    EXPECT_EQ(numbersOf(type.velocity.at(1)), "0 0 2");
    EXPECT_EQ(timestep.time, 0.25);
    EXPECT_EQ(timestep.date, "17/03/18");
    const CSystemEnergy& energy = timestep.systemEnergy;
    EXPECT_EQ(energy.total, 8.0);
    EXPECT_EQ(energy.kinetic, from(2, 4, 30) ? 10.0 : 0.0);
    EXPECT_EQ(energy.cumulative.lostThroughContacts, from(2, 4, 30) ? 6.0 : 0.0);
    EXPECT_EQ(energy.cumulative.lostThroughCapping, from(2, 4, 55) ? 7.0 : 0.0);
    EXPECT_EQ(timestep.removedParticles.value("Ball"), from(2, 4, 38) ? 2u : 0u);
    if (from(20, 0, 0))
        return;
    EXPECT_EQ(type.scale.at(1), 2.0);
    EXPECT_EQ(numbersOf(type.position.at(1).toVector()), "1 0 0");
    EXPECT_EQ(type.forceTorque.at(1)[6], from(2, 4, 9) ? 26.0 : 0.0);
    EXPECT_EQ(type.unscaledForceTorque.at(1)[0], 40.0);
    EXPECT_EQ(type.externalForceTorque.at(1)[0], from(2, 4, 29) ? 60.0 : 0.0);
    EXPECT_EQ(type.electrostatic.charge.at(1), in13(1) ? 0.25 : 0.0);
    EXPECT_EQ(type.customProperties.lists[0]->item(1)[0], in13(5) ? 302.0 : 293.0);
}

TEST_P(OldVersion, hasTheValuesOfItsPairs)
{
    const CSurfaceSurfaceContacts& contacts = timestep.contacts.surfaceSurface;
    if (from(20, 0, 0)) {
        EXPECT_EQ(contacts.rowCount(), 0u);
        EXPECT_EQ(timestep.bonds.surfaceSurface.rowCount(), 0u);
        EXPECT_EQ(timestep.collisions.surfaceSurface.recordCount(), 0u);
        return;
    }
    // Particle 2 stands first in the file: the ends change places, and forces their sign.
    ASSERT_EQ(contacts.liveCount(), 1u);
    EXPECT_EQ(contacts.rows[0], (PairRow{0, 0, 0, 1}));
    EXPECT_EQ(numbersOf(contacts.normalForce[0]), from(2, 4, 52) ? "1 2 3" : "-1 -2 -3");
    EXPECT_EQ(numbersOf(contacts.tangentialForce[0]), from(2, 4, 52) ? "4 5 6" : "-4 -5 -6");
    EXPECT_EQ(numbersOf(contacts.contactVector1[0]), "8 0 0");
    EXPECT_EQ(contacts.normalOverlap[0], 0.0625);
    const CSurfaceGeometryContacts& walls = timestep.contacts.surfaceGeometry;
    ASSERT_EQ(walls.liveCount(), from(2, 4, 2) ? 1u : 0u);
    if (from(2, 4, 2)) {
        EXPECT_EQ(walls.rows[0], (PairRow{0, 0, 0, 0}));
        EXPECT_EQ(numbersOf(walls.normalForce[0]), from(2, 4, 52) ? "-1 -2 -3" : "1 2 3");
    }
    ASSERT_EQ(contacts.collisionsActive, from(2, 4, 37));
    if (from(2, 4, 37)) {
        EXPECT_EQ(contacts.activeCollisions.ids.at(0), 7u);
        EXPECT_EQ(numbersOf(contacts.activeCollisions.maxNormalForce.at(0)), "-1 -2 -3");
        EXPECT_EQ(numbersOf(contacts.activeCollisions.totalNormalForce.at(0)), "4 5 6");
    }
    const CSurfaceSurfaceBonds& bonds = timestep.bonds.surfaceSurface;
    ASSERT_EQ(bonds.rowCount(), in13(9) ? 1u : 0u);
    if (in13(9)) {
        EXPECT_EQ(bonds.rows[0], (PairRow{0, 0, 0, 1}));
        EXPECT_EQ(numbersOf(bonds.tangentialTorque[0]), "-10 -11 -12");
        EXPECT_EQ(bonds.breakTime[0], 0.5);
    }
}

/// Each version of the list and the one below it.
static std::vector<quint32> versionsAndThoseBelow()
{
    std::vector<quint32> versions;
    for (const quint32 version : oldVersions)
        for (const quint32 next : {version - 1, version})
            if (versions.empty() || versions.back() < next)
                versions.push_back(next);
    versions.push_back(makeVersion(20, 0, 15));
    versions.push_back(makeVersion(3, 0, 5)); // old numbering
    return versions;
}

INSTANTIATE_TEST_SUITE_P(Gates, OldVersion, testing::ValuesIn(versionsAndThoseBelow()), [](const auto& version) {
    return versionText(version.param).replace('.', '_').toStdString();
});

} // namespace NBrenmark
