// The formulas for particles. A row is a slot; s is its scale factor, by which all lengths of the template grow.
#include "analysis/attributes/column_filling.h"
#include "analysis/attributes/primary_attributes.h"

#include "model/particle_type.h"
#include "results/timestep_data.h"

#include <algorithm>

namespace NBrenmark::NAttributes {

// ---------------------------------------------------------------- state, as it is stored

bool CAttributePosition::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filledFrom(type.position, rows, out);
}

bool CAttributeVelocity::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filledFrom(type.velocity, rows, out);
}

bool CAttributeAngularVelocity::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filledFrom(type.angularVelocity, rows, out);
}

bool CAttributeOrientation::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filledFrom(type.orientation, rows, out);
}

bool CAttributeId::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filledFrom(type.ids, rows, out);
}

/// F, elements 0 to 2 of the force record, N.
bool CAttributeTotalForce::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) {
        const ForceTorque& record = type.forceTorque[slot];
        return C3DVector(record[0], record[1], record[2]);
    });
}

/// T, elements 3 to 5 of the force record, N m.
bool CAttributeTorque::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) {
        const ForceTorque& record = type.forceTorque[slot];
        return C3DVector(record[3], record[4], record[5]);
    });
}

/// Element 6 of the force record, N; none where the unscaled record is not kept.
bool CAttributeCompressiveForce::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return type.forceTorque[slot][6]; });
}

// ---------------------------------------------------------------- from the template

/// m = m0 s^3, kg, for bodies of one density that differ in size alone.
static double massOf(const CParticleType& type, quint32 slot)
{
    const double s = type.scale[slot];
    return type.rawMass * s * s * s;
}

/// I = I0 s^5, kg m^2: mass by the square of a length. About the axes of the particle's frame.
static C3DVector inertiaOf(const CParticleType& type, quint32 slot)
{
    const double s = type.scale[slot];
    return type.rawInertia.toVector() * (s * s * s * s * s);
}

bool CAttributeMass::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return massOf(type, slot); });
}

bool CAttributeInertia::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return inertiaOf(type, slot); });
}

/// V = V0 s^3, m^3.
bool CAttributeVolume::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) {
        const double s = type.scale[slot];
        return type.rawVolume * s * s * s;
    });
}

/// Of the sphere about the particle's centre that bounds its spheres, m: 2 s max(|position| + physical radius).
bool CAttributeDiameter::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    const double diameter = 2.0 * type.maxExtent(1.0);
    return filled(rows, out, [&](quint32 slot) { return diameter * type.scale[slot]; });
}

// ---------------------------------------------------------------- energies of a rigid body, J
// Source: Goldstein, Classical Mechanics, 2nd edition, chapter 5.

/// m v^2 / 2.
static double kineticEnergyOf(const CParticleType& type, quint32 slot)
{
    return 0.5 * massOf(type, slot) * type.velocity[slot].squaredLength();
}

/// w I w / 2, with w turned into the particle's frame, in which I is diagonal.
static double rotationalEnergyOf(const CParticleType& type, quint32 slot)
{
    const C3DVector w = type.orientation[slot].conjugated().rotate(type.angularVelocity[slot]);
    const C3DVector inertia = inertiaOf(type, slot);
    return 0.5 * (inertia.x * w.x * w.x + inertia.y * w.y * w.y + inertia.z * w.z * w.z);
}

/// -m g x: zero at the origin.
static double potentialEnergyOf(const CParticleType& type, quint32 slot)
{
    return -massOf(type, slot) * type.gravity.toVector().dot(type.position[slot].toVector());
}

bool CAttributeKineticEnergy::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return kineticEnergyOf(type, slot); });
}

bool CAttributeRotKineticEnergy::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return rotationalEnergyOf(type, slot); });
}

bool CAttributePotentialEnergy::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) { return potentialEnergyOf(type, slot); });
}

/// The sum of the three.
bool CAttributeTotalEnergy::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&type](quint32 slot) {
        return kineticEnergyOf(type, slot) + rotationalEnergyOf(type, slot) + potentialEnergyOf(type, slot);
    });
}

// ---------------------------------------------------------------- with the timestep

/// The timestep's time less that of creation, s. The legacy family stores no times of creation, and a conversion leaves
/// zeros in their place: where all are zero, none is known.
bool CAttributeResidenceTime::read(const CParticleType& type, const SAttributeRows& rows, double* out) const
{
    const bool isKnown =
        std::any_of(type.creationTime.begin(), type.creationTime.end(), [](double t) { return t != 0; });
    return isKnown && filled(rows, out, [&](quint32 slot) { return timestep.time - type.creationTime[slot]; });
}

} // namespace NBrenmark::NAttributes
