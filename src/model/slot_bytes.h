#pragma once
// What the particles of a type take in memory, whichever of their arrays a file holds.

#include "model/particle_type.h"

namespace NBrenmark {

/// Bytes of one slot in all arrays that a type always has, and its custom values.
inline quint64 slotBytes(const CParticleType& type)
{
    constexpr quint64 arrays = sizeof(qint32) + 2 * sizeof(double) + 2 * sizeof(C3DVector) + sizeof(C3DPoint) +
                               sizeof(CQuaternion) + 3 * sizeof(ForceTorque) + 1;
    return arrays + sizeof(double) * type.customProperties.elementsTotal();
}

} // namespace NBrenmark
