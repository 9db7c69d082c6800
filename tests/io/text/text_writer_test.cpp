// What the text of a model shows: each thing that the model holds is one line, and moves no other.
#include "core/deck/simulation_frame.h"
#include "io/text/text_writer.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

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

} // namespace

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

TEST(TextOfAModelAsAWhole, distinguishesTwoTypesOfOneNameAndTheirOrder)
{
    SSample sample;
    SSample::fillType(sample.timestep().particleTypes.append(), 0);
    const Lines lines = sample.text();
    EXPECT_EQ(lines.at("timestep/3/particles/Ball/index"), "0");
    EXPECT_EQ(lines.at("timestep/3/particles/Ball#2/index"), "1");
    EXPECT_EQ(lines.at("timestep/3/particles/Ball#2/slots"), "0");
}

TEST(TextOfAModelAsAWhole, reportsChargesUntilAPropertyHoldsThem)
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
