// Faults put into the files of converted sample decks by plain HDF5 calls or by their bytes: verify finds each, and
// names it once. That the converted decks have none before is a test of the conversion.
#include "support/paths.h"
#include "support/stored_deck.h"
#include "support/temp_folder.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <functional>

namespace NBrenmark {

namespace {

using Json = nlohmann::json;

/// The files of a converted deck "c.dem".
class CDeckFiles
{
public:
    explicit CDeckFiles(const CTempFolder& folder) : folder(folder) {}

    CStoredPart timestep(int number) const { return {numbered(number), "TimestepData"}; }
    CStoredPart model() const { return {numbered(0), "CreatorData"}; }
    void header(const char* name, unsigned value) const
    {
        const H5::H5File file(folder.path("c.dem").toStdString(), H5F_ACC_RDWR);
        file.openGroup("/").openAttribute(name).write(H5::PredType::NATIVE_UINT, &value);
    }
    void addToRoot(const QString& name, const char* object) const
    {
        H5::H5File(folder.path(name).toStdString(), H5F_ACC_RDWR).createGroup(object);
    }
    void copy(const QString& from, const QString& to) const { folder.write(to, folder.read(from)); }
    void remove(const QString& name) const { QFile::remove(folder.path(name)); }
    void cut(const QString& name, int bytes) const { folder.write(name, folder.read(name).chopped(bytes)); }
    void replace(const QString& name, const QByteArray& before, const QByteArray& after) const
    {
        folder.write(name, folder.read(name).replace(before, after));
    }

private:
    QString numbered(int number) const { return folder.path("c_data/" + QString::number(number) + ".h5"); }

    const CTempFolder& folder;
};

using Files = const CDeckFiles&;

struct SFault
{
    const char* deck;
    const char* place;
    const char* named; ///< in the place or the words of the difference
    std::function<void(Files)> make;
};

const SFault faults[] = {
    // values and rows
    {"pile-27", "timestep/2/particles", "velocity",
     [](Files f) { f.timestep(2).flip("ParticleTypes/0/velocity", 80); }},
    {"pile-27", "timestep/2/particles", "scale", [](Files f) { f.timestep(2).flip("ParticleTypes/1/scale", 9); }},
    {"pile-27", "timestep/1/particles", "Wear",
     [](Files f) { f.timestep(1).flip("ParticleTypes/0/CustomProperties/1/data", 9); }},
    {"pile-27", "timestep/1/properties", "Wind", [](Files f) { f.timestep(1).flip("CustomProperties/1/data", 3); }},
    {"pile-27", "timestep/3/removedParticles", "2", [](Files f) { f.timestep(3).flip("removed particles", 256); }},
    {"pile-27", "timestep/1/contacts/surfaceSurface/collisionsActive", "true",
     [](Files f) { f.timestep(1).attribute("Contacts/SurfaceSurface", "collision on", char(1)); }},
    {"collisions-24", "timestep/1/collisions/surfaceSurface/startTime", "differs",
     [](Files f) { f.timestep(1).flip("Collisions/SurfaceSurface/start time", 6); }},
    {"bonds-24", "timestep/1/bonds", "broken bond",
     [](Files f) { f.timestep(1).flip("Bonds/SurfaceSurface/break time", 5); }},
    {"moving-walls-26", "timestep/1/geometryGroups/Drum", "velocity",
     [](Files f) {
         f.timestep(1).attribute("GeometryGroups/1", "velocity", std::array<double, 3>{9, 9, 9});
     }},
    {"moving-walls-26", "timestep/2/geometryGroups/Drum", "time",
     [](Files f) { f.timestep(2).attribute("GeometryGroups/1", "time", 9.0); }},
    {"moving-walls-26", "timestep/0/geometryGroups/Plate/triangleForces", "value",
     [](Files f) { f.timestep(0).flip("GeometryGroups/2/force torque", 8); }},
    {"factories-25", "timestep/1/geometryGroups/Hopper/factories/A", "creationCount",
     [](Files f) { f.timestep(1).attribute("GeometryGroups/0/Factories/A", "creation count", 77); }},
    {"pile-27", "timestep/2/energy", "kinetic",
     [](Files f) { f.timestep(2).attribute("SystemEnergy", "kinetic energy", 0.5); }},
    {"pile-27", "timestep/2/isFull", "isFull", [](Files f) { f.timestep(2).attribute("", "full timestep", char(0)); }},
    {"pile-27", "timestep/2/particleMask", "15", [](Files f) { f.timestep(2).attribute("", "particle mask", 15); }},
    {"pile-27", "timestep/2/particles", "angular velocity",
     [](Files f) { f.timestep(2).damageChunk("ParticleTypes/1/angular velocity"); }},
    // what belongs to the storing
    {"pile-27", "deck/edition", "edition", [](Files f) { f.header("edition", 2); }},
    {"pile-27", "deck/firstVersion", "30.0.19", [](Files f) { f.header("original file version", 0x1E0013); }},
    {"pile-27", "timestep/1/buildRevision", "28439",
     [](Files f) { f.timestep(1).attribute("", "svn version", 28439); }},
    {"pile-27", "timestep/2/particles/Glass%20bead/dataMask", "8703",
     [](Files f) { f.timestep(2).attribute("ParticleTypes/0", "mask", 8703 + 1024); }},
    {"pile-27", "timestep/2", "holds 2", [](Files f) { f.timestep(2).attribute("", "full timestep", char(2)); }},
    {"pile-27", "creator", "dimensions", [](Files f) { f.model().attribute("", "dimensions", 2); }},
    // the model
    {"pile-27", "creator/materials/glass/density", "2500", [](Files f) { f.model().flip("Materials", 272); }},
    {"pile-27", "creator/interactions", "restitution", [](Files f) { f.model().flip("Interactions", 515); }},
    {"pile-27", "creator/gravity", "gravity",
     [](Files f) {
         f.model().attribute("", "gravity", std::array<double, 3>{0, 0, 1});
     }},
    {"moving-walls-26", "creator/geometryGroups/Hopper/velocity", "(1, 2, 3)",
     [](Files f) {
         f.model().attribute("GeometryGroups/0", "velocity", std::array<double, 3>{1, 2, 4});
     }},
    {"moving-walls-26", "creator/geometryGroups/Gate/vertices", "value",
     [](Files f) { f.model().flip("GeometryGroups/4/coords", 3); }},
    {"moving-walls-26", "creator/geometryGroups/Drum/motions", "initialVelocity",
     [](Files f) { f.model().attribute("GeometryGroups/1/Kinematics/0", "initial velocity", 9.0); }},
    {"factories-25", "creator/geometryGroups/Hopper/factories/A", "maxAttempts",
     [](Files f) { f.model().attribute("GeometryGroups/0/Factories/A", "max search attempts", 9); }},
    {"pile-27", "creator/sizeDistributions", "percentage",
     [](Files f) { f.model().attribute("SizeDistributions/Glass bead", "percentage", 9.0); }},
    // other names
    {"pile-27", "creator/materials/glass", "renamed", [](Files f) { f.model().flip("Materials", 0); }},
    {"pile-27", "creator/particles/Glass%20bead", "renamed",
     [](Files f) { f.model().text("ParticleTypes/0", "name", "Glass beat"); }},
    {"pile-27", "timestep/1/particles/Glass%20bead", "renamed",
     [](Files f) { f.timestep(1).text("ParticleTypes/0", "name", "Glass beat"); }},
    {"moving-walls-26", "creator/geometryGroups/Drum", "renamed",
     [](Files f) { f.model().text("GeometryGroups/1", "name", "Dram"); }},
    {"moving-walls-26", "creator/geometryGroups/Drum/motions/slide", "renamed",
     [](Files f) { f.model().text("GeometryGroups/1/Kinematics/0", "name", "glide"); }},
    // what is missing
    {"pile-27", "timestep/1/particles", "velocity", [](Files f) { f.timestep(1).remove("ParticleTypes/0/velocity"); }},
    {"pile-27", "timestep/1/particles", "raw mass",
     [](Files f) { f.timestep(1).removeAttribute("ParticleTypes/0", "raw mass"); }},
    {"pile-27", "creator/interactions", "missing", [](Files f) { f.model().remove("Interactions"); }},
    {"moving-walls-26", "creator/geometryGroups/Plate", "Plate", [](Files f) { f.model().remove("GeometryGroups/2"); }},
    {"collisions-24", "timestep/1/collisions", "start time",
     [](Files f) { f.timestep(1).remove("Collisions/SurfaceSurface/start time"); }},
    {"factories-25", "timestep/1/geometryGroups", "lacks size distributions (1)",
     [](Files f) { f.timestep(1).remove("GeometryGroups/0/Factories/A/FactSize/Ball"); }},
    {"pile-27", "timestep/1/particles", "custom properties are stored where",
     [](Files f) { f.timestep(1).remove("ParticleTypes/1/CustomProperties/1"); }},
    {"moving-walls-26", "creator/geometryGroups/Gate", "translation",
     [](Files f) {
         f.model().attribute("GeometryGroups/4", "translation", std::array<double, 3>{0, 0, 1});
     }},
    {"pile-27", "timestep/1/energy", "SystemEnergy", [](Files f) { f.timestep(1).remove("SystemEnergy"); }},
    {"pile-27", "timestep/1", "time", [](Files f) { f.timestep(1).removeAttribute("", "elapsed real time"); }},
    // what no reader asks for, and what is read as something else
    {"pile-27", "timestep/1/particles", "notes", [](Files f) { f.timestep(1).addDataset("ParticleTypes/0/notes"); }},
    {"pile-27", "timestep/1", "Extras", [](Files f) { f.timestep(1).addGroup("Extras"); }},
    {"pile-27", "creator", "author", [](Files f) { f.model().addAttribute("", "author"); }},
    {"pile-27", "deck", "Backup", [](Files f) { f.addToRoot("c.dem", "Backup"); }},
    {"pile-27", "timestep/2", "CreatorData/7", [](Files f) { f.addToRoot("c_data/2.h5", "CreatorData/7"); }},
    {"pile-27", "timestep/1/particles", "ids",
     [](Files f) { f.timestep(1).replaceList("ParticleTypes/0/ids", H5::PredType::NATIVE_DOUBLE, 0, 0.5); }},
    {"pile-27", "timestep/1/particles", "announces 0 particles",
     [](Files f) { f.timestep(1).attribute("ParticleTypes/0", "size", 0); }},
    {"pile-27", "timestep/1/particles", "ids",
     [](Files f) { f.timestep(1).replaceList("ParticleTypes/0/ids", H5::PredType::NATIVE_INT, 1, 0); }},
    {"pile-27", "timestep/1/particles", "greatest particle id",
     [](Files f) { f.timestep(1).attribute("ParticleTypes", "max id", 1); }},
    {"bonds-24", "timestep/1/bonds", "bond", [](Files f) { f.timestep(1).flip("Bonds/SurfaceSurface/state", 4 * 10); }},
    // whole files
    {"pile-27", "timestep/1", "timestep 0 in the place", [](Files f) { f.copy("c_data/0.h5", "c_data/1.h5"); }},
    {"pile-27", "timestep/4", "only in the converted", [](Files f) { f.copy("c_data/3.h5", "c_data/4.h5"); }},
    {"pile-27", "timestep/3", "missing", [](Files f) { f.remove("c_data/3.h5"); }},
    {"pile-27", "timestep/1", "1", [](Files f) { f.remove("c_data/1.h5"); }},
    {"pile-27", "timestep/2", "2.h5", [](Files f) { f.cut("c_data/2.h5", 5000); }},
    {"pile-27", "deck", "expected there to be 9", [](Files f) { f.header("num timesteps", 9); }},
    {"pile-27", "deck/settings", "c.ess is missing", [](Files f) { f.remove("c.ess"); }},
    {"pile-27", "deck/configuration", "c.dfg is missing", [](Files f) { f.remove("c.dfg"); }},
    {"pile-27", "deck/companion", "c.ptf is missing", [](Files f) { f.remove("c.ptf"); }},
    {"pile-27", "deck/companion", "sha256", [](Files f) { f.cut("c.ptf", 1); }},
    {"pile-27", "deck/settings", "renamed",
     [](Files f) { f.replace("c.ess", QByteArray("T\0e\0m\0p", 7), QByteArray("T\0a\0m\0p", 7)); }},
};

} // namespace

class SeededFault : public testing::TestWithParam<SFault>
{
};

TEST_P(SeededFault, isNamedOnce)
{
    const SFault& fault = GetParam();
    CTempFolder folder;
    const std::string source = sampleDeck(fault.deck) + ".dem";
    const std::string target = argument(folder.path("c.dem"));
    ASSERT_EQ(runTool({"convert", "--quiet", source, target}).exitCode, 0);
    fault.make(CDeckFiles(folder));
    const SToolResult result = runTool({"verify", "--json", source, target});
    EXPECT_EQ(result.exitCode, 1) << result.error;
    const Json found = Json::parse(result.output, nullptr, false);
    ASSERT_TRUE(found.is_object()) << result.error;
    ASSERT_EQ(found["differences"].size(), 1u) << found["differences"].dump(1);
    const Json& difference = found["differences"][0];
    EXPECT_EQ(difference["place"].get<std::string>().rfind(fault.place, 0), 0u) << difference.dump(1);
    EXPECT_NE(difference.dump().find(fault.named), std::string::npos) << difference.dump(1);
}

INSTANTIATE_TEST_SUITE_P(Table, SeededFault, testing::ValuesIn(faults));

} // namespace NBrenmark
