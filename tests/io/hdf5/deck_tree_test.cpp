// The exact tree of a deck's files: every group, attribute and dataset, in the order of writing where a file keeps it.
#include "io/hdf5/hdf5_deck_testing.h"

#include "support/h5_tree.h"
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

#define VERSION_RECORD(place)                                                                                          \
    place "@file version u32 = 1966100\n" place "@svn version i32 = 28438\n" place                                     \
          "@svn path string[15] = \"Brenmark/trunk\"\n"

static const char* const sphereTable =
    "spheres {name@0 string[256], contactRadius@512 f64, physicalRadius@520 f64, pos@528 f64[3]} 552 {1}\n";

static std::string definition(const std::string& place)
{
    return place + "@name string[5] = \"Ball\"\n" +          //
           place + "@material name string[5] = \"Sand\"\n" + //
           place + "@surface based i32 = 1\n" +              //
           place + "@auto center particle u8 = 1\n" +        //
           place + "@template name string[1] = \"\"\n" +     //
           place + "@auto properties u8 = 0\n" +             //
           place + "@raw mass f64 = 0\n" +                   //
           place + "@raw volume f64 = 0\n" +                 //
           place + "@raw inertia f64[3] = 0 0 0\n" +         //
           place + "@calc props u8 = 1\n";
}

TEST_F(DeckTree, ofACreatorModel)
{
    write();
    const std::string ball = "/CreatorData/0/ParticleTypes/0/";
    EXPECT_EQ(
        treeOf(timestepPath(), "/CreatorData/"),
        "/CreatorData/\n"
        "/CreatorData/0/\n" VERSION_RECORD(
            "/CreatorData/0/") "/CreatorData/0/@title string[6] = \"Kiste\"\n"
                               "/CreatorData/0/@description string[1] = \"\"\n"
                               "/CreatorData/0/@dimensions i32 = 3\n"
                               "/CreatorData/0/@damping f64 = 0.5\n"
                               "/CreatorData/0/@vel restrict i32 = 1\n"
                               "/CreatorData/0/@vel limit f64 = 20\n"
                               "/CreatorData/0/@angvel restrict i32 = 0\n"
                               "/CreatorData/0/@angvel limit f64 = 30\n"
                               "/CreatorData/0/@gravity f64[3] = 0 0 -9.81\n"
                               "/CreatorData/0/Domain/\n"
                               "/CreatorData/0/Domain/@domain min f64[3] = -1 -2 -3\n"
                               "/CreatorData/0/Domain/@domain max f64[3] = 1 2 3\n"
                               "/CreatorData/0/Domain/@domain xPeriodic u8 = 0\n"
                               "/CreatorData/0/Domain/@domain yPeriodic u8 = 1\n"
                               "/CreatorData/0/Domain/@domain zPeriodic u8 = 0\n"
                               "/CreatorData/0/Domain/@domian cpbc enable u8 = 0\n"
                               "/CreatorData/0/Domain/@domain cpbc geometry string[5] = \"Drum\"\n"
                               "/CreatorData/0/Domain/@domain cpbc kinematic string[1] = \"\"\n"
                               "/CreatorData/0/Domain/@domain cpbc length f64 = 0\n"
                               "/CreatorData/0/Domain/@domain cpbc angle f64 = 1.5\n"
                               "/CreatorData/0/GeometryGroups/\n"
                               "/CreatorData/0/Interactions {key@0 string[512], restitution@512 f64, "
                               "staticFriction@520 f64, "
                               "rollingFriction@528 f64} 536 {1}\n"
                               "/CreatorData/0/MaterialBlocks/\n"
                               "/CreatorData/0/Materials {name@0 string[256], poisson@256 f64, shearMod@264 f64, "
                               "density@272 f64, "
                               "workFunction@280 f64, type@288 u32} 296 {2}\n"
                               "/CreatorData/0/ParticleTypes/\n"
                               "/CreatorData/0/ParticleTypes/@max id u32 = 0\n" +
            ball + "\n" + definition(ball) + ball + "@size u32 = 0\n" + ball + "@mask u32 = 8703\n" + ball +
            "CustomProperties/\n" + ball + sphereTable +
            "/CreatorData/0/PhysicsModels/\n"
            "/CreatorData/0/PhysicsModels/ExternalForces/\n"
            "/CreatorData/0/PhysicsModels/ExternalForces/order string[] {0}\n"
            "/CreatorData/0/PhysicsModels/SurfaceGeometry/\n"
            "/CreatorData/0/PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/\n"
            "/CreatorData/0/PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/@model source i32 = 0\n"
            "/CreatorData/0/PhysicsModels/SurfaceGeometry/Hertz-Mindlin (no slip)/@enable rolling friction u8 = 0\n"
            "/CreatorData/0/PhysicsModels/SurfaceGeometry/order string[] {1} = \"Hertz-Mindlin (no slip)\"\n"
            "/CreatorData/0/PhysicsModels/SurfaceSurface/\n"
            "/CreatorData/0/PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/\n"
            "/CreatorData/0/PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/@model source i32 = 0\n"
            "/CreatorData/0/PhysicsModels/SurfaceSurface/Hertz-Mindlin (no slip)/@enable rolling friction u8 = 1\n"
            "/CreatorData/0/PhysicsModels/SurfaceSurface/order string[] {1} = \"Hertz-Mindlin (no slip)\"\n"
            "/CreatorData/0/PluginFactories/\n"
            "/CreatorData/0/SizeDistributions/\n");
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
              "/TimestepData/\n" + t +
                  "\n" VERSION_RECORD("/TimestepData/0.123457/") "/TimestepData/0.123457/@creatordata index u32 = 0\n"
                                                                 "/TimestepData/0.123457/@full timestep u8 = 1\n"
                                                                 "/TimestepData/0.123457/@timestep mask u32 = 255\n"
                                                                 "/TimestepData/0.123457/@particle mask u32 = 47\n"
                                                                 "/TimestepData/0.123457/@geometry mask u32 = 41\n"
                                                                 "/TimestepData/0.123457/@time f64 = 0.1234567\n"
                                                                 "/TimestepData/0.123457/@elapsed real time f64 = 60\n"
                                                                 "/TimestepData/0.123457/@run number i32 = 2\n"
                                                                 "/TimestepData/0.123457/@date string[9] = \"" +
                  today +
                  "\"\n"
                  "/TimestepData/0.123457/Bonds/\n"
                  "/TimestepData/0.123457/Bonds/SurfaceGeometry/\n"
                  "/TimestepData/0.123457/Bonds/SurfaceGeometry/@size u32 = 0\n"
                  "/TimestepData/0.123457/Bonds/SurfaceSurface/\n"
                  "/TimestepData/0.123457/Bonds/SurfaceSurface/@size u32 = 0\n"
                  "/TimestepData/0.123457/Collisions/\n"
                  "/TimestepData/0.123457/Collisions/SurfaceGeometry/\n"
                  "/TimestepData/0.123457/Collisions/SurfaceGeometry/@size u32 = 0\n"
                  "/TimestepData/0.123457/Collisions/SurfaceSurface/\n"
                  "/TimestepData/0.123457/Collisions/SurfaceSurface/@size u32 = 0\n"
                  "/TimestepData/0.123457/Contacts/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/@size u32 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/@collision on u8 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/CollisionsBase/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/CollisionsBase/@size u32 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/CustomProperties/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceGeometry/CustomProperties/0/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/@size u32 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/@collision on u8 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/CollisionsBase/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/CollisionsBase/@size u32 = 0\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/CustomProperties/\n"
                  "/TimestepData/0.123457/Contacts/SurfaceSurface/CustomProperties/0/\n"
                  "/TimestepData/0.123457/CustomProperties/\n"
                  "/TimestepData/0.123457/GeometryGroups/\n"
                  "/TimestepData/0.123457/ParticleTypes/\n"
                  "/TimestepData/0.123457/ParticleTypes/@max id u32 = 2\n" +
                  ball + "\n" + definition(ball) + ball + "@size u32 = 2\n" + ball + "@mask u32 = 8703\n" + //
                  ball + "CustomProperties/\n" +                                                            //
                  ball + "CustomProperties/0/\n" +                                                          //
                  ball + "CustomProperties/0/data f64 {2,3} = 0 0 0 0 0 0\n" +                              //
                  ball + "angular velocity f64 {2,3} = 0 0 1 0 1 1\n" +                                     //
                  ball + "creation time f64 {2} = 0.125 0.125\n" +                                          //
                  ball + "external force torque f64 {2,7}\n" +                                              //
                  ball + "force torque f64 {2,7}\n" +                                                       //
                  ball + "ids i32 {2} = 1 2\n" +                                                            //
                  ball + "orientation f64 {2,4}\n" +                                                        //
                  ball + "position f64 {2,3} = 0 0 3 1 2 3\n" +                                             //
                  ball + "scale f64 {2} = 1 2\n" +                                                          //
                  ball + sphereTable +                                                                      //
                  ball + "us_force torque f64 {2,7}\n" +                                                    //
                  ball + "velocity f64 {2,3} = 0 0.5 0 1 0.5 -1\n" +
                  "/TimestepData/0.123457/SystemEnergy/\n"
                  "/TimestepData/0.123457/SystemEnergy/@energy f64 = 3.5\n"
                  "/TimestepData/0.123457/SystemEnergy/@potential energy f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/@kinetic energy f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@kinetic energy f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@potential energy f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@created particles f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@destroyed particles f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@external f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@Loss From Contacts f64 = 0\n"
                  "/TimestepData/0.123457/SystemEnergy/TimestepEnergy/@Loss From Capping f64 = 0.5\n"
                  "/TimestepData/0.123457/removed particles {name@0 string[256], count@256 u32} 260 {1}\n");
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
