#pragma once
// A heap of grains that touch each other, as a legacy deck.

#include "bench/legacy_deck.h"

#include <algorithm>
#include <random>

namespace NBench {

struct SSize
{
    quint32 particles = 0;
    quint32 contacts = 0;
    quint32 timesteps = 0;
    bool fromFloats = false; ///< all values were numbers of single precision once

    double rounded(double value) const { return fromFloats ? double(float(value)) : value; }

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
inline void fillContacts(CContactsBase& contacts, const SSize& size, std::mt19937_64& random)
{
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    const auto vector = [&](double scale) {
        return C3DVector(size.rounded(scale * unit(random)), size.rounded(scale * unit(random)),
                         size.rounded(scale * unit(random)));
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
        contacts.normalOverlap[row] = size.rounded(1e-6 * (1.0 + unit(random)));
        contacts.tangentialOverlap[row] = vector(row % 3 == 0 ? 0.0 : 1e-6);
        contacts.normalForce[row] = vector(1e-3);
        contacts.tangentialForce[row] = vector(row % 3 == 0 ? 0.0 : 1e-3);
    }
}

/// A heap of grains at one time: positions and forces as rough as a solver leaves them, and a third of the
/// grains at rest.
inline void fillTimestep(CTimestepData& timestep, quint32 number, const SSize& size)
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
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    const auto unit = [&](std::mt19937_64& from) { return size.rounded(uniform(from)); };
    for (quint32 i = 0; i < size.particles; ++i) {
        const double speed = i % 3 == 0 ? 0.0 : 0.125;
        grains.ids[i] = static_cast<qint32>(i + 1);
        grains.scale[i] = 1.0;
        grains.position[i] = {unit(random), unit(random), unit(random)};
        grains.velocity[i] = {speed * unit(random), speed * unit(random), speed * unit(random)};
        grains.orientation[i] = CQuaternion();
        grains.angularVelocity[i] = {speed * unit(random), speed * unit(random), speed * unit(random)};
        for (size_t component = 0; component < 3; ++component)
            grains.forceTorque[i][component] = size.rounded(1e-3 * unit(random));
        grains.unscaledForceTorque[i] = grains.forceTorque[i];
    }
    fillContacts(timestep.contacts.surfaceSurface, size, random);
}

inline bool makeDeck(const QString& path, const SSize& size)
{
    return makeLegacyDeck(
        path, size.timesteps,
        [](SSimulationFrame& frame) {
            frame.creator.title = "Benchmark";
            frame.creator.materials.set("glass", new CMaterial("glass", 0.3, 1e7, 2500.0, 0.0, eBulkMaterial));
            frame.creator.particleTypes.append().setName("Grain");
        },
        [&size](SSimulationFrame& frame, quint32 number) { fillTimestep(frame.timestep, number, size); });
}

} // namespace NBench
