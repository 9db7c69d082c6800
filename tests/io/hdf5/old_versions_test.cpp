// Decks of earlier versions of the family, built by hand: what each version stores, and what stands for what it
// doesn't.
#include "io/hdf5/hdf5_deck_testing.h"

#include "physics/hertz_mindlin_no_slip.h"
#include "support/h5_builder.h"
#include "support/text_lines.h"
#include <cstring>
#include <ostream>

namespace NBrenmark {

using namespace NHdf5Testing;

/// What files of a version hold.
struct SVersionCase
{
    quint32 version;
    bool materialTypes;      ///< rows of 296 bytes, else of 288
    bool factoriesInCreator; ///< "PluginFactories/" there, else in the timestep
    bool typeFields;         ///< the four attributes of a particle type
    bool materialBlocks;
    bool domainGroup; ///< else one record, and no cylindrical conditions
    bool rollingFriction;
};

//                                               materials, factories, type fields, blocks, domain, rolling friction
static const SVersionCase versionCases[] = {
    {makeVersion(30, 0, 0), false, false, false, false, false, false},
    {makeVersion(30, 0, 3), false, false, false, false, false, false},
    {makeVersion(30, 0, 4), true, false, false, false, false, false},
    {makeVersion(30, 0, 5), true, true, false, false, false, false},
    {makeVersion(30, 0, 6), true, true, true, false, false, false},
    {makeVersion(30, 0, 15), true, true, true, false, false, false},
    {makeVersion(30, 0, 16), true, true, true, true, false, false},
    {makeVersion(30, 0, 17), true, true, true, true, true, false},
    {makeVersion(30, 0, 19), true, true, true, true, true, false},
    {makeVersion(30, 0, 20), true, true, true, true, true, true},
    {makeVersion(30, 0, 21), true, true, true, true, true, true}, // read as if it were the current one
    {makeVersion(31, 0, 0), true, true, true, true, true, true},
};

static std::ostream& operator<<(std::ostream& stream, const SVersionCase& c)
{
    return stream << versionText(c.version).toStdString();
}

// ---------------------------------------------------------------- the builder

static void putDouble(char* record, std::size_t at, double value) { std::memcpy(record + at, &value, sizeof value); }

static void insertDouble(hid_t type, const char* name, std::size_t at) { H5Tinsert(type, name, at, H5T_NATIVE_DOUBLE); }

static void insertText(hid_t type, const char* name, std::size_t at, std::size_t size)
{
    const hid_t text = H5Tcopy(H5T_C_S1);
    H5Tset_size(text, size);
    H5Tinsert(type, name, at, text);
    H5Tclose(text);
}

static void insertPoint(hid_t type, const char* name, std::size_t at)
{
    const hsize_t size = 3;
    const hid_t point = H5Tarray_create2(H5T_NATIVE_DOUBLE, 1, &size);
    H5Tinsert(type, name, at, point);
    H5Tclose(point);
}

static void buildMaterials(CH5Builder& file, const std::string& creator, bool withTypes)
{
    const std::size_t rowBytes = withTypes ? 296 : 288;
    const hid_t type = H5Tcreate(H5T_COMPOUND, rowBytes);
    insertText(type, "name", 0, 256);
    insertDouble(type, "poisson", 256);
    insertDouble(type, "shearMod", 264);
    insertDouble(type, "density", 272);
    insertDouble(type, "workFunction", 280);
    if (withTypes)
        H5Tinsert(type, "type", 288, H5T_NATIVE_UINT);
    std::vector<char> rows(2 * rowBytes, '\0');
    for (int i = 0; i < 2; ++i) {
        char* const row = rows.data() + static_cast<std::size_t>(i) * rowBytes;
        std::strcpy(row, i == 0 ? "Sand" : "Steel");
        putDouble(row, 256, 0.25 + i);
        putDouble(row, 264, 1e7 + i);
        putDouble(row, 272, 2500.0 + i);
        putDouble(row, 280, 4.5 + i);
        if (withTypes)                                    // as no one would guess them
            row[288] = static_cast<char>(i == 0 ? 0 : 1); // of four bytes, the others being 0
    }
    file.dataset(creator, "Materials", type, {2}, rows.data());
    H5Tclose(type);
}

static void buildInteractions(CH5Builder& file, const std::string& creator)
{
    const hid_t type = H5Tcreate(H5T_COMPOUND, 536);
    insertText(type, "key", 0, 512);
    insertDouble(type, "restitution", 512);
    insertDouble(type, "staticFriction", 520);
    insertDouble(type, "rollingFriction", 528);
    char row[536] = "Sand~Steel";
    putDouble(row, 512, 0.75);
    putDouble(row, 520, 0.625);
    putDouble(row, 528, 0.125);
    file.dataset(creator, "Interactions", type, {1}, row);
    H5Tclose(type);
}

static void buildDomain(CH5Builder& file, const std::string& creator, bool asGroup)
{
    if (asGroup) {
        const std::string domain = creator + "/Domain";
        file.point(domain, "domain min", -1, -2, -3).point(domain, "domain max", 1, 2, 3);
        file.flag(domain, "domain xPeriodic", true).flag(domain, "domain yPeriodic", false);
        file.flag(domain, "domain zPeriodic", true).flag(domain, "domian cpbc enable", true);
        file.text(domain, "domain cpbc geometry", "Drum").text(domain, "domain cpbc kinematic", "Turn");
        file.number(domain, "domain cpbc length", 2.5).number(domain, "domain cpbc angle", 0.5);
        return;
    }
    const hid_t type = H5Tcreate(H5T_COMPOUND, 56);
    insertPoint(type, "min", 0);
    insertPoint(type, "max", 24);
    H5Tinsert(type, "periodx", 48, H5T_NATIVE_UCHAR);
    H5Tinsert(type, "periody", 49, H5T_NATIVE_UCHAR);
    H5Tinsert(type, "periodz", 50, H5T_NATIVE_UCHAR);
    char record[56] = {};
    for (int i = 0; i < 3; ++i) {
        putDouble(record, 8u * static_cast<unsigned>(i), -1.0 - i);
        putDouble(record, 24u + 8u * static_cast<unsigned>(i), 1.0 + i);
    }
    record[48] = record[50] = 1;
    file.dataset(creator, "domain", type, {}, record);
    H5Tclose(type);
}

static void buildParticleType(CH5Builder& file, const std::string& group, bool withFields, unsigned particles)
{
    file.text(group, "name", "Ball").text(group, "material name", "Sand");
    if (withFields) {
        file.integer(group, "surface based", 0).flag(group, "auto center particle", false);
        file.text(group, "template name", "Sphere").flag(group, "auto properties", true);
    }
    file.number(group, "raw mass", 0.5).number(group, "raw volume", 0.25);
    file.point(group, "raw inertia", 1, 2, 3).flag(group, "calc props", false);
    const hid_t type = H5Tcreate(H5T_COMPOUND, 552);
    insertText(type, "name", 0, 256);
    insertDouble(type, "contactRadius", 512);
    insertDouble(type, "physicalRadius", 520);
    insertPoint(type, "pos", 528);
    char rows[2][552] = {"a", "b"};
    putDouble(rows[0], 512, 1.0 + 1e-13); // the same by the fuzzy test
    putDouble(rows[0], 520, 1.0);
    putDouble(rows[1], 512, 2.0);
    putDouble(rows[1], 520, 1.0);
    putDouble(rows[1], 544, 7.0);
    file.dataset(group, "spheres", type, {2}, rows);
    H5Tclose(type);
    // Of all arrays only these two.
    const int ids[] = {7, -1};
    const double positions[] = {1, 2, 3, 4, 5, 6};
    file.count(group, "size", particles).count(group, "mask", 5);
    if (particles > 0)
        file.dataset(group, "ids", H5T_NATIVE_INT, {2}, ids)
            .dataset(group, "position", H5T_NATIVE_DOUBLE, {2, 3}, positions);
    file.group(group + "/CustomProperties");
}

static void buildVersion(CH5Builder& file, const std::string& group, quint32 version)
{
    file.count(group, "file version", version).integer(group, "svn version", 5);
    file.text(group, "svn path", "Brenmark/branches/old");
}

static void buildCreator(CH5Builder& file, const SVersionCase& c)
{
    const std::string creator = "/CreatorData/0";
    buildVersion(file, creator, c.version);
    file.text(creator, "title", "Old").text(creator, "description", "two\nlines");
    file.integer(creator, "dimensions", 3).number(creator, "damping", 0.5);
    file.integer(creator, "vel restrict", 1).number(creator, "vel limit", 20);
    file.integer(creator, "angvel restrict", 2).number(creator, "angvel limit", 30);
    file.point(creator, "gravity", 0, 0, -9.81);
    buildMaterials(file, creator, c.materialTypes);
    buildInteractions(file, creator);
    buildDomain(file, creator, c.domainGroup);
    for (const char* chain : {"SurfaceSurface", "SurfaceGeometry", "ExternalForces"}) {
        const std::string group = creator + "/PhysicsModels/" + chain;
        if (std::string(chain) == "ExternalForces") {
            file.texts(group, "order", {});
            continue;
        }
        // The spelling of early decks.
        file.texts(group, "order", {"hertz-mindlin (no slip)"});
        file.integer(group + "/hertz-mindlin (no slip)", "model source", 0);
        if (c.rollingFriction)
            file.flag(group + "/hertz-mindlin (no slip)", "enable rolling friction",
                      std::string(chain) == "SurfaceGeometry");
    }
    file.integer(creator + "/ParticleTypes", "max id", -1);
    buildParticleType(file, creator + "/ParticleTypes/0", c.typeFields, 0);
    file.group(creator + "/GeometryGroups").group(creator + "/SizeDistributions");
    if (c.factoriesInCreator)
        file.group(creator + "/PluginFactories");
    if (c.materialBlocks)
        file.group(creator + "/MaterialBlocks");
}

static void buildTimestep(CH5Builder& file, const SVersionCase& c)
{
    const std::string t = "/TimestepData/0.25";
    buildVersion(file, t, c.version);
    file.count(t, "creatordata index", 0).flag(t, "full timestep", false);
    file.count(t, "timestep mask", 255).count(t, "particle mask", 47).count(t, "geometry mask", 41);
    file.group(t + "/GeometryGroups").integer(t + "/ParticleTypes", "max id", -1);
    buildParticleType(file, t + "/ParticleTypes/0", c.typeFields, 2);
    for (const char* family : {"/SurfaceSurface", "/SurfaceGeometry"}) {
        file.count(t + "/Contacts" + family, "size", 0).flag(t + "/Contacts" + family, "collision on", true);
        file.count(t + "/Contacts" + family + "/CollisionsBase", "size", 0);
        file.group(t + "/Contacts" + family + "/CustomProperties");
        file.count(t + "/Collisions" + family, "size", 0);
        file.count(t + "/Bonds" + family, "size", 0);
    }
    if (!c.factoriesInCreator)
        file.group(t + "/PluginFactories");
    file.number(t, "time", 0.25).number(t, "elapsed real time", 60).integer(t, "run number", 3);
    file.text(t, "date", "24/12/19");
    for (const char* name : {"energy", "potential energy", "kinetic energy"})
        file.number(t + "/SystemEnergy", name, 1.5);
    for (const char* name : {"kinetic energy", "potential energy", "created particles", "destroyed particles",
                             "external", "Loss From Contacts", "Loss From Capping"})
        file.number(t + "/SystemEnergy/TimestepEnergy", name, 2.5);
    const hid_t type = H5Tcreate(H5T_COMPOUND, 260);
    insertText(type, "name", 0, 256);
    H5Tinsert(type, "count", 256, H5T_NATIVE_UINT);
    char row[260] = "Ball";
    row[256] = 9;
    file.dataset(t, "removed particles", type, {1}, row);
    H5Tclose(type);
    file.group(t + "/CustomProperties");
}

// ---------------------------------------------------------------- promises

class OldVersions : public testing::TestWithParam<SVersionCase>
{
protected:
    void build(const SVersionCase& c)
    {
        QDir().mkpath(folder.path("old_data"));
        CH5Builder(folder.path("old.dem"))
            .count("/", "original file version", c.version)
            .count("/", "current file version", c.version)
            .integer("/", "num timesteps", 1)
            .count("/", "file format", 0)
            .count("/", "edition", 1);
        CH5Builder file(path());
        buildCreator(file, c);
        buildTimestep(file, c);
    }
    QString path() const { return folder.path("old_data/0.h5"); }
    bool readDeck() { return deck.open(folder.path("old.dem")) == eOpened && deck.read(0); }

    CTempFolder folder;
    CLogCapture log;
    CHdf5Deck deck;
};

TEST_P(OldVersions, areReadAsTheyWereWritten)
{
    const SVersionCase& c = GetParam();
    build(c);
    const CSnapshot before = folder.snapshot();
    ASSERT_TRUE(readDeck()) << log.text();
    EXPECT_EQ(before.changesUntil(folder.snapshot()), "");

    CCreatorData& creator = deck.creator();
    EXPECT_EQ(creator.fileVersion, c.version);
    expectText(creator, "object/buildRevision 5; object/buildBranch \"Brenmark/branches/old\"; title \"Old\"; "
                        "angularVelocityRestricted 2; gravity (0, 0, -9.81); materials/Steel/density 2501; "
                        "interactions/Sand~Steel/staticFriction 0.625; domain/min (-1, -2, -3); domain/max (1, 2, 3); "
                        "domain/periodicX true; domain/periodicY false; domain/periodicZ true");
    // Without types all are bulk at first; then Steel, which no particle type uses, becomes equipment.
    expectText(creator, c.materialTypes ? "materials/Sand/type 0; materials/Steel/type 1"
                                        : "materials/Sand/type 1; materials/Steel/type 0");
    const QString conditions = "cylindricalPeriodicBoundaryConditions/";
    expectText(creator, c.domainGroup ? conditions + "enabled true; " + conditions + "kinematicName \"Turn\""
                                      : conditions + "enabled false; " + conditions + "kinematicName \"\"");
    EXPECT_EQ(creator.materials.size(), 2);

    // What isn't stored is the model's own: on between spheres, off at geometry. The file has the reverse.
    ASSERT_EQ(creator.physicsModels.sphereSphereModels.size(), 1u);
    ASSERT_EQ(creator.physicsModels.sphereGeometryModels.size(), 1u);
    const auto rolls = [](const IContactModel& model) {
        return dynamic_cast<const CHertzMindlinNoSlipContactModel&>(model).parameters.enableRollingFriction;
    };
    EXPECT_EQ(rolls(*creator.physicsModels.sphereSphereModels[0]), !c.rollingFriction);
    EXPECT_EQ(rolls(*creator.physicsModels.sphereGeometryModels[0]), c.rollingFriction);

    expectText(deck.timestep().particleTypes, "Ball/rawInertia (1, 2, 3); Ball/calculateProperties false");
    expectText(deck.timestep().particleTypes, c.typeFields ? "Ball/surfaceBased 0; Ball/autoCenterParticle false; "
                                                             "Ball/autoProperties true; Ball/templateName \"Sphere\""
                                                           : "Ball/surfaceBased 1; Ball/autoCenterParticle true; "
                                                             "Ball/autoProperties false; Ball/templateName \"\"");
}

TEST_P(OldVersions, haveTheirTimestepsReadWhole)
{
    build(GetParam());
    ASSERT_TRUE(readDeck()) << log.text();
    EXPECT_EQ(deck.timestep().date, "24/12/19");
    EXPECT_FALSE(deck.index[0].isFull);
    EXPECT_EQ(deck.index[0].time, 0.25);
    expectText(deck.timestep(),
               "isFull false; runNumber 3; energy/cumulative/external 2.5; removedParticles/Ball 9; "
               "contacts/surfaceGeometry/collisionsActive true; particles/maxId 7"); // which was stored as -1
    EXPECT_NE(log.text().find("The greatest particle id is 7, not -1 as stored."), std::string::npos) << log.text();

    const CParticleType& ball = *deck.timestep().particleTypes.types.at(0);
    EXPECT_EQ(ball.dataMask, 5u);
    ASSERT_EQ(ball.slotCount(), 2u);
    EXPECT_EQ(ball.liveCount(), 1u); // an id below 1 is a free slot
    EXPECT_EQ(ball.position[1].y, 5.0);
    EXPECT_EQ(ball.velocity.size(), 2u); // not stored
    EXPECT_EQ(ball.gravity.z, -9.81);
    ASSERT_EQ(ball.spheres.size(), 2u);
    EXPECT_FALSE(ball.spheres[0].radiiDiffer);
    EXPECT_TRUE(ball.spheres[1].radiiDiffer);
    EXPECT_EQ(ball.spheres[1].position.z, 7.0);
}

TEST_P(OldVersions, missNothingThatTheirVersionHas)
{
    const SVersionCase& c = GetParam();
    std::vector<std::string> needed = {"/CreatorData/0/Materials",
                                       "/CreatorData/0/ParticleTypes/0/spheres",
                                       "/CreatorData/0/PhysicsModels/ExternalForces",
                                       "/CreatorData/0/PhysicsModels/SurfaceSurface/hertz-mindlin (no slip)",
                                       "/TimestepData/0.25/CustomProperties",
                                       "/TimestepData/0.25/removed particles"};
    needed.emplace_back(c.domainGroup ? "/CreatorData/0/Domain" : "/CreatorData/0/domain");
    needed.emplace_back(c.factoriesInCreator ? "/CreatorData/0/PluginFactories" : "/TimestepData/0.25/PluginFactories");
    if (c.materialBlocks)
        needed.emplace_back("/CreatorData/0/MaterialBlocks");
    for (const std::string& path : needed) {
        build(c);
        CH5Builder(this->path(), false).without(path);
        CHdf5Deck other;
        EXPECT_EQ(other.open(folder.path("old.dem")), eOpened);
        EXPECT_FALSE(other.read(0)) << path;
    }
}

INSTANTIATE_TEST_SUITE_P(All, OldVersions, testing::ValuesIn(versionCases));

class PluginFactoriesOfOldVersions : public OldVersions
{
};

TEST_F(PluginFactoriesOfOldVersions, thatNeverWerePlugInsAreNoHindrance)
{
    build(versionCases[9]);
    CH5Builder(path(), false).text("/CreatorData/0/PluginFactories/F", "type", "dynamic");
    EXPECT_TRUE(readDeck()) << log.text();
}

} // namespace NBrenmark
