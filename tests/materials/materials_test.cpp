// Materials, the coefficients of their pairs, and the names that keep them apart.
#include "model/creator_data.h"

#include "support/log_capture.h"
#include <gtest/gtest.h>
#include <memory>

namespace NBrenmark {

static CInteraction* interactionOf(double restitution)
{
    auto* interaction = new CInteraction;
    interaction->restitution = restitution;
    interaction->staticFriction = restitution + 0.01;
    interaction->rollingFriction = restitution + 0.02;
    return interaction;
}

/// Materials of a map as "name:type", with blanks between.
static std::string kindsOf(const MaterialMap& materials)
{
    std::string kinds;
    for (auto entry = materials.begin(); entry != materials.end(); ++entry)
        kinds += (kinds.empty() ? "" : " ") + entry.key().toStdString() + ":" + std::to_string(entry.value()->type);
    return kinds;
}

static void addMaterials(MaterialMap& materials, std::initializer_list<std::pair<const char*, qint32>> kinds)
{
    for (const auto& [name, type] : kinds)
        materials.set(name, new CMaterial(name, 0.3, 1e9, 7850, 4.5, type));
}

TEST(Materials, theLaterOfOneNameWins)
{
    MaterialMap materials;
    materials.set("m", new CMaterial("m", 0.1, 0, 0, 0, 1));
    auto* later = new CMaterial("m", 0.2, 0, 0, 0, 1);
    materials.set("m", later);
    materials.set("m", later); // the same object again stays alive
    EXPECT_EQ(materials.size(), 1);
    EXPECT_EQ(materials.find("m")->poissonsRatio, 0.2);
    EXPECT_EQ(materials.find("M"), nullptr);
    materials.clear();
    EXPECT_TRUE(materials.isEmpty());
}

TEST(Interactions, bothOrdersOfAPairReachTheSameOne)
{
    InteractionMap interactions;
    interactions.set("b", "a", interactionOf(0.7));
    EXPECT_EQ(interactions.entries.keys(), QStringList("a~b"));
    EXPECT_NE(interactions.find("a", "b"), nullptr);
    EXPECT_EQ(interactions.find("a", "b"), interactions.find("b", "a"));
    EXPECT_EQ(interactions.find("a", "a"), nullptr);
    interactions.set("a", "b", interactionOf(0.8));
    EXPECT_EQ(interactions.entries.size(), 1);
    EXPECT_EQ(interactions.find("b", "a")->restitution, 0.8);
}

TEST(Interactions, partnersAreTheOtherNamesInKeyOrder)
{
    InteractionMap interactions;
    for (const char* key : {"b~c", "a~b", "a~a", "A~a"}) // order of characters: capitals stand first
        interactions.setByKey(key, new CInteraction);
    EXPECT_EQ(interactions.partnersOf("a"), QStringList({"A", "a", "b"}));
    EXPECT_EQ(interactions.partnersOf("b"), QStringList({"a", "c"}));
    EXPECT_EQ(interactions.partnersOf("c"), QStringList("b"));
    EXPECT_EQ(interactions.partnersOf("d"), QStringList());
    interactions.clear();
    EXPECT_EQ(interactions.partnersOf("a"), QStringList());
}

TEST(UniqueName, countsOnFromTheGreatestNumberInBrackets)
{
    struct SCase
    {
        const char* base;
        QStringList existing;
        const char* unique;
    };
    const SCase cases[] = {
        {"m", {}, "m(1)"},
        {"m", {"m"}, "m(1)"},
        {"m", {"m", "m(1)", "m(7)"}, "m(8)"},
        {"m", {"m(x)", "m()", "m(2) ", " m(3)", "mm(4)", "m(5)(6)", "m((7))", "m (8)"}, "m(1)"},
        {"m", {"m(-1)", "m(1.5)"}, "m(1)"},
        {"m(1)", {"m(1)", "m(2)"}, "m(1)(1)"},
        {"a.b*", {"axb*(5)", "a.b*(2)"}, "a.b*(3)"}, // no character of a name is a pattern
        {"%1 %2", {"%1 %2(1)"}, "%1 %2(2)"},         // nor a place for an argument
        {"m", {"m(4294967296)"}, "m(4294967297)"},
        {"m", {"m(007)"}, "m(8)"},
    };
    for (const SCase& c : cases)
        EXPECT_EQ(makeUniqueName(c.base, c.existing), QString(c.unique)) << c.base;
}

TEST(SplitMaterial, copiesTheMaterialAndItsInteractions)
{
    struct SCase
    {
        bool equipmentCopy;
        qint32 type;          // of the original "m"
        const char* kinds;    // of all materials afterwards
        QStringList partners; // of "m(1)"
    };
    // "bulk" is bulk, "steel" and "wall" are equipment; "gone" is a name in the interactions alone.
    const SCase cases[] = {
        {false, 1, "bulk:1 m:1 m(1):1 steel:0 wall:0", {"bulk", "gone", "m", "m(1)", "steel", "wall"}},
        {false, 0, "bulk:1 m:0 m(1):0 steel:0 wall:0", {"bulk", "gone", "m", "m(1)", "steel", "wall"}},
        {true, 1, "bulk:1 m:1 m(1):0 steel:0 wall:0", {"bulk", "gone", "m"}},
        {true, 0, "bulk:1 m:0 m(1):0 steel:0 wall:0", {"bulk", "gone"}},
        {true,
         2,
         "bulk:1 m:2 m(1):0 steel:0 wall:0",
         {"bulk", "gone", "m"}}, // not 0, so it counts as no equipment here
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.kinds);
        MaterialMap materials;
        InteractionMap interactions;
        addMaterials(materials, {{"m", c.type}, {"bulk", 1}, {"steel", 0}, {"wall", 0}});
        double restitution = 0.1;
        for (const char* partner : {"m", "bulk", "steel", "wall", "gone"})
            interactions.set("m", partner, interactionOf(restitution += 0.1));
        interactions.set("bulk", "steel", interactionOf(0.9));
        const int before = interactions.entries.size();

        EXPECT_EQ(materials.splitMaterial("m", c.equipmentCopy, interactions), QString("m(1)"));
        EXPECT_EQ(kindsOf(materials), c.kinds);
        const CMaterial& copy = *materials.find("m(1)");
        EXPECT_EQ(copy.name, "m(1)");
        EXPECT_EQ(copy.shearModulus, 1e9);
        EXPECT_EQ(copy.workFunction, 4.5);
        QStringList partners = interactions.partnersOf("m(1)");
        partners.sort();
        EXPECT_EQ(partners, c.partners);
        EXPECT_EQ(interactions.entries.size(), before + c.partners.size());
        for (const QString& partner : partners) {
            const CInteraction* source = interactions.find("m", partner == "m(1)" ? "m" : partner);
            const CInteraction* made = interactions.find("m(1)", partner);
            EXPECT_NE(made, source);
            EXPECT_EQ(made->restitution, source->restitution);
            EXPECT_EQ(made->staticFriction, source->staticFriction);
            EXPECT_EQ(made->rollingFriction, source->rollingFriction);
        }
    }
}

TEST(SplitMaterial, namesThatCannotBeFoundAreNoHarm)
{
    MaterialMap materials;
    InteractionMap interactions;
    EXPECT_EQ(materials.splitMaterial("m", true, interactions), QString());
    EXPECT_TRUE(materials.isEmpty());
    addMaterials(materials, {{"a~m", 1}, {"m", 1}});
    interactions.set("a~m", "x", interactionOf(0.5)); // its key reads as the pair of "a" and "m"
    EXPECT_EQ(materials.splitMaterial("m", false, interactions), QString("m(1)"));
    EXPECT_EQ(interactions.entries.size(), 1);
}

TEST(MaterialRule, bulkThatNoParticleTypeUsesBecomesEquipment)
{
    CCreatorData creator{SPropertyManagers()};
    addMaterials(creator.materials, {{"rock", 1}, {"steel", 1}, {"wall", 0}, {"odd", 2}});
    creator.particleTypes.append().materialName = "rock";
    creator.particleTypes.append().materialName = "absent";
    CLogCapture log;
    applyMaterialRule(creator, [](const IContactModel&) { return true; });
    EXPECT_EQ(kindsOf(creator.materials), "odd:2 rock:1 steel:0 wall:0");
    EXPECT_EQ(log.text(), "WARNING Conversion: Material \"steel\" is used by no particle type: "
                          "it becomes an equipment material.\n");
    applyMaterialRule(creator, [](const IContactModel&) { return true; }); // nothing is left to be changed
    EXPECT_EQ(log.count(), 1u);
}

} // namespace NBrenmark
