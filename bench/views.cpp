// What a deck costs to be looked at: an export to VTK's files beside writing the same bytes raw, and an XDMF file of
// many timesteps beside opening their files.
//
//   views [--particles 100000] [--contacts 200000] [--timesteps 5] [--rounds 5] [--xdmf 2000] [--folder FOLDER]
//
// The same bytes are those that the exported files hold, inflated: as many files of the same names, each written as the
// command writes its own and safe on the disk before the next one. They are in memory before the clock starts; the
// command's time has its start and the reading of the deck in it. Every step runs in a process of its own, in turn.

#include "bench/grain_heap.h"

#include "api/data_converter.h"
#include "core/deflate.h"
#include "core/thread_pool.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTemporaryDir>

#include <H5Cpp.h>
#include <zlib.h>

#include <cstring>
#include <map>

using namespace NBrenmark;
using namespace NBench;

namespace {

bool makeConverted(const QString& path, const SSize& size)
{
    const QString source = path + "-source.dem";
    CDataConverter converter;
    return makeDeck(source, size) &&
           converter.convertSimulationData(source.toUtf8().constData(), path.toUtf8().constData());
}

quint64 numberAt(const QByteArray& bytes, qint64 at)
{
    quint64 number = 0;
    if (at + qint64(sizeof number) > bytes.size())
        std::abort();
    std::memcpy(&number, bytes.constData() + at, sizeof number);
    return number;
}

/// Inflated arrays of an exported file, one after the other.
QByteArray inflated(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        std::abort();
    const QByteArray content = file.readAll(), mark = "<AppendedData encoding=\"raw\">\n_";
    const qint64 end = content.lastIndexOf("\n</AppendedData>");
    QByteArray bytes;
    for (qint64 at = content.indexOf(mark) + mark.size(); at < end;) {
        const quint64 blocks = numberAt(content, at), most = numberAt(content, at + 8);
        qint64 stream = at + 24 + 8 * qint64(blocks);
        for (quint64 i = 0; i < blocks; ++i) {
            const quint64 size = numberAt(content, at + 24 + 8 * qint64(i));
            QByteArray block(int(most), '\0');
            uLongf length = most;
            if (uncompress(reinterpret_cast<Bytef*>(block.data()), &length,
                           reinterpret_cast<const Bytef*>(content.constData() + stream), size) != Z_OK)
                std::abort();
            bytes.append(block.constData(), int(length));
            stream += qint64(size);
        }
        at = stream;
    }
    return bytes;
}

std::map<QString, QByteArray> inflatedFiles(const QString& folder)
{
    std::map<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList({"*.vtp"}))
        files[name] = inflated(folder + '/' + name);
    return files;
}

SCounted secondsSince(const SCounted& begin)
{
    const SCounted end = now();
    return {end.wall - begin.wall, end.cpu - begin.cpu};
}

SCounted writeRaw(const QString& exported, const QString& folder)
{
    const std::map<QString, QByteArray> files = inflatedFiles(exported);
    QDir().mkpath(folder);
    const SCounted begin = now();
    for (const auto& [name, bytes] : files) {
        QSaveFile file(folder + '/' + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            return -1.0;
    }
    return secondsSince(begin);
}

/// Deflates the same bytes by one thread.
SCounted deflateAgain(const QString& exported)
{
    const std::map<QString, QByteArray> files = inflatedFiles(exported);
    const SCounted begin = now();
    for (const auto& [name, bytes] : files)
        for (int at = 0; at < bytes.size(); at += 1 << 20)
            quicklyDeflated(bytes.constData() + at, std::size_t(std::min(1 << 20, bytes.size() - at)));
    return secondsSince(begin);
}

void compareExport(const QString& folder, const QString& brenmark, const SSize& size, quint32 rounds)
{
    const QString deck = folder + "/deck.dem", exported = folder + "/vtp", raw = folder + "/raw";
    measure("making a deck", [&] { return SCounted(makeConverted(deck, size) ? 0.0 : -1.0); });
    const QStringList command{"export", deck, "--format", "vtp", "--output", exported, "--force"};
    measureCommand("an export", brenmark, command);
    double megabytes = 0.0, stored = 0.0;
    for (const auto& [name, bytes] : inflatedFiles(exported)) {
        megabytes += 1e-6 * bytes.size();
        stored += 1e-6 * double(QFile(exported + '/' + name).size());
    }
    std::printf("export: %u particles, %u contacts, %u timesteps: %.0f MB of %.0f in the files, %u threads\n",
                size.particles, size.contacts, size.timesteps, stored, megabytes, threadCount());
    std::vector<double> speed, share;
    for (quint32 round = 1; round <= rounds; ++round) {
        const SMeasure written = measure("writing", [&] { return writeRaw(exported, raw); });
        const SMeasure all = measureCommand("an export", brenmark, command);
        const SMeasure deflating = measure("deflating", [&] { return deflateAgain(exported); });
        speed.push_back(written.wallSeconds / all.wallSeconds);
        share.push_back(deflating.cpuSeconds / all.cpuSeconds);
        std::printf("round %u: raw %.2f s (%.2f s cpu), export %.2f s (%.2f s cpu, %.0f MiB), deflating %.2f s cpu\n",
                    round, written.wallSeconds, written.cpuSeconds, all.wallSeconds, all.cpuSeconds, all.peakMegabytes,
                    deflating.cpuSeconds);
        std::fflush(stdout);
    }
    std::printf("export, in the speed of writing its bytes raw: %s\n", qPrintable(spread(speed)));
    std::printf("deflating, share of the export's CPU time: %s\n", qPrintable(spread(share)));
}

SCounted openAll(const QString& dataFolder, quint32 timesteps)
{
    for (quint32 number = 0; number < timesteps; ++number) {
        const H5::H5File file((dataFolder + QString("/%1.h5").arg(number)).toStdString(), H5F_ACC_RDONLY);
        file.openGroup("TimestepData");
    }
    return 0.0;
}

void compareView(const QString& folder, const QString& brenmark, quint32 timesteps, quint32 rounds)
{
    SSize size;
    size.particles = 1000;
    size.contacts = 2000;
    size.timesteps = timesteps;
    const QString deck = folder + "/long.dem";
    measure("making a deck", [&] { return SCounted(makeConverted(deck, size) ? 0.0 : -1.0); });
    std::vector<double> seconds, ratio;
    for (quint32 round = 1; round <= rounds; ++round) {
        const SMeasure opening = measure("opening", [&] { return openAll(folder + "/long_data", timesteps); });
        const SMeasure view = measureCommand("a view", brenmark, {"view", deck});
        seconds.push_back(view.wallSeconds);
        ratio.push_back(view.wallSeconds / opening.wallSeconds);
    }
    std::printf("view: %u timesteps, seconds: %s; in openings of their files: %s\n", timesteps,
                qPrintable(spread(seconds)), qPrintable(spread(ratio)));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    SSize size;
    size.particles = wordAfter(arguments, "--particles", "100000").toUInt();
    size.contacts = wordAfter(arguments, "--contacts", "200000").toUInt();
    size.timesteps = wordAfter(arguments, "--timesteps", "5").toUInt();
    const quint32 rounds = wordAfter(arguments, "--rounds", "5").toUInt();
    const quint32 ofView = wordAfter(arguments, "--xdmf", "2000").toUInt();
    QTemporaryDir folder(wordAfter(arguments, "--folder", QDir::tempPath()) + "/brenmark-bench-XXXXXX");
    if (!folder.isValid() || size.particles < 2 || size.timesteps == 0 || rounds == 0) {
        std::fprintf(stderr, "views: nothing to measure, or no folder can be made\n");
        return 1;
    }
    const QString brenmark = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../bin/brenmark");
    compareExport(folder.path(), brenmark, size, rounds);
    if (ofView > 0)
        compareView(folder.path(), brenmark, ofView, rounds);
    return 0;
}
