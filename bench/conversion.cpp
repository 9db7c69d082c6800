// How fast a deck moves from the legacy family to the HDF5 family, beside the ordinary way in the same run: arrays of
// the same values, inflated by zlib and written through the filter of HDF5 by one thread, a file a timestep. Both write
// to the same disk; the ordinary way has its input in memory, and no model to read.
//
//   conversion [--particles N] [--contacts N] [--timesteps N] [--rounds 5] [--from-floats] [--folder FOLDER]
//   conversion --make NAME.dem [--particles N] [--contacts N] [--timesteps N]      makes the deck alone
//
// Without a size: 100,000 particles and 400,000 contacts at five times, 480 MB. Every step runs in a process of its own,
// in turn, so that neither warms the other's heap and the peak of resident memory is the step's own. A round in which
// the ordinary way waited for a core for more than a twentieth of its time is repeated, up to ten times. The new deck of
// each round is compared with its source by the command line, and both is done by convert --verify as well.

#include "bench/grain_heap.h"

#include "api/data_converter.h"
#include "core/deflate.h"
#include "core/thread_pool.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

#include <H5Cpp.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sched.h>
#include <vector>

using namespace NBrenmark;
using namespace NBench;

namespace {

bool convert(const QString& source, const QString& target)
{
    CDataConverter converter;
    if (converter.convertSimulationData(source.toUtf8().constData(), target.toUtf8().constData()))
        return true;
    for (const auto& message : converter.getLogMessages())
        std::fprintf(stderr, "%s: %s\n", std::get<1>(message).c_str(), std::get<2>(message).c_str());
    return false;
}

/// An array as a legacy deck holds it.
struct SStored
{
    const char* name;
    hid_t type;
    hsize_t rows;
    hsize_t columns;
    SBytes stream;
    std::size_t bytes;
};

SStored stored(const char* name, hid_t type, const void* values, hsize_t rows, hsize_t columns)
{
    const std::size_t bytes = rows * columns * H5Tget_size(type);
    return {name, type, rows, columns, deflated(static_cast<const char*>(values), bytes), bytes};
}

std::vector<SStored> storedArrays(const CTimestepData& timestep)
{
    const CParticleType& grains = *timestep.particleTypes.types[0];
    const CContactsBase& contacts = timestep.contacts.surfaceSurface;
    const hsize_t n = grains.ids.size(), m = contacts.rowCount();
    const std::vector<double> times(n, 0.0);
    std::vector<SStored> arrays;
    const auto add = [&](const char* name, hid_t type, const void* values, hsize_t rows, hsize_t columns) {
        if (rows > 0)
            arrays.push_back(stored(name, type, values, rows, columns));
    };
    add("ids", H5T_NATIVE_INT, grains.ids.data(), n, 1);
    add("velocity", H5T_NATIVE_DOUBLE, grains.velocity.data(), n, 3);
    add("position", H5T_NATIVE_DOUBLE, grains.position.data(), n, 3);
    add("orientation", H5T_NATIVE_DOUBLE, grains.orientation.data(), n, 4);
    add("angular velocity", H5T_NATIVE_DOUBLE, grains.angularVelocity.data(), n, 3);
    add("scale", H5T_NATIVE_DOUBLE, grains.scale.data(), n, 1);
    add("force torque", H5T_NATIVE_DOUBLE, grains.forceTorque.data(), n, 7);
    add("us_force torque", H5T_NATIVE_DOUBLE, grains.unscaledForceTorque.data(), n, 7);
    add("external force torque", H5T_NATIVE_DOUBLE, grains.externalForceTorque.data(), n, 7);
    add("creation time", H5T_NATIVE_DOUBLE, times.data(), n, 1);
    add("contacts", H5T_NATIVE_UINT, contacts.rows.data(), m, 4);
    add("contact position", H5T_NATIVE_DOUBLE, contacts.position.data(), m, 3);
    add("contact vector 1", H5T_NATIVE_DOUBLE, contacts.contactVector1.data(), m, 3);
    add("contact vector 2", H5T_NATIVE_DOUBLE, contacts.contactVector2.data(), m, 3);
    add("normal overlap", H5T_NATIVE_DOUBLE, contacts.normalOverlap.data(), m, 1);
    add("tangential overlap", H5T_NATIVE_DOUBLE, contacts.tangentialOverlap.data(), m, 3);
    add("normal force", H5T_NATIVE_DOUBLE, contacts.normalForce.data(), m, 3);
    add("tangential force", H5T_NATIVE_DOUBLE, contacts.tangentialForce.data(), m, 3);
    return arrays;
}

/// Deflate 6, chunks of 250,000 values.
void writeArray(hid_t file, const SStored& array, const void* values)
{
    const hsize_t dims[2] = {array.rows, array.columns};
    const hsize_t chunk[2] = {std::max<hsize_t>(1, std::min<hsize_t>(array.rows, 250000) / array.columns),
                              array.columns};
    const int rank = array.columns == 1 ? 1 : 2;
    const hid_t space = H5Screate_simple(rank, dims, nullptr);
    const hid_t list = H5Pcreate(H5P_DATASET_CREATE);
    H5Pset_deflate(list, 6);
    H5Pset_chunk(list, rank, chunk);
    const hid_t set = H5Dcreate2(file, array.name, array.type, space, H5P_DEFAULT, list, H5P_DEFAULT);
    if (H5Dwrite(set, array.type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values) < 0)
        std::abort();
    H5Dclose(set);
    H5Pclose(list);
    H5Sclose(space);
}

/// The ordinary way. \return the seconds that it took, without those to make its input
SCounted ordinaryWay(const QString& folder, const SSize& size)
{
    SCounted sum(0.0);
    CCreatorData creator{SPropertyManagers()};
    CTimestepData timestep(SPropertyManagers(), creator);
    for (quint32 number = 0; number < size.timesteps; ++number) {
        fillTimestep(timestep, number, size);
        const std::vector<SStored> arrays = storedArrays(timestep);
        const SCounted begin = now();
        const QString path = folder + QString("/ordinary-%1.h5").arg(number);
        const hid_t file = H5Fcreate(path.toUtf8().constData(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
        for (const SStored& array : arrays) {
            std::vector<char> values(array.bytes);
            uLongf length = array.bytes;
            if (uncompress(reinterpret_cast<Bytef*>(values.data()), &length,
                           reinterpret_cast<const Bytef*>(array.stream.data.get()), array.stream.size) != Z_OK)
                std::abort();
            writeArray(file, array, values.data());
        }
        H5Fclose(file);
        const SCounted end = now();
        sum = {sum.wall + end.wall - begin.wall, sum.cpu + end.cpu - begin.cpu};
    }
    return sum;
}

// ---------------------------------------------------------------- sizes

struct SSizes
{
    double stored = 0.0;
    double ordinary = 0.0; ///< of the same chunks by zlib's level 6
    double worst = 0.0;    ///< ratio of a dataset
    std::string worstName;
};

void addSizes(const H5::DataSet& dataset, const std::string& name, SSizes& sizes)
{
    const H5::DSetCreatPropList properties = dataset.getCreatePlist();
    if (properties.getLayout() != H5D_CHUNKED || properties.getNfilters() != 1)
        return;
    hsize_t dims[2] = {1, 1};
    properties.getChunk(2, dims);
    const H5::DataSpace space = dataset.getSpace();
    hsize_t count = 0;
    H5Dget_num_chunks(dataset.getId(), space.getId(), &count);
    std::vector<Bytef> raw(dims[0] * dims[1] * dataset.getDataType().getSize()), stream(2 * raw.size() + 1000),
        again(stream);
    double stored = 0.0, ordinary = 0.0;
    for (hsize_t i = 0; i < count; ++i) {
        hsize_t place[2] = {}, bytes = 0;
        uint32_t filters = 0;
        H5Dget_chunk_info(dataset.getId(), space.getId(), i, place, nullptr, nullptr, &bytes);
        uLongf length = raw.size(), size = again.size();
        if (bytes > stream.size() || H5Dread_chunk(dataset.getId(), H5P_DEFAULT, place, &filters, stream.data()) < 0 ||
            uncompress(raw.data(), &length, stream.data(), bytes) != Z_OK || length != raw.size())
            std::abort();
        compress2(again.data(), &size, raw.data(), raw.size(), 6);
        stored += double(bytes);
        ordinary += double(size);
    }
    sizes.stored += stored;
    sizes.ordinary += ordinary;
    // A dataset of a few kB is no more than its headers.
    if (ordinary > 65536.0 && stored / ordinary > sizes.worst) {
        sizes.worst = stored / ordinary;
        sizes.worstName = name;
    }
}

void addSizes(const H5::Group& group, const std::string& path, SSizes& sizes)
{
    for (hsize_t i = 0; i < group.getNumObjs(); ++i) {
        const std::string name = group.getObjnameByIdx(i);
        if (group.getObjTypeByIdx(i) == H5G_GROUP)
            addSizes(group.openGroup(name), path + name + '/', sizes);
        else if (group.getObjTypeByIdx(i) == H5G_DATASET)
            addSizes(group.openDataSet(name), path + name, sizes);
    }
}

// ---------------------------------------------------------------- rounds

struct SRound
{
    SMeasure ordinary, all, one, verify, both;
};

SRound measuredRound(const SSize& size, const QString& folder)
{
    const QString source = folder + "/source.dem";
    const QString target = folder + "/target.dem";
    const QString brenmark = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../bin/brenmark");
    const auto conversion = [&](unsigned threads) {
        return measure("a conversion", [&, threads] {
            setThreadCount(threads);
            if (threads == 1) { // one core for all that the process does
                cpu_set_t first;
                CPU_ZERO(&first);
                CPU_SET(0, &first);
                sched_setaffinity(0, sizeof first, &first);
            }
            return SCounted(convert(source, target) ? 0.0 : -1.0);
        });
    };
    SRound round;
    for (int attempt = 0; attempt < 10; ++attempt) {
        round.ordinary = measure("the ordinary way", [&] { return ordinaryWay(folder, size); });
        round.all = conversion(0);
        round.one = conversion(1);
        round.verify = measureCommand("a comparison", brenmark, {"verify", source, target});
        round.both = measureCommand("a conversion with its comparison", brenmark,
                                    {"convert", "--verify", "--force", source, folder + "/compared.dem"});
        if (round.ordinary.wallSeconds <= 1.05 * round.ordinary.cpuSeconds)
            return round;
    }
    std::printf("the machine is busy: the ordinary way took %.1f s for %.1f s of work\n", round.ordinary.wallSeconds,
                round.ordinary.cpuSeconds);
    return round;
}

/// Makes a deck, converts it beside the ordinary way, and prints what that took.
void compare(const SSize& size, quint32 rounds, const QString& folder)
{
    std::printf("%u particles, %u contacts, %u timesteps: %.0f MB of array data, %.0f MB a timestep; %u threads\n",
                size.particles, size.contacts, size.timesteps, size.megabytes() * size.timesteps, size.megabytes(),
                threadCount());
    measure("making the deck", [&] { return SCounted(makeDeck(folder + "/source.dem", size) ? 0.0 : -1.0); });
    std::vector<double> elapsed, elapsedOfOne, cpu, scaling, peaks, verify, verifyCpu, both;
    for (quint32 number = 1; number <= rounds; ++number) {
        const SRound round = measuredRound(size, folder);
        elapsed.push_back(round.ordinary.wallSeconds / round.all.wallSeconds);
        elapsedOfOne.push_back(round.ordinary.wallSeconds / round.one.wallSeconds);
        cpu.push_back(round.all.cpuSeconds / round.ordinary.cpuSeconds);
        scaling.push_back(round.one.wallSeconds / round.all.wallSeconds);
        peaks.push_back(round.all.peakMegabytes);
        verify.push_back(round.verify.wallSeconds / round.all.wallSeconds);
        verifyCpu.push_back(round.verify.cpuSeconds / round.all.cpuSeconds);
        both.push_back(round.both.wallSeconds / round.all.wallSeconds);
        std::printf("round %u: ordinary %.2f s (%.2f s cpu); all threads %.2f s (%.2f s cpu, %.0f MiB); one %.2f s "
                    "(%.2f s cpu); verify %.2f s (%.2f s cpu, %.0f MiB); convert --verify %.2f s\n",
                    number, round.ordinary.wallSeconds, round.ordinary.cpuSeconds, round.all.wallSeconds,
                    round.all.cpuSeconds, round.all.peakMegabytes, round.one.wallSeconds, round.one.cpuSeconds,
                    round.verify.wallSeconds, round.verify.cpuSeconds, round.verify.peakMegabytes,
                    round.both.wallSeconds);
        std::fflush(stdout);
    }
    SSizes sizes;
    for (quint32 number = 0; number < size.timesteps; ++number)
        addSizes(H5::H5File((folder + QString("/target_data/%1.h5").arg(number)).toStdString(), H5F_ACC_RDONLY)
                     .openGroup("/"),
                 "/", sizes);
    const auto print = [](const char* what, const std::vector<double>& values) {
        std::printf("%-44s %s\n", what, qPrintable(spread(values)));
    };
    print("elapsed, all threads: times as fast", elapsed);
    print("elapsed, one thread, pinned: times as fast", elapsedOfOne);
    print("CPU time: share of the ordinary way's", cpu);
    print("scaling from one thread to all", scaling);
    print("verify: elapsed, in conversions", verify);
    print("verify: CPU time, in conversions", verifyCpu);
    print("convert --verify: elapsed, in conversions", both);
    print("peak memory, MiB", peaks);
    std::printf("%-44s %.3f\n", "the same, less 64 MiB, in largest timesteps",
                (median(peaks) - 64.0) * 1.048576 / size.megabytes());
    std::printf("%-44s %.4f; at most %.4f, %s\n", "size: share of zlib's level 6", sizes.stored / sizes.ordinary,
                sizes.worst, sizes.worstName.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    SSize size;
    size.particles = wordAfter(arguments, "--particles", "100000").toUInt();
    size.contacts = wordAfter(arguments, "--contacts", "400000").toUInt();
    size.timesteps = wordAfter(arguments, "--timesteps", "5").toUInt();
    size.fromFloats = arguments.contains("--from-floats");
    const quint32 rounds = wordAfter(arguments, "--rounds", "5").toUInt();
    if (const QString deck = wordAfter(arguments, "--make", QString()); !deck.isEmpty())
        return makeDeck(deck, size) ? 0 : 1;
    const QString parent = wordAfter(arguments, "--folder", QDir::tempPath());
    QTemporaryDir folder(parent + "/brenmark-bench-XXXXXX");
    if (!folder.isValid() || size.particles < 2 || size.timesteps == 0 || rounds == 0) {
        std::fprintf(stderr, "conversion: nothing to measure, or no folder can be made in %s\n", qPrintable(parent));
        return 1;
    }
    compare(size, rounds, folder.path());
    return 0;
}
