// What a timestep without rows costs a conversion, beside bare HDF5 files of the same shape (bare_timesteps.c), and
// whether memory grows with the number of timesteps.
//
//   small_timesteps [--timesteps 1000] [--rounds 5] [--folder FOLDER]
//
// Every step runs in a process of its own, in turn.

#include "bench/legacy_deck.h"

#include "core/deck/application_state.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace NBrenmark;
using namespace NBench;

namespace {

bool makeDeck(const QString& path, quint32 timesteps)
{
    return makeLegacyDeck(
        path, timesteps,
        [](SSimulationFrame& frame) {
            frame.creator.materials.set("glass", new CMaterial("glass", 0.3, 1e7, 2500.0, 0.0, eBulkMaterial));
            frame.creator.particleTypes.append().setName("Grain");
        },
        [](SSimulationFrame& frame, quint32 number) { frame.timestep.time = 0.01 * number; });
}

bool convert(const QString& source, const QString& target)
{
    CDataConverter converter;
    return converter.convertSimulationData(source.toUtf8().constData(), target.toUtf8().constData());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const quint32 timesteps = wordAfter(arguments, "--timesteps", "1000").toUInt();
    const quint32 rounds = wordAfter(arguments, "--rounds", "5").toUInt();
    QTemporaryDir folder(wordAfter(arguments, "--folder", QDir::tempPath()) + "/brenmark-bench-XXXXXX");
    if (!folder.isValid() || timesteps < 4 || rounds == 0) {
        std::fprintf(stderr, "small_timesteps: nothing to measure, or no folder can be made\n");
        return 1;
    }
    const QByteArray bare = QCoreApplication::applicationDirPath().toLocal8Bit() + "/bare_timesteps";
    const QByteArray place = folder.path().toLocal8Bit();
    const QByteArray count = QByteArray::number(timesteps);
    const auto deck = [&](const char* name) { return folder.filePath(name); };
    measure("making a deck", [&] { return makeDeck(deck("all.dem"), timesteps) ? 0.0 : -1.0; });
    measure("making a deck", [&] { return makeDeck(deck("few.dem"), timesteps / 4) ? 0.0 : -1.0; });

    std::vector<double> cpu, elapsed, growth;
    for (quint32 round = 1; round <= rounds; ++round) {
        const SMeasure few = measure("a conversion", [&] { return convert(deck("few.dem"), deck("o")) ? 0.0 : -1.0; });
        const SMeasure all = measure("a conversion", [&] { return convert(deck("all.dem"), deck("o")) ? 0.0 : -1.0; });
        const SMeasure plain = measure("bare files", [&] {
            ::execl(bare.constData(), bare.constData(), place.constData(), count.constData(), nullptr);
            return -1.0;
        });
        cpu.push_back(all.cpuSeconds / plain.cpuSeconds);
        elapsed.push_back(all.wallSeconds / plain.wallSeconds);
        growth.push_back(all.peakMegabytes / few.peakMegabytes);
        std::printf("round %u: %u timesteps %.2f s (%.2f s cpu, %.1f MiB), bare files %.2f s (%.2f s cpu)\n", round,
                    timesteps, all.wallSeconds, all.cpuSeconds, all.peakMegabytes, plain.wallSeconds, plain.cpuSeconds);
    }
    std::printf("a timestep without rows, in bare ones: %s by CPU time, %s elapsed\n", qPrintable(spread(cpu)),
                qPrintable(spread(elapsed)));
    std::printf("peak memory of %u timesteps, in that of %u: %s\n", timesteps, timesteps / 4,
                qPrintable(spread(growth)));
    return 0;
}
