// A plug-in goes through every host interface (support/plugin/callbacks.h); what it was told is in its report, and what
// it did in the model.
#include "core/deck/simulation.h"
#include "core/deck/simulation_settings.h"
#include "model/geometry/geometry_group.h"
#include "physics/plugins/contact_models.h"
#include "physics/plugins/host/create_api.h"

#include "support/plugin_folders.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <brenmark/plugin/fields.h>
#include <brenmark/plugin/geometry.h>
#include <brenmark/plugin/particles.h>
#include <brenmark/plugin/simulation.h>
#include <cstring>

namespace NBrenmark {

using testing::Each;
using Values = std::vector<double>;

/// Two points, of which the first is where the plug-in asks.
static void addField(CSimulation& deck, const char* name, NField::EFieldPlane plane, const NField::CNdData& place,
                     const NField::CNdData& value)
{
    auto field = std::make_unique<NField::CFieldData>();
    field->name = name;
    field->plane = plane;
    field->setSamples({place, NField::CNdData(place.size())}, {value, NField::CNdData(value.size())});
    ASSERT_TRUE(deck.settings->fieldManager().addField(field));
}

/// The values of one element of a property, of all items.
static Values column(CCustomPropertyData& data, const char* property, unsigned int element)
{
    Values values;
    const CCustomPropertyValueList& list = *data.list(property);
    for (unsigned int item = 0; item < list.itemCount(); ++item)
        values.push_back(list.item(item)[element]);
    return values;
}

TEST(PlugInHost, letsAPlugInReadAndChangeTheOpenDeck)
{
    CSimulation deck;
    ASSERT_TRUE(deck.setUp());
    SPluginFoldersOfTest folders(&deck);
    QLibrary library(folders.put("model_calls_back", "user/Mine.so"));
    ASSERT_EQ(deck.load(QString::fromStdString(sampleDeck("properties-24.dem"))), eLoaded);
    ASSERT_TRUE(deck.goToTimestep(1, eIntoCurrentFrame));
    addField(deck, "space", NField::eNoPlane, {2, 3, 5}, {7, 8, 9});
    addField(deck, "flat", NField::ePlaneXZ, {2, 5}, {4, 6});
    addField(deck, "heat", NField::ePlaneYZ, {3, 5}, {11});

    CPhysicsModels& physics = deck.currentFrame->creator.physicsModels;
    ASSERT_TRUE(physics.addContactModel(physics.makeContactModel("Mine", eSphereSphereModel, 2, false), -1));
    IContactModel& model = *physics.sphereSphereModels.back();
    EXPECT_EQ(model.source, 1u);
    ASSERT_TRUE(model.starting(1));

    CTimestepData& timestep = deck.currentFrame->timestep;
    quint32 type = 0, slot = 0;
    ASSERT_TRUE(timestep.particleTypes.locate(1, type, slot));
    const C3DPoint& first = timestep.particleTypes.types[type]->position[slot];
    // Of each owner the deck has one, two, three and two properties; the model needs one more, of particles two.
    EXPECT_EQ(reinterpret_cast<const char*>(library.resolve("REPORT")),
              "refused 0 0 0 0 0 0\nparticles 1 2 9 1 1 40\nscale 1 1.75 0 0\n" +
                  QString::asprintf("spheres 1 %g %g %g 0\n", first.x, first.y, first.z).toStdString() +
                  "types 1 -1 -1\nparticle properties 1 1 1 1\nrefused 0 0 0 0\n"
                  "geometry 1 1 1 0 0 0\nsimulation 1 1 1 1 0 0\n"
                  "definitions 4 2\ndefinitions 5 3\ndefinitions 6 5\ndefinitions 7 3\n"
                  "Pair 1 1 0 0 2 9 1\n"
                  "later 1 0 0 -1 -1\n"
                  "space 2 0 1 7 8 9 0 -1\nflat 2 0 1 4 0 6 0 -1\nheat 2 1 1 -1 -1 -1 1 11\n");

    EXPECT_EQ(timestep.particleTypes.scaleOf(1), 1.75);
    CCustomPropertyData& balls = timestep.particleTypes.find("Ball")->customProperties;
    EXPECT_THAT(column(balls, "Pair", 1), Each(21.0));
    EXPECT_THAT(column(balls, "Tag", 0), Each(22.0));
    CCustomPropertyData& rods = timestep.particleTypes.find("Rod")->customProperties;
    EXPECT_THAT(column(rods, "Pair", 0), Each(23.0));
    EXPECT_THAT(column(rods, "Tag", 0), Each(24.0));
    const CCreatorData& creator = deck.currentFrame->creator;
    EXPECT_THAT(column(creator.geometryGroupByName("Hopper")->customProperties, "Wear", 1), Each(31.0));
    EXPECT_THAT(column(creator.geometryGroupByName("Plate")->customProperties, "Is-Hot", 0), Each(1.0));
    EXPECT_EQ(timestep.simulationProperties.list("Torque")->values, (Values{41, 42, 43}));

    // One of 1.1.0 is told where its properties of particles are; the deck has three before them.
    QLibrary older(folders.put("model_110", "user/Older.so"));
    ASSERT_TRUE(physics.addContactModel(physics.makeContactModel("Older", eSphereSphereModel, 2, false), -1));
    EXPECT_TRUE(physics.sphereSphereModels.back()->starting(1));
    EXPECT_STREQ(reinterpret_cast<const char*>(older.resolve("REPORT")), "Wear (particle) 3\nIs Worn 4\n");

    // The item of a contact: the plug-in stages twice its first value.
    {
        CCustomPropertyManager* const definitions = deck.settings->propertyManagers().contact;
        CCustomPropertyData values(definitions), changes(definitions, true);
        values.resize(2);
        changes.resize(2);
        values.setValue(0, 1, 0, 1.25);
        SContact contact;
        contact.properties = {&values, &changes, 1};
        EXPECT_TRUE(model.calculateForce(contact));
        EXPECT_EQ(*changes.values(0, 1), 2.5);
        EXPECT_EQ(*changes.values(0, 0), 0.0);
        contact.element1.properties = contact.properties;
        EXPECT_TRUE(physics.sphereSphereModels.back()->calculateForce(contact));
        EXPECT_EQ(contact.results.normalForce.y, 1.25);
        const auto* const view = folders.host.view(eContactView, contact.properties);
        const char* const known = definitions->property(0u)->name.c_str();
        EXPECT_EQ(view->getValue(known), values.values(0, 1));
        EXPECT_EQ(view->getStagedValue(known), changes.values(0, 1));
        EXPECT_TRUE(view->canWriteProperty(known) && view->canWriteProperty(0u) && view->isAvailable());
        EXPECT_FALSE(view->canWriteProperty("Tear") || view->canWriteProperty(1u) || view->canWriteProperty(nullptr));
        const std::unique_ptr<NApiCore::IApi> manager(view->getPropertyManager(1, 0));
        EXPECT_EQ(manager->getIdentifier(), NApiCore::eContactProperties);
        EXPECT_EQ(view->getPropertyManager(1, 1), nullptr);
    }

    const auto particles = folders.host.createApi(NApiCore::eParticleManager, 1, 0);
    EXPECT_TRUE(particles->isAvailable());
    deck.close(false);
    EXPECT_FALSE(particles->isAvailable());
    EXPECT_EQ(static_cast<NApiCore::IParticleManagerApi_1_0&>(*particles).getNumberOfParticles(), 0u);
    EXPECT_EQ(NApiCore::createApi(nullptr, NApiCore::eApiManager, 1, 0), nullptr);
}

// ---------------------------------------------------------------- the tables of functions

/// The position of an operation in the table of its class, as the compiler calls it: pointers to virtual operations
/// hold one more than their offset. The destructor is at 0, and takes two entries here.
template <class TSignature, class TApi>
static std::size_t at(TSignature TApi::*operation)
{
    std::size_t offset = 0;
    std::memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / sizeof(void*) - 1;
}

// Those that plug-ins were compiled for.
TEST(PlugInHost, hasItsOperationsAtTheirPositions)
{
    using namespace NApiCore;
    using Index = unsigned int;
    using Text = const char*;
    using Definitions = ICustomPropertyManagerApi_1_0;
    using Data = ICustomPropertyDataApi_1_0;
    using Fields = IFieldManagerApi_1_0;
    using Particles = IParticleManagerApi_1_2;
    using Geometry = IGeometryManagerApi_1_1;
    using Whole = ISimulationManagerApi_1_1;
    const std::vector<std::size_t> tables[] = {
        {3, at(&IApi::getVersion), at(&IApi::getIdentifier), at(&IApi::isAvailable)},
        {5, at(&IApiManager_1_0::getApi), at(&IApiManager_1_0::releaseApi)},
        {7, at(&Definitions::getPropertyCount), at(&Definitions::getPropertyIndex),
         at<bool(Text, SPropertyDetails&) const>(&Definitions::getPropertyDetails),
         at<bool(Index, SPropertyDetails&) const>(&Definitions::getPropertyDetails)},
        {10, at(&Data::getPropertyManager), at<const double*(Text) const>(&Data::getValue),
         at<const double*(Index) const>(&Data::getValue), at<double*(Text) const>(&Data::getStagedValue),
         at<double*(Index) const>(&Data::getStagedValue), at<bool(Text) const>(&Data::canWriteProperty),
         at<bool(Index) const>(&Data::canWriteProperty)},
        {6, at(&IFieldApi_1_0::isScalar), at(&IFieldApi_1_0::getVector), at(&IFieldApi_1_0::getScalar)},
        {5, at<IFieldApi_1_0*(Index, Index, Index, Text) const>(&Fields::getField),
         at<IFieldApi_1_0*(Index, Index, Index, Index) const>(&Fields::getField)},
        {13, at(&Particles::isWritable), at(&Particles::setParticleScale), at(&Particles::getParticleScale),
         at(&Particles::getNumberOfParticles), at(&Particles::getSpherePositions),
         at<bool(Text, Text, Index, double)>(&Particles::setCustomProperty),
         at<bool(Text, Text, double)>(&Particles::setCustomPropertyAll), at(&Particles::getTypeIndex),
         at<bool(Text, Index, Index, double)>(&Particles::setCustomProperty),
         at<bool(Text, Index, double)>(&Particles::setCustomPropertyAll)},
        {5, at<bool(Text, Text, double)>(&Geometry::setCustomProperty),
         at<bool(Text, Index, double)>(&Geometry::setCustomProperty)},
        {7, at<bool(Text, Index, double)>(&Whole::setCustomProperty),
         at<bool(Text, double)>(&Whole::setCustomPropertyAll),
         at<bool(Index, Index, double)>(&Whole::setCustomProperty),
         at<bool(Index, double)>(&Whole::setCustomPropertyAll)},
    };
    for (const std::vector<std::size_t>& table : tables) // the last position, then all in their order
        for (std::size_t i = 1; i < table.size(); ++i)
            EXPECT_EQ(table[i], table[0] + 1 + i - table.size()) << "table that ends at " << table[0];
}

} // namespace NBrenmark
