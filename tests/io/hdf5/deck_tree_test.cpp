// The exact tree of a deck's files: every group, attribute and dataset, in the order of writing where a file keeps it.
#include "io/hdf5/hdf5_deck_testing.h"

#include "support/golden.h"
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

TEST_F(DeckTree, ofACreatorModelAndATimestep)
{
    finalizeProperty(*deck.simulation.settings->propertyManagers().particle, "Heat", {0.0, 0.0, 0.0});
    finalizeProperty(*deck.simulation.settings->propertyManagers().contact, "Wear", {0.0});
    fillTimestep(deck.timestep(), 2);
    write();
    // A group is named by six digits of the time, the attribute has all.
    const QString today = QDateTime::currentDateTime().toString("dd/MM/yy");
    expectKept("deck_0.h5.txt",
               QString::fromStdString(treeOf(timestepPath())).replace(today, "dd/MM/yy").toStdString());
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

TEST_F(DeckTree, reportsOnceOfChargesThatHaveNoPlace)
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
