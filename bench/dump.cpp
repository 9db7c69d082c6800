// How fast dump writes all values of a deck as text, beside printing as many doubles by itself.
//
//   dump [--particles 200000] [--rounds 3] [--folder FOLDER]
//
// The plain way prints the same number of values with the shortest digits that give them back, one a line, into a file.
#include "bench/legacy_deck.h"

#include "core/deck/application_state.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <charconv>
#include <random>

using namespace NBrenmark;
using namespace NBench;

namespace {

constexpr quint32 valuesPerParticle = 3 * 4 + 3 * 7; // rough ones, of those that makeDeck fills in

void fillTimestep(CTimestepData& timestep, quint32 particles)
{
    CParticleType& grains = timestep.particleTypes.append();
    grains.setName("Grain");
    grains.materialName = "glass";
    grains.spheres.resize(1);
    grains.resizeSlots(particles);
    grains.dataMask = allParticleFields;
    timestep.particleTypes.maxId = particles;
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    for (quint32 i = 0; i < particles; ++i) {
        grains.ids[i] = static_cast<qint32>(i + 1);
        grains.scale[i] = 1.0;
        for (auto* const vectors : {&grains.velocity, &grains.angularVelocity})
            (*vectors)[i] = {unit(random), unit(random), unit(random)};
        grains.position[i] = {unit(random), unit(random), unit(random)};
        grains.orientation[i] = CQuaternion();
        for (auto* const forces : {&grains.forceTorque, &grains.unscaledForceTorque, &grains.externalForceTorque})
            for (size_t component = 0; component < (*forces)[i].size(); ++component)
                (*forces)[i][component] = unit(random);
    }
}

bool makeDeck(const QString& path, quint32 particles)
{
    return makeLegacyDeck(
        path, 1,
        [](SSimulationFrame& frame) {
            frame.creator.materials.set("glass", new CMaterial("glass", 0.3, 1e7, 2500.0, 0.0, eBulkMaterial));
            frame.creator.particleTypes.append().setName("Grain");
        },
        [particles](SSimulationFrame& frame, quint32) { fillTimestep(frame.timestep, particles); });
}

bool printPlainly(const QString& path, quint64 count)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::FILE* const file = std::fopen(path.toLocal8Bit().constData(), "w");
    char text[40];
    for (quint64 i = 0; file != nullptr && i < count; ++i) {
        char* const end = std::to_chars(text, text + sizeof text - 1, unit(random)).ptr;
        *end = '\n';
        std::fwrite(text, 1, static_cast<size_t>(end + 1 - text), file);
    }
    return file != nullptr && std::fclose(file) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const quint32 particles = wordAfter(arguments, "--particles", "200000").toUInt();
    const quint32 rounds = wordAfter(arguments, "--rounds", "3").toUInt();
    QTemporaryDir folder(wordAfter(arguments, "--folder", QDir::tempPath()) + "/brenmark-bench-XXXXXX");
    if (!folder.isValid() || particles == 0 || rounds == 0) {
        std::fprintf(stderr, "dump: nothing to measure, or no folder can be made\n");
        return 1;
    }
    const QString deck = folder.filePath("deck.dem"),
                  brenmark = QCoreApplication::applicationDirPath() + "/../bin/brenmark";
    measure("making the deck", [&] { return SCounted(makeDeck(deck, particles) ? 0.0 : -1.0); });
    std::vector<double> ratios;
    for (quint32 round = 1; round <= rounds; ++round) {
        const SMeasure digests = measureCommand("dump", brenmark, {"dump", deck});
        const SMeasure all = measureCommand("dump --full", brenmark, {"dump", "--full", deck});
        const SMeasure plain = measure("printing", [&] {
            return SCounted(printPlainly(folder.filePath("text"), quint64(particles) * valuesPerParticle) ? 0.0 : -1.0);
        });
        ratios.push_back(all.cpuSeconds / plain.cpuSeconds);
        std::printf("round %u: dump %.2f s cpu, with all values %.2f s (%.2f s cpu, %.0f MiB); as many values printed "
                    "plainly %.2f s cpu\n",
                    round, digests.cpuSeconds, all.wallSeconds, all.cpuSeconds, all.peakMegabytes, plain.cpuSeconds);
    }
    std::printf("dump with all values, in plain prints by CPU time: %s\n", qPrintable(spread(ratios)));
    return 0;
}
