// How fast a deck moves from the legacy family to the HDF5 family, beside the rate at which the plain HDF5
// filter pipeline stores the same arrays in the same run, and how much memory that takes at the most.
//
//   conversion [--particles N] [--contacts N] [--timesteps N] [--rounds 3] [--folder FOLDER]
//
// Without a size there are two decks: 1,000,000 particles at five times, and 250,000 with 1,000,000 contacts at three.
//
// Every step runs in a process of its own, in turn, so that neither warms the other's heap and the peak of
// resident memory is the step's own.

#include "bench/measuring.h"

#include "api/data_converter.h"
#include "core/deck/application_state.h"
#include "core/deck/file_families.h"
#include "core/deck/file_format_manager.h"

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

#include <H5Cpp.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

using namespace NBrenmark;
using namespace NBench;

namespace {

struct SSize
{
    quint32 particles = 0;
    quint32 contacts = 0;
    quint32 timesteps = 0;

    /// Of all arrays of one timestep, in MB.
    double megabytes() const
    {
        // ids, velocity, position, orientation, angular velocity, scale, three force records, creation time
        constexpr double bytesPerParticle = 4 + 24 + 24 + 32 + 24 + 8 + 3 * 56 + 8;
        // ends, place, two vectors, overlap, tangential overlap, two forces
        constexpr double bytesPerContact = 16 + 24 + 2 * 24 + 8 + 24 + 2 * 24;
        return 1e-6 * (bytesPerParticle * particles + bytesPerContact * contacts);
    }
};

/// Each grain touches the next ones: overlaps and forces as rough as a solver leaves them, and as many contacts
/// without slip as there are grains at rest.
void fillContacts(CContactsBase& contacts, const SSize& size, std::mt19937_64& random)
{
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    const auto vector = [&](double scale) {
        return C3DVector(scale * unit(random), scale * unit(random), scale * unit(random));
    };
    if (size.contacts == 0 || size.particles == 0)
        return;
    contacts.reserveRows(size.contacts);
    contacts.resizeRows(size.contacts);
    for (quint32 row = 0; row < size.contacts; ++row) {
        const quint32 first = row % size.particles;
        const quint32 second = (first + 1 + row / size.particles) % size.particles;
        contacts.rows[row] = {0, std::min(first, second), 0, std::max(first, second)};
        contacts.position[row] = C3DPoint(vector(1.0));
        contacts.contactVector1[row] = vector(1e-3);
        contacts.contactVector2[row] = vector(1e-3);
        contacts.normalOverlap[row] = 1e-6 * (1.0 + unit(random));
        contacts.tangentialOverlap[row] = vector(row % 3 == 0 ? 0.0 : 1e-6);
        contacts.normalForce[row] = vector(1e-3);
        contacts.tangentialForce[row] = vector(row % 3 == 0 ? 0.0 : 1e-3);
    }
}

/// A heap of grains at one time: positions and forces as rough as a solver leaves them, and a third of the
/// grains at rest.
void fillTimestep(CTimestepData& timestep, quint32 number, const SSize& size)
{
    timestep.clear();
    timestep.time = 0.01 * number;
    timestep.timestepIndex = number;
    CParticleType& grains = timestep.particleTypes.append();
    grains.setName("Grain");
    grains.materialName = "glass";
    grains.spheres.resize(1);
    grains.resizeSlots(size.particles);
    grains.dataMask = allParticleFields;
    timestep.particleTypes.maxId = size.particles;

    std::mt19937_64 random(number);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    for (quint32 i = 0; i < size.particles; ++i) {
        const double speed = i % 3 == 0 ? 0.0 : 0.1;
        grains.ids[i] = static_cast<qint32>(i + 1);
        grains.scale[i] = 1.0;
        grains.position[i] = {unit(random), unit(random), unit(random)};
        grains.velocity[i] = {speed * unit(random), speed * unit(random), speed * unit(random)};
        grains.orientation[i] = CQuaternion();
        grains.angularVelocity[i] = {speed * unit(random), speed * unit(random), speed * unit(random)};
        for (size_t component = 0; component < 3; ++component)
            grains.forceTorque[i][component] = 1e-3 * unit(random);
        grains.unscaledForceTorque[i] = grains.forceTorque[i];
    }
    fillContacts(timestep.contacts.surfaceSurface, size, random);
}

bool makeDeck(const QString& path, const SSize& size)
{
    SApplicationState& state = applicationState();
    if (!initialiseApplication(state))
        return false;
    CSimulation& simulation = *state.simulation;
    SSimulationFrame& frame = *simulation.currentFrame;
    frame.creator.title = "Benchmark";
    frame.creator.materials.set("glass", new CMaterial("glass", 0.3, 1e7, 2500.0, 0.0, eBulkMaterial));
    frame.creator.particleTypes.append().setName("Grain");

    const auto manager = NLegacyFamily::makeManager(simulation);
    TimestepIndex index(1);
    fillTimestep(frame.timestep, 0, size);
    bool made = manager->createSimulation(path, frame, true, index);
    for (quint32 number = 1; made && number < size.timesteps; ++number) {
        fillTimestep(frame.timestep, number, size);
        index.emplace_back();
        index.back().time = frame.timestep.time;
        made = manager->appendTimestep(frame, index, false, true);
    }
    manager->reset();
    simulation.close(false);
    return made && markAsLegacy(path);
}

bool convert(const QString& source, const QString& target)
{
    CDataConverter converter;
    if (converter.convertSimulationData(source.toUtf8().constData(), target.toUtf8().constData()))
        return true;
    for (const auto& message : converter.getLogMessages())
        std::fprintf(stderr, "%s: %s\n", std::get<1>(message).c_str(), std::get<2>(message).c_str());
    return false;
}

/// Stores one array as the plain pipeline does: deflate 6, chunks of 250,000 values.
void storeArray(hid_t file, const char* name, hid_t type, const void* values, hsize_t rows, hsize_t columns)
{
    const hsize_t dims[2] = {rows, columns};
    const hsize_t chunk[2] = {std::max<hsize_t>(1, std::min<hsize_t>(rows, 250000) / columns), columns};
    const int rank = columns == 1 ? 1 : 2;
    const hid_t space = H5Screate_simple(rank, dims, nullptr);
    const hid_t list = H5Pcreate(H5P_DATASET_CREATE);
    H5Pset_deflate(list, 6);
    H5Pset_chunk(list, rank, chunk);
    const hid_t set = H5Dcreate2(file, name, type, space, H5P_DEFAULT, list, H5P_DEFAULT);
    if (H5Dwrite(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values) < 0)
        std::abort();
    H5Dclose(set);
    H5Pclose(list);
    H5Sclose(space);
}

void storeContacts(hid_t file, const CContactsBase& contacts)
{
    const hsize_t n = contacts.rowCount();
    storeArray(file, "contacts", H5T_NATIVE_UINT, contacts.rows.data(), n, 4);
    storeArray(file, "contact position", H5T_NATIVE_DOUBLE, contacts.position.data(), n, 3);
    storeArray(file, "contact vector 1", H5T_NATIVE_DOUBLE, contacts.contactVector1.data(), n, 3);
    storeArray(file, "contact vector 2", H5T_NATIVE_DOUBLE, contacts.contactVector2.data(), n, 3);
    storeArray(file, "normal overlap", H5T_NATIVE_DOUBLE, contacts.normalOverlap.data(), n, 1);
    storeArray(file, "tangential overlap", H5T_NATIVE_DOUBLE, contacts.tangentialOverlap.data(), n, 3);
    storeArray(file, "normal force", H5T_NATIVE_DOUBLE, contacts.normalForce.data(), n, 3);
    storeArray(file, "tangential force", H5T_NATIVE_DOUBLE, contacts.tangentialForce.data(), n, 3);
}

/// The baseline: the arrays of each timestep through the plain pipeline, a file a timestep.
/// \return the seconds that it took, without those to make the arrays up
double storePlain(const QString& folder, const SSize& size)
{
    double seconds = 0.0;
    CCreatorData creator{SPropertyManagers()};
    CTimestepData timestep(SPropertyManagers(), creator);
    for (quint32 number = 0; number < size.timesteps; ++number) {
        fillTimestep(timestep, number, size);
        const CParticleType& grains = *timestep.particleTypes.types[0];
        const std::vector<double> times(size.particles, 0.0);
        const hsize_t n = size.particles;
        const auto start = std::chrono::steady_clock::now();
        const QString path = folder + QString("/plain-%1.h5").arg(number);
        const hid_t file = H5Fcreate(path.toUtf8().constData(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
        storeArray(file, "ids", H5T_NATIVE_INT, grains.ids.data(), n, 1);
        storeArray(file, "velocity", H5T_NATIVE_DOUBLE, grains.velocity.data(), n, 3);
        storeArray(file, "position", H5T_NATIVE_DOUBLE, grains.position.data(), n, 3);
        storeArray(file, "orientation", H5T_NATIVE_DOUBLE, grains.orientation.data(), n, 4);
        storeArray(file, "angular velocity", H5T_NATIVE_DOUBLE, grains.angularVelocity.data(), n, 3);
        storeArray(file, "scale", H5T_NATIVE_DOUBLE, grains.scale.data(), n, 1);
        storeArray(file, "force torque", H5T_NATIVE_DOUBLE, grains.forceTorque.data(), n, 7);
        storeArray(file, "us_force torque", H5T_NATIVE_DOUBLE, grains.unscaledForceTorque.data(), n, 7);
        storeArray(file, "external force torque", H5T_NATIVE_DOUBLE, grains.externalForceTorque.data(), n, 7);
        storeArray(file, "creation time", H5T_NATIVE_DOUBLE, times.data(), n, 1);
        if (size.contacts > 0)
            storeContacts(file, timestep.contacts.surfaceSurface);
        H5Fclose(file);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    return seconds;
}

/// Makes a deck, converts it beside the plain pipeline, and prints what that took.
void compare(const SSize& size, quint32 rounds, const QString& folder)
{
    const double megabytes = size.megabytes() * size.timesteps;
    std::printf("%u particles, %u contacts, %u timesteps: %.0f MB of array data, %.0f MB a timestep\n", size.particles,
                size.contacts, size.timesteps, megabytes, size.megabytes());
    const QString source = folder + "/source.dem";
    const QString target = folder + "/target.dem";
    measure("making the deck", [&] { return makeDeck(source, size) ? 0.0 : -1.0; });

    std::vector<double> ratios;
    double peak = 0.0;
    for (quint32 round = 1; round <= rounds; ++round) {
        const SMeasure plain = measure("the plain pipeline", [&] { return storePlain(folder, size); });
        const SMeasure whole = measure("the conversion", [&] { return convert(source, target) ? 0.0 : -1.0; });
        ratios.push_back(plain.wallSeconds / whole.wallSeconds);
        peak = std::max(peak, whole.peakMegabytes);
        std::printf("round %u: conversion %.1f MB/s (%.1f s wall, %.1f s cpu), plain pipeline %.1f MB/s (%.1f s wall), "
                    "%.2fx\n",
                    round, megabytes / whole.wallSeconds, whole.wallSeconds, whole.cpuSeconds,
                    megabytes / plain.wallSeconds, plain.wallSeconds, ratios.back());
    }
    std::printf("conversion, end to end: %.2fx the plain pipeline (%.2f to %.2f, %u pairs)\n", median(ratios),
                *std::min_element(ratios.begin(), ratios.end()), *std::max_element(ratios.begin(), ratios.end()),
                rounds);
    std::printf("peak resident memory of a conversion: %.0f MB, %.2fx the largest timestep\n", peak,
                peak / size.megabytes());
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    std::vector<SSize> decks = {{1000000, 0, 5}, {250000, 1000000, 3}};
    if (arguments.contains("--particles") || arguments.contains("--contacts"))
        decks = {{wordAfter(arguments, "--particles", "250000").toUInt(),
                  wordAfter(arguments, "--contacts", "0").toUInt(), 3}};
    const quint32 rounds = wordAfter(arguments, "--rounds", "3").toUInt();
    const QString parent = wordAfter(arguments, "--folder", QDir::tempPath());
    for (SSize& size : decks) {
        size.timesteps = wordAfter(arguments, "--timesteps", QString::number(size.timesteps)).toUInt();
        QTemporaryDir folder(parent + "/brenmark-bench-XXXXXX");
        if (!folder.isValid() || size.particles < 2 || size.timesteps == 0 || rounds == 0) {
            std::fprintf(stderr, "conversion: nothing to measure, or no folder can be made in %s\n",
                         qPrintable(parent));
            return 1;
        }
        compare(size, rounds, folder.path());
    }
    return 0;
}
