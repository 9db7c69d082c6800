// How long a large moving mesh takes from one family to the other: read from a legacy deck, moved, and written
// to an HDF5 deck, beside the time in which the same bytes are copied in memory.
//
//   mesh [--triangles 1000000] [--rounds 3] [--folder FOLDER]
//
// The steps should grow with the number of triangles and no faster: compare a run at a quarter of it.
#include "bench/legacy_deck.h"

#include "core/deck/application_state.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"
#include "model/geometry/cad_geometry.h"
#include "model/kinematics/linear_translation.h"

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>
#include <memory>

using namespace NBrenmark;
using namespace NBench;

namespace {

/// A wavy sheet of at least so many triangles, that moves along z.
std::unique_ptr<CCADGeometry> movingSheet(quint32 triangles)
{
    const auto side = static_cast<quint32>(std::sqrt(triangles / 2.0));
    std::vector<C3DPoint> points;
    std::vector<TriangleNodes> nodes;
    points.reserve(std::size_t(side + 1) * (side + 1));
    nodes.reserve(std::size_t(side) * side * 2);
    for (quint32 row = 0; row <= side; ++row)
        for (quint32 column = 0; column <= side; ++column)
            points.emplace_back(0.001 * column, 0.001 * row, 0.0002 * std::sin(0.1 * column) * std::cos(0.07 * row));
    for (quint32 row = 0; row < side; ++row)
        for (quint32 column = 0; column < side; ++column) {
            const quint32 corner = row * (side + 1) + column;
            nodes.push_back({corner, corner + 1, corner + side + 2});
            nodes.push_back({corner, corner + side + 2, corner + side + 1});
        }
    auto sheet = std::make_unique<CCADGeometry>(nullptr);
    sheet->setName("Sheet");
    sheet->materialName = "steel";
    sheet->importMesh(std::move(points), std::move(nodes));
    auto lift = std::make_unique<CLinearTranslation>();
    lift->name = "Lift";
    lift->endTime = 10.0;
    lift->initialVelocity = 0.1;
    sheet->kinematics.add(std::move(lift));
    return sheet;
}

double secondsOf(const std::function<void()>& step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

bool makeDeck(const QString& path, quint32 triangles)
{
    return makeLegacyDeck(
        path, 1,
        [triangles](SSimulationFrame& frame) {
            frame.creator.materials.set("steel", new CMaterial("steel", 0.3, 7e10, 7850.0, 0.0, eEquipmentMaterial));
            frame.creator.geometryGroups.add(movingSheet(triangles).release(), true);
        },
        [](SSimulationFrame&, quint32) {});
}

/// Reads, moves and writes the mesh and prints a line.
/// \return the seconds of the three steps together; negative if one failed
double carry(const QString& source, const QString& target)
{
    SApplicationState& state = applicationState();
    if (!initialiseApplication(state))
        return -1.0;
    CSimulation& simulation = *state.simulation;
    bool done = false;
    const double reading =
        secondsOf([&] { done = simulation.load(source) == 0 && simulation.goToTimestep(0, eIntoCurrentFrame); });
    SSimulationFrame& frame = *simulation.currentFrame;
    CGeometryGroup* const sheet = done ? frame.creator.geometryGroups.at(0) : nullptr;
    if (sheet == nullptr)
        return -1.0;

    C3DTransform lifted;
    lifted.translate(C3DVector(0.0, 0.0, 0.05));
    const double moving = secondsOf([&] { sheet->moveTo(lifted); });

    const auto manager = NHdf5Family::makeManager(simulation);
    TimestepIndex index(1);
    frame.timestep.timestepIndex = 0;
    const double writing = secondsOf([&] {
        done = manager->setOutputName(target) == 0 && manager->appendTimestep(frame, index, true, true);
        manager->reset();
    });

    // What the mesh holds: placed and imported points, ids, corners, forces.
    const std::size_t bytes = sheet->coords.size() * (3 * sizeof(C3DPoint) + 4) +
                              sheet->triangleNodes.size() * (4 + sizeof(TriangleNodes) + 56);
    const std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes);
    const double copying = secondsOf([&] { std::memcpy(to.data(), from.data(), bytes); });
    std::printf("%zu triangles, %.0f MB: read %.2f s, moved %.2f s, written %.2f s; the same bytes copied in %.3f s, "
                "together %.0fx\n",
                sheet->triangleNodes.size(), 1e-6 * double(bytes), reading, moving, writing, copying,
                (reading + moving + writing) / copying);
    std::fflush(stdout);
    simulation.close(false);
    return done ? reading + moving + writing : -1.0;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const quint32 triangles = wordAfter(arguments, "--triangles", "1000000").toUInt();
    const quint32 rounds = wordAfter(arguments, "--rounds", "3").toUInt();
    QTemporaryDir folder(wordAfter(arguments, "--folder", QDir::tempPath()) + "/brenmark-bench-XXXXXX");
    if (!folder.isValid() || triangles < 2) {
        std::fprintf(stderr, "mesh: nothing to measure, or no folder can be made\n");
        return 1;
    }
    for (const quint32 count : {triangles / 4, triangles}) {
        const QString source = folder.filePath(QString("source-%1.dem").arg(count));
        const QString target = folder.filePath(QString("target-%1.dem").arg(count));
        measure("making the deck", [&] { return SCounted(makeDeck(source, count) ? 0.0 : -1.0); });
        std::vector<double> seconds;
        for (quint32 round = 0; round < rounds; ++round)
            seconds.push_back(
                measure("carrying the mesh", [&] { return SCounted(carry(source, target)); }).wallSeconds);
        std::printf("median of %u rounds: %.2f s\n", rounds, median(seconds));
    }
    return 0;
}
