// The chains of contact models, and how a model is made by its name.
#include "physics/physics_models.h"

#include "physics/hertz_mindlin_no_slip.h"

#include <gtest/gtest.h>

namespace NBrenmark {

TEST(PhysicsModels, oneDefaultModelInEachChain)
{
    CPhysicsModels physics;
    ASSERT_EQ(physics.sphereSphereModels.size(), 1u);
    ASSERT_EQ(physics.sphereGeometryModels.size(), 1u);
    EXPECT_EQ(physics.externalForceCount(), 0u);
    const IContactModel* const particles =
        CPhysicsModels::findModel(physics.sphereSphereModels, "Hertz-Mindlin (no slip)");
    const IContactModel* const walls =
        CPhysicsModels::findModel(physics.sphereGeometryModels, "Hertz-Mindlin (no slip)");
    ASSERT_NE(particles, nullptr);
    ASSERT_NE(walls, nullptr);
    EXPECT_EQ(particles->modelType, 0u);
    EXPECT_EQ(walls->modelType, 1u);
    EXPECT_EQ(particles->source, 0u);
    // The second partner of a contact gets a rolling torque if it is a particle.
    EXPECT_TRUE(dynamic_cast<const CHertzMindlinNoSlipContactModel&>(*particles).parameters.enableRollingFriction);
    EXPECT_FALSE(dynamic_cast<const CHertzMindlinNoSlipContactModel&>(*walls).parameters.enableRollingFriction);
    EXPECT_EQ(CPhysicsModels::findModel(physics.sphereSphereModels, "Linear Spring"), nullptr);
    physics.clear();
    EXPECT_TRUE(physics.sphereSphereModels.empty() && physics.sphereGeometryModels.empty());
    physics.resetToDefaults();
    EXPECT_EQ(physics.sphereSphereModels.size() + physics.sphereGeometryModels.size(), 2u);
}

TEST(PhysicsModels, areMadeByExactNameAndSource)
{
    struct SCase
    {
        const char* name;
        quint32 source;
        bool known;
    };
    const SCase cases[] = {
        {"Hertz-Mindlin (no slip)", 0, true},  {"Hertz-Mindlin (no slip)", 2, true}, // built-in first, then a plug-in
        {"Hertz-Mindlin (no slip)", 1, false},                                       // a plug-in of that name
        {"hertz-mindlin (no slip)", 0, false}, {"", 0, false},
    };
    for (const SCase& c : cases) {
        const std::unique_ptr<IContactModel> model = createContactModel(c.name, 1, c.source);
        EXPECT_EQ(model != nullptr, c.known) << c.name << " " << c.source;
        if (model != nullptr) {
            EXPECT_EQ(model->modelType, 1u);
        }
    }
}

} // namespace NBrenmark
