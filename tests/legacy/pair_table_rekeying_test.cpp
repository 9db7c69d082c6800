// Tables by pairs of particle types become tables by pairs of materials.
#include "legacy/pair_table_rekeying.h"

#include "physics/cohesion.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/parallel_bond.h"
#include "support/log_capture.h"
#include "support/old_model.h"

#include <gtest/gtest.h>

namespace NBrenmark {

struct SOldDeck : SOldModel
{
    SOldDeck()
    {
        for (const auto& [type, material] :
             {std::pair("A", "m"), std::pair("B", "m"), std::pair("C", "n"), std::pair("bare", "")})
            addType(type, material);
    }
    void rekey() { NLegacySupport::rekeyPairTables(creator, creator.physicsModels.sphereSphereModels, false); }
    void rekeyGeometry() { NLegacySupport::rekeyPairTables(creator, creator.physicsModels.sphereGeometryModels, true); }
};

TEST(PairTableRekeying, namesMaterialsAndMakesOneForASecondValue)
{
    struct SCase
    {
        std::vector<std::tuple<const char*, const char*, double>> byTypes;
        const char* byMaterials;
        const char* types;
    };
    const SCase cases[] = {
        {{{"A", "A", 0.5}, {"B", "A", 0.5}, {"C", "A", 0.7}, {"C", "C", 0.9}}, "m/m=0.5 m/n=0.7 n/n=0.9 ", "A:m B:m"},
        {{{"A", "A", 0.5}, {"A", "B", 0.7}}, "m/m=0.5 m/m(1)=0.7 ", "A:m B:m(1)"},
        // B has left m when its own pair is met.
        {{{"A", "A", 1}, {"A", "B", 2}, {"B", "B", 3}}, "m/m=1 m/m(1)=2 m(1)/m(1)=3 ", "A:m B:m(1)"},
        // B leaves m with its own pair, and takes its value with A along.
        {{{"A", "B", 5}, {"B", "B", 7}}, "m/m=5 m/m(1)=5 m(1)/m(1)=7 ", "A:m B:m(1)"},
    };
    for (const SCase& c : cases) {
        SOldDeck deck;
        auto& table = deck.addModel<CCohesionContactModel>().energyDensity;
        for (const auto& [a, b, value] : c.byTypes)
            table.set(a, b, value);
        const CLogCapture log;
        deck.rekey();
        EXPECT_EQ(textOf(table), c.byMaterials);
        EXPECT_EQ(deck.types(), c.types + std::string(" C:n bare:"));
        const bool isSplit = deck.materialOf("B") != "m";
        EXPECT_EQ(deck.creator.materials.keys().size(), isSplit ? 3 : 2);
        EXPECT_EQ(deck.creator.interactions.find("m(1)", "m") != nullptr, isSplit) << "its interactions are copied";
        EXPECT_EQ(log.text(),
                  isSplit ? "WARNING Conversion: Linear Cohesion: material \"m(1)\" is made from \"m\", for "
                            "the entry of \"" +
                                std::string(std::get<0>(c.byTypes[1])) + "\" and \"B\" has a value of its own.\n"
                          : "");
    }
}

TEST(PairTableRekeying, dropsWhatNamesNoTypeAndReportsIt)
{
    SOldDeck deck;
    auto& table = deck.addModel<CJkrContactModel>().surfaceEnergy;
    table.set("A", "C", 1);
    table.set("m", "n", 2); // materials are no types
    table.set("C", "bare", 3);
    const CLogCapture log;
    deck.rekey();
    EXPECT_EQ(textOf(table), "m/n=1 ");
    EXPECT_EQ(log.text(),
              "WARNING Conversion: Hertz-Mindlin with JKR: the entry of \"C\" and \"bare\" is dropped, because "
              "no pair of materials corresponds to it.\n"
              "WARNING Conversion: Hertz-Mindlin with JKR: the entry of \"m\" and \"n\" is dropped, because "
              "no pair of materials corresponds to it.\n");
}

TEST(PairTableRekeying, goesThroughFourModelsAndKeepsWhatElseTheyHold)
{
    SOldDeck deck;
    auto& hysteretic = deck.addModel<CHystereticContactModel>();
    hysteretic.interactions.set("A", "C", {0.1, 0.2});
    hysteretic.yields.set("A", 5e6);
    auto& bonds = deck.addModel<CParallelBondContactModel>();
    CBondParameters bond;
    bond.bondRadius = 0.001;
    bonds.bondParameters.set("A <> C", bond);
    bonds.bondParameters.set("no key", bond);
    bonds.formationStartTime = 1.5;
    auto& other = deck.addModel<CCohesionV2ContactModel>().energyDensity;
    other.set("A", "C", 4);
    deck.rekey();
    ASSERT_NE(hysteretic.interactions.find("m", "n"), nullptr);
    EXPECT_EQ(hysteretic.interactions.find("m", "n")->stiffness, 0.2);
    EXPECT_EQ(hysteretic.yields.valueOf("A"), 5e6) << "by particle type, then and now";
    EXPECT_EQ(bonds.bondParameters.names(), std::vector<std::string>{"m <> n"});
    EXPECT_EQ(bonds.formationStartTime, 1.5);
    EXPECT_EQ(textOf(other), "A/C=4 ") << "its table never was by types";
}

// ---------------------------------------------------------------- a type and a geometry group

TEST(PairTableRekeying, namesTheMaterialsOfATypeAndAGroupInEitherOrder)
{
    SOldDeck deck;
    deck.addGroup("Wall", "steel");
    deck.addGroup("Lid", "brass");
    deck.addGroup("A", "rubber"); // as one of the types
    auto& table = deck.addModel<CJkrContactModel>(eSphereGeometryModel).surfaceEnergy;
    table.set("A", "Wall", 1);
    table.set("Lid", "C", 2);
    table.set("A", "C", 3);      // the group A, met by type C
    table.set("B", "C", 4);      // two types
    table.set("Lid", "Wall", 5); // two groups
    const CLogCapture log;
    deck.rekeyGeometry();
    EXPECT_EQ(textOf(table), "brass/n=2 m/steel=1 n/rubber=3 ");
    EXPECT_EQ(
        log.text(),
        "WARNING Conversion: Hertz-Mindlin with JKR (with geometry): the entry of \"B\" and \"C\" is dropped, because "
        "no pair of materials corresponds to it.\n"
        "WARNING Conversion: Hertz-Mindlin with JKR (with geometry): the entry of \"Lid\" and \"Wall\" is dropped, "
        "because "
        "no pair of materials corresponds to it.\n");
}

TEST(PairTableRekeying, itIsTheGroupThatGetsANewMaterial)
{
    SOldDeck deck;
    for (const char* name : {"steel", "brass"})
        deck.creator.materials.set(name, new CMaterial(name, 0.3, 7e10, 7850, 0, eEquipmentMaterial));
    deck.creator.interactions.set("m", "steel", new CInteraction);
    deck.creator.interactions.set("brass", "steel", new CInteraction);
    deck.addGroup("Wall", "steel");
    deck.addGroup("Door", "steel");
    auto& table = deck.addModel<CCohesionContactModel>(eSphereGeometryModel).energyDensity;
    table.set("A", "Door", 1);
    table.set("A", "Wall", 2);
    table.set("B", "Wall", 2); // Wall has its material by then
    const CLogCapture log;
    deck.rekeyGeometry();
    EXPECT_EQ(textOf(table), "m/steel=1 m/steel(1)=2 ");
    EXPECT_EQ(deck.creator.geometryGroupByName("Door")->materialName, "steel");
    EXPECT_EQ(deck.creator.geometryGroupByName("Wall")->materialName, "steel(1)");
    EXPECT_EQ(deck.types(), "A:m B:m C:n bare:");
    ASSERT_NE(deck.creator.materials.find("steel(1)"), nullptr);
    EXPECT_EQ(deck.creator.materials.find("steel(1)")->type, eEquipmentMaterial);
    EXPECT_NE(deck.creator.interactions.find("steel(1)", "m"), nullptr);
    EXPECT_EQ(deck.creator.interactions.find("steel(1)", "brass"), nullptr) << "equipment doesn't touch equipment";
    EXPECT_EQ(log.count(), 1u) << log.text();
}

// A and B are of one material, C of another. B's own value with A moves it to a copy, which has what B had: with C in the
// table at work, and in the tables that were turned before.
TEST(PairTableRekeying, aNewMaterialHasWhatTheOldOneHadInEveryTable)
{
    SOldDeck deck;
    auto& before = deck.addModel<CJkrContactModel>().surfaceEnergy;
    before.set("A", "A", 1);
    before.set("A", "C", 2);
    auto& table = deck.addModel<CCohesionContactModel>().energyDensity;
    table.set("A", "A", 5);
    table.set("B", "C", 6);
    table.set("A", "B", 7);
    deck.rekey();
    EXPECT_EQ(deck.types(), "A:m B:m(1) C:n bare:");
    EXPECT_EQ(textOf(before), "m/m=1 m/m(1)=1 m/n=2 m(1)/m(1)=1 m(1)/n=2 ");
    EXPECT_EQ(textOf(table), "m/m=5 m/m(1)=7 m(1)/n=6 ");
}

} // namespace NBrenmark
