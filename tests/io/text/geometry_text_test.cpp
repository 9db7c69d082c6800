// What the text of a deck shows of geometry: the definition with the creator model, the state with the timestep.
#include "core/deck/simulation_frame.h"
#include "io/text/text_writer.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/kinematics/linear_rotation.h"
#include "support/text_lines.h"

#include <gtest/gtest.h>

namespace NBrenmark {

namespace {

/// A frame with a drum that turns and that a factory fills, and two imports of one name.
struct SSample
{
    SSimulationFrame frame{SPropertyManagers()};

    SSample()
    {
        GeometryGroups::setNextUniqueId(0);
        auto drum = std::make_unique<CCylinder>(nullptr);
        drum->setName("Drum 1");
        drum->rebuildMesh();
        auto turn = std::make_unique<CLinearRotation>();
        turn->name = "Turn";
        drum->kinematics.add(std::move(turn));
        auto feeder = std::make_unique<CDynamicParticleFactory>();
        feeder->name = "Feeder";
        feeder->setTypeKind("binary", nullptr);
        feeder->setPositionKind("fcc");
        feeder->setSizeKind("Ball", "user defined");
        drum->factories->add(std::move(feeder));
        frame.creator.geometryGroups.add(drum.release(), true);
        for (int i = 0; i < 2; ++i) {
            auto import = std::make_unique<CCADGeometry>(nullptr);
            import->setName("Import");
            frame.creator.geometryGroups.add(import.release(), true);
        }
        frame.creator.geometryGroups.keepState(); // as after a read
        this->drum().moveTo(C3DTransform());
        this->drum().motionHistory.resize(1);
    }

    Lines text()
    {
        CLineMap map;
        CTextWriter creator(map, "creator", false);
        frame.creator.write(creator);
        CTextWriter timestep(map, "timestep/3", false);
        frame.timestep.write(timestep);
        return map.lines;
    }

    CCylinder& drum() { return dynamic_cast<CCylinder&>(*frame.creator.geometryGroups.at(0)); }
    CLinearRotation& turn() { return dynamic_cast<CLinearRotation&>(*drum().kinematics.actions[0]); }
    CDynamicParticleFactory& feeder()
    {
        return dynamic_cast<CDynamicParticleFactory&>(*drum().factories->factories[0]);
    }
};

} // namespace

TEST(TextOfGeometryAsAWhole, keepsTheTextOfTheModelWhileThingsMove)
{
    SSample sample;
    const Lines before = sample.text();
    C3DTransform shift;
    shift.translate(C3DVector(1, 2, 3));
    sample.drum().moveTo(shift);
    sample.drum().translation = C3DVector(1, 2, 3);
    sample.turn().pointOfAction.x = 4;
    sample.feeder().creationCount = 5;
    const Lines after = sample.text();
    EXPECT_EQ(changed(before, after).size(), 4u);
    for (const std::string& path : changed(before, after))
        EXPECT_EQ(path.compare(0, 11, "timestep/3/"), 0) << path;
    EXPECT_EQ(after.at("creator/geometryGroups/Drum%201/isStatic"), "true");
    EXPECT_EQ(after.at("timestep/3/geometryGroups/Drum%201/isStatic"), "false");
}

TEST(TextOfGeometryAsAWhole, showsFactoriesInOneOrder)
{
    SSample sample, other;
    const auto add = [](SSample& s, const char* name) {
        auto factory = std::make_unique<CDynamicParticleFactory>();
        factory->name = name;
        s.drum().factories->add(std::move(factory));
    };
    add(sample, "Ash");
    add(sample, "Zinc");
    add(other, "Zinc");
    add(other, "Ash");
    EXPECT_EQ(changed(sample.text(), other.text()), std::vector<std::string>());
}

} // namespace NBrenmark
