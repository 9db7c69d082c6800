#pragma once
// Decks of the HDF5 family for tests: a manager on a simulation of its own, and a model to write.

#include "core/deck/simulation_settings.h"
#include "io/hdf5/hdf5_io_manager.h"
#include "support/log_capture.h"
#include "support/managed_deck.h"
#include "support/properties.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark {

// Tests of the legacy family have helpers of the same names.
namespace NHdf5Testing {

class CHdf5Deck : public CManaged<CHdf5IoManager>
{
public:
    bool hasFile(quint32 number) const { return index[number].offset != 0; }
    /// Adds the frame after the others, at a time.
    bool append(double time, bool creatorChanged = false)
    {
        timestep().time = time;
        timestep().timestepIndex = static_cast<quint32>(index.size());
        return manager->appendTimestep(frame(), index, creatorChanged, true);
    }
};

inline void addSphere(CParticleType& type, const char* name, double contactRadius, double physicalRadius)
{
    CSphere sphere;
    sphere.name = name;
    sphere.position = C3DPoint(0.25, 0.5, 0.75);
    sphere.setRadii(contactRadius, physicalRadius);
    type.spheres.push_back(sphere);
}

/// A box with two materials and balls of one type.
inline void fillCreator(CCreatorData& creator, const QString& title = "Kiste")
{
    creator.title = title;
    creator.damping = 0.5;
    creator.velocityRestricted = 1;
    creator.velocityLimit = 20.0;
    creator.angularVelocityLimit = 30.0;
    creator.gravity = C3DPoint(0.0, 0.0, -9.81);
    creator.domain.min = C3DPoint(-1.0, -2.0, -3.0);
    creator.domain.max = C3DPoint(1.0, 2.0, 3.0);
    creator.domain.periodicY = true;
    creator.cylindricalPeriodicBoundaryConditions.geometryName = "Drum";
    creator.cylindricalPeriodicBoundaryConditions.angle = 1.5;
    creator.physicsModels.resetToDefaults();
    creator.materials.clear();
    creator.materials.set("Steel", new CMaterial("Steel", 0.3, 8e10, 7850.0, 4.5, eEquipmentMaterial));
    creator.materials.set("Sand", new CMaterial("Sand", 0.25, 1e8, 2500.0, 0.0, eBulkMaterial));
    creator.interactions.clear();
    creator.interactions.set("Steel", "Sand", new CInteraction);
    creator.particleTypes.clear();
    CParticleType& ball = creator.particleTypes.append();
    ball.setName("Ball");
    ball.materialName = "Sand";
    addSphere(ball, "s", 0.002, 0.001);
}

/// So many balls. Ids count from 1; every array has numbers of its own.
inline void fillTimestep(CTimestepData& timestep, quint32 particles)
{
    timestep.particleTypes.clear();
    CParticleType& ball = timestep.particleTypes.append();
    ball.setName("Ball");
    ball.materialName = "Sand";
    addSphere(ball, "s", 0.002, 0.001);
    ball.resizeSlots(particles);
    ball.customProperties.resize(particles);
    for (quint32 i = 0; i < particles; ++i) {
        const double x = i;
        ball.ids[i] = static_cast<qint32>(i + 1);
        ball.scale[i] = 1.0 + x;
        ball.velocity[i] = C3DVector(x, 0.5, -x);
        ball.position[i] = C3DPoint(x, 2.0 * x, 3.0);
        ball.orientation[i] = CQuaternion(1.0, x, 0.0, 0.0);
        ball.angularVelocity[i] = C3DVector(0.0, x, 1.0);
        for (std::size_t k = 0; k < 7; ++k) {
            ball.forceTorque[i][k] = x + 0.25 * static_cast<double>(k);
            ball.unscaledForceTorque[i][k] = x - 0.25 * static_cast<double>(k);
            ball.externalForceTorque[i][k] = static_cast<double>(k);
        }
        ball.creationTime[i] = 0.125;
    }
    ball.rebuildFreeList();
    timestep.particleTypes.recomputeMaxId(true);
    timestep.elapsedTime = 60.0;
    timestep.runNumber = 2;
    timestep.systemEnergy.total = 3.5;
    timestep.systemEnergy.cumulative.lostThroughCapping = 0.5;
    timestep.removedParticles["Ball"] = 7;
}

/// A deck with a timestep at each time; titles name the creator models, a new one where the title changes.
inline void makeDeck(const QString& path, const std::vector<std::pair<double, QString>>& timesteps)
{
    CHdf5Deck deck;
    ASSERT_EQ(deck.manager->setOutputName(path), 0);
    QString title;
    for (const auto& [time, model] : timesteps) {
        const bool isNew = model != title;
        title = model;
        if (isNew)
            fillCreator(deck.creator(), title);
        deck.creator().modified = false;
        fillTimestep(deck.timestep(), 2);
        ASSERT_TRUE(deck.append(time, isNew));
    }
    deck.manager->reset();
}

inline std::string storyOf(const QString& path) { return NBrenmark::storyOf<CHdf5Deck>(path, 2); }

} // namespace NHdf5Testing

} // namespace NBrenmark
