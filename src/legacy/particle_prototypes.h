#pragma once
// Particle prototypes: what decks below 20.0.0 know in place of particle types. The creator block has a named list of
// them, a timestep one for each particle, template and state in one.

#include "maths/axis_angle.h"
#include "maths/quaternion.h"
#include "maths/vector.h"
#include "model/particle_type.h"

#include <QMap>
#include <QString>
#include <vector>

namespace NBrenmark {

class CCreatorData;
class CParticleTypes;

namespace NLegacySupport {

/// One sphere.
class SPrototypeElement
{
public:
    C3DPoint position;           ///< in the particle's frame, m
    double contactRadius = 0.0;  ///< m
    double physicalRadius = 0.0; ///< m
    QString name;
};

class CPrototypeElementList : public std::vector<SPrototypeElement>
{
};

class CParticlePrototype
{
public:
    /// Template and scale by the laws of lengths, volumes and inertias; position and state stay.
    void rescale(double factor);

    C3DPoint position;  ///< m
    C3DVector velocity; ///< m/s
    CQuaternion orientation;
    C3DVector angularVelocity; ///< rad/s
    CPrototypeElementList elements;
    C3DPoint inertia; ///< Ixx, Iyy, Izz, kg m^2
    QString materialName;
    double mass = 0.0;   ///< kg
    double volume = 0.0; ///< m^3
    QString name;
    qint32 id = 0;
    double charge = 0.0;          ///< C
    C3DVector electrostaticForce; ///< N
    ForceTorque forceTorque{};
    ForceTorque unscaledForceTorque{};
    ForceTorque externalForceTorque{};
    double scale = 0.0;
    std::vector<double> customValues;
};

/// By the names of the creator block.
class CParticlePrototypeMap : public QMap<QString, CParticlePrototype>
{
};

/// One a particle, in the order of the file.
class CParticlePrototypeRecords : public std::vector<CParticlePrototype>
{
};

/// The template of a type; its particles and its other fields stay.
void fillFromPrototype(CParticleType& type, const CParticlePrototype& prototype);

/// A type for each prototype of a creator block, in the order of the names.
void fillFromPrototypes(CParticleTypes& types, const CParticlePrototypeMap& prototypes);

/// The types of a timestep and their particles, from one record each. A type of the definition that has no particle
/// comes after those that have. The records are used up.
/// \param creator  the definition; records name the materials that its types had before an upgrade
void fillFromRecords(CParticleTypes& types, CParticlePrototypeRecords& records, const CCreatorData& creator);

} // namespace NLegacySupport
} // namespace NBrenmark
