// What the text of a model shows: each thing that the model holds is one line, and moves no other.
#include "core/deck/simulation_frame.h"
#include "io/text/text_writer.h"
#include "physics/hertz_mindlin_no_slip.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

#include <functional>

namespace NBrenmark {

namespace {

/// A frame with something in every room, its numbers all different.
struct SSample
{
    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    CCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    std::unique_ptr<SSimulationFrame> frame;

    SSample()
    {
        for (CCustomPropertyManager* manager : {&particle, &simulation}) {
            auto heat = std::make_unique<CCustomPropertyMetaData>("Heat flux", eDoubleProperty, 2, 0);
            manager->addProperty(heat);
            manager->lastFinalisedPropertyIndex = 0;
        }
        frame = std::make_unique<SSimulationFrame>(SPropertyManagers{&particle, &contact, &geometry, &simulation});
        CCreatorData& creator = frame->creator;
        creator.materials.set("steel", new CMaterial("steel", 0.3, 8e10, 7850, 4.5, eBulkMaterial));
        creator.interactions.set("steel", "steel", new CInteraction);
        fillType(creator.particleTypes.append(), 0);
        addBlock();

        CTimestepData& timestep = frame->timestep;
        fillType(timestep.particleTypes.append(), 3);
        timestep.removedParticles["Ball"] = 4;
        timestep.simulationProperties.resize(1);
    }

    static void fillType(CParticleType& type, quint32 count)
    {
        type.setName("Ball");
        type.spheres.emplace_back();
        type.resizeSlots(count);
        for (quint32 i = 0; i < count; ++i)
            type.ids[i] = static_cast<qint32>(i) + 1;
        type.customProperties.resize(count);
    }

    void addBlock()
    {
        auto block = std::make_shared<CMaterialBlock>();
        block->particleData.push_back(std::make_shared<CMaterialBlockParticleData>());
        block->particleData.back()->name = "Ball";
        block->particleData.back()->scale = {1.0};
        block->surfaceSurfaceContacts = std::make_shared<CMaterialBlockContactData>();
        frame->creator.materialBlocks["bed"] = block;
    }

    Lines text(bool full = false)
    {
        CLineMap map;
        CTextWriter creator(map, "creator", full);
        frame->creator.write(creator);
        CTextWriter timestep(map, "timestep/3", full);
        frame->timestep.write(timestep);
        return map.lines;
    }

    CCreatorData& creator() { return frame->creator; }
    CTimestepData& timestep() { return frame->timestep; }
    CParticleType& ball() { return *frame->timestep.particleTypes.types[0]; }
};

struct SChange
{
    const char* path;
    std::function<void(SSample&)> make;
};

/// What the seeds of verify leave out.
const SChange changes[] = {
    {"creator/velocityRestricted", [](SSample& s) { s.creator().velocityRestricted = 1; }},
    {"creator/angularVelocityRestricted", [](SSample& s) { s.creator().angularVelocityRestricted = 1; }},
    {"creator/angularVelocityLimit", [](SSample& s) { s.creator().angularVelocityLimit = 1; }},
    {"creator/domain/min", [](SSample& s) { s.creator().domain.min.x = 1; }},
    {"creator/domain/periodicY", [](SSample& s) { s.creator().domain.periodicY = true; }},
    {"creator/domain/periodicZ", [](SSample& s) { s.creator().domain.periodicZ = true; }},
    {"creator/cylindricalPeriodicBoundaryConditions/enabled",
     [](SSample& s) { s.creator().cylindricalPeriodicBoundaryConditions.enabled = true; }},
    {"creator/cylindricalPeriodicBoundaryConditions/geometryName",
     [](SSample& s) { s.creator().cylindricalPeriodicBoundaryConditions.geometryName = "drum"; }},
    {"creator/cylindricalPeriodicBoundaryConditions/kinematicName",
     [](SSample& s) { s.creator().cylindricalPeriodicBoundaryConditions.kinematicName = "turn"; }},
    {"creator/cylindricalPeriodicBoundaryConditions/length",
     [](SSample& s) { s.creator().cylindricalPeriodicBoundaryConditions.length = 1; }},
    {"creator/cylindricalPeriodicBoundaryConditions/angle",
     [](SSample& s) { s.creator().cylindricalPeriodicBoundaryConditions.angle = 1; }},
    {"creator/materials/steel/name", [](SSample& s) { s.creator().materials.find("steel")->name = "Steel"; }},
    {"creator/materials/steel/poissonsRatio",
     [](SSample& s) { s.creator().materials.find("steel")->poissonsRatio = 0.31; }},
    {"creator/materials/steel/shearModulus", [](SSample& s) { s.creator().materials.find("steel")->shearModulus = 1; }},
    {"creator/materials/steel/type", [](SSample& s) { s.creator().materials.find("steel")->type = 0; }},
    {"creator/interactions/steel~steel/restitution",
     [](SSample& s) { s.creator().interactions.find("steel", "steel")->restitution = 1; }},
    {"creator/interactions/steel~steel/rollingFriction",
     [](SSample& s) { s.creator().interactions.find("steel", "steel")->rollingFriction = 1; }},
    {"creator/physicsModels/sphereSphereModels/Hertz-Mindlin%20(no%20slip)/source",
     [](SSample& s) { s.creator().physicsModels.sphereSphereModels[0]->source = ePluginModel; }},
    {"creator/physicsModels/sphereGeometryModels/Hertz-Mindlin%20(no%20slip)/enableRollingFriction",
     [](SSample& s) {
         auto& model = *s.creator().physicsModels.sphereGeometryModels[0];
         dynamic_cast<CHertzMindlinNoSlipContactModel&>(model).parameters.enableRollingFriction = true;
     }},
    {"creator/particles/maxId", [](SSample& s) { s.creator().particleTypes.maxId = 9; }},
    {"creator/particles/Ball/rawMass", [](SSample& s) { s.creator().particleTypes.types[0]->rawMass = 9; }},
    {"creator/materialBlocks/bed/materialName",
     [](SSample& s) { s.creator().materialBlocks["bed"]->materialName = "steel"; }},
    {"creator/materialBlocks/bed/boundingBox/lower",
     [](SSample& s) { s.creator().materialBlocks["bed"]->boundingBox.lower.x = 1; }},
    {"creator/materialBlocks/bed/particles/Ball/scale",
     [](SSample& s) { s.creator().materialBlocks["bed"]->particleData[0]->scale = {2.0}; }},
    {"creator/materialBlocks/bed/surfaceSurfaceContacts/contacts",
     [](SSample& s) {
         s.creator().materialBlocks["bed"]->surfaceSurfaceContacts->contacts.push_back({1, 2, 3, 4});
     }},

    {"timestep/3/removedParticles/Rod", [](SSample& s) { s.timestep().removedParticles["Rod"] = 0; }},
    {"timestep/3/properties/Heat%20flux",
     [](SSample& s) { s.timestep().simulationProperties.lists[0]->values[1] = 1; }},
    {"timestep/3/contacts/surfaceGeometry/collisionsActive",
     [](SSample& s) { s.timestep().contacts.surfaceGeometry.collisionsActive = true; }},
    {"timestep/3/energy/potential", [](SSample& s) { s.timestep().systemEnergy.potential = 1; }},
    {"timestep/3/energy/cumulative/potential", [](SSample& s) { s.timestep().systemEnergy.cumulative.potential = 1; }},
    {"timestep/3/energy/cumulative/createdParticles",
     [](SSample& s) { s.timestep().systemEnergy.cumulative.createdParticles = 1; }},
    {"timestep/3/energy/cumulative/destroyedParticles",
     [](SSample& s) { s.timestep().systemEnergy.cumulative.destroyedParticles = 1; }},
    {"timestep/3/energy/cumulative/external", [](SSample& s) { s.timestep().systemEnergy.cumulative.external = 1; }},
    {"timestep/3/energy/cumulative/lostThroughContacts",
     [](SSample& s) { s.timestep().systemEnergy.cumulative.lostThroughContacts = 1; }},

    {"timestep/3/particles/Ball/autoCenterParticle", [](SSample& s) { s.ball().autoCenterParticle = false; }},
    {"timestep/3/particles/Ball/templateName", [](SSample& s) { s.ball().templateName = "t"; }},
    {"timestep/3/particles/Ball/autoProperties", [](SSample& s) { s.ball().autoProperties = true; }},

    {"stored/creator/fileVersion", [](SSample& s) { s.creator().fileVersion = makeVersion(27, 0, 3); }},
    {"stored/creator/storageIndex", [](SSample& s) { s.creator().setStorageIndex(2); }},
    {"stored/timestep/3/buildBranch", [](SSample& s) { s.timestep().buildBranch = "b"; }},
    {"stored/timestep/3/date", [](SSample& s) { s.timestep().date = "17/03/18"; }},
    {"stored/timestep/3/particles/Ball/dataMask", [](SSample& s) { s.ball().dataMask = 511; }},
};

} // namespace

class TextOfAModel : public testing::TestWithParam<SChange>
{
};

TEST_P(TextOfAModel, showsAChangeUnderItsPathAndNowhereElse)
{
    SSample sample;
    const Lines before = sample.text();
    GetParam().make(sample);
    std::vector<std::string> expected{GetParam().path};
    if (expected[0] == "stored/creator/storageIndex") // the timestep names its model's place
        expected.push_back("stored/timestep/3/creator");
    EXPECT_EQ(changed(before, sample.text()), expected);
}

INSTANTIATE_TEST_SUITE_P(Changes, TextOfAModel, testing::ValuesIn(changes));

TEST(TextOfAModelAsAWhole, showsFreeSlotsAlikeInWhateverOrderTheyWereReleased)
{
    SSample sample;
    sample.ball().releaseSlot(0, false);
    sample.ball().releaseSlot(2, false);
    SSample other;
    other.ball().releaseSlot(2, false);
    other.ball().releaseSlot(0, false);
    ASSERT_NE(sample.ball().ids, other.ball().ids);
    EXPECT_EQ(changed(sample.text(), other.text()), std::vector<std::string>());
    EXPECT_EQ(sample.text().at("timestep/3/particles/Ball/ids"), "i32[3] 0 2 0");
    EXPECT_EQ(sample.text().at("timestep/3/particles/Ball/particles"), "1");

    other.ball().velocity[0].x = 1; // what stands in a free slot's row counts
    EXPECT_EQ(changed(sample.text(), other.text()), std::vector<std::string>{"timestep/3/particles/Ball/velocity"});
}

TEST(TextOfAModelAsAWhole, tellsTwoTypesOfOneNameApartAndTheirOrder)
{
    SSample sample;
    SSample::fillType(sample.timestep().particleTypes.append(), 0);
    const Lines lines = sample.text();
    EXPECT_EQ(lines.at("timestep/3/particles/Ball/index"), "0");
    EXPECT_EQ(lines.at("timestep/3/particles/Ball#2/index"), "1");
    EXPECT_EQ(lines.at("timestep/3/particles/Ball#2/slots"), "0");
}

TEST(TextOfAModelAsAWhole, tellsChargesUntilAPropertyHoldsThem)
{
    SSample sample;
    auto charge = std::make_unique<CCustomPropertyMetaData>("Charge", eDoubleProperty, 1, 0);
    sample.particle.addProperty(charge);
    sample.particle.lastFinalisedPropertyIndex = 1;
    CParticleType& ball = sample.ball();
    ball.customProperties.resize(3);
    ball.dataMask |= eCharge;
    ball.electrostatic.charge = {1e-9, 2e-9, 3e-9};
    EXPECT_EQ(sample.text().count("timestep/3/particles/Ball/charge"), 1u);
    ball.customProperties.list("Charge")->values = {1e-9, 2e-9, 3e-9};
    EXPECT_EQ(sample.text().count("timestep/3/particles/Ball/charge"), 0u);
}

} // namespace NBrenmark
