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

#include <functional>

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

struct SChange
{
    const char* path;
    std::function<void(SSample&)> make;
};

#define DRUM "creator/geometryGroups/Drum%201/"
#define DRUM_STATE "timestep/3/geometryGroups/Drum%201/"

const SChange changes[] = {
    {DRUM "materialName", [](SSample& s) { s.drum().materialName = "steel"; }},
    {DRUM "gain", [](SSample& s) { s.drum().gain = 1; }},
    {DRUM "vertices", [](SSample& s) { s.drum().originalCoords[7].z = 9; }},
    {DRUM "triangleNodes", [](SSample& s) { s.drum().triangleNodes[7][0] = 9; }},
    {DRUM "momentOfInertia", [](SSample& s) { s.drum().momentOfInertia.values[5] = 9; }},
    {DRUM "electrostatic/exempt", [](SSample& s) { s.drum().electrostatic.exempt = true; }},
    {DRUM "cylinder/radiusEnd", [](SSample& s) { s.drum().radiusEnd = 9; }},
    {DRUM "block/blockName",
     [](SSample& s) { s.drum().materialBlockRef = std::make_unique<CBlockLink>(&s.drum().bounds); }},
    {DRUM "motions/Turn/loopEndTime", [](SSample& s) { s.turn().loopEndTime = 9; }},
    {DRUM "motions/Turn/initialAngularVelocity", [](SSample& s) { s.turn().initialAngularVelocity = 9; }},
    {DRUM "motions/Turn/endPoint", [](SSample& s) { s.turn().axis.endPoint.x = 9; }},
    {DRUM "factories/Feeder/creationRate", [](SSample& s) { s.feeder().creationRate = 9; }},
    {DRUM "factories/Feeder/orientation/kind", [](SSample& s) { s.feeder().setOrientationKind("random"); }},
    {DRUM "factories/Feeder/position/axisB",
     [](SSample& s) { dynamic_cast<C3DLattice&>(*s.feeder().position).axisB.x = 9; }},
    {DRUM "factories/Feeder/sizes/Ball/bands",
     [](SSample& s) {
         dynamic_cast<CUserDefinedFactorySize&>(*s.feeder().sizes["Ball"]).sizeDistribution.bands[2.0] = 9;
     }},
    {"creator/geometryGroups/Import#2/import/rotationAngle",
     [](SSample& s) { dynamic_cast<CCADGeometry&>(*s.frame.creator.geometryGroups.at(2)).rotationAngle = 9; }},

    {DRUM_STATE "time", [](SSample& s) { s.drum().time = 9; }},
    {DRUM_STATE "velocity", [](SSample& s) { s.drum().velocity.x = 9; }},
    {DRUM_STATE "motionHistory/0/angularVelocity", [](SSample& s) { s.drum().motionHistory[0].angularVelocity.x = 9; }},
    {DRUM_STATE "triangleForces", [](SSample& s) { s.drum().triangleForces[3][6] = 9; }},
    {DRUM_STATE "motions/Turn/angularVelocity", [](SSample& s) { s.turn().angularVelocity.x = 9; }},
    {DRUM_STATE "motions/Turn/pointOfAction", [](SSample& s) { s.turn().pointOfAction.x = 9; }},
    {DRUM_STATE "factories/Feeder/creationCount", [](SSample& s) { s.feeder().creationCount = 9; }},
    {DRUM_STATE "factories/Feeder/counters", [](SSample& s) { s.feeder().counters[2] = 9; }},
    {DRUM_STATE "factories/Feeder/accounting/massCreated", [](SSample& s) { s.feeder().accounting.massCreated = 9; }},
    {DRUM_STATE "factories/Feeder/type/next",
     [](SSample& s) { dynamic_cast<CBinaryFactoryType&>(*s.feeder().type).next = 1; }},
    {DRUM_STATE "factories/Feeder/position/cursor2",
     [](SSample& s) { dynamic_cast<C3DLattice&>(*s.feeder().position).cursor2.x = 9; }},
    {"stored/" DRUM_STATE "dataMask", [](SSample& s) { s.drum().dataMask = 9; }},
};

#undef DRUM
#undef DRUM_STATE

} // namespace

class TextOfGeometry : public testing::TestWithParam<SChange>
{
};

TEST_P(TextOfGeometry, showsAChangeUnderItsPathAndNowhereElse)
{
    SSample sample;
    const Lines before = sample.text();
    GetParam().make(sample);
    EXPECT_EQ(changed(before, sample.text()), std::vector<std::string>{GetParam().path});
}

INSTANTIATE_TEST_SUITE_P(Changes, TextOfGeometry, testing::ValuesIn(changes));

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
