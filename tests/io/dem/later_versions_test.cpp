// Every file version from 20.0.16 on that reads differently from the one before it, and that one: a deck with one of
// everything is read to its last byte, and what each version stores or leaves out has its value. The values are counted
// by hand from what support/legacy_deck.cpp stores.
#include "io/dem/dem_testing.h"
#include "model/geometry/geometry_group.h"
#include "model/particle_template.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/text_lines.h"

namespace NBrenmark {
namespace {

/// The two types of the sample deck in turn, at random sizes, with two custom properties.
SDeckFactory feedOf(quint32 version)
{
    SDeckFactory feed = deckFactory("A", "Ball");
    feed.typeNames = {"Ball", "Oval (größer)"};
    CBytes names = CBytes().text(feed.typeNames[0]).text(feed.typeNames[1]);
    feed.type = {"binary", CBytes().i32(1) + (since(version, 24, 0, 28) ? CBytes().i32(2) + names : names),
                 CBytes().i32(0)};
    feed.size = {"random", CBytes().f64s({0.5, 2}), {}};
    if (since(version, 27, 0, 0))
        feed.size.stored.i32(0);
    const bool hasValues = since(version, 25, 0, 1);
    feed.customParams = {{"Wear", "fixed", hasValues ? CBytes().i32(2).f64s({8, 9}) : CBytes().f64(8)},
                         {"Heat", "initial", since(version, 25, 0, 0) ? CBytes() : CBytes().f64(300)}};
    return feed;
}

SDeckCreator modelOf(quint32 version)
{
    SDeckCreator model = sampleCreator();
    model.stamp.reservedWord = 1; // a word more below 21.0.3
    model.legacyStreamFlag = 1;
    model.materials[1].type = 0;
    model.groups = sampleGroups();
    model.groups[0].factories[0] = feedOf(version);
    model.groups[0].properties = {{makeDeckValues(1, 4, 1)}, 4};
    const CBytes bond = CBytes().i32(1).text("Oval (größer) - Ball").f64s({1, 2, 3, 4, 5, 0.25, 0.5}).i32(2);
    model.particleParticle.push_back({"Hertz-Mindlin with bonding", 0, bond});
    CBytes plane = CBytes().i32(1).i32(4).f64s({9, 9, 9});
    if (since(version, 27, 0, 1))
        plane.i32(1).i32(4).text("a").text("b");
    model.particleGeometry.push_back({"Moving Plane", 0, plane.i32(1).i32(7).f64s({1, 2, 3, 4, 5, 6})});
    return model;
}

SDeckTimestep timestepOf(quint32 version)
{
    SDeckTimestep timestep = sampleTimestep(0.125);
    timestep.stamp.reservedWord = 1;
    timestep.isFull = 0;
    timestep.timestepMask = 0x7F;
    timestep.particleMask = 0x2B;
    timestep.geometryMask = 0x09;
    timestep.groups = modelOf(version).groups;
    timestep.groups[0].motions[1].name = "slide, changed";
    timestep.groups[0].state.properties = {{makeDeckValues(11, 4, 1)}, 4};
    timestep.particles.types[0].properties = {{makeDeckValues(1, 60, 2), makeDeckValues(1, 60, 1)}, 60};
    timestep.pluginFactories = {{"library", "Feeder", "libfeeder"}};
    timestep.properties = {{makeDeckValues(5, 1, 1)}, 1};
    SDeckContacts& contacts = timestep.pairs.contacts[0];
    contacts = makeDeckContacts(40, {{0, 4, 1, 1}}, {1e-6}, since(version, 20, 0, 17) ? 255 : 0x40FF);
    contacts.collisions = makeDeckCollisions(40, 0, surfaceCollisionMask);
    contacts.properties = {{makeDeckValues(3, 1, 1)}, 1};
    timestep.pairs.collisions[0] = makeDeckCollisions(60, 1, surfaceCollisionMask);
    timestep.pairs.bonds[0] = makeDeckBonds(70, {{0, 4, 1, 1}}, {1});
    return timestep;
}

/// A line of the deck's text, by the version from which on it has that value.
struct SGatedLine
{
    const char*
        path; ///< of the model as its block has it, of the state that a timestep leaves it in, or of the timestep
    std::vector<std::pair<quint32, const char*>> values;
};

constexpr quint32 first = makeVersion(20, 0, 15);
constexpr quint32 v(quint32 major, quint32 minor, quint32 build) { return makeVersion(major, minor, build); }

// What stands before a version is the default, or, of a state, what the model has.
const SGatedLine gatedLines[] = {
    {"model/buildRevision", {{first, "0"}, {v(20, 0, 18), "28438"}}},
    {"model/buildBranch", {{first, "\"\""}, {v(20, 0, 18), "\"Brenmark/trunk\""}}},
    {"model/legacyStreamFlag", {{first, "true"}, {v(22, 0, 0), "false"}}},
    {"model/title", {{first, "\"Kiste\""}}},
    {"model/damping", {{first, "0.25"}}},
    {"model/description", {{first, "\"Description\""}}},
    {"model/velocityLimit", {{first, "12.5"}}},
    {"model/angularVelocityLimit", {{first, "80"}}},
    {"model/domain/periodicY", {{first, "true"}}},
    {"model/particles/Oval%20(größer)/calculateProperties", {{first, "false"}}},
    {"model/materials/glass/workFunction", {{first, "4.5"}}},
    {"model/materials/seed/type", {{first, "1"}, {v(30, 0, 4), "0"}}},
    {"model/physicsModels/sphereGeometryModels/Moving%20Plane/planes/7/endPoint", {{first, "(4, 5, 6)"}}},
    {"model/physicsModels/sphereSphereModels/Hertz-Mindlin%20with%20bonding/bondParameters/glass%20<>%20seed/"
     "bondRadius",
     {{first, "5"}, {v(30, 0, 18), nullptr}}}, // one text that isn't in the current form names no pair any more
    {"model/geometryGroups/Trichter/materialName", {{first, "\"glass(1)\""}, {v(30, 0, 4), "\"glass\""}}},
    {"model/geometryGroups/Trichter/uniqueId", {{first, "0"}, {v(24, 0, 30), "40"}}},
    {"model/geometryGroups/Trichter/originalCentreOfMass", {{first, "(1, 2, 3)"}, {v(25, 0, 0), "(4, 5, 6)"}}},
    {"model/geometryGroups/Trichter/pointOfAction", {{first, "(1, 2, 3)"}, {v(25, 0, 2), "(7, 8, 9)"}}},
    {"model/geometryGroups/Trichter/originalPointOfAction", {{first, "(1, 2, 3)"}, {v(25, 0, 2), "(10, 11, 12)"}}},
    {"model/geometryGroups/Trichter/translation", {{first, "(0, 0, 0)"}, {v(25, 0, 3), "(0.5, 0.25, -0.125)"}}},
    {"model/geometryGroups/Trichter/electrostatic/exempt",
     {{first, "true"}, {v(26, 0, 1), "false"}, {v(27, 0, 3), "true"}}},
    {"model/geometryGroups/Trichter/electrostatic/startCharge",
     {{first, "1e-09"}, {v(26, 0, 1), "0"}, {v(27, 0, 3), "1e-09"}}},
    {"model/geometryGroups/Trichter/properties/Worn", {{first, "f64[4] 7 7 7 7"}, {v(23, 0, 0), "f64[4] 1 2 3 4"}}},
    {"model/geometryGroups/Blade/import/rotationAxisEnd", {{first, "(0, 0, 0)"}, {v(23, 0, 1), "(0, 0, 1)"}}},
    {"model/geometryGroups/Blade/import/translationDistance", // until 23.0.4 the mesh is where it was put
     {{first, "0"}, {v(23, 0, 4), "2"}}},
    {"model/geometryGroups/Blade/import/importedCoords/1", {{first, "(2, 0, 0)"}, {v(23, 0, 4), "(0, 1, 0)"}}},
    {"model/geometryGroups/Trichter/factories/A/counters",
     {{first, "u32[4] 0 0 0 0"}, {v(20, 0, 23), "u32[4] 4 3 2 1"}}},
    {"model/geometryGroups/Trichter/factories/A/customProperties/Wear/values",
     {{first, "f64[2] 1 2"}, {v(21, 0, 1), "f64[2] 8 8"}, {v(25, 0, 1), "f64[2] 8 9"}}},
    {"model/geometryGroups/Trichter/factories/A/customProperties/Heat/kind",
     {{first, "\"fixed\""}, {v(25, 0, 0), "\"initial\""}}},
    {"model/geometryGroups/Trichter/factories/A/customProperties/Heat/values",
     {{first, "f64[1] 293"}, {v(21, 0, 1), "f64[1] 300"}, {v(25, 0, 0), nullptr}}},
    {"model/geometryGroups/Trichter/factories/A/customProperties/Charge/values",
     {{first, "f64[1] 1e-09"}, {v(26, 0, 1), "f64[1] 0"}}},
    {"model/geometryGroups/Trichter/factories/A/creationRate", {{first, "100"}}},
    {"model/geometryGroups/Trichter/factories/A/massToCreate", {{first, "12.5"}}},
    {"model/geometryGroups/Trichter/factories/A/massCreation", {{first, "false"}, {v(22, 0, 1), "true"}}},
    {"model/geometryGroups/Trichter/factories/A/rateChangeTime", {{first, "0"}, {v(22, 0, 2), "0.5"}}},
    {"model/geometryGroups/Trichter/factories/A/sizes/Oval%20(größer)/max", {{first, "2"}}},
    {"model/geometryGroups/Trichter/factories/A/sizes/Ball/radiusScaling", {{first, "true"}, {v(27, 0, 0), "false"}}},
    {"model/geometryGroups/Trichter/factories/A/type/names/1", {{first, "\"Oval (größer)\""}}},
    {"model/geometryGroups/Trichter/factories/B/fillShape", {{first, "false"}}},
    {"model/geometryGroups/Trichter/factories/B/numToCreate", {{first, "500"}}},
    {"model/geometryGroups/Trichter/factories/B/massCreation", {{first, "false"}, {v(22, 0, 2), "true"}}},
    {"model/geometryGroups/Trichter/factories/B/massToCreate", {{first, "0"}, {v(22, 0, 2), "12.5"}}},

    {"state/Trichter/velocity", {{first, "(3, 2, 1)"}, {v(20, 0, 19), "(0.1, 0.2, 0.3)"}}},
    {"state/Trichter/resetVelocities", {{first, "true"}, {v(20, 0, 19), "false"}}},
    {"state/Trichter/motionHistory/1/angularVelocity", {{first, nullptr}, {v(20, 0, 19), "(0.5, 0.25, 0.125)"}}},
    {"state/Trichter/time", {{first, "0.125"}, {v(20, 0, 21), "0.625"}}},
    {"state/Trichter/translation", {{first, "(0, 0, 0)"}, {v(25, 0, 3), "(1.5, 0.25, -0.125)"}}},
    {"state/Trichter/centreOfMass", {{first, "(1, 2, 3)"}, {v(24, 0, 29), "(9, 8, 7)"}}},
    {"state/Trichter/originalCentreOfMass", {{first, "(1, 2, 3)"}, {v(25, 0, 0), "(6, 5, 4)"}}},
    {"state/Trichter/pointOfAction", {{first, "(1, 2, 3)"}, {v(25, 0, 2), "(3, 2, 1)"}}},
    {"state/Trichter/triangleForces/1", {{first, "(-1, -1.125, -1.25, -1.375, -1.5, -1.625, -1.75)"}}},
    {"state/Trichter/motions/slide,%20changed/index", {{first, nullptr}, {v(21, 0, 4), "1"}, {v(24, 0, 0), nullptr}}},
    {"state/Trichter/motions/turn/pointOfAction", // the whole list has it as it was made
     {{first, "(1, 2, 3)"}, {v(21, 0, 4), "(0, 0, 0.5)"}, {v(24, 0, 0), "(1, 2, 3)"}}},
    {"state/Trichter/motions/turn/angularVelocity", {{first, "(0, 0, 3)"}, {v(24, 0, 0), "(0, 3, 0)"}}},
    {"state/Trichter/properties/Worn", {{first, "f64[4] 7 7 7 7"}, {v(23, 0, 0), "f64[4] 11 12 13 14"}}},
    {"state/Trichter/factories/A/creationCount", {{first, "7"}}},
    {"state/Trichter/factories/A/counters", {{first, "u32[4] 0 0 0 0"}, {v(20, 0, 23), "u32[4] 1 2 3 4"}}},
    {"state/Trichter/factories/A/accounting/massRemainder", {{first, "0"}, {v(22, 0, 1), "0.25"}}},
    {"state/Trichter/factories/B/completed", {{first, "false"}}},

    {"timestep/isFull", {{first, "true"}, {v(22, 0, 0), "false"}}},
    {"timestep/timestepMask", {{first, "255"}, {v(22, 0, 0), "127"}}},
    {"timestep/particleMask", {{first, "47"}, {v(22, 0, 0), "43"}}},
    {"timestep/geometryMask", {{first, "41"}, {v(22, 0, 0), "9"}}},
    {"timestep/particles/Ball/properties/Heat/0", {{first, "293"}, {v(21, 0, 0), "1"}}},
    {"timestep/contacts/surfaceSurface/normalOverlap", {{first, "f64[1] 1e-06"}}},
    {"timestep/contacts/surfaceSurface/properties/Rubbed", {{first, "f64[1] 6"}, {v(22, 1, 1), "f64[1] 3"}}},
    {"timestep/collisions/surfaceSurface/first/ids", {{first, "u32[0]"}, {v(20, 0, 17), "u32[1] 160"}}},
    {"timestep/bonds/surfaceSurface/state", // broken where the model has no parameters for it
     {{first, "u32[0]"}, {v(21, 0, 2), "u32[1] 1"}, {v(30, 0, 18), "u32[1] 0"}}},
    {"timestep/particles/Oval%20(größer)/particles", {{first, "12"}}},
    {"timestep/elapsedTime", {{first, "12.5"}}},
    {"timestep/energy/cumulative/external", {{first, "5.5"}}},
    {"timestep/removedParticles/Oval%20(größer)", {{first, "2"}}},
    {"timestep/properties/Tilt", {{first, "f64[1] 4"}, {v(23, 0, 0), "f64[1] 5"}}},
};

class LaterVersion : public testing::TestWithParam<quint32>
{
};

/// Each version of the list and the one below it.
std::vector<quint32> versionsAndThoseBelow()
{
    std::vector<quint32> versions{makeVersion(3, 0, 16)}; // old numbering
    for (const quint32 version :
         {v(20, 0, 17), v(20, 0, 18), v(20, 0, 19), v(20, 0, 21), v(20, 0, 22), v(20, 0, 23), v(21, 0, 0),
          v(21, 0, 1),  v(21, 0, 2),  v(21, 0, 3),  v(21, 0, 4),  v(22, 0, 0),  v(22, 0, 1),  v(22, 0, 2),
          v(22, 1, 1),  v(23, 0, 0),  v(23, 0, 1),  v(23, 0, 4),  v(23, 1, 0),  v(24, 0, 0),  v(24, 0, 21),
          v(24, 0, 25), v(24, 0, 28), v(24, 0, 29), v(24, 0, 30), v(25, 0, 0),  v(25, 0, 1),  v(25, 0, 2),
          v(25, 0, 3),  v(26, 0, 0),  v(26, 0, 1),  v(27, 0, 0),  v(27, 0, 1),  v(27, 0, 3),  v(30, 0, 0),
          v(30, 0, 4),  v(30, 0, 11), v(30, 0, 18), v(30, 0, 20)})
        for (const quint32 next : {version - 1, version})
            if (versions.back() < next)
                versions.push_back(next);
    return versions;
}

void addLines(QStringList& lines, const QString& root, const std::vector<std::string>& text)
{
    for (const std::string& line : text) // the object's own name, after the marks of what isn't compared, is left out
        lines << withPlainNumbers(root + QString::fromStdString(line).section("object", 1));
}

} // namespace

TEST_P(LaterVersion, readsWhatItStoresAndNotOneByteMore)
{
    const quint32 version = GetParam();
    COwnFrame own;
    for (const auto& [name, values] : {std::pair("Wear", std::vector{1.0, 2.0}), {"Heat", {293.0}}, {"Charge", {0.0}}})
        finalizeProperty(own.particle, name, values);
    finalizeProperty(own.contact, "Rubbed", {6.0});
    finalizeProperty(own.geometry, "Worn", {7.0});
    finalizeProperty(own.simulation, "Tilt", {4.0});
    QStringList lines;
    const auto readModel = [&] {
        const CBytes stored = creatorBytes(version, modelOf(version));
        ASSERT_EQ(consumedBy<CDemCreatorDataReader>(own.frame.creator, stored + CBytes::garbage(64), 0), stored.size());
    };
    const auto readTimestep = [&](int fullGeometry) {
        SDeckTimestep timestep = timestepOf(version);
        timestep.fullGeometry = fullGeometry;
        const CBytes stored = timestepBytes(version, timestep);
        ASSERT_EQ(consumedBy<CDemTimestepDataReader>(own.frame.timestep, stored + CBytes::garbage(64), 0),
                  stored.size());
    };
    readModel();
    addLines(lines, "model", textLinesOf(own.frame.creator));
    readTimestep(0);
    addLines(lines, "state", textLinesOf(own.frame.creator.geometryGroups));
    addLines(lines, "timestep", textLinesOf(own.frame.timestep));
    const quint32 counted = version < makeVersion(20, 0, 0) ? version + makeVersion(17, 0, 0) : version;
    for (const SGatedLine& line : gatedLines) {
        const char* value = nullptr;
        for (const auto& [from, next] : line.values)
            value = counted >= from ? next : value;
        const QString start = QString::fromUtf8(line.path) + ' ';
        QString found;
        for (const QString& text : lines)
            if (text.startsWith(start))
                found = text;
        const QString expected = value == nullptr ? QString() : withPlainNumbers(start + QString::fromUtf8(value));
        EXPECT_EQ(found.toStdString(), expected.toStdString());
    }
    EXPECT_EQ(own.frame.creator.fileVersion, counted);
    EXPECT_EQ(GeometryGroups::nextUniqueId(), counted >= makeVersion(24, 0, 30) ? 44u : 4u);
    // Where a timestep may hold the groups whole, they are where the model puts them.
    if (counted >= makeVersion(22, 0, 0))
        return;
    readTimestep(1);
    EXPECT_EQ(own.frame.creator.geometryGroups.at(0)->coords[1].x, 0.5);
    EXPECT_EQ(own.frame.creator.geometryGroups.at(0)->time, 0.5);
}

INSTANTIATE_TEST_SUITE_P(Gates, LaterVersion, testing::ValuesIn(versionsAndThoseBelow()), [](const auto& version) {
    return versionText(version.param).replace('.', '_').toStdString();
});

// ---------------------------------------------------------------- particles whose shape is a mesh

// No block holds them: hosts do. A part is a tetrahedron of glass.
TEST(DemTemplates, haveWholeGroupsBareMeshesAndMomentsOfInertia)
{
    SDeckGroup part = sampleGroups()[1];
    part.index = 0;
    const SDeckMesh& mesh = part.mesh;
    const CBytes arrays =
        CBytes().rawI32(mesh.vertexIds).rawF64(mesh.coords).rawI32(mesh.triangleIds).rawI32(mesh.nodes);
    const CBytes bare = CBytes().i32(1).i32(0).i32(4).i32(4).i32(3) + arrays;
    const CBytes inertia = CBytes().f64s({1, 2, 3, 4, 5, 6});
    const CBytes domain = CBytes().f64s({-1, -1, -1, 2, 2, 2}).i32(0).i32(1).i32(0);
    const CBytes turn = CBytes().f64s({0, 1, 0, 1, 0, 0, 0, 0, 1});
    const CBytes name = CBytes().text("Stone").f64(2.5);
    const auto whole = [&](quint32 version) {
        return groupListBytes(version, {part}) + domain + CBytes().f64s({9, 9, 9}) + turn + name;
    };
    struct SCase
    {
        quint32 version;
        CBytes stored;
        const char* turned;
        double inertia;
    };
    const char* const turned = "orientation (0, 1, 0, 1, 0, 0, 0, 0, 1)";
    const char* const straight = "orientation (1, 0, 0, 0, 1, 0, 0, 0, 1)";
    const CBytes material = CBytes().text("glass");
    const SCase cases[] = {
        {makeVersion(20, 0, 16), whole(makeVersion(20, 0, 16)), turned, 1.5},
        {makeVersion(24, 0, 20), whole(makeVersion(24, 0, 20)), turned, 1.5},
        {makeVersion(24, 0, 21), bare + domain + name + material, straight, 0.0},
        {makeVersion(30, 0, 10), bare + domain + name + material, straight, 0.0},
        {makeVersion(30, 0, 11), bare + inertia + domain + name + material + turn, turned, 1.0},
    };
    for (const SCase& c : cases) {
        const std::string version = versionText(c.version).toStdString();
        TemplateMap templates;
        const CBytes stored = CBytes().i32(1) + c.stored;
        EXPECT_EQ(consumedBy<CDemCreatorDataReader>(templates, stored + CBytes::garbage(64), c.version), stored.size())
            << version;
        CParticleTemplate& stone = *templates.at("Stone");
        expectText(stone, "name \"Stone\"; scale 2.5; materialName \"glass\"; domain/periodicY true", version);
        expectText(stone, c.turned, version);
        ASSERT_EQ(stone.geometry.count(), 1u);
        EXPECT_EQ(stone.geometry.at(0)->momentOfInertia.values[0], c.inertia) << version;
        EXPECT_EQ(stone.geometry.at(0)->coords[2].y, 1.0);
        EXPECT_EQ(stone.geometry.at(0)->triangleAreas.size(), 4u);
    }
}

} // namespace NBrenmark
