// Charges beside old particles become custom properties, unless the deck holds those itself.
#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "results/timestep_data.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

class ChargeRebuild : public testing::Test
{
protected:
    void define(const char* name, unsigned int elements, bool finalized)
    {
        define(particle, name, elements, finalized);
    }
    static void define(CCustomPropertyManager& manager, const char* name, unsigned int elements, bool finalized)
    {
        auto property = std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, elements, 10u);
        ASSERT_TRUE(manager.addProperty(property));
        if (finalized) {
            manager.lastFinalisedPropertyIndex = static_cast<int>(manager.propertyCount()) - 1;
            manager.notifyChanged(0);
        }
    }
    /// Two slots with charges beside them.
    CParticleType& chargedType()
    {
        CParticleType& type = timestep.particleTypes.append();
        type.setName("Dust");
        type.resizeSlots(2);
        type.customProperties.resize(2);
        type.electrostatic.charge = {1e-9, -2e-9};
        type.electrostatic.electrostaticForce = {C3DVector(1, 2, 3), C3DVector(4, 5, 6)};
        return type;
    }

    /// A wall of two triangles with charges beside them.
    CGeometryGroup& chargedWall()
    {
        auto* const wall = new CGeometryGroup(&geometry);
        wall->setName("Wall");
        wall->triangleNodes.resize(2);
        wall->customProperties.resize(2);
        wall->electrostatic.charges = {3e-9, -4e-9};
        creator.geometryGroups.add(wall, false);
        return *wall;
    }

    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    SPropertyManagers managers = [this] {
        SPropertyManagers all;
        all.particle = &particle;
        all.geometry = &geometry;
        return all;
    }();
    CCreatorData creator{managers};
    CTimestepData timestep{managers, creator};
};

TEST_F(ChargeRebuild, fillsThePropertiesThatHaveValues)
{
    define("Charge", 1, true);
    define("Electrostatic Force", 3, true);
    CParticleType& type = chargedType();
    particle.setModified(true);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(type.customProperties.list("Charge")->values, (std::vector<double>{1e-9, -2e-9}));
    EXPECT_EQ(type.customProperties.list("Electrostatic Force")->values, (std::vector<double>{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(particle.isModified());
}

TEST_F(ChargeRebuild, neverReplacesValuesThatTheDeckHolds)
{
    define("Charge", 1, true);
    CParticleType& type = chargedType();
    CCustomPropertyValueList& list = *type.customProperties.list("Charge");
    list.values = {5e-9, 0.0};
    list.fitTo(2); // as a reader does after the values of a file
    timestep.rebuildChargeProperties();
    EXPECT_EQ(list.values, (std::vector<double>{5e-9, 0.0}));
    // The next timestep of another version may hold none.
    type.customProperties.resetToInitialValues(2);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(type.customProperties.list("Charge")->values, (std::vector<double>{1e-9, -2e-9}));
}

TEST_F(ChargeRebuild, reportsChargesThatHaveNowhereToGo)
{
    define("Charge", 1, false);
    CParticleType& type = chargedType();
    CLogCapture log;
    timestep.rebuildChargeProperties();
    EXPECT_EQ(log.text(),
              "WARNING Conversion: Particle type \"Dust\": the stored values for the property \"Charge\" are "
              "dropped, for no saved time of the deck holds that property.\n");
    EXPECT_TRUE(type.customProperties.lists.empty());
    type.electrostatic.charge = {0.0, 0.0};
    timestep.rebuildChargeProperties();
    EXPECT_EQ(log.count(), 1u) << "zeros are no loss";
}

TEST_F(ChargeRebuild, touchesNothingWithoutTheProperties)
{
    define("Temperature", 1, true);
    CParticleType& type = chargedType();
    type.electrostatic.charge.clear(); // rows of another number than the slots are no charges of theirs
    particle.setModified(true);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(type.customProperties.list("Temperature")->values, (std::vector<double>{0, 0}));
    EXPECT_TRUE(particle.isModified());
    define("Charge", 1, true);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(type.customProperties.list("Charge")->values, (std::vector<double>{0, 0}));
}

// ---------------------------------------------------------------- walls

TEST_F(ChargeRebuild, fillsThePropertyOfEachTriangle)
{
    define(geometry, "Charge", 1, true); // of particles there is none
    CGeometryGroup& wall = chargedWall();
    wall.customProperties.resize(5); // of another mesh
    geometry.setModified(true);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(wall.customProperties.list("Charge")->values, (std::vector<double>{3e-9, -4e-9}));
    EXPECT_FALSE(geometry.isModified());

    CCustomPropertyValueList& list = *wall.customProperties.list("Charge");
    list.values = {5e-9, 0.0};
    list.fitTo(2); // as a reader does after the values of a file
    timestep.rebuildChargeProperties();
    EXPECT_EQ(list.values, (std::vector<double>{5e-9, 0.0})) << "the deck's own";
}

TEST_F(ChargeRebuild, reportsChargesOfAWallThatHaveNowhereToGo)
{
    CGeometryGroup& wall = chargedWall();
    geometry.setModified(true);
    const CLogCapture log;
    timestep.rebuildChargeProperties();
    EXPECT_TRUE(geometry.isModified()) << "untouched without the property";
    EXPECT_EQ(log.text(), "");
    define(geometry, "Charge", 1, false);
    timestep.rebuildChargeProperties();
    EXPECT_EQ(log.text(), "WARNING Conversion: Geometry group \"Wall\": the stored values for the property \"Charge\" "
                          "are dropped, for no saved time of the deck holds that property.\n");
    EXPECT_TRUE(wall.customProperties.lists.empty());
    wall.electrostatic.charges.push_back(1.0); // more than triangles: no charges of theirs
    timestep.rebuildChargeProperties();
    EXPECT_EQ(log.count(), 1u);
}

} // namespace NBrenmark
