// Tables by pairs of particle types become tables by pairs of materials.
#include "legacy/pair_table_rekeying.h"

#include "model/creator_data.h"
#include "physics/cohesion.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/parallel_bond.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

struct SOldDeck
{
    SOldDeck()
    {
        creator.physicsModels.clear();
        for (const char* material : {"m", "n"})
            creator.materials.set(material, new CMaterial(material, 0.25, 1e8, 2500, 0, eBulkMaterial));
        creator.interactions.set("m", "m", new CInteraction);
        for (const auto& [type, material] :
             {std::pair("A", "m"), std::pair("B", "m"), std::pair("C", "n"), std::pair("bare", "")}) {
            CParticleType& added = creator.particleTypes.append();
            added.setName(type);
            added.materialName = material;
        }
    }
    template <class TModel>
    auto& add()
    {
        auto model = std::make_unique<TModel>(eSphereSphereModel);
        auto& added = *model;
        creator.physicsModels.addContactModel(std::move(model), CPhysicsModels::atEnd);
        return added.parameters;
    }
    void rekey() { NLegacySupport::rekeyPairTables(creator, creator.physicsModels.sphereSphereModels, false); }
    QString materialOf(const char* type) { return creator.particleTypes.find(type)->materialName; }

    CCreatorData creator{SPropertyManagers()};
};

static std::string textOf(const CPairTable<double>& table)
{
    std::string text;
    for (const auto& [pair, value] : table.entries)
        text += pair.first + "/" + pair.second + "=" + QString::number(value).toStdString() + " ";
    return text;
}

TEST(PairTableRekeying, namesMaterialsInPlaceOfTypes)
{
    SOldDeck deck;
    auto& table = deck.add<CJkrContactModel>().surfaceEnergy;
    table.set("A", "A", 0.5);
    table.set("B", "A", 0.5);
    table.set("C", "A", 0.7);
    table.set("C", "C", 0.9);
    const CLogCapture log;
    deck.rekey();
    EXPECT_EQ(textOf(table), "m/m=0.5 m/n=0.7 n/n=0.9 ");
    EXPECT_EQ(deck.creator.materials.keys(), (QStringList{"m", "n"})) << "equal values need no new material";
    EXPECT_EQ(log.text(), "");
}

TEST(PairTableRekeying, twoValuesForOnePairMakeAMaterial)
{
    SOldDeck deck;
    auto& table = deck.add<CCohesionContactModel>().energyDensity;
    table.set("A", "A", 0.5);
    table.set("A", "B", 0.7);
    const CLogCapture log;
    deck.rekey();
    EXPECT_EQ(textOf(table), "m/m=0.5 m/m(1)=0.7 ");
    EXPECT_EQ(deck.materialOf("A"), "m");
    EXPECT_EQ(deck.materialOf("B"), "m(1)");
    EXPECT_NE(deck.creator.interactions.find("m(1)", "m"), nullptr) << "its interactions are copied";
    EXPECT_EQ(log.text(), "WARNING Conversion: Linear Cohesion: material \"m(1)\" is made from \"m\", for the entry of "
                          "\"A\" and \"B\" has a value of its own.\n");
}

TEST(PairTableRekeying, aNewMaterialStandsForTheEntriesThatFollow)
{
    SOldDeck deck;
    auto& table = deck.add<CCohesionContactModel>().energyDensity;
    table.set("A", "A", 1);
    table.set("A", "B", 2);
    table.set("B", "B", 3); // B has left m by then
    deck.rekey();
    EXPECT_EQ(textOf(table), "m/m=1 m/m(1)=2 m(1)/m(1)=3 ");
}

TEST(PairTableRekeying, dropsWhatNamesNoTypeAndTellsIt)
{
    SOldDeck deck;
    auto& table = deck.add<CJkrContactModel>().surfaceEnergy;
    table.set("A", "C", 1);
    table.set("m", "n", 2); // materials are no types
    table.set("C", "bare", 3);
    const CLogCapture log;
    deck.rekey();
    EXPECT_EQ(textOf(table), "m/n=1 ");
    EXPECT_EQ(log.text(), "WARNING Conversion: Hertz-Mindlin with JKR: the entry of \"C\" and \"bare\" is dropped, for "
                          "no pair of materials stands behind it.\n"
                          "WARNING Conversion: Hertz-Mindlin with JKR: the entry of \"m\" and \"n\" is dropped, for no "
                          "pair of materials stands behind it.\n");
}

TEST(PairTableRekeying, goesThroughFourModelsAndKeepsWhatElseTheyHold)
{
    SOldDeck deck;
    auto& hysteretic = deck.add<CHystereticContactModel>();
    hysteretic.interactions.set("A", "C", {0.1, 0.2});
    hysteretic.yields.set("A", 5e6);
    auto& bonds = deck.add<CParallelBondContactModel>();
    CBondParameters bond;
    bond.bondRadius = 0.001;
    bonds.bondParameters.set("A <> C", bond);
    bonds.bondParameters.set("no key", bond);
    bonds.formationStartTime = 1.5;
    auto& other = deck.add<CCohesionV2ContactModel>().energyDensity;
    other.set("A", "C", 4);
    deck.rekey();
    ASSERT_NE(hysteretic.interactions.find("m", "n"), nullptr);
    EXPECT_EQ(hysteretic.interactions.find("m", "n")->stiffness, 0.2);
    EXPECT_EQ(hysteretic.yields.valueOf("A"), 5e6) << "by particle type, then and now";
    EXPECT_EQ(bonds.bondParameters.names(), std::vector<std::string>{"m <> n"});
    EXPECT_EQ(bonds.formationStartTime, 1.5);
    EXPECT_EQ(textOf(other), "A/C=4 ") << "its table never was by types";
}

} // namespace NBrenmark
