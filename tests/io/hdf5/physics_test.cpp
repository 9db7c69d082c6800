// Contact models and external forces in the HDF5 family: their shapes in a file, and what is read of files made by
// hand, older and damaged ones among them.
#include "core/version.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "io/hdf5/storable.h"
#include "model/creator_data.h"
#include "physics/parameter_records.h"
#include "physics/phantoms.h"
#include "results/physics_linked_property_manager.h"

#include "support/h5_builder.h"
#include "support/h5_tree.h"
#include "support/log_capture.h"
#include "support/temp_folder.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cstring>

namespace NBrenmark {

class Hdf5Physics : public testing::Test
{
protected:
    QString path() const { return folder.path("a.h5"); }

    /// What a writer makes of the models, as text.
    std::string written(const CPhysicsModels& physics)
    {
        {
            H5::H5File file(path().toStdString(), H5F_ACC_TRUNC);
            H5::Group root = file.openGroup("/");
            SSaveOptions options;
            CHdf5CreatorDataWriter writer(file, options);
            writer.location = &root;
            physics.write(writer);
        }
        return treeOf(path());
    }
    void read(CPhysicsModels& physics, quint32 version = currentFileVersion())
    {
        H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
        H5::Group root = file.openGroup("/");
        SSaveOptions options;
        CHdf5CreatorDataReader reader(file, options);
        reader.location = &root;
        reader.fileVersion = version;
        physics.read(reader);
    }
    /// A file with three empty lists but for the names given.
    void makeLists(std::vector<const char*> particles, std::vector<const char*> walls = {},
                   std::vector<const char*> forces = {})
    {
        CH5Builder file(path());
        file.texts("/PhysicsModels/SurfaceSurface", "order", particles);
        file.texts("/PhysicsModels/SurfaceGeometry", "order", walls);
        file.texts("/PhysicsModels/ExternalForces", "order", forces);
    }

private:
    CTempFolder folder;
};

static std::string namesOf(const CPhysicsModels::Chain& chain)
{
    std::string names;
    for (const auto& model : chain)
        names += model->modelName().toStdString() + "/" + std::to_string(model->source) + " ";
    return names;
}

/// A row for a pair, of 256 bytes a name.
struct SPairRow
{
    char first[256] = {};
    char second[256] = {};
    double value = 0.0;
};

static hid_t pairRowType()
{
    const hid_t text = H5Tcopy(H5T_C_S1);
    H5Tset_size(text, 256);
    const hid_t type = H5Tcreate(H5T_COMPOUND, sizeof(SPairRow));
    H5Tinsert(type, "name1", 0, text);
    H5Tinsert(type, "name2", 256, text);
    H5Tinsert(type, "value", 512, H5T_NATIVE_DOUBLE);
    H5Tclose(text);
    return type;
}

TEST_F(Hdf5Physics, aPairIsTheSameInEitherOrder)
{
    makeLists({"Hertz-Mindlin with JKR"});
    {
        SPairRow rows[3];
        std::strcpy(rows[0].first, "steel");
        std::strcpy(rows[0].second, "glass");
        rows[0].value = 0.5;
        std::strcpy(rows[1].first, "glass");
        std::strcpy(rows[1].second, "glass");
        rows[1].value = 0.25;
        rows[2] = rows[0];
        rows[2].value = 0.75;
        const hid_t type = pairRowType();
        CH5Builder file(path(), false);
        file.integer("/PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR", "model source", 0)
            .flag("/PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR", "enable rolling friction", false)
            .dataset("/PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR", "data", type, {3}, rows);
        H5Tclose(type);
    }
    CPhysicsModels physics;
    CLogCapture log;
    read(physics);
    const auto& jkr = dynamic_cast<CJkrContactModel&>(*physics.sphereSphereModels.at(0)).parameters;
    EXPECT_EQ(jkr.surfaceEnergy.entries.size(), 2u);
    EXPECT_EQ(jkr.surfaceEnergy.valueOf("glass", "steel"), 0.75);
    EXPECT_EQ(jkr.surfaceEnergy.valueOf("glass", "glass"), 0.25);
    EXPECT_FALSE(jkr.enableRollingFriction);
    EXPECT_EQ(log.text(), "WARNING HDF5 read: 1 of 3 rows of a table \"data\" repeat a name or pair: the later one "
                          "stays.\n");
}

TEST_F(Hdf5Physics, whatAnOlderVersionDoesntStoreHasItsValueBefore)
{
    // Old keys join their names by a sign of their own; the file is the same for all versions.
    struct SBondRow
    {
        char key[512] = {};
        double numbers[5] = {1, 2, 3, 4, 5};
    };
    const char* const keys[] = {"steel - glass", "a + b", "c <> d", "x - y - z"};
    const std::string group = "/PhysicsModels/SurfaceSurface/Hertz-Mindlin with bonding";
    makeLists({"Hertz-Mindlin with bonding"});
    {
        SBondRow rows[4];
        for (int row = 0; row < 4; ++row)
            std::strcpy(rows[row].key, keys[row]);
        const hid_t text = H5Tcopy(H5T_C_S1);
        H5Tset_size(text, 512);
        const hid_t type = H5Tcreate(H5T_COMPOUND, sizeof(SBondRow));
        H5Tinsert(type, "key", 0, text);
        const char* const members[] = {"normalStiffness", "shearStiffness", "normalStrength", "shearStrength",
                                       "bondRadius"};
        for (std::size_t member = 0; member < 5; ++member)
            H5Tinsert(type, members[member], 512 + 8 * member, H5T_NATIVE_DOUBLE);
        CH5Builder file(path(), false);
        file.integer(group, "model source", 0)
            .number(group, "start time", 0.5)
            .number(group, "end time", 0.75)
            .integer(group, "state", 1)
            .flag(group, "torque feedback", true)
            .flag(group, "enable rolling friction", false)
            .dataset(group, "data", type, {4}, rows);
        H5Tclose(type);
        H5Tclose(text);
    }
    struct SCase
    {
        quint32 version;
        bool torqueFeedback;
        bool rollingFriction;
        std::vector<std::string> keys;
    };
    const std::vector<std::string> repaired = {"a <> b", "c <> d", "glass <> steel", "x <> y <> z"};
    const std::vector<std::string> asStored = {"a + b", "c <> d", "steel - glass", "x - y - z"};
    const SCase cases[] = {
        {makeVersion(30, 0, 6), false, true, repaired},  {makeVersion(30, 0, 7), true, true, repaired},
        {makeVersion(30, 0, 17), true, true, repaired},  {makeVersion(30, 0, 18), true, true, asStored},
        {makeVersion(30, 0, 20), true, false, asStored},
    };
    for (const SCase& c : cases) {
        CPhysicsModels physics;
        read(physics, c.version);
        const auto& bonds = dynamic_cast<CParallelBondContactModel&>(*physics.sphereSphereModels.at(0)).parameters;
        EXPECT_EQ(bonds.torqueFeedback, c.torqueFeedback);
        EXPECT_EQ(bonds.enableRollingFriction, c.rollingFriction);
        EXPECT_EQ(bonds.bondParameters.names(), c.keys);
        EXPECT_EQ(bonds.formationStartTime, 0.5);
        EXPECT_EQ(bonds.formationEndTime, 0.75);
        EXPECT_EQ(bonds.state, 1u);
    }
}

TEST_F(Hdf5Physics, aModelThatIsNamedButAbsentEndsTheRead)
{
    makeLists({"Linear Spring"}, {}, {});
    CPhysicsModels physics;
    EXPECT_THROW(read(physics), std::exception);
}

TEST_F(Hdf5Physics, aModelThatClashesIsLeftOutAndTheRestIsCarried)
{
    CPhysicsModels stored;
    stored.clear();
    for (const char* name : {"Tribocharging", "Linear Cohesion"})
        stored.addContactModel(stored.makeContactModel(name, 0, 0, false), CPhysicsModels::atEnd);
    written(stored);
    CPhysicsLinkedCustomPropertyManager particle("Particle Properties", eParticleOwner);
    auto own = std::make_unique<CCustomPropertyMetaData>("Charge", eDoubleProperty, 4u, 10u);
    ASSERT_TRUE(particle.addProperty(own));
    CPhysicsModels physics;
    physics.addListener(&particle);
    const CLogCapture log;
    read(physics);
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Linear Cohesion/0 ");
    EXPECT_THAT(log.text(), testing::HasSubstr("Will clash with already existing properties"));
}

TEST_F(Hdf5Physics, aTableThatAnnouncesMoreRowsThanTheFileHoldsIsRefused)
{
    // Rows that were never stored take no room in a file: 550 TB of them fit into a few bytes.
    makeLists({"Hertz-Mindlin with JKR"});
    {
        const std::string group = "/PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR";
        const hid_t type = pairRowType();
        CH5Builder file(path(), false);
        file.integer(group, "model source", 0).flag(group, "enable rolling friction", false);
        file.dataset(group, "data", type, {hsize_t(1) << 40}, nullptr);
        H5Tclose(type);
    }
    CPhysicsModels physics;
    EXPECT_THROW(read(physics), std::exception);
}

TEST_F(Hdf5Physics, aModelThatIsntKnownKeepsItsNameAndPlace)
{
    makeLists({"Tribocharging"}, {"hertz-mindlin (no slip)", "Sticky", "Stickier"}, {"Wind", "none"});
    {
        CH5Builder file(path(), false);
        const std::string lists = "/PhysicsModels/";
        file.integer(lists + "SurfaceSurface/Tribocharging", "model source", 0)
            .number(lists + "SurfaceSurface/Tribocharging", "data", 4)
            .integer(lists + "SurfaceGeometry/hertz-mindlin (no slip)", "model source", 2)
            .flag(lists + "SurfaceGeometry/hertz-mindlin (no slip)", "enable rolling friction", true)
            .integer(lists + "SurfaceGeometry/Sticky", "model source", 1)
            .integer(lists + "SurfaceGeometry/Stickier", "model source", 1)
            .number(lists + "SurfaceGeometry/Stickier", "glue", 1)
            .integer(lists + "ExternalForces/none", "model source", 0)
            .integer(lists + "ExternalForces/Wind", "model source", 7);
    }
    CPhysicsModels physics;
    clearLogOnceMemory();
    CLogCapture log;
    read(physics);
    EXPECT_EQ(namesOf(physics.sphereSphereModels), "Tribocharging/0 ");
    EXPECT_EQ(dynamic_cast<CTribochargingContactModel&>(*physics.sphereSphereModels[0]).parameters.alpha, 4);
    EXPECT_EQ(namesOf(physics.sphereGeometryModels), "Hertz-Mindlin (no slip)/0 Sticky/1 Stickier/1 ");
    ASSERT_EQ(physics.externalForceCount(), 1u);
    EXPECT_EQ(physics.externalForces[0]->modelName(), "Wind");
    EXPECT_EQ(physics.externalForces[0]->source, 7u);
    EXPECT_EQ(log.text(),
              "WARNING HDF5 read: contact model \"Sticky\" isn't known here; its name and its place are kept.\n"
              "WARNING HDF5 read: contact model \"Stickier\" isn't known here; its name and its place are kept, its "
              "parameters are lost.\n"
              "WARNING HDF5 read: external force \"Wind\" isn't known here; its name and its place are kept.\n");
    EXPECT_FALSE(physics.loading);
}

TEST_F(Hdf5Physics, whatCantBeAGroupIsLeftOutAndReported)
{
    CPhysicsModels physics;
    for (const char* name : {"a/b", "", "order", "Sticky", "Sticky"})
        physics.addContactModel(physics.makeContactModel(name, 0, 1, true), CPhysicsModels::atEnd);
    CLogCapture log;
    written(physics);
    EXPECT_EQ(log.text(), "WARNING HDF5 write: The contact model \"a/b\" is left out: no group can have that name.\n"
                          "WARNING HDF5 write: The contact model \"\" is left out: no group can have that name.\n"
                          "WARNING HDF5 write: The contact model \"order\" is left out: no group can have that name.\n"
                          "WARNING HDF5 write: The contact model \"Sticky\" is left out: its list holds another one of "
                          "that name.\n");
    CPhysicsModels back;
    read(back);
    EXPECT_EQ(namesOf(back.sphereSphereModels), "Hertz-Mindlin (no slip)/0 Sticky/1 ");
}

TEST(Hdf5PhysicsNames, thatDontFitAreRefusedBeforeADeckIsTouched)
{
    // Bytes that a field holds beside the terminator.
    struct SCase
    {
        const char* what;
        std::size_t longest;
        std::unique_ptr<IContactModel> (*make)(const std::string& name);
    };
    const auto with = [](auto model, const auto& fill) -> std::unique_ptr<IContactModel> {
        fill(model->parameters);
        return model;
    };
    static const auto filled = with;
    const SCase cases[] = {
        {"jkr", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CJkrContactModel>(0), [&](auto& p) { p.surfaceEnergy.set("a", name, 1); });
         }},
        {"cohesion", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CCohesionV2ContactModel>(0),
                           [&](auto& p) { p.energyDensity.set(name, name, 1); });
         }},
        {"hysteretic pair", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CHystereticContactModel>(0),
                           [&](auto& p) { p.interactions.set("a", name, {}); });
         }},
        {"hysteretic yield", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CHystereticContactModel>(0), [&](auto& p) { p.yields.set(name, 1); });
         }},
        {"edinburgh", 511,
         [](const std::string& name) {
             return filled(std::make_unique<CEdinburghCohesionContactModel>(0),
                           [&](auto& p) { p.pairs.set("a", name, {}); });
         }},
        {"leeds", 511,
         [](const std::string& name) {
             return filled(std::make_unique<CLeedsAdhesionContactModel>(0),
                           [&](auto& p) { p.pairs.set("a", name, {}); });
         }},
        {"heat", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CHeatConductionModel>(0), [&](auto& p) { p.conductivities.set(name, 1); });
         }},
        {"wear", 255,
         [](const std::string& name) {
             return filled(std::make_unique<CArchardContactModel>(0), [&](auto& p) { p.wearConstants.set(name, 1); });
         }},
        {"bonds", 511 - 5, // " <> " and another name of one letter
         [](const std::string& name) {
             return filled(std::make_unique<CParallelBondContactModel>(0),
                           [&](auto& p) { p.bondParameters.set(CBondParametersMap::pairKey("a", name), {}); });
         }},
    };
    for (const SCase& c : cases) {
        for (const std::size_t more : {0, 1}) {
            CCreatorData creator{SPropertyManagers()};
            creator.physicsModels.addContactModel(c.make(std::string(c.longest + more, 'b')), CPhysicsModels::atEnd);
            if (more == 0)
                EXPECT_NO_THROW(checkStorable(creator, {})) << c.what;
            else
                EXPECT_THROW(checkStorable(creator, {}), unstorable_error) << c.what;
        }
    }
    CCreatorData creator{SPropertyManagers()};
    auto force = std::make_unique<CHeatConductionExternalForce>();
    force->parameters.heatCapacities.set(std::string(256, 'b'), 1);
    creator.physicsModels.addExternalForce(std::move(force), CPhysicsModels::atEnd);
    EXPECT_THROW(checkStorable(creator, {}), unstorable_error);
}

} // namespace NBrenmark
