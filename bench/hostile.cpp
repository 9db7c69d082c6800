// What decks cost that are small on the disk and large in memory, and decks of very many very small things: the peak of
// resident memory and the time of each command, beside what SECURITY.md promises for a deck of that size.
//
//   hostile [--share 1] [--only WORD] [--folder FOLDER]
//
// A share below 1 makes every deck smaller: what grows faster than its deck shows in two runs.
#include "bench/legacy_deck.h"

#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/cad_geometry.h"
#include "model/kinematics/linear_translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace NBrenmark;
using namespace NBench;

namespace {

double share = 1.0;

quint32 many(quint32 count) { return std::max<quint32>(1, static_cast<quint32>(count * share)); }

QString numbered(const char* word, quint32 number) { return QString("%1 %2").arg(word).arg(number); }

/// A heap of things that say nothing and deflate to nearly nothing.
struct SCase
{
    const char* what;
    std::function<void(SSimulationFrame&)> model;
    std::function<void(CTimestepData&)> timestep;
};

void nothing(SSimulationFrame&) {}
void empty(CTimestepData&) {}

void materials(SSimulationFrame& frame)
{
    for (quint32 i = 0; i < many(300000); ++i)
        frame.creator.materials.set(
            numbered("m", i), new CMaterial(numbered("m", i).toStdString(), 0.3, 1e7, 2500.0, 0.0, eBulkMaterial));
}

void types(SSimulationFrame& frame)
{
    for (quint32 i = 0; i < many(100000); ++i)
        frame.creator.particleTypes.append().setName(numbered("t", i));
}

CCADGeometry* meshOf(const QString& name, quint32 vertices, quint32 triangles)
{
    auto mesh = std::make_unique<CCADGeometry>(nullptr);
    mesh->setName(name);
    mesh->importMesh(std::vector<C3DPoint>(vertices), std::vector<TriangleNodes>(triangles, {0, 1, 2}));
    return mesh.release();
}

void mesh(SSimulationFrame& frame)
{
    frame.creator.geometryGroups.add(meshOf("Mesh", many(2900000), many(900000)), true);
}

void groups(SSimulationFrame& frame)
{
    for (quint32 i = 0; i < many(20000); ++i)
        frame.creator.geometryGroups.add(meshOf(numbered("g", i), 3, 1), true);
}

void motions(SSimulationFrame& frame)
{
    CCADGeometry* group = meshOf("Mesh", 3, 1);
    for (quint32 i = 0; i < many(200000); ++i) {
        auto motion = std::make_unique<CLinearTranslation>();
        motion->name = numbered("k", i);
        group->kinematics.add(std::move(motion));
    }
    frame.creator.geometryGroups.add(group, true);
}

void grains(CTimestepData& timestep)
{
    timestep.clear();
    CParticleType& type = timestep.particleTypes.append();
    type.setName("t 0");
    type.spheres.resize(1);
    type.resizeSlots(many(1000000));
    type.dataMask = allParticleFields;
    for (std::size_t i = 0; i < type.ids.size(); ++i)
        type.ids[i] = static_cast<qint32>(i + 1);
    timestep.particleTypes.maxId = many(1000000);
}

void contacts(CTimestepData& timestep)
{
    grains(timestep);
    CContactsBase& contacts = timestep.contacts.surfaceSurface;
    contacts.reserveRows(many(4000000));
    contacts.resizeRows(many(4000000));
    for (auto& row : contacts.rows)
        row = {0, 1, 0, 2};
}

void oneType(SSimulationFrame& frame) { frame.creator.particleTypes.append().setName("t 0"); }

const SCase cases[] = {
    {"materials", materials, empty}, {"types", types, empty},     {"mesh", mesh, empty},
    {"groups", groups, empty},       {"motions", motions, empty}, {"grains", oneType, grains},
    {"contacts", oneType, contacts}, {"nothing", nothing, empty},
};

double megabytesOf(const QString& path)
{
    const QFileInfo main(path);
    double bytes = double(main.size());
    for (const QFileInfo& file : QDir(main.path() + '/' + main.completeBaseName() + "_data").entryInfoList(QDir::Files))
        bytes += double(file.size());
    return bytes / 1048576.0;
}

/// Runs a command in a process of its own, whatever it ends with.
/// \param megabytes  of the deck that it reads, by which its memory goes
/// \param written    that it writes, or reads beside that
void report(const char* what, const QString& program, const QStringList& words, double megabytes, double written = 0.0)
{
    int status = 0;
    rusage usage{};
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0)
        becomeCommand(program, words);
    wait4(child, &status, 0, &usage);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double peak = double(usage.ru_maxrss) / 1024.0;
    const double memory = std::max(256.0 + 4.0 * megabytes, 192.0 + 16.0 * megabytes);
    const double time = 2.0 + megabytes + written;
    std::printf("%-10s %8.2f MiB  %-8s status %3d  %7.0f MiB of %7.0f %s  %6.1f s of %6.1f %s\n", what, megabytes,
                words.front().toUtf8().constData(), WIFEXITED(status) ? WEXITSTATUS(status) : -1, peak, memory,
                peak > memory ? "MORE" : "    ", seconds, time, seconds > time ? "MORE" : "");
    std::fflush(stdout);
}

} // namespace

int main(int count, char** words)
{
    QCoreApplication application(count, words);
    const QStringList arguments = application.arguments();
    share = wordAfter(arguments, "--share", "1").toDouble();
    const QString only = wordAfter(arguments, "--only", QString());
    QTemporaryDir folder(wordAfter(arguments, "--folder", QDir::tempPath()) + "/brenmark-bench-XXXXXX");
    const QString brenmark = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../bin/brenmark");
    const QString source = folder.filePath("source.dem"), target = folder.filePath("target.dem");
    for (const SCase& c : cases) {
        if (!only.isEmpty() && only != c.what)
            continue;
        measure(c.what, [&] {
            return SCounted(makeLegacyDeck(source, 1, c.model,
                                           [&](SSimulationFrame& frame, quint32) { c.timestep(frame.timestep); })
                                ? 0.0
                                : -1.0);
        });
        const double megabytes = megabytesOf(source);
        report(c.what, brenmark, {"info", source}, megabytes);
        report(c.what, brenmark, {"check", source}, megabytes);
        measureCommand(c.what, brenmark, {"convert", source, target, "--force", "--max-memory", "16G"});
        const double written = megabytesOf(target);
        report(c.what, brenmark, {"convert", source, folder.filePath("default.dem"), "--force"}, megabytes, written);
        for (const char* command : {"info", "check"})
            report(c.what, brenmark, {command, target}, written);
        report(c.what, brenmark, {"verify", target, target}, written, written); // which reads it twice
    }
    return 0;
}
