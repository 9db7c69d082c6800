// The exact tree of a deck's files: every group, attribute and dataset, in the order of writing where a file keeps it.
#include "io/hdf5/hdf5_deck_testing.h"

#include "hdf5_sample.h"
#include <QDateTime>
#include <QRegularExpression>

namespace NBrenmark {

using namespace NHdf5Testing;

class DeckTree : public testing::Test
{
protected:
    DeckTree()
    {
        fillCreator(deck.creator());
        fillTimestep(deck.timestep(), 2);
        deck.timestep().time = 0.1234567;
    }

    void write() { ASSERT_TRUE(deck.manager->createSimulation(path(), deck.frame(), false, deck.index)) << log.text(); }
    QString path() const { return folder.path("Kiste.dem"); }
    QString timestepPath() const { return folder.path("Kiste_data/0.h5"); }
    /// The lines of a timestep's tree that hold a word.
    std::string timestepLines(const QString& word) const
    {
        const QStringList lines = QString::fromStdString(treeOf(timestepPath(), "/TimestepData/")).split('\n');
        return lines.filter(word).join('\n').toStdString();
    }

    CTempFolder folder;
    CLogCapture log;
    CHdf5Deck deck;
};

TEST_F(DeckTree, ofTheMainFile)
{
    write();
    EXPECT_EQ(treeOf(path()), "/\n"
                              "/@original file version u32 = 1966100\n" // (30 << 16) + 20
                              "/@current file version u32 = 1966100\n"
                              "/@num timesteps i32 = 1\n"
                              "/@file format u32 = 0\n"
                              "/@edition u32 = 1\n"
                              "/CreatorData/\n"
                              "/TimestepData/\n");
}

static const char* const versionRecord =
    "@file version u32 = 1966100; @svn version i32 = 28438; @svn path string[15] = \"Brenmark/trunk\"";

static const char* const sphereTable =
    "spheres {name@0 string[256], contactRadius@512 f64, physicalRadius@520 f64, pos@528 f64[3]} 552 {1}";

static const char* const definition =
    "@name string[5] = \"Ball\"; @material name string[5] = \"Sand\"; @surface based i32 = 1; "
    "@auto center particle u8 = 1; @template name string[1] = \"\"; @auto properties u8 = 0; @raw mass f64 = 0; "
    "@raw volume f64 = 0; @raw inertia f64[3] = 0 0 0; @calc props u8 = 1";

TEST_F(DeckTree, ofACreatorModel)
{
    write();
    const std::string c = "/CreatorData/0/";
    const std::string ball = "/CreatorData/0/ParticleTypes/0/";
    EXPECT_EQ(treeOf(timestepPath(), "/CreatorData/"),
              "/CreatorData/\n" + c + "\n" + under(c, versionRecord) +
                  under(c, "@title string[6] = \"Kiste\"; @description string[1] = \"\"; "
                           "@dimensions i32 = 3; @damping f64 = 0.5; @vel restrict i32 = 1; @vel limit f64 = 20; "
                           "@angvel restrict i32 = 0; @angvel limit f64 = 30; @gravity f64[3] = 0 0 -9.81; Domain/; "
                           "Domain/@domain min f64[3] = -1 -2 -3; Domain/@domain max f64[3] = 1 2 3; "
                           "Domain/@domain xPeriodic u8 = 0; Domain/@domain yPeriodic u8 = 1; "
                           "Domain/@domain zPeriodic u8 = 0; Domain/@domian cpbc enable u8 = 0; "
                           "Domain/@domain cpbc geometry string[5] = \"Drum\"; "
                           "Domain/@domain cpbc kinematic string[1] = \"\"; Domain/@domain cpbc length f64 = 0; "
                           "Domain/@domain cpbc angle f64 = 1.5; GeometryGroups/; "
                           "Interactions {key@0 string[512], restitution@512 f64, staticFriction@520 f64, "
                           "rollingFriction@528 f64} 536 {1}; "
                           "MaterialBlocks/; "
                           "Materials {name@0 string[256], poisson@256 f64, shearMod@264 f64, density@272 f64, "
                           "workFunction@280 f64, type@288 u32} 296 {2}; "
                           "ParticleTypes/; ParticleTypes/@max id u32 = 0") +
                  ball + "\n" + under(ball, definition) +
                  under(ball, "@size u32 = 0; @mask u32 = 8703; CustomProperties/") + under(ball, sphereTable) +
                  under(c, "PhysicsModels/; PhysicsModels/ExternalForces/; "
                           "PhysicsModels/ExternalForces/order string[] {0}; PhysicsModels/SurfaceGeometry/; "
                           "PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/; "
                           "PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/@model source i32 = 0; "
                           "PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/@enable rolling friction u8 = 0; "
                           "PhysicsModels/SurfaceGeometry/order string[] {1} = \"Hertz-Mindlin (no slip)\"; "
                           "PhysicsModels/SurfaceSurface/; PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/; "
                           "PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/@model source i32 = 0; "
                           "PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/@enable rolling friction u8 = 1; "
                           "PhysicsModels/SurfaceSurface/order string[] {1} = \"Hertz-Mindlin (no slip)\"; "
                           "PluginFactories/; SizeDistributions/"));
}

TEST_F(DeckTree, ofATimestep)
{
    finalizeProperty(*deck.simulation.settings->propertyManagers().particle, "Heat", {0.0, 0.0, 0.0});
    finalizeProperty(*deck.simulation.settings->propertyManagers().contact, "Wear", {0.0});
    fillTimestep(deck.timestep(), 2);
    write();
    // A group is named by six digits of the time, the attribute has all.
    const std::string t = "/TimestepData/0.123457/";
    const std::string ball = t + "ParticleTypes/0/";
    const std::string today = QDateTime::currentDateTime().toString("dd/MM/yy").toStdString();
    EXPECT_EQ(treeOf(timestepPath(), "/TimestepData/"),
              "/TimestepData/\n" + t + "\n" + under(t, versionRecord) +
                  under(t, "@creatordata index u32 = 0; @full timestep u8 = 1; @timestep mask u32 = 255; "
                           "@particle mask u32 = 47; @geometry mask u32 = 41; @time f64 = 0.1234567; "
                           "@elapsed real time f64 = 60; @run number i32 = 2") +
                  t + "@date string[9] = \"" + today + "\"\n" +
                  under(t, "Bonds/; Bonds/SurfaceGeometry/; Bonds/SurfaceGeometry/@size u32 = 0; "
                           "Bonds/SurfaceSurface/; Bonds/SurfaceSurface/@size u32 = 0; Collisions/; "
                           "Collisions/SurfaceGeometry/; Collisions/SurfaceGeometry/@size u32 = 0; "
                           "Collisions/SurfaceSurface/; Collisions/SurfaceSurface/@size u32 = 0; Contacts/; "
                           "Contacts/SurfaceGeometry/; Contacts/SurfaceGeometry/@size u32 = 0; "
                           "Contacts/SurfaceGeometry/@collision on u8 = 0; Contacts/SurfaceGeometry/CollisionsBase/; "
                           "Contacts/SurfaceGeometry/CollisionsBase/@size u32 = 0; "
                           "Contacts/SurfaceGeometry/CustomProperties/; Contacts/SurfaceGeometry/CustomProperties/0/; "
                           "Contacts/SurfaceSurface/; Contacts/SurfaceSurface/@size u32 = 0; "
                           "Contacts/SurfaceSurface/@collision on u8 = 0; Contacts/SurfaceSurface/CollisionsBase/; "
                           "Contacts/SurfaceSurface/CollisionsBase/@size u32 = 0; "
                           "Contacts/SurfaceSurface/CustomProperties/; Contacts/SurfaceSurface/CustomProperties/0/; "
                           "CustomProperties/; GeometryGroups/; ParticleTypes/; ParticleTypes/@max id u32 = 2") +
                  ball + "\n" + under(ball, definition) +
                  under(ball, "@size u32 = 2; @mask u32 = 8703; CustomProperties/; CustomProperties/0/; "
                              "CustomProperties/0/data f64 {2,3} = 0 0 0 0 0 0; "
                              "angular velocity f64 {2,3} = 0 0 1 0 1 1; creation time f64 {2} = 0.125 0.125; "
                              "external force torque f64 {2,7}; force torque f64 {2,7}; ids i32 {2} = 1 2; "
                              "orientation f64 {2,4}; position f64 {2,3} = 0 0 3 1 2 3; scale f64 {2} = 1 2") +
                  under(ball, sphereTable) +
                  under(ball, "us_force torque f64 {2,7}; velocity f64 {2,3} = 0 0.5 0 1 0.5 -1") +
                  under(t, "SystemEnergy/; SystemEnergy/@energy f64 = 3.5; SystemEnergy/@potential energy f64 = 0; "
                           "SystemEnergy/@kinetic energy f64 = 0; SystemEnergy/TimestepEnergy/; "
                           "SystemEnergy/TimestepEnergy/@kinetic energy f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@potential energy f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@created particles f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@destroyed particles f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@external f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@Loss From Contacts f64 = 0; "
                           "SystemEnergy/TimestepEnergy/@Loss From Capping f64 = 0.5; "
                           "removed particles {name@0 string[256], count@256 u32} 260 {1}"));
    EXPECT_EQ(log.text(), "");
}

// ---------------------------------------------------------------- what the options take out

TEST_F(DeckTree, isWholeWithoutAnyRows)
{
    write();
    const int groups = QString::fromStdString(treeOf(timestepPath())).count(QRegularExpression("/\n"));
    deck.simulation.writeOptions.timestepMask = 0;
    deck.simulation.writeOptions.writeCustomProperties = false;
    write();
    EXPECT_EQ(QString::fromStdString(treeOf(timestepPath())).count(QRegularExpression("/\n")), groups);
    EXPECT_EQ(timestepLines("ParticleTypes/0/@size"), "/TimestepData/0.123457/ParticleTypes/0/@size u32 = 0");
    EXPECT_EQ(timestepLines("/ids"), "");
    EXPECT_EQ(timestepLines("@timestep mask"), "/TimestepData/0.123457/@timestep mask u32 = 0");
    EXPECT_EQ(timestepLines("ParticleTypes/0/@mask"), "/TimestepData/0.123457/ParticleTypes/0/@mask u32 = 8703");
}

struct SMaskCase
{
    quint32 particleMask;
    quint32 storedFields;
    const char* missing; ///< a word of the datasets that aren't there
};

// 8703 without bit 1, bit 4, and bits 6 to 8.
static const SMaskCase maskCases[] = {{47 - 2, 8701, "/velocity"},
                                      {47 - 4, 8687, "/angular velocity"},
                                      {47 - 8, 8255, "force torque"},
                                      {47 - 32, 8703, "CustomProperties/0/data"}};

TEST_F(DeckTree, hasNoArraysThatTheParticleMaskTakesOut)
{
    finalizeProperty(*deck.simulation.settings->propertyManagers().particle, "Heat", {0.0, 0.0, 0.0});
    fillTimestep(deck.timestep(), 2);
    for (const SMaskCase& c : maskCases) {
        deck.simulation.writeOptions.particleMask = c.particleMask;
        write();
        EXPECT_EQ(timestepLines("ParticleTypes/0/@mask"),
                  "/TimestepData/0.123457/ParticleTypes/0/@mask u32 = " + std::to_string(c.storedFields));
        EXPECT_EQ(timestepLines(c.missing), "");
        EXPECT_NE(timestepLines("/position"), "");
    }
}

TEST_F(DeckTree, takesAnotherTimeForOneWrite)
{
    SSaveOptions& options = deck.simulation.writeOptions;
    options.overrideTime = true;
    options.timeOverride = 5.0;
    write();
    EXPECT_EQ(timestepLines("@time f64"), "/TimestepData/5/@time f64 = 5");
    EXPECT_EQ(timestepLines("creation time"), "/TimestepData/5/ParticleTypes/0/creation time f64 {2} = 5 5");
    EXPECT_EQ(deck.timestep().particleTypes.types[0]->creationTime[0], 0.125);
    EXPECT_EQ(deck.timestep().time, 0.1234567);
    EXPECT_FALSE(options.overrideTime);
    write();
    EXPECT_EQ(timestepLines("@time f64"), "/TimestepData/0.123457/@time f64 = 0.1234567");
}

TEST_F(DeckTree, tellsOnceOfChargesThatHaveNoPlace)
{
    CParticleType& ball = *deck.timestep().particleTypes.types[0];
    ball.electrostatic.charge = {1e-9, 2e-9};
    write();
    write();
    EXPECT_EQ(log.text(), "");
    deck.manager->reset(); // told once, with the sum, when the deck is closed
    EXPECT_EQ(log.count(), 1u);
    EXPECT_NE(log.text().find("Not carried over, for the format has no place for them: 4 "), std::string::npos)
        << log.text();
    finalizeProperty(*deck.simulation.settings->propertyManagers().particle, "Charge", {0.0});
    fillTimestep(deck.timestep(), 2);
    deck.timestep().particleTypes.types[0]->electrostatic.charge = {1e-9, 2e-9};
    write();
    EXPECT_EQ(log.count(), 1u);
}

// ---------------------------------------------------------------- names

TEST_F(DeckTree, isNotBegunForNamesThatDoNotFit)
{
    const QString longName(256, 'x');
    const auto refuse = [&](const char* what) {
        const std::size_t before = log.count();
        EXPECT_FALSE(deck.manager->createSimulation(path(), deck.frame(), false, deck.index)) << what;
        EXPECT_EQ(folder.names(), QStringList()) << what;
        EXPECT_EQ(log.count(), before + 1) << what;
    };
    deck.creator().materials.set(longName, new CMaterial(longName.toStdString(), 0.3, 1, 1, 0, 1));
    refuse("material");
    fillCreator(deck.creator());
    deck.creator().interactions.setByKey(QString(512, 'x'), new CInteraction);
    refuse("interaction");
    fillCreator(deck.creator());
    deck.timestep().particleTypes.types[0]->spheres[0].name = longName;
    refuse("sphere");
    fillTimestep(deck.timestep(), 2);
    deck.timestep().removedParticles[longName] = 1;
    refuse("removed particles");
    deck.timestep().removedParticles.clear();
    deck.timestep().removedParticles[QString(255, 'x')] = 1; // and the terminator
    write();
}

} // namespace NBrenmark
